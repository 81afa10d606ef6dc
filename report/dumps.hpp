// SPDX-License-Identifier: MIT
// Diagnostic dumps of all Taylor terms and of the derivatives that they stand for.
#pragma once

#include <iosfwd>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// All terms of all equations; `time` is that of the last accepted point.
void dumpTerms(std::ostream& out, const EquationTable& equations, real time);

/// The i-th derivative is term i times i! / h^i, the factor built up step by step.
void dumpDerivatives(std::ostream& out, const EquationTable& equations, const Calculus& calculus, real time);

}  // namespace zirk
