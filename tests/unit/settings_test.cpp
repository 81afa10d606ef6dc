// SPDX-License-Identifier: MIT
// Defaults of every setting, before and after the reset that begins a run, and the table that names them.
#include "driver/settings.hpp"

#include <gtest/gtest.h>

#include <set>

#include "driver/setting_table.hpp"
#include "driver/usage.hpp"

using namespace zirk;

namespace {

TEST(SettingsDefaults, OfOrderAndAccuracyAreResetByTheRun) {
    Settings s;
    EXPECT_EQ(s.classic.limits.maxOrder, 15);
    EXPECT_EQ(s.classic.limits.zeroTerms, 4);
    s.classic.limits.accuracy = 1;
    s.reset();
    EXPECT_EQ(s.classic.limits.maxOrder, 34);
    EXPECT_EQ(s.classic.limits.accuracy, static_cast<real>(1e-10));
    EXPECT_NE(s.classic.limits.accuracy, 1e-10L) << "the text carries double precision";
    EXPECT_NE(usageText(s).find("  -o       sets maximum order (default 34)\n"), std::string::npos);
}

TEST(SettingsDefaults, OfPrinting) {
    const Settings s;
    EXPECT_EQ(s.numbers.printWidth, 15);
    EXPECT_EQ(s.numbers.printPrecision, 11);
    EXPECT_EQ(s.rows.printEvery, 0);
    EXPECT_TRUE(s.layout.printOrderColumn);
    EXPECT_FALSE(s.layout.printTempEquations);
    EXPECT_FALSE(s.rows.printOnlyTmax);
    EXPECT_EQ(s.selection.printList, "");
    EXPECT_EQ(s.selection.noPrintList, "");
    EXPECT_FALSE(s.dumpTree);
    EXPECT_EQ(s.dumpDY, 0);
}

TEST(SettingsDefaults, OfPlots) {
    const Settings s;
    EXPECT_FALSE(s.plot.gnuplotRequested);
    EXPECT_EQ(s.layout.gnuplotOutput, "x11");
    EXPECT_EQ(s.plot.gnuplotFile, "output");
    EXPECT_EQ(s.layout.points3D, 0);
    EXPECT_FALSE(s.layout.all3DValues);
}

TEST(SettingsDefaults, OfTheIntegration) {
    const Settings s;
    EXPECT_EQ(s.classic.step, static_cast<real>(0.1));
    EXPECT_NE(s.classic.step, 0.1L);
    EXPECT_EQ(s.classic.tMax, 1);
    EXPECT_FALSE(s.classic.fixedStep);
    EXPECT_FALSE(s.classic.limits.useAllTerms);
    EXPECT_TRUE(s.classic.limits.simplifySmall);
}

TEST(SettingsDefaults, OfTheTests) {
    const Settings s;
    EXPECT_EQ(s.classic.limits.steadyStop, 0U);
    EXPECT_EQ(s.classic.period.periodicName, "");
    EXPECT_EQ(s.classic.period.periodicCount, 0);
    EXPECT_EQ(s.classic.period.periodicDeriv, 0);
    EXPECT_EQ(s.classic.period.periodicBuffer, 50);
    EXPECT_EQ(s.classic.stiffness.stiffExpDiff, 20);
    EXPECT_FALSE(s.classic.stiffness.stiffEveryStep);
}

TEST(SettingTable, FindsEveryOptionAndEveryKeywordOnce) {
    std::string letters;
    std::set<std::string> keywords;
    for (const SettingRow& row : settingRows()) {
        if (row.letter != 0) letters += row.letter;
        EXPECT_EQ(findOption(row.letter), row.apply != nullptr ? &row : nullptr) << row.letter;
        if (row.keyword == nullptr) continue;
        EXPECT_TRUE(keywords.insert(row.keyword).second) << row.keyword;
        EXPECT_EQ(findKeyword(row.keyword), &row);
        EXPECT_TRUE(row.apply == nullptr || row.echo != nullptr) << row.keyword;
    }
    EXPECT_EQ(letters, "3AadDfFGgiLoprRsStUvwxXzOPNT") << "the order of the usage text";
    EXPECT_EQ(keywords.size(), 23U);
}

TEST(SettingTable, HasNothingForOtherNames) {
    // The version is no setting though the usage text tells it.
    for (const char letter : {'v', 'h', 'W', '\0'}) EXPECT_EQ(findOption(letter), nullptr);
    for (const char* keyword : {"", "TMA", "TMAXX", "tmax"}) EXPECT_EQ(findKeyword(keyword), nullptr) << keyword;
    ASSERT_NE(findKeyword("GMPWORDSIZE"), nullptr);
    EXPECT_EQ(findKeyword("GMPWORDSIZE")->apply, nullptr) << "known, and refused";
}

}  // namespace
