// SPDX-License-Identifier: MIT
// The parts of an extended number in memory, unpacked without the x87 unit.
#pragma once

#include <cstdint>
#include <cstring>

#include "zirk/real.hpp"

namespace zirk {

/// Ten bytes hold an extended number; six more are padding.
struct ExtendedBits {
    std::uint64_t mantissa = 0;
    std::uint16_t signAndExponent = 0;

    /// 0 for zero and numbers below the normal range, `notFinite` for infinities and not-a-numbers.
    int biasedExponent() const { return signAndExponent & 0x7fff; }

    static constexpr int notFinite = 0x7fff;
    static constexpr int bias = 16383;
};

inline ExtendedBits bitsOf(const real& x) {
    ExtendedBits bits;
    std::memcpy(&bits.mantissa, &x, sizeof bits.mantissa);
    std::memcpy(&bits.signAndExponent, reinterpret_cast<const char*>(&x) + sizeof bits.mantissa,
                sizeof bits.signAndExponent);
    return bits;
}

/// 2^round(log2 x) of a normal number x > 0.
inline real nearestPowerOfTwo(const real& x) {
    constexpr std::uint64_t rootOfTwo = 0xb504f333f9de6484;
    const ExtendedBits bits = bitsOf(x);
    const std::uint64_t one = std::uint64_t{1} << 63U;
    const auto exponent = static_cast<std::uint16_t>(bits.biasedExponent() + (bits.mantissa > rootOfTwo ? 1 : 0));
    real result = 0;
    std::memcpy(&result, &one, sizeof one);
    std::memcpy(reinterpret_cast<char*>(&result) + sizeof one, &exponent, sizeof exponent);
    return result;
}

}  // namespace zirk
