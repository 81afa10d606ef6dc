// SPDX-License-Identifier: MIT
// Correctly rounded decimal figures of an extended number, from integer arithmetic where that decides.
#pragma once

#include <cstdint>

#include "zirk/real.hpp"

namespace zirk {

/// digits * 10^(exponent - n + 1), with exactly n figures in digits.
struct Decimal {
    std::uint64_t digits = 0;
    int exponent = 0;
};

/// Most figures that roundToDecimal gives.
constexpr int mostFigures = 19;

/// x > 0, finite, rounded to 1 <= n <= mostFigures figures. False when x lies outside about 1e-490 to 1e490, or so near
/// the middle between two results (or on it) that the arithmetic used cannot tell which is nearer.
bool roundToDecimal(const real& x, int n, Decimal& out);

/// Bytes that the two functions below may need.
constexpr int decimalTextSize = 32;

/// Writes x as printf's "%.*Le" does and returns the end; null, with nothing written, when that is left to printf.
char* writeScientific(char* out, const real& x, int precision);

/// As writeScientific, for "%.6Lg".
char* writeGeneral(char* out, const real& x);

}  // namespace zirk
