// SPDX-License-Identifier: MIT
// How much of a value is rounding.
#pragma once

#include <vector>

#include "adaptive/laws.hpp"

namespace zirk {

/// For each value, how far rounding may have moved it when all were computed from variables that are rounded
/// themselves, in units of 2^-64: a running error analysis to first order (N. J. Higham, Accuracy and Stability of
/// Numerical Algorithms, 2002, section 3.3). x^2 + y^2 - 1 on the unit circle is nothing else.
std::vector<real> roundingOf(const ValueSystem& system, const std::vector<real>& values);

}  // namespace zirk
