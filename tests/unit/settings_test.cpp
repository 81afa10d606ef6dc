// SPDX-License-Identifier: MIT
// Defaults of every setting, before and after the reset that begins a run.
#include "driver/settings.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "driver/usage.hpp"

using namespace zirk;

namespace {

TEST(SettingsDefaults, OfOrderAndAccuracyAreResetByTheRun) {
    Settings s;
    EXPECT_EQ(s.maxOrder, 15);
    EXPECT_EQ(s.zeroTerms, 4);
    s.accuracy = 1;
    s.reset();
    EXPECT_EQ(s.maxOrder, 34);
    EXPECT_EQ(s.accuracy, static_cast<real>(1e-10));
    EXPECT_NE(s.accuracy, 1e-10L) << "the text carries double precision";
    EXPECT_NE(usageText(s).find("  -o       sets maximum order (default 34)\n"), std::string::npos);
}

TEST(SettingsDefaults, OfPrinting) {
    const Settings s;
    EXPECT_EQ(s.printWidth, 15);
    EXPECT_EQ(s.printPrecision, 11);
    EXPECT_EQ(s.printEvery, 0);
    EXPECT_TRUE(s.printOrderColumn);
    EXPECT_FALSE(s.printTempEquations);
    EXPECT_FALSE(s.printOnlyTmax);
    EXPECT_EQ(s.printList, "");
    EXPECT_EQ(s.noPrintList, "");
    EXPECT_FALSE(s.dumpTree);
    EXPECT_EQ(s.dumpDY, 0);
}

TEST(SettingsDefaults, OfPlots) {
    const Settings s;
    EXPECT_FALSE(s.gnuplotRequested);
    EXPECT_EQ(s.gnuplotOutput, "x11");
    EXPECT_EQ(s.gnuplotFile, "output");
    EXPECT_EQ(s.points3D, 0);
    EXPECT_FALSE(s.all3DValues);
}

TEST(SettingsDefaults, OfTheIntegration) {
    const Settings s;
    EXPECT_EQ(s.step, static_cast<real>(0.1));
    EXPECT_NE(s.step, 0.1L);
    EXPECT_EQ(s.tMax, 1);
    EXPECT_EQ(s.time, 0);
    EXPECT_FALSE(s.fixedStep);
    EXPECT_FALSE(s.useAllTerms);
    EXPECT_TRUE(s.simplifySmall);
    EXPECT_EQ(s.orderUsed, 0);
    EXPECT_EQ(s.stepStamp, 0);
    EXPECT_EQ(s.prevStepStamp, -1);
    EXPECT_FALSE(s.forceRecompute);
}

TEST(SettingsDefaults, OfTheTests) {
    const Settings s;
    EXPECT_EQ(s.steadyStop, 0U);
    EXPECT_EQ(s.periodicName, "");
    EXPECT_EQ(s.periodicCount, 0);
    EXPECT_EQ(s.periodicDeriv, 0);
    EXPECT_EQ(s.periodicBuffer, 50);
    EXPECT_EQ(s.stiffExpDiff, 20);
    EXPECT_FALSE(s.stiffEveryStep);
}

TEST(SettingsDefaults, OfSharedConstantsAreExtended) {
    const Settings s;
    EXPECT_EQ(s.zero, 0);
    EXPECT_EQ(s.one, 1);
    EXPECT_EQ(s.pi, 0xc.90fdaa22168c235p-2L);
    EXPECT_EQ(s.twoPi, 0xc.90fdaa22168c235p-1L);
    EXPECT_EQ(s.halfPi, 0xc.90fdaa22168c235p-3L);
    EXPECT_EQ(s.ln2, 0xb.17217f7d1cf79acp-4L);
}

TEST(SettingsDefaults, LeaveBothTablesEmpty) {
    const Settings s;
    EXPECT_EQ(s.equations.size(), 0U);
    EXPECT_TRUE(s.initialValues.empty());
}

TEST(StepTable, HoldsTheStepDividedByTheIndex) {
    Settings s;
    s.reset();
    EXPECT_EQ(s.stepTable.size(), 34);
    EXPECT_EQ(s.stepTable[0], 0);
    for (int i = 1; i < 34; ++i) EXPECT_EQ(s.stepTable[i], s.step / static_cast<real>(i)) << i;
    s.changeStep(1 / 3.0L);
    EXPECT_EQ(s.stepTable[1], 1 / 3.0L) << "the integrator's steps keep full precision";
    s.setStep(static_cast<double>(1 / 3.0L));
    EXPECT_EQ(s.stepTable[1], static_cast<real>(1 / 3.0)) << "steps from text do not";
    EXPECT_EQ(s.stepTable.size(), 34);
}

}  // namespace
