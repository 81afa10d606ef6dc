// SPDX-License-Identifier: MIT
// The record of a run before its first point, and its table of steps.
#include "expr/calculus.hpp"

#include <gtest/gtest.h>

using namespace zirk;

namespace {

TEST(CalculusTest, BeginsBeforeItsFirstPass) {
    const SeriesLimits limits;
    const Calculus calculus(limits, 0.25L);
    EXPECT_EQ(&calculus.limits, &limits);
    EXPECT_EQ(calculus.step, 0.25L);
    EXPECT_EQ(calculus.time, 0);
    EXPECT_EQ(calculus.stepStamp, 0);
    EXPECT_EQ(calculus.prevStepStamp, -1);
    EXPECT_EQ(calculus.orderUsed, 0);
    EXPECT_FALSE(calculus.forceRecompute);
}

TEST(CalculusTest, IsInForceOnlyAsLongAsItsScope) {
    const SeriesLimits limits;
    Calculus outer(limits, 1);
    Calculus inner(limits, 1);
    const Calculus::Scope scope(outer);
    {
        const Calculus::Scope nested(inner);
        EXPECT_EQ(&Calculus::current(), &inner);
    }
    EXPECT_EQ(&Calculus::current(), &outer);
}

TEST(StepTable, HoldsTheStepDividedByTheIndexHoweverItIsAsked) {
    const SeriesLimits limits;
    Calculus calculus(limits, static_cast<real>(0.1));
    EXPECT_EQ(calculus.stepTable[40], static_cast<real>(0.1) / 40) << "beyond any limit of terms";
    calculus.changeStep(1 / 3.0L);
    EXPECT_EQ(calculus.step, 1 / 3.0L) << "all digits";
    const real* factors = calculus.stepTable.upTo(33);
    EXPECT_EQ(factors[0], 0);
    for (int i = 1; i < 34; ++i) {
        EXPECT_EQ(factors[i], (1 / 3.0L) / static_cast<real>(i)) << i;
        EXPECT_EQ(calculus.stepTable[i], factors[i]) << i;
    }
}

}  // namespace
