// SPDX-License-Identifier: MIT
// How many orders run before the first look at the sums.
#include "series/batching.hpp"

#include <gtest/gtest.h>

using namespace zirk;

namespace {

/// At a point that follows one with these ends.
Batching after(std::initializer_list<int> ends) {
    Batching batching;
    batching.beginPoint();
    for (const int orders : ends) batching.noteEnd(orders);
    batching.beginPoint();
    return batching;
}

TEST(Batching, RunsOneOrderAtATimeWhileNothingIsKnown) {
    Batching batching;
    batching.beginPoint();
    for (const int k : {0, 1, 7, 100}) EXPECT_EQ(batching.lastWith(k), k);
}

TEST(Batching, RunsOneOrderLessThanTheNextEndTook) {
    const Batching batching = after({8, 20});
    // Seven orders, 0 to 6, then one at a time to where the sums ended before.
    EXPECT_EQ(batching.lastWith(0), 6);
    EXPECT_EQ(batching.lastWith(5), 6);
    EXPECT_EQ(batching.lastWith(6), 6);
    EXPECT_EQ(batching.lastWith(7), 18);
    EXPECT_EQ(batching.lastWith(18), 18);
    EXPECT_EQ(batching.lastWith(19), 19);
}

TEST(Batching, RunsSixtyFourOrdersAtMost) {
    const Batching batching = after({150});
    EXPECT_EQ(batching.lastWith(0), 63);
    EXPECT_EQ(batching.lastWith(64), 127);
    EXPECT_EQ(batching.lastWith(128), 148);
}

TEST(Batching, KnowsOnlyThePointBefore) {
    Batching batching = after({8});
    batching.noteEnd(12);
    EXPECT_EQ(batching.lastWith(0), 6) << "what this point tells is for the next one";
    batching.beginPoint();
    EXPECT_EQ(batching.lastWith(0), 10);
    batching.beginPoint();
    EXPECT_EQ(batching.lastWith(0), 0) << "no sum has ended at the point before";
}

}  // namespace
