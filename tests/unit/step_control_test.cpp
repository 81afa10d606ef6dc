// SPDX-License-Identifier: MIT
// Step and order control where a run of the program does not show it.
#include "classic/step_control.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "expr/series_sum.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

class StepControlTest : public testing::Test {
protected:
    /// y' = rate & initial.
    Differential* enter(const std::string& name, const Expr::Ref& rate, real initial) {
        auto* variable = new Differential(name, rate, initial);
        equations_.enter(variable);
        return variable;
    }

    static Expr::Ref number(real value) { return Expr::Ref(new Number(value)); }

    /// What is told, as a list of words.
    class Told final : public ClassicObserver {
    public:
        void stepHalved(real step, real time) override { tell("halved", step, time); }
        void stepEnlarged(real step, real time) override { tell("enlarged", step, time); }

        std::ostringstream out;
        long count = 0;

    private:
        void tell(const char* what, real step, real time) {
            out << what << ' ' << step << ' ' << time << '\n';
            ++count;
        }
    };

    ClassicOptions options_;
    SeriesLimits& limits_ = options_.limits;
    Calculus calculus_{limits_, real{0.1}};
    Calculus::Scope scope_{calculus_};
    EquationTable equations_;
    Progress progress_;
    Told told_;
    TaylorStep taylor_{calculus_, equations_, Evaluation::NodeByNode};
    StepControl control_{calculus_, options_, taylor_, equations_, progress_, told_};
};

TEST_F(StepControlTest, TheFirstStepIsCutOnlyWhenItIsLargerThanTheEndTime) {
    options_.tMax = 0.05L;
    control_.clipFirstStep();
    EXPECT_EQ(calculus_.step, 0.05L);
    options_.tMax = 3;
    control_.clipFirstStep();
    EXPECT_EQ(calculus_.step, 0.05L);
}

TEST_F(StepControlTest, AnEndTimeThatIsNotANumberBecomesTheStep) {
    options_.tMax = std::numeric_limits<real>::quiet_NaN();
    control_.clipFirstStep();
    EXPECT_NE(calculus_.step, calculus_.step);
}

TEST_F(StepControlTest, APointAtTheLimitIsAcceptedAndOneBeyondIsNot) {
    calculus_.orderUsed = 30;
    EXPECT_FALSE(control_.rejectPoint());
    Differential* y = enter("y", number(1), 1);
    taylor_.evaluate();
    taylor_.accept();
    limits_.accuracy = 0;  // No term is ever negligible.
    taylor_.evaluate();
    EXPECT_EQ(y->ownOrder(), 34);
    progress_.previousTime = 0.5L;
    progress_.recheckStiffness = false;
    EXPECT_TRUE(control_.rejectPoint());
    EXPECT_EQ(calculus_.stepStamp, 2);
    EXPECT_EQ(calculus_.prevStepStamp, 2);
    EXPECT_EQ(calculus_.step, static_cast<real>(0.1) / 2);
    EXPECT_EQ(calculus_.time, 0.5L + static_cast<real>(0.1) / 2);
    EXPECT_TRUE(progress_.recheckStiffness);
    EXPECT_EQ(told_.out.str(), "halved 0.05 0.5\n");
}

TEST_F(StepControlTest, WithAFixedStepNoPointIsRejected) {
    options_.fixedStep = true;
    calculus_.orderUsed = 34;
    EXPECT_FALSE(control_.rejectPoint());
    EXPECT_EQ(calculus_.orderUsed, 34);
    EXPECT_EQ(told_.out.str(), "");
}

TEST_F(StepControlTest, EndlessHalvingEndsWithOneErrorWhenTheStepIsZero) {
    enter("y", number(1), 1);
    taylor_.evaluate();
    taylor_.accept();
    limits_.accuracy = 0;
    taylor_.evaluate();
    try {
        while (control_.rejectPoint()) taylor_.evaluate();
        FAIL() << "accepted";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), "#(ERR) No progress at time 0 with step 0: variable \"y\" does not converge\n");
        EXPECT_EQ(error.status(), 1);
    }
    // 0.1 is 1.6 * 2^-4 and the smallest number is u = 2^-16445: 3.2u is rounded to 3u after 16440 halvings, then
    // follow 2u (a tie, to even), u and zero (a tie again).
    EXPECT_EQ(told_.count, 16443);
}

TEST_F(StepControlTest, TermsOfAnEarlierPointDoNotKeepAVariableFromResting) {
    const Expr::Ref rate = number(1);  // The control goes on to look at it.
    Differential* y = enter("y", rate, 1);
    taylor_.evaluate();
    taylor_.accept();
    limits_.accuracy = 0;
    taylor_.evaluate();
    EXPECT_TRUE(control_.rejectPoint());
    limits_.accuracy = 1e-10L;
    taylor_.evaluate();
    EXPECT_FALSE(control_.rejectPoint());
    taylor_.accept();
    y->setRightHandSide(number(0));
    y->setInitialValue(0);
    taylor_.evaluate();
    EXPECT_EQ(y->ownOrder(), 34);
    EXPECT_FALSE(control_.rejectPoint());
}

TEST_F(StepControlTest, TheStepGrowsByAFifthForOneTwelfthOfTheTermsAtMost) {
    progress_.firstPoint = false;
    progress_.recheckStiffness = false;
    calculus_.orderUsed = 3;
    control_.enlarge();
    EXPECT_EQ(calculus_.step, static_cast<real>(0.1));
    EXPECT_FALSE(progress_.recheckStiffness);
    calculus_.orderUsed = 2;
    progress_.previousTime = 0.25L;
    control_.enlarge();
    EXPECT_EQ(calculus_.step, static_cast<real>(0.1) * static_cast<real>(1.2));
    EXPECT_TRUE(progress_.recheckStiffness);
    EXPECT_EQ(told_.out.str(), "enlarged 0.12 0.25\n");
}

TEST_F(StepControlTest, TheFirstPointNeverEnlargesTheStepNorAsksForATest) {
    progress_.recheckStiffness = false;
    control_.enlarge();
    EXPECT_EQ(calculus_.step, static_cast<real>(0.1));
    EXPECT_FALSE(progress_.recheckStiffness);
}

TEST_F(StepControlTest, AFixedStepDoesNotGrowButAsksForATest) {
    options_.fixedStep = true;
    progress_.firstPoint = false;
    progress_.recheckStiffness = false;
    calculus_.orderUsed = 1;
    control_.enlarge();
    EXPECT_EQ(calculus_.step, static_cast<real>(0.1));
    EXPECT_TRUE(progress_.recheckStiffness);
    EXPECT_EQ(told_.out.str(), "");
}

TEST_F(StepControlTest, ATwelfthOfANegativeNumberOfTermsIsTruncatedTowardsZero) {
    progress_.firstPoint = false;
    limits_.maxOrder = -6;
    control_.enlarge();
    EXPECT_EQ(told_.out.str(), "enlarged 0.12 0\n");
}

TEST_F(StepControlTest, TheLastStepIsCutInAFixedOrderOfOperations) {
    options_.tMax = 1;
    calculus_.time = 0.95L;
    const real step = calculus_.step;
    const real beyond = calculus_.time + step;
    control_.advance(true);
    EXPECT_EQ(progress_.previousTime, 0.95L);
    EXPECT_EQ(calculus_.time, 1);
    EXPECT_EQ(calculus_.step, (step - beyond) + 1);
    EXPECT_TRUE(progress_.isLastStep);
    EXPECT_FALSE(progress_.firstPoint);
    EXPECT_EQ(calculus_.stepStamp, 1);
    EXPECT_EQ(calculus_.prevStepStamp, 0);
}

TEST_F(StepControlTest, ATimeThatReachesTheEndExactlyIsCutAsWell) {
    calculus_.changeStep(0.5L);
    calculus_.time = 0.5L;
    control_.advance(true);
    EXPECT_EQ(calculus_.step, 0.5L);
    EXPECT_TRUE(progress_.isLastStep);
}

TEST_F(StepControlTest, AZeroStepIsAnErrorOnlyWhenNothingElseCanEndTheRun) {
    calculus_.changeStep(0);
    EXPECT_NO_THROW(control_.advance(false));
    EXPECT_THROW(control_.advance(true), Error);
    calculus_.time = options_.tMax;
    EXPECT_NO_THROW(control_.advance(true));
}

/// Why the time stood still for too many passes.
std::string standstillOf(const std::string& text, real endTime, real step = 0.1L) {
    ClassicOptions options;
    options.tMax = endTime;
    options.step = step;
    ClassicIntegrator run(Model::fromText(text), options);
    try {
        while (run.next() != ClassicIntegrator::Pass::End) {
        }
    } catch (const RunError& error) {
        return error.text().substr(error.text().find(" passes") + 7);
    }
    return "an end";
}

TEST(StandstillTest, BlamesAVariableOnlyForAStepThatWasLargeEnoughBefore) {
    // Rejected at its first point, and never again: no step near 0.1 moves a time that ends at 1e30.
    EXPECT_EQ(standstillOf("y' = -50*y & 1;", 1e30L), ": the step is too small for the time or the end time\n");
    EXPECT_EQ(standstillOf("y' = -1/y & 1;", 2), ": variable \"y\" needs smaller and smaller steps\n");
    // The step grows from next to nothing before it shrinks.
    EXPECT_EQ(standstillOf("y' = -1/y & 1;", 2, 1e-30L), ": variable \"y\" needs smaller and smaller steps\n");
}

TEST(StandstillTest, LastsOnlyWhenSoManyPassesInARowMoveNothing) {
    Standstill standstill;
    EXPECT_FALSE(standstill.lasts(1, 2));
    for (int i = 0; i < Standstill::mostPasses - 2; ++i) ASSERT_FALSE(standstill.lasts(1, 2));
    EXPECT_TRUE(standstill.lasts(1, 2));
}

TEST(StandstillTest, MeasuresMotionAgainstTheLargerOfTimeAndEndTime) {
    constexpr real infinite = std::numeric_limits<real>::infinity();
    const auto endsWithin = [](real from, real step, real endTime) {
        Standstill standstill;
        real time = from;
        for (int i = 0; i < Standstill::mostPasses; ++i) {
            if (standstill.lasts(time, endTime)) return true;
            time += step;
        }
        return standstill.lasts(time, endTime);
    };
    // 2^-80 each: 100000 of them make 2^-63.4.
    const real tiny = std::ldexp(real{1}, -80);
    EXPECT_TRUE(endsWithin(0, tiny, 1));
    EXPECT_FALSE(endsWithin(0, 2 * tiny, 1)) << "together more than 2^-63";
    EXPECT_TRUE(endsWithin(0, 2 * tiny, 2));
    EXPECT_TRUE(endsWithin(0, 2 * tiny, -2));
    EXPECT_FALSE(endsWithin(0, tiny, infinite)) << "measured against the time itself";
    EXPECT_TRUE(endsWithin(1, tiny, infinite)) << "below its last bit";
    EXPECT_TRUE(endsWithin(2, std::ldexp(real{1}, -90), 1));
}

TEST(StandstillTest, IsForgivenWhereTheTimeMayStand) {
    Standstill standstill;
    for (int i = 0; i < 3 * Standstill::mostPasses; ++i) {
        standstill.forgive();
        ASSERT_FALSE(standstill.lasts(1, 1));
    }
}

/// Order after terms 1, 0, 0, ... times `start`, with four negligible ones wanted.
int orderOfConstant(real start, real accuracy) {
    SeriesLimits limits;
    limits.accuracy = accuracy;
    const Calculus calculus(limits, 0);
    SeriesSum sum;
    sum.begin(start, calculus);
    while (sum.wantsMore(calculus)) sum.add(0, calculus);
    return sum.order();
}

TEST(NegligibleTerms, AreZerosAlsoWhereSumTimesAccuracyVanishes) {
    EXPECT_EQ(orderOfConstant(1, 1e-10L), 1);
    EXPECT_EQ(orderOfConstant(1e-4945L, 1e-10L), 1) << "the product is below the smallest number";
    EXPECT_EQ(orderOfConstant(-1e-4945L, 1e-10L), 1);
    EXPECT_EQ(orderOfConstant(0, 1e-10L), 34) << "a sum of zeros";
    EXPECT_EQ(orderOfConstant(1, 0), 34) << "no accuracy is wanted";
    EXPECT_EQ(orderOfConstant(1e-4945L, -1e-10L), 34);
}

TEST(NegligibleTerms, AreNotThoseBelowTheSmallestProductThatAreNotZero) {
    const SeriesLimits limits;
    const Calculus calculus(limits, 0);
    SeriesSum sum;
    sum.begin(1e-4940L, calculus);
    sum.add(1e-4945L, calculus);
    EXPECT_EQ(sum.negligible, 0);
    sum.add(0, calculus);
    EXPECT_EQ(sum.negligible, 1);
}

}  // namespace
