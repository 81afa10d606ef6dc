// SPDX-License-Identifier: MIT
// What --verbose tells at the end.
#pragma once

#include <string>

#include "zirk/integrator.hpp"

namespace zirk::solve {

/// Two lines: steps with their orders and lengths, and the time taken.
std::string summaryText(const IntegratorStatistics& statistics, double seconds);

}  // namespace zirk::solve
