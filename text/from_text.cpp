// SPDX-License-Identifier: MIT
// Conversions from text.
#include "text/from_text.hpp"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace zirk {

real realFromText(const char* text) {
    // Literals carry double precision; the widened value is the documented one.
    return std::strtod(text, nullptr);
}

int intFromText(const char* text) { return saturatingSum(std::strtol(text, nullptr, 10), 0); }

bool flagFromText(const char* text) { return intFromText(text) == 1; }

int saturatingSum(std::int64_t a, std::int64_t b) {
    constexpr std::int64_t low = std::numeric_limits<int>::min();
    constexpr std::int64_t high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::clamp(a, low, high) + std::clamp(b, low, high), low, high));
}

}  // namespace zirk
