// SPDX-License-Identifier: MIT
// Which variables with nothing but zero terms count for the rejection of a point: one case for each clause.
#include "classic/resting.hpp"

#include <memory>

#include "classic/taylor_step.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Passes over a system, by the nodes and by the program; with so many terms the program runs from the first series on.
class Resting : public NodeTest, public ::testing::WithParamInterface<Evaluation> {
protected:
    static constexpr int limit = 66;

    void prepare(const std::string& text) {
        limits.maxOrder = limit + limits.zeroTerms;
        // An eighth is exact, and so is all that is made of it here.
        calculus.changeStep(0.125);
        prepareText(*this, text);
        taylor_ = std::make_unique<TaylorStep>(calculus, system.equations, GetParam());
        resting_ = std::make_unique<RestingVariables>(system.equations);
        taylor_->evaluate();
        taylor_->accept();
        calculus.time = calculus.step;
    }

    /// The first variable that counts and is beyond the limit after a pass; empty when there is none.
    std::string counting(int beyond = limit) {
        taylor_->evaluate();
        return culprit(beyond);
    }

    std::string culprit(int beyond) const {
        const std::size_t place = resting_->count(beyond).culprit;
        return place != RestingVariables::nobody ? system.equations.list()[place]->name() : "";
    }

    std::string countingIn(const std::string& text) {
        prepare(text);
        return counting();
    }

    std::unique_ptr<TaylorStep> taylor_;
    std::unique_ptr<RestingVariables> resting_;
};

INSTANTIATE_TEST_SUITE_P(BothWays, Resting, ::testing::Values(Evaluation::NodeByNode, Evaluation::Compiled),
                         [](const auto& way) {
                             return way.param == Evaluation::NodeByNode ? "NodeByNode" : "Compiled";
                         });

// Nothing moves it.

TEST_P(Resting, IsAVariableThatReachesNothing) { EXPECT_EQ(countingIn("y' = 0;"), ""); }

TEST_P(Resting, IsOneThatReachesAnAlgebraicEquationThatStaysWhereItIs) {
    // Other than zero: only standing still helps. The sum is zero, but not as it is written.
    EXPECT_EQ(countingIn("y' = a - b; a = trunc(t) + 1; b = 1;"), "");
}

TEST_P(Resting, DoesNotAskWhatADefinitionIsMadeOf) {
    EXPECT_EQ(countingIn("none = 0; F = none*t + 1; y' = F - c; c' = 0 & 1;"), "");
}

TEST_P(Resting, IsNotOneThatReachesAMovingAlgebraicEquation) { EXPECT_EQ(countingIn("y' = x; x = t;"), "y"); }

TEST_P(Resting, IsNotOneThatReachesMotionThroughAnotherVariable) {
    EXPECT_EQ(countingIn("a' = b; b' = x; x = t;"), "a");
}

TEST_P(Resting, IsNotOneWhoseTimeNodeMoved) {
    prepare("y' = t - t;");
    EXPECT_EQ(counting(), "") << "nobody asked for the value of the time nodes";
    real value = 0;
    system.equations.find("y")->rightHandSide()->Value(value);
    EXPECT_EQ(culprit(limit), "y");
}

// Nothing feeds it, though m moves all the time.

TEST_P(Resting, IsOneWhoseRightHandSideIsZeroAsLongAsItIs) {
    limits.simplifySmall = false;
    prepare(
        "a' = m*a; b' = b*m; c' = c/m; d' = m*(d + z); e' = m*(z - e); f' = m*(-f); g' = m*trunc(g); h' = m*0;"
        " i' = m*z; m = t + 1; z = 0;");
    EXPECT_EQ(counting(), "");
}

TEST_P(Resting, IsNotOneWhoseZeroComesFromADifference) {
    EXPECT_EQ(countingIn("y' = m*(c - c); m = t; c' = 0 & 1;"), "y");
}

TEST_P(Resting, IsNotOneWhoseZeroComesFromASum) {
    EXPECT_EQ(countingIn("y' = m*(c + d); m = t; c' = 0 & 1; d' = 0 & -1;"), "y");
}

TEST_P(Resting, IsNotOneWithANumeratorThatOnlyHappensToBeZero) {
    EXPECT_EQ(countingIn("y' = (c - c)/m; m = t + 1; c' = 0 & 1;"), "y");
}

TEST_P(Resting, IsNotOneWithTimeAsItsZero) { EXPECT_EQ(countingIn("y' = m*(t - t); m = t + 1;"), "y"); }

TEST_P(Resting, IsNotOneWithAFactorThatEndsOtherThanZero) { EXPECT_EQ(countingIn("y' = x*m; x = t; m = t + 1;"), "y"); }

TEST_P(Resting, IsNotOneWithAFactorThatBeganOtherThanZero) {
    EXPECT_EQ(countingIn("y' = (c - c)*x; x = 1 - 8*t; c' = 0 & 1;"), "y");
    EXPECT_EQ(system.equations.find("x")->result(), 0) << "what the case is about";
}

TEST_P(Resting, IsEveryoneInALoopThatNobodyFeeds) { EXPECT_EQ(countingIn("y' = m*z; z' = m*y; m = t + 1;"), ""); }

TEST_P(Resting, IsNobodyBehindOneThatIsFed) {
    EXPECT_EQ(countingIn("a' = m*b; b' = m*(c - c); m = t + 1; c' = 0 & 1;"), "a");
}

// Zeros that come from underflow.

TEST_P(Resting, IsNotOneThatHadOtherTermsInAnEarlierPassOfThePoint) {
    prepare("y' = x*x; x' = 1;");
    EXPECT_EQ(counting(3), "y") << "terms 0, 0, 0, h^3/3";
    taylor_->repeat();
    calculus.changeStep(1e-2500L);
    EXPECT_EQ(counting(3), "y") << "h^3 is zero now";
    EXPECT_TRUE(system.equations.find("y")->onlyZeroTerms());
    resting_->beginPoint();
    taylor_->repeat();
    EXPECT_EQ(counting(3), "") << "another point";
}

TEST_P(Resting, IsNobodyUnderALimitBelowZero) {
    prepare("y' = 0;");
    EXPECT_EQ(counting(-1), "y");
}

}  // namespace
