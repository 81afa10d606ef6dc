// SPDX-License-Identifier: MIT
// The stiffness test on variables whose last terms are set by hand.
#include "classic/stiffness.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "expr/calculus.hpp"

using namespace zirk;

namespace {

class StiffnessOf : public testing::Test {
protected:
    /// A variable whose last term is `term`: its index is 1, with one more term computed after it.
    Differential* enter(const std::string& name, real term) {
        auto* variable = new Differential(name, Expr::Ref(new Number(term)), 0);
        equations_.enter(variable);
        real ignored = 0;
        for (int k = 0; k <= 2; ++k) variable->DY(k, ignored);
        return variable;
    }

    /// The result as the command writes it; empty when no test is due.
    std::string test(bool recheck = true) {
        recheck_ = recheck;
        if (!stiffness_.isDue(recheck_)) return "";
        stiffness_.test(recheck_);
        const StiffnessTest& test = stiffness_.last();
        std::ostringstream out;
        out << (test.isStiff ? "STIFF " : "") << "Max(" << test.largestName << ")=" << test.largestExponent << " Min("
            << test.smallestName << ")=" << test.smallestExponent << " Diff=" << test.difference;
        return out.str();
    }

    SeriesLimits limits_;
    Calculus calculus_{limits_, 1};
    Calculus::Scope scope_{calculus_};
    EquationTable equations_;
    StiffnessOptions settings_;
    bool recheck_ = true;
    TaylorStep taylor_{calculus_, equations_, Evaluation::NodeByNode};
    Stiffness stiffness_{settings_, equations_, taylor_};
};

TEST_F(StiffnessOf, ExponentsAreZeroBeforeTheFirstTest) {
    EXPECT_EQ(stiffness_.last().smallestExponent, 0);
    EXPECT_EQ(stiffness_.last().largestExponent, 0);
}

TEST_F(StiffnessOf, WithoutATermBothNamesAreEmptyAndTheExponentsZero) {
    equations_.enter(new Algebraic("x", Expr::Ref(new Number(1))));
    EXPECT_EQ(test(), "Max()=0 Min()=0 Diff=0");
    EXPECT_TRUE(recheck_);
}

TEST_F(StiffnessOf, OfOneVariableHasNoDifference) {
    enter("y", -3);
    EXPECT_EQ(test(), "Max(y)=2 Min(y)=2 Diff=0");
}

TEST_F(StiffnessOf, TiesStayWithTheFirstName) {
    enter("c", 4);
    enter("b", -4);
    enter("a", 1);
    enter("d", 1);
    EXPECT_EQ(test(), "Max(b)=3 Min(a)=1 Diff=2");
}

TEST_F(StiffnessOf, AVariableWithItsFirstTermOnlyIsSkipped) {
    auto* variable = new Differential("a", Expr::Ref(new Number(1e9)), 1e9L);
    equations_.enter(variable);
    real ignored = 0;
    variable->DY(0, ignored);
    variable->DY(1, ignored);
    enter("b", 1);
    EXPECT_EQ(test(), "Max(b)=1 Min(b)=1 Diff=0");
}

TEST_F(StiffnessOf, ADifferenceOf24ExponentsIsStiff) {
    enter("y", 1);
    enter("z", 1e-7L);
    EXPECT_EQ(test(), "STIFF Max(y)=1 Min(z)=-23 Diff=24");
    EXPECT_FALSE(recheck_);
    EXPECT_EQ(stiffness_.last().smallestExponent, -23);
    EXPECT_EQ(stiffness_.last().largestExponent, 1);
}

TEST_F(StiffnessOf, ADifferenceEqualToTheLimitIsNotStiff) {
    enter("y", 1);
    enter("z", 1e-7L);
    settings_.stiffExpDiff = 24;
    EXPECT_EQ(test(), "Max(y)=1 Min(z)=-23 Diff=24");
    settings_.stiffExpDiff = 23;
    EXPECT_EQ(test(), "STIFF Max(y)=1 Min(z)=-23 Diff=24");
}

TEST_F(StiffnessOf, AStiffSystemIsTestedAgainOnRequestOnly) {
    enter("y", 1);
    enter("z", 1e-7L);
    test();
    EXPECT_EQ(test(false), "");
    settings_.stiffEveryStep = true;
    EXPECT_NE(test(false), "");
    settings_.stiffEveryStep = false;
    EXPECT_NE(test(true), "");
}

TEST_F(StiffnessOf, ASystemThatIsNotStiffIsTestedAlwaysAndKeepsTheRequest) {
    enter("y", 1);
    EXPECT_NE(test(false), "");
    EXPECT_FALSE(recheck_);
    EXPECT_NE(test(true), "");
    EXPECT_TRUE(recheck_);
}

TEST_F(StiffnessOf, AnInfiniteTermIsTheLargestWithExponentZero) {
    enter("y", std::numeric_limits<real>::infinity());
    enter("z", 8);
    EXPECT_EQ(test(), "Max(y)=0 Min(z)=4 Diff=4");
}

TEST_F(StiffnessOf, ATermThatIsNotANumberIsNeitherTheLargestNorTheSmallest) {
    enter("y", std::numeric_limits<real>::quiet_NaN());
    EXPECT_EQ(test(), "Max()=0 Min()=0 Diff=0");
    enter("z", 8);
    EXPECT_EQ(test(), "Max(z)=4 Min(z)=4 Diff=0");
}

TEST_F(StiffnessOf, AZeroTermHasExponentZero) {
    enter("y", 0);
    enter("z", 1 << 20);
    EXPECT_EQ(test(), "STIFF Max(z)=21 Min(y)=0 Diff=21");
}

TEST_F(StiffnessOf, ANegativeLimitMakesEverySystemStiff) {
    enter("y", 1);
    settings_.stiffExpDiff = -1;
    EXPECT_EQ(test(), "STIFF Max(y)=1 Min(y)=1 Diff=0");
}

}  // namespace
