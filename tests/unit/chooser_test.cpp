// SPDX-License-Identifier: MIT
// Which points are left to the nodes.
#include "series/chooser.hpp"

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Choice : public NodeTest {
protected:
    /// One letter for each of the following points: p for the program, n for the nodes.
    std::string points(Chooser& chooser, int count) {
        std::string who;
        for (int i = 0; i < count; ++i) {
            nextStep();
            const bool summed = chooser.sumAll();
            who += summed ? 'p' : 'n';
            for (Differential& variable : system.equations) valueOf(&variable);
        }
        return who;
    }
};

TEST_F(Choice, LeavesTheFirstPointsToTheNodes) {
    prepareText(*this, "y' = -y & 1;");
    Chooser chooser(calculus, system.equations);
    EXPECT_FALSE(chooser.sumAll()) << "no point has begun yet";
    // Each takes more than ten terms.
    EXPECT_EQ(points(chooser, 7), "nnnpppp");
}

TEST_F(Choice, LeavesNoMoreThanFourPointsToTheNodes) {
    prepareText(*this, "y' = 0 & 1;");
    Chooser chooser(calculus, system.equations);
    EXPECT_EQ(points(chooser, 7), "nnnnppp");
}

TEST_F(Choice, LeavesOnePointOfManyTermsToTheNodes) {
    calculus.changeStep(5);
    prepareText(*this, "y' = -y & 1;");
    Chooser chooser(calculus, system.equations);
    EXPECT_EQ(points(chooser, 4), "nppp");
}

TEST_F(Choice, TakesTheProgramAtOnceForHighOrders) {
    limits.maxOrder = 61;
    prepareText(*this, "y' = -y & 1;");
    Chooser chooser(calculus, system.equations);
    EXPECT_EQ(points(chooser, 3), "ppp");
    EXPECT_EQ(chooser.term(0, 0), system.equations.find("y")->startValue());
    EXPECT_EQ(chooser.term(0, 1), -chooser.term(0, 0) * calculus.step);
    EXPECT_EQ(chooser.highestTerm(0), system.equations.find("y")->ownOrder() + limits.zeroTerms - 1);
}

TEST_F(Choice, NeedsLimitsThatWantTerms) {
    prepareText(*this, "y' = -y & 1;");
    limits.maxOrder = 1;
    Chooser chooser(calculus, system.equations);
    EXPECT_EQ(points(chooser, 7), "nnnnnnn");
    limits.maxOrder = 30;
    limits.zeroTerms = 0;
    EXPECT_EQ(points(chooser, 7), "nnnnnnn");
    limits.zeroTerms = 4;
    system.equations.find("y")->setInitialValue(1);
    EXPECT_EQ(points(chooser, 6), "nnnppp") << "points that were no choice do not count";
}

TEST_F(Choice, LeavesMoreAndMorePointsToTheNodesWhereTermsAreNotFinite) {
    limits.maxOrder = 61;
    prepareText(*this, "y' = -y/c & 1; c = 0;");
    Chooser chooser(calculus, system.equations);
    // Points 1, 3 and 6 fail, and one, two, then four points after them are left alone, although all is finite from 7
    // on.
    EXPECT_EQ(points(chooser, 6), "nnnnnn");
    system.equations.find("c")->setRightHandSide(number(2));
    system.equations.find("c")->setInitialValue(2);
    system.equations.find("y")->setInitialValue(1);
    EXPECT_EQ(points(chooser, 6), "nnnnpp");
}

}  // namespace
