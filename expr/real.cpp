// SPDX-License-Identifier: MIT
// Conversions from text, with the rules of the C library.
#include "expr/real.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace zirk {

real realFromText(const char* text) {
    // Literals carry double precision; the widened value is the documented one.
    return std::strtod(text, nullptr);
}

int intFromText(const char* text) { return saturatingSum(std::strtol(text, nullptr, 10), 0); }

bool flagFromText(const char* text) { return intFromText(text) == 1; }

bool sameValue(real a, real b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

int saturatingSum(std::int64_t a, std::int64_t b) {
    constexpr std::int64_t low = std::numeric_limits<int>::min();
    constexpr std::int64_t high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::clamp(a, low, high) + std::clamp(b, low, high), low, high));
}

}  // namespace zirk
