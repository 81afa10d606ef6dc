// SPDX-License-Identifier: MIT
// The two forms in which terms are stored: as exact pairs of doubles and as they are.
#pragma once

#include <cstdint>
#include <cstring>

#include "text/extended_bits.hpp"

namespace zirk {

/// An extended number as the exact sum of two doubles.
///
/// The high part is the number rounded to double, the low part the remaining bits. On most processors loading two
/// doubles and adding them is faster than loading one 80-bit number, and storing them is much faster than storing one.
struct Halves {
    double high = 0;
    double low = 0;

    operator real() const { return static_cast<real>(high) + low; }
};

namespace halves {

/// Straight from the x87 unit to memory; what compilers make of a cast goes through another register and waits.
inline void storeRounded(double& to, real from) { asm("fstl %0" : "=m"(to) : "t"(from)); }

/// Whether the low part is exact: the high part is finite, and its exponent lets the last bit be a normal double.
inline bool isExact(const double& high) {
    std::uint16_t top = 0;
    std::memcpy(&top, reinterpret_cast<const char*>(&high) + 6, sizeof top);
    const unsigned exponent = (top >> 4) & 0x7ffu;
    return exponent - 64u < 0x7ffu - 64u;
}

/// Zeros have an exponent of their own. Both parts carry the sign: a negative zero is the sum of two of them.
inline bool storeZero(Halves& cell, real x) {
    if (x != 0) return false;
    cell.low = cell.high;
    return true;
}

}  // namespace halves

/// False when two doubles cannot hold the number: when it is beyond the range of double or too small for its last bit
/// to be a double.
inline bool store(Halves& cell, real x) {
    halves::storeRounded(cell.high, x);
    halves::storeRounded(cell.low, x - cell.high);
    return halves::isExact(cell.high) || halves::storeZero(cell, x);
}

/// False when the number is not finite.
inline bool store(real& cell, real x) {
    cell = x;
    return bitsOf(cell).biasedExponent() != ExtendedBits::notFinite;
}

}  // namespace zirk
