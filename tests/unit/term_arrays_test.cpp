// SPDX-License-Identifier: MIT
// Term arrays give back what was kept, in both forms, and sum in the order of the recurrences.
#include "solver/term_arrays.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "expr/real.hpp"

namespace {

/// A number with a full mantissa and the given binary exponent.
real full(std::mt19937_64& random, int exponent) {
    const real mantissa = static_cast<real>(random() | 0x8000000000000001u);
    return std::ldexp(random() % 2 == 0 ? mantissa : -mantissa, exponent - 63);
}

TEST(TermArrays, GiveBackEveryBit) {
    std::mt19937_64 random(1);
    TermArrays arrays;
    arrays.setCount(1);
    for (int exponent = -16000; exponent <= 16000; exponent += 7) {
        const real term = full(random, exponent);
        arrays.clear();
        arrays.keep(0, 0, term);
        EXPECT_TRUE(sameValue(arrays.first(0), term)) << exponent;
    }
}

TEST(TermArrays, KeepWhatTwoDoublesCannotHold) {
    // The smallest and largest numbers, a double that rounds up to infinity, and the borders of normal doubles.
    const real odd[] = {std::numeric_limits<real>::denorm_min(),
                        std::numeric_limits<real>::max(),
                        std::ldexp(1 - std::numeric_limits<real>::epsilon(), 1024),
                        std::ldexp(1 + std::numeric_limits<real>::epsilon(), -959),
                        std::ldexp(1 + std::numeric_limits<real>::epsilon(), -960),
                        std::ldexp(1 + std::numeric_limits<real>::epsilon(), -1022)};
    for (const real term : odd) {
        TermArrays arrays;
        arrays.setCount(1);
        arrays.keep(0, 0, term);
        EXPECT_EQ(arrays.first(0), term);
        EXPECT_FALSE(arrays.hasWild());
    }
}

TEST(TermArrays, KeepEarlierTermsWhenALateOneIsTooSmall) {
    TermArrays arrays;
    arrays.setCount(2);
    arrays.keep(0, 0, 3.1L);
    arrays.keep(0, 1, 5.3L);
    arrays.keep(1, 0, 7.7L);
    arrays.keep(1, 1, 1e-400L);
    const real expected = 0 + 5.3L * 7.7L + 3.1L * 1e-400L;
    EXPECT_EQ(arrays.sum(0, 1, 1, 0, 2), expected);
    arrays.reserve(200);
    EXPECT_EQ(arrays.sum(0, 1, 1, 0, 2), expected);
}

TEST(TermArrays, TellWhatIsNotFinite) {
    for (const real term : {std::numeric_limits<real>::infinity(), std::numeric_limits<real>::quiet_NaN()}) {
        TermArrays arrays;
        arrays.setCount(1);
        arrays.keep(0, 0, term);
        EXPECT_TRUE(arrays.hasWild());
        arrays.clear();
        EXPECT_FALSE(arrays.hasWild());
    }
}

TEST(TermArrays, AddFromTheNewestTermOfTheLeftFactor) {
    // 2^64 + 1 - 2^64 gives 1 or 0 with the order of the additions.
    TermArrays arrays;
    arrays.setCount(2);
    const real big = 18446744073709551616.0L;
    const real a[] = {-1, 1, 1};
    const real b[] = {big, 1, big};
    for (int k = 0; k < 3; ++k) {
        arrays.keep(0, k, a[k]);
        arrays.keep(1, k, b[k]);
    }
    // a[2]*b[0] + a[1]*b[1] + a[0]*b[2] = ((0 + 2^64) + 1) - 2^64: the 1 is lost to rounding to even.
    EXPECT_EQ(arrays.sum(0, 2, 1, 0, 3), 0);
    // b[1]*a[0] + b[0]*a[1] + ... from other ends: (0 - 1) + 2^64.
    EXPECT_EQ(arrays.sum(1, 1, 0, 0, 2), big - 1);
}

}  // namespace
