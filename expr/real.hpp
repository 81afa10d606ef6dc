// SPDX-License-Identifier: MIT
// The number type of every value, and numbers from text.
#pragma once

#include <cstdint>
#include <cstring>

namespace zirk {

/// x87 extended format: 64-bit mantissa, 15-bit exponent.
using real = long double;

/// As `to = from`, by plain moves: storing from the x87 unit takes longer than anything else a point does per variable.
inline void copyBits(real& to, const real& from) { std::memcpy(&to, &from, sizeof to); }

/// Text to number through the double conversion, then widened; text that is not a number gives 0.
real realFromText(const char* text);

/// Leading base-10 integer, saturated to the 32-bit range; text that is not a number gives 0.
int intFromText(const char* text);

/// True exactly when the integer read from the text is 1.
bool flagFromText(const char* text);

/// Equal including the sign of zero; any two not-a-numbers count as the same.
bool sameValue(real a, real b);

/// Sum and difference that stay at the ends of the 32-bit range.
int saturatingSum(std::int64_t a, std::int64_t b);

}  // namespace zirk
