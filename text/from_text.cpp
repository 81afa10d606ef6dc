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

int intFromText(const char* text) {
    constexpr long low = std::numeric_limits<int>::min();
    constexpr long high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::strtol(text, nullptr, 10), low, high));
}

bool flagFromText(const char* text) { return intFromText(text) == 1; }

}  // namespace zirk
