// SPDX-License-Identifier: MIT
// The stiffness test on variables whose last terms are set by hand.
#include "classic/stiffness.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "expr/calculus.hpp"

using namespace zirk;

namespace {

class StiffnessTest : public testing::Test {
protected:
    StiffnessTest() {
        calculus_.setMaxOrder(34);
        calculus_.changeStep(1);
    }

    /// A variable whose last term is `term`: its index is 1, with one more term computed after it.
    Differential* enter(const std::string& name, real term) {
        auto* variable = new Differential(name, Expr::Ref(new Number(term)), 0);
        equations_.enter(variable);
        real ignored = 0;
        for (int k = 0; k <= 2; ++k) variable->DY(k, ignored);
        return variable;
    }

    std::string test(bool recheck = true) {
        log_.str("");
        recheck_ = recheck;
        stiffness_.test(recheck_);
        return log_.str();
    }

    Calculus calculus_;
    Calculus::Scope scope_{calculus_};
    EquationTable equations_;
    StiffnessSettings settings_;
    std::ostringstream log_;
    bool recheck_ = true;
    Stiffness stiffness_{settings_, equations_, log_};
};

TEST_F(StiffnessTest, ExponentsAreZeroBeforeTheFirstTest) {
    EXPECT_EQ(stiffness_.smallestExponent(), 0);
    EXPECT_EQ(stiffness_.largestExponent(), 0);
}

TEST_F(StiffnessTest, WithoutATermBothNamesAreEmptyAndTheExponentsZero) {
    equations_.enter(new Algebraic("x", Expr::Ref(new Number(1))));
    EXPECT_EQ(test(), "#(TST) Max()=0  Min()=0  Diff=0\n");
    EXPECT_TRUE(recheck_);
}

TEST_F(StiffnessTest, OfOneVariableHasNoDifference) {
    enter("y", -3);
    EXPECT_EQ(test(), "#(TST) Max(y)=2  Min(y)=2  Diff=0\n");
}

TEST_F(StiffnessTest, TiesStayWithTheFirstName) {
    enter("c", 4);
    enter("b", -4);
    enter("a", 1);
    enter("d", 1);
    EXPECT_EQ(test(), "#(TST) Max(b)=3  Min(a)=1  Diff=2\n");
}

TEST_F(StiffnessTest, AVariableWithItsFirstTermOnlyIsSkipped) {
    auto* variable = new Differential("a", Expr::Ref(new Number(1e9)), 1e9L);
    equations_.enter(variable);
    real ignored = 0;
    variable->DY(0, ignored);
    variable->DY(1, ignored);
    enter("b", 1);
    EXPECT_EQ(test(), "#(TST) Max(b)=1  Min(b)=1  Diff=0\n");
}

TEST_F(StiffnessTest, ADifferenceOf24ExponentsIsStiff) {
    enter("y", 1);
    enter("z", 1e-7L);
    EXPECT_EQ(test(), "#(COMP) System is STIFF!\n#(TST) Max(y)=1  Min(z)=-23  Diff=24\n");
    EXPECT_FALSE(recheck_);
    EXPECT_EQ(stiffness_.smallestExponent(), -23);
    EXPECT_EQ(stiffness_.largestExponent(), 1);
}

TEST_F(StiffnessTest, ADifferenceEqualToTheLimitIsNotStiff) {
    enter("y", 1);
    enter("z", 1e-7L);
    settings_.stiffExpDiff = 24;
    EXPECT_EQ(test(), "#(TST) Max(y)=1  Min(z)=-23  Diff=24\n");
    settings_.stiffExpDiff = 23;
    EXPECT_EQ(test(), "#(COMP) System is STIFF!\n#(TST) Max(y)=1  Min(z)=-23  Diff=24\n");
}

TEST_F(StiffnessTest, AStiffSystemIsTestedAgainOnRequestOnly) {
    enter("y", 1);
    enter("z", 1e-7L);
    test();
    EXPECT_EQ(test(false), "");
    settings_.stiffEveryStep = true;
    EXPECT_NE(test(false), "");
    settings_.stiffEveryStep = false;
    EXPECT_NE(test(true), "");
}

TEST_F(StiffnessTest, ASystemThatIsNotStiffIsTestedAlwaysAndKeepsTheRequest) {
    enter("y", 1);
    EXPECT_NE(test(false), "");
    EXPECT_FALSE(recheck_);
    EXPECT_NE(test(true), "");
    EXPECT_TRUE(recheck_);
}

TEST_F(StiffnessTest, AnInfiniteTermIsTheLargestWithExponentZero) {
    enter("y", std::numeric_limits<real>::infinity());
    enter("z", 8);
    EXPECT_EQ(test(), "#(TST) Max(y)=0  Min(z)=4  Diff=4\n");
}

TEST_F(StiffnessTest, ATermThatIsNotANumberIsNeitherTheLargestNorTheSmallest) {
    enter("y", std::numeric_limits<real>::quiet_NaN());
    EXPECT_EQ(test(), "#(TST) Max()=0  Min()=0  Diff=0\n");
    enter("z", 8);
    EXPECT_EQ(test(), "#(TST) Max(z)=4  Min(z)=4  Diff=0\n");
}

TEST_F(StiffnessTest, AZeroTermHasExponentZero) {
    enter("y", 0);
    enter("z", 1 << 20);
    EXPECT_EQ(test(), "#(COMP) System is STIFF!\n#(TST) Max(z)=21  Min(y)=0  Diff=21\n");
}

TEST_F(StiffnessTest, ANegativeLimitMakesEverySystemStiff) {
    enter("y", 1);
    settings_.stiffExpDiff = -1;
    EXPECT_EQ(test(), "#(COMP) System is STIFF!\n#(TST) Max(y)=1  Min(y)=1  Diff=0\n");
}

}  // namespace
