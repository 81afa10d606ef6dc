// SPDX-License-Identifier: MIT
// Programs cut into sections that several threads run at the same time.
#pragma once

#include "parallel/schedule.hpp"
#include "series/program.hpp"

namespace zirk {

/// The chains of a program as tasks, with what they cost at an order of a usual point.
TaskGraph tasksOf(const Program& program);

/// The same program with its chains in the order of their sections: stage by stage, and within it part by part.
Program inSections(const Program& program, const Schedule& schedule);

}  // namespace zirk
