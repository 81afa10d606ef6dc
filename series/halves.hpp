// SPDX-License-Identifier: MIT
// The two forms in which terms are stored: as exact pairs of doubles and as they are.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "text/extended_bits.hpp"

namespace zirk {

/// An extended number as the exact difference of two doubles.
///
/// The high part is the number rounded to double; the excess is what rounding added, so a zero keeps its sign. On most
/// processors loading two doubles and subtracting them is faster than loading one 80-bit number, and storing them is
/// much faster than storing one.
struct Halves {
    double high = 0;
    double excess = 0;

    operator real() const { return static_cast<real>(high) - excess; }
};

/// The number in a cell, when it is known to be a double.
inline real doubleIn(const Halves& cell) { return cell.high; }
inline real doubleIn(const real& cell) { return cell; }

// Straight from the x87 unit to memory; what compilers make of a cast goes through another register and waits.

inline void storeRounded(double& to, real from) { asm("fstl %0" : "=m"(to) : "t"(from)); }

/// The last use of a number: it leaves the unit.
inline void storeLast(double& to, real from) { asm("fstpl %0" : "=m"(to) : "t"(from) : "st"); }

/// Stores a number in a cell that may be unable to hold it; FailedStores tells.
inline void put(Halves& cell, real x) {
    storeRounded(cell.high, x);
    storeLast(cell.excess, cell.high - x);
}
inline void put(real& cell, real x) { cell = x; }

/// False when two doubles cannot hold the number: when it is not finite, beyond the range of double, or too small for
/// its last bit to be a double.
inline bool store(Halves& cell, real x) {
    put(cell, x);
    return static_cast<real>(cell) == x;
}

/// False when the number is not finite.
inline bool store(real& cell, real x) {
    cell = x;
    return bitsOf(cell).biasedExponent() != ExtendedBits::notFinite;
}

/// Sees in the exception flags of the x87 unit, all at once, whether numbers that were computed from finite ones and
/// put into cells since its construction are not what the cells hold. Cells of doubles fail by overflow and underflow,
/// or by invalid operations: the excess of an infinite number is none. (A flag may come from a number on the way as
/// well; the worst that follows is a slower way to the same bits.)
class FailedStores {
public:
    FailedStores() {
        if (flags() != 0) asm volatile("fnclex" ::: "memory");
    }

    bool in(const std::vector<Halves>&) const { return (flags() & (notNumbers | underflow)) != 0; }
    bool in(const std::vector<real>&) const { return (flags() & notNumbers) != 0; }

private:
    // Invalid operations, divisions by zero and overflow; underflow.
    static constexpr unsigned notNumbers = 1 + 4 + 8;
    static constexpr unsigned underflow = 16;

    /// All that was computed and stored before counts: compilers keep stores before it.
    static unsigned flags() {
        std::uint16_t status = 0;
        asm volatile("fnstsw %0" : "=a"(status)::"memory");
        return status & (notNumbers | underflow);
    }
};

}  // namespace zirk
