// SPDX-License-Identifier: MIT
// Real zeros of a polynomial on an interval that begins at 0.
#pragma once

#include <vector>

#include "zirk/real.hpp"

namespace zirk {

struct PolynomialRoot {
    real at;
    /// Whether the polynomial rises through it in the direction of growing arguments.
    bool rising;
};

/// Zeros of c_0 + c_1 u + ... in 0 < u <= end (or end <= u < 0), in the order in which they are met from 0, where the
/// sign changes; a zero at 0 itself does not count, one at the end does. Zeros closer together than rounding can tell
/// cancel each other. Coefficients that are not finite give no zeros.
///
/// An interval without a zero is found by the first term of the expansion around its middle outweighing all others, an
/// interval with at most one by the same for the derivative; others are halved.
std::vector<PolynomialRoot> roots(const std::vector<real>& coefficients, real end);

/// Sign of the polynomial just after 0 towards the end, what is lost in rounding taken for zero; 0 for the zero
/// polynomial.
int signAfterBegin(const std::vector<real>& coefficients, real end);

/// Value of the polynomial.
real evaluate(const std::vector<real>& coefficients, real u);

}  // namespace zirk
