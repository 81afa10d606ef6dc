// SPDX-License-Identifier: MIT
// What nodes do with numbers besides arithmetic.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "zirk/real.hpp"

namespace zirk {

/// As `to = from`, by plain moves: storing from the x87 unit takes longer than anything else a point does per variable.
inline void copyBits(real& to, const real& from) { std::memcpy(&to, &from, sizeof to); }

/// Equal including the sign of zero; any two not-a-numbers count as the same.
inline bool sameValue(real a, real b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

/// A sum of two 32-bit numbers (or of one and another's negative) that stays at the ends of their range.
inline int saturatingSum(std::int64_t a, std::int64_t b) {
    return static_cast<int>(
        std::clamp<std::int64_t>(a + b, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// pi, rounded once.
inline constexpr real pi =
    3.14159265358979323846264338327950288419716939937510582097494459230781640628620899862803482534211706798L;

}  // namespace zirk
