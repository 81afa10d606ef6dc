// SPDX-License-Identifier: MIT
// What in a model will not be what it seems.
#pragma once

#include <string>
#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// One sentence for each kind of thing that the prepared system does otherwise than its author may expect: a bare t in
/// a derivative equation, functions whose equations are not their derivatives, names of algebraic equations in
/// derivative equations, constants dropped below the accuracy, and start values that set nothing. Each names the first
/// case and what to write instead.
std::vector<std::string> remarksOn(const Calculus& calculus, const EquationSystem& system);

}  // namespace zirk
