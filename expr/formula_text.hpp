// SPDX-License-Identifier: MIT
// Formulas in messages, as their author might have written them.
#pragma once

#include <string>

#include "expr/leaves.hpp"

namespace zirk {

/// A formula with as few brackets as its meaning needs: "sqrt(x*x + 1)", "y'". Variables that stand for a function show
/// as that function. What is long or nested deeply is cut short with "...".
std::string formulaText(const Expr& formula);

/// A name as its author writes it: "y''" for "y%2".
std::string writtenName(const std::string& name);

/// How a message names a variable: `variable "y%1"`, or the function that it stands for, `function sqrt(x)`.
std::string describe(const Differential& variable);

}  // namespace zirk
