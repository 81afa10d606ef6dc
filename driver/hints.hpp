// SPDX-License-Identifier: MIT
// What in a model or a command line will not be what it seems, said to those who sit at a terminal.
#pragma once

#include <iosfwd>
#include <string>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// Writes one line for each kind of thing that the prepared system does otherwise than its author may expect: a bare t
/// in a derivative equation, functions whose equations are not their derivatives, names of algebraic equations in
/// derivative equations, constants dropped below the accuracy, start values that set nothing, and `badOption`, the
/// first option whose value is no number ("-t abc"; empty when there is none). Each names the first case and what to
/// write instead.
void writeHints(std::ostream& out, const Calculus& calculus, const EquationSystem& system,
                const std::string& badOption);

}  // namespace zirk
