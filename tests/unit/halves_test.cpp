// SPDX-License-Identifier: MIT
// Cells give back every bit of what they hold and say what they cannot hold.
#include "series/halves.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "expr/real.hpp"

using namespace zirk;

namespace {

/// A number with a full mantissa and the given binary exponent.
real full(std::mt19937_64& random, int exponent) {
    const real mantissa = static_cast<real>(random() | 0x8000000000000001u);
    return std::ldexp(random() % 2 == 0 ? mantissa : -mantissa, exponent - 63);
}

TEST(Halves, GiveBackEveryBitOrSayThatTheyCannot) {
    std::mt19937_64 random(1);
    int held = 0;
    for (int exponent = -16000; exponent <= 16000; ++exponent) {
        const real x = full(random, exponent);
        Halves cell;
        // The lowest bit counts 2^(exponent - 63). As part of a normal double it can be 2^-1022 or more, and what is
        // rounded to 2^1024 is no double.
        const bool canHold = store(cell, x);
        const bool must = exponent >= -959 && exponent < 1023;
        const bool cannot = exponent < -1074 || exponent > 1023;
        EXPECT_TRUE(canHold || !must) << exponent;
        EXPECT_FALSE(canHold && cannot) << exponent;
        if (!canHold) continue;
        EXPECT_TRUE(sameValue(real(cell), x)) << exponent;
        ++held;
    }
    EXPECT_GE(held, 959 + 1023);
}

TEST(Halves, HoldBothZeros) {
    for (const real zero : {0.0L, -0.0L}) {
        Halves cell;
        EXPECT_TRUE(store(cell, zero));
        EXPECT_TRUE(sameValue(real(cell), zero));
    }
}

TEST(Halves, HoldNumbersThatAreDoublesWithoutExcess) {
    for (const real x : {1.0L, -0.5L, 1e22L}) {
        Halves cell;
        EXPECT_TRUE(store(cell, x));
        EXPECT_EQ(cell.high, static_cast<double>(x));
        EXPECT_EQ(cell.excess, 0);
    }
}

TEST(Halves, RefuseWhatTwoDoublesCannotHold) {
    // The smallest and largest numbers, a number that rounds up to infinity, one below all doubles whose last bit is
    // one, and what is not finite.
    const real odd[] = {std::numeric_limits<real>::denorm_min(),
                        std::numeric_limits<real>::max(),
                        std::ldexp(1 - std::numeric_limits<real>::epsilon(), 1024),
                        1e-400L,
                        std::ldexp(1 + std::numeric_limits<real>::epsilon(), -1022),
                        std::numeric_limits<real>::infinity(),
                        -std::numeric_limits<real>::infinity(),
                        std::numeric_limits<real>::quiet_NaN()};
    for (const real x : odd) {
        Halves cell;
        EXPECT_FALSE(store(cell, x));
    }
}

TEST(ExtendedCells, RefuseOnlyWhatIsNotFinite) {
    for (const real x : {0.0L, -0.0L, 1e-4940L, std::numeric_limits<real>::max()}) {
        real cell = 1;
        EXPECT_TRUE(store(cell, x));
        EXPECT_TRUE(sameValue(cell, x));
    }
    for (const real x : {std::numeric_limits<real>::infinity(), std::numeric_limits<real>::quiet_NaN()}) {
        real cell = 1;
        EXPECT_FALSE(store(cell, x));
    }
}

/// Whether the flags say that a number did not fit into a cell.
template <class Cell>
bool failsFor(real x) {
    std::vector<Cell> cells(1);
    const FailedStores failed;
    put(cells[0], x);
    EXPECT_TRUE(failed.in(cells) || sameValue(real(cells[0]), x));
    return failed.in(cells);
}

TEST(FailedStores, SeeWhatACellDoesNotHold) {
    std::mt19937_64 random(2);
    for (int exponent = -16000; exponent <= 16000; ++exponent) {
        const real x = full(random, exponent);
        Halves cell;
        EXPECT_EQ(failsFor<Halves>(x), !store(cell, x)) << exponent;
        EXPECT_FALSE(failsFor<real>(x)) << exponent;
    }
    for (const real zero : {0.0L, -0.0L}) EXPECT_FALSE(failsFor<Halves>(zero));
    EXPECT_TRUE(failsFor<Halves>(std::numeric_limits<real>::infinity()));
}

TEST(FailedStores, SeeNumbersThatBecomeInfiniteOrNone) {
    volatile real large = std::numeric_limits<real>::max();
    volatile real zero = 0;
    std::vector<real> cells(1);
    const auto fails = [&](auto compute) {
        const FailedStores failed;
        put(cells[0], compute());
        return failed.in(cells);
    };
    EXPECT_TRUE(fails([&] { return large * 2; }));
    EXPECT_TRUE(fails([&] { return 1 / zero; }));
    EXPECT_TRUE(fails([&] { return zero / zero; }));
    EXPECT_FALSE(fails([&] { return large / 3; })) << "what was before does not count";
    EXPECT_FALSE(fails([&] { return 1 / large; }));
}

}  // namespace
