// SPDX-License-Identifier: MIT
// Which names the two lists of the command select.
#include <gtest/gtest.h>

#include "report/layout.hpp"

using namespace zirk;

namespace {

TEST(Selection, IsEveryNameWithoutAList) { EXPECT_TRUE(Selection{}.selects("y")); }

TEST(Selection, IsANameInTheListOfIncluded) {
    const Selection selection{"y:z:", ""};
    EXPECT_TRUE(selection.selects("y"));
    EXPECT_TRUE(selection.selects("z"));
    EXPECT_FALSE(selection.selects("x"));
}

TEST(Selection, IsANameAtTheEndOfAnotherOne) {
    const Selection selection{"zy1:", ""};
    EXPECT_TRUE(selection.selects("y1"));
    EXPECT_FALSE(selection.selects("zy"));
}

TEST(Selection, IsNoNameInTheListOfExcluded) {
    Selection selection{"y:z:", "az:"};
    EXPECT_TRUE(selection.selects("y"));
    EXPECT_FALSE(selection.selects("z"));
    selection.printList = "";
    EXPECT_TRUE(selection.selects("y"));
    EXPECT_FALSE(selection.selects("az"));
}

TEST(Selection, IsOfVariablesOfAllKinds) {
    const Selection selection{"%1:x:y%1:", ""};
    EXPECT_FALSE(selection.selects("%0"));
    EXPECT_TRUE(selection.selects("%1"));
    EXPECT_FALSE(selection.selects("y"));
    EXPECT_TRUE(selection.selects("y%1"));
}

TEST(HiddenNames, CarryAPercentSign) {
    EXPECT_FALSE(hasPercent("y"));
    EXPECT_TRUE(hasPercent("y%1"));
    EXPECT_TRUE(hasPercent("%0"));
}

}  // namespace
