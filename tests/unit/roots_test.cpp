// SPDX-License-Identifier: MIT
// Zeros of polynomials: each change of sign once, to the last bits.
#include "adaptive/roots.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "adaptive/zero_watch.hpp"

using namespace zirk;

namespace {

/// c (u - r1)(u - r2)...
std::vector<real> withZeros(const std::vector<real>& zeros, real factor = 1) {
    std::vector<real> c{factor};
    for (const real zero : zeros) {
        c.insert(c.begin(), 0);
        for (std::size_t k = 0; k + 1 < c.size(); ++k) c[k] -= zero * c[k + 1];
    }
    return c;
}

std::vector<real> places(const std::vector<PolynomialRoot>& found) {
    std::vector<real> at;
    for (const PolynomialRoot& root : found) at.push_back(root.at);
    return at;
}

void expectPlaces(const std::vector<real>& c, real end, const std::vector<real>& expected, real tolerance) {
    const std::vector<real> at = places(roots(c, end));
    ASSERT_EQ(at.size(), expected.size());
    for (std::size_t i = 0; i < at.size(); ++i) {
        EXPECT_LE(std::fabs(at[i] - expected[i]), tolerance) << static_cast<double>(expected[i]);
    }
}

TEST(Roots, AreFoundWhereTheSignChanges) {
    expectPlaces(withZeros({0.5L}), 1, {0.5L}, 0);
    expectPlaces(withZeros({0.25L, 0.5L, 2}), 1, {0.25L, 0.5L}, 1e-19L);
    expectPlaces(withZeros({0.25L, 0.5L, 2}), 4, {0.25L, 0.5L, 2}, 4e-19L);
    expectPlaces({1}, 1, {}, 0);
    expectPlaces({1, 0, 1}, 1, {}, 0);
    expectPlaces({}, 1, {}, 0);
    expectPlaces({0, 0, 0}, 1, {}, 0);
}

TEST(Roots, SayWhetherThePolynomialRises) {
    const std::vector<PolynomialRoot> found = roots(withZeros({0.25L, 0.5L, 0.75L}), 1);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_TRUE(found[0].rising);
    EXPECT_FALSE(found[1].rising);
    EXPECT_TRUE(found[2].rising);
    EXPECT_FALSE(roots(withZeros({0.25L}, -1), 1)[0].rising);
}

TEST(Roots, ThatAreNearEachOtherAreBothSeen) {
    for (const real gap : {1e-3L, 1e-6L, 1e-8L}) {
        // The coefficients are rounded: so near a double zero, a place is right to rounding over the gap.
        expectPlaces(withZeros({0.3L, 0.3L + gap}), 1, {0.3L, 0.3L + gap}, 1e-19L / gap + 1e-19L);
    }
}

TEST(Roots, AtTheBeginDoNotCountAndAtTheEndDo) {
    expectPlaces(withZeros({0, 0.5L}), 1, {0.5L}, 0);
    expectPlaces(withZeros({0, 0, 0.5L}), 1, {0.5L}, 0);
    expectPlaces(withZeros({0}), 1, {}, 0);
    expectPlaces(withZeros({1}), 1, {1}, 0);
    expectPlaces(withZeros({0, 1}), 1, {1}, 0);
}

TEST(Roots, ThatOnlyTouchAreNoChange) {
    expectPlaces(withZeros({0.5L, 0.5L}), 1, {}, 0);
    expectPlaces(withZeros({0.5L, 0.5L, 0.5L}), 1, {0.5L}, 1e-6L);
}

TEST(Roots, AreMetFromTheBeginOnInAReversedInterval) {
    expectPlaces(withZeros({-0.25L, -0.5L, 0.5L}), -1, {-0.25L, -0.5L}, 1e-19L);
    const std::vector<PolynomialRoot> found = roots(withZeros({-0.5L}), -1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_FALSE(found[0].rising) << "towards the end, that is downwards";
}

TEST(Roots, OfWilkinsonsKindAreFoundAsFarAsTheirConditionAllows) {
    std::vector<real> zeros;
    for (int i = 1; i <= 12; ++i) zeros.push_back(static_cast<real>(i) / 16);
    expectPlaces(withZeros(zeros), 1, zeros, 1e-12L);
}

TEST(Roots, AreNoneForWhatIsNotFinite) {
    expectPlaces({1, INFINITY}, 1, {}, 0);
    expectPlaces({std::nanl(""), 1}, 1, {}, 0);
    expectPlaces(withZeros({0.5L}), 0, {}, 0);
}

TEST(Roots, OfPolynomialsOfAnySizeAreFound) {
    expectPlaces(withZeros({0.5L}, 1e4000L), 1, {0.5L}, 0);
    expectPlaces(withZeros({0.5L}, 1e-4000L), 1, {0.5L}, 0);
    expectPlaces({-1, 0x1p50L}, 1, {0x1p-50L}, 0);
}

TEST(Roots, OfRandomPolynomialsAreThoseTheyWereMadeFrom) {
    std::mt19937 random(7);
    const auto uniform = [&] { return static_cast<real>(random() % 100000) / 100000; };
    for (int round = 0; round < 300; ++round) {
        std::vector<real> zeros;
        for (unsigned i = 0; i < 1 + random() % 6; ++i) zeros.push_back(2 * uniform() - 0.5L);
        std::vector<real> expected;
        real nearest = 1;
        for (std::size_t i = 0; i < zeros.size(); ++i) {
            for (std::size_t k = 0; k < i; ++k) nearest = std::min(nearest, std::fabs(zeros[i] - zeros[k]));
            nearest = std::min({nearest, std::fabs(zeros[i]), std::fabs(zeros[i] - 1)});
            if (zeros[i] > 0 && zeros[i] <= 1) expected.push_back(zeros[i]);
        }
        if (nearest < 0.01L) continue;
        std::sort(expected.begin(), expected.end());
        expectPlaces(withZeros(zeros, uniform() - 0.5L), 1, expected, 1e-11L);
    }
}

TEST(SignAfterBegin, IsThatOfTheFirstTermThatCounts) {
    EXPECT_EQ(signAfterBegin({2, -1}, 1), 1);
    EXPECT_EQ(signAfterBegin({0, -1}, 1), -1);
    EXPECT_EQ(signAfterBegin({0, -1}, -1), 1);
    EXPECT_EQ(signAfterBegin({1e-30L, -1}, 1), -1) << "lost in rounding";
    EXPECT_EQ(signAfterBegin({0, 0}, 1), 0);
}

TEST(ZeroWatch, SeesAZeroAtTheBorderOfTwoStepsOnce) {
    ZeroWatch watch(Crossing::Any);
    EXPECT_EQ(places(watch.zeros({-1, 1}, 1)), std::vector<real>{1});
    EXPECT_TRUE(watch.zeros({0, 1}, 1).empty());
    EXPECT_TRUE(watch.zeros({1, 1}, 1).empty());
}

TEST(ZeroWatch, SeesAZeroThatRoundingHasMovedBehindTheBorder) {
    ZeroWatch watch(Crossing::Any);
    EXPECT_TRUE(watch.zeros({-1, 1 - 0x1p-60L}, 1).empty());
    const std::vector<PolynomialRoot> found = watch.zeros({0x1p-62L, 1}, 1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].at, 0);
    EXPECT_TRUE(found[0].rising);
}

TEST(ZeroWatch, DoesNotCountAZeroAtTheStart) {
    ZeroWatch watch(Crossing::Any);
    EXPECT_TRUE(watch.zeros({0, 1}, 1).empty());
    EXPECT_TRUE(watch.zeros({0, 0, -1}, 1).size() == 1) << "now it falls below: what was above has changed its sign";
}

TEST(ZeroWatch, TakesOnlyTheDirectionThatIsAskedFor) {
    ZeroWatch up(Crossing::Up);
    ZeroWatch down(Crossing::Down);
    const std::vector<real> c = withZeros({0.25L, 0.5L, 0.75L});
    EXPECT_EQ(up.zeros(c, 1).size(), 2u);
    EXPECT_EQ(down.zeros(c, 1).size(), 1u);
}

}  // namespace
