// SPDX-License-Identifier: MIT
// Who made the first value that is not finite.
#pragma once

#include <string>

#include "expr/leaves.hpp"

namespace zirk {

/// Looks through everything that a variable's right-hand side is made from, with the values at the start of the step,
/// for a quotient or function whose operands are finite and whose value is not: "the quotient 1/y is infinite",
/// "the function sqrt(x - 1) is not a number". Empty when there is none.
std::string firstNotFinite(const Differential& variable);

}  // namespace zirk
