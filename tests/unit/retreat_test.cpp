// SPDX-License-Identifier: MIT
// The points that a failure costs.
#include "series/retreat.hpp"

#include <gtest/gtest.h>

using namespace zirk;

namespace {

/// Points that do without until one tries again.
int pointsWithout(Retreat& retreat) {
    int points = 0;
    while (retreat.takesPoint()) ++points;
    return points;
}

TEST(Retreat, LastsTwiceAsLongAfterEachFailureUpTo64Points) {
    Retreat retreat;
    EXPECT_EQ(pointsWithout(retreat), 0);
    for (const int expected : {1, 2, 4, 8, 16, 32, 64, 64}) {
        retreat.fail();
        EXPECT_EQ(pointsWithout(retreat), expected);
    }
}

TEST(Retreat, IsShortAgainAfterASuccess) {
    Retreat retreat;
    retreat.fail();
    retreat.fail();
    EXPECT_EQ(pointsWithout(retreat), 2);
    retreat.succeed();
    retreat.fail();
    EXPECT_EQ(pointsWithout(retreat), 1);
}

}  // namespace
