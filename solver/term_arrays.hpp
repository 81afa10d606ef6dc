// SPDX-License-Identifier: MIT
// Arrays of Taylor terms for sums of products, stored so that loading them is cheap.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "expr/real.hpp"

/// An extended number as the exact sum of two doubles.
///
/// The high part is the number rounded to double, the low part the remaining bits. Loading two doubles and adding them
/// is faster than loading one 80-bit number on most processors. A negative zero comes back as a positive one: as a
/// factor in a sum that begins with zero it is the same.
struct Halves {
    double high;
    double low;

    operator real() const { return static_cast<real>(high) + low; }
};

/// falling[0] * rising[0] + falling[-1] * rising[1] + ..., `count` products, added in this order from zero.
template <class Stored>
real productSum(const Stored* falling, const Stored* rising, std::size_t count) {
    real sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const real a = *(falling - i);
        const real b = rising[i];
        sum = sum + a * b;
    }
    return sum;
}

/// Terms of several values, each in one contiguous array.
///
/// All are kept as halves until a term comes that two doubles cannot hold: one beyond the range of double or too small
/// for its last bit to be a double. From there to the end of the point all are kept as they are.
class TermArrays {
public:
    void setCount(std::size_t arrays) {
        arrays_ = arrays;
        halves_.assign(arrays_ * stride_, {});
        wide_.clear();
    }

    /// Forgets all terms.
    void clear() {
        isWide_ = false;
        hasWild_ = false;
    }

    /// Makes room for terms 0 to `last`.
    void reserve(int last) {
        if (static_cast<std::size_t>(last) >= stride_) widenRows(2 * (static_cast<std::size_t>(last) + 1));
    }

    void keep(int array, int k, real term) {
        if (!isWide_) {
            Halves& halves = halves_[at(array, k)];
            storeRounded(halves.high, term);
            if (canSplit(halves.high, term)) {
                storeRounded(halves.low, term - halves.high);
                return;
            }
            goWide();
        }
        hasWild_ |= !std::isfinite(term);
        wide_[at(array, k)] = term;
    }

    /// Whether any term so far is not finite.
    bool hasWild() const { return hasWild_; }

    /// A[from] * B[to] + A[from - 1] * B[to + 1] + ..., `count` products.
    real sum(int a, int from, int b, int to, int count) const {
        const auto length = static_cast<std::size_t>(count);
        if (isWide_) return productSum(&wide_[at(a, from)], &wide_[at(b, to)], length);
        return productSum(&halves_[at(a, from)], &halves_[at(b, to)], length);
    }

    real first(int array) const { return isWide_ ? wide_[at(array, 0)] : real(halves_[at(array, 0)]); }

private:
    /// Straight from the x87 unit to memory; what compilers make of a cast goes through another register and waits.
    static void storeRounded(double& to, real from) { asm("fstl %0" : "=m"(to) : "t"(from)); }

    /// Whether the low part is exact: the high part is finite, and its exponent lets the last bit be a normal double.
    static bool canSplit(const double& high, real term) {
        std::uint16_t top = 0;
        std::memcpy(&top, reinterpret_cast<const char*>(&high) + 6, sizeof top);
        const unsigned exponent = (top >> 4) & 0x7ffu;
        return exponent - 64u < 0x7ffu - 64u || term == 0;
    }

    std::size_t at(int array, int k) const {
        return static_cast<std::size_t>(array) * stride_ + static_cast<std::size_t>(k);
    }
    void goWide();
    void widenRows(std::size_t stride);

    bool isWide_ = false;
    bool hasWild_ = false;
    std::size_t arrays_ = 0;
    std::size_t stride_ = 40;
    std::vector<Halves> halves_;
    std::vector<real> wide_;
};
