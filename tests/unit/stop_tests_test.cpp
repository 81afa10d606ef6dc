// SPDX-License-Identifier: MIT
// The period test and the steady count, point by point.
#include "classic/stop_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "classic/taylor_step.hpp"

using namespace zirk;

namespace {

/// A right-hand side with any value.
class Rate final : public Expr {
public:
    Rate() : Expr(ExprType::Number) {}
    void GetDY(int, real& out) override { out = 0; }
    void Result(real& out, bool) override { out = value; }
    void MakeDerivative() override {}
    void InitValue(real& out) override { out = 0; }
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream&, int) const override {}

    real value = 0;
};

class PeriodTest : public testing::Test {
protected:
    /// One point at which the watched variable has this value and its right-hand side that one.
    bool point(real value, real rate) {
        ++calculus_.stepStamp;
        if (!period_) period_ = std::make_unique<Period>(options_, limits_, watched_);
        rate_->value = rate;
        shown_->value = value;
        return period_->found();
    }

    SeriesLimits limits_;
    Calculus calculus_{limits_, real{0.1}};
    Calculus::Scope scope_{calculus_};
    PeriodOptions options_;
    Rate* rate_ = new Rate;
    Rate* shown_ = new Rate;

    /// Shows a value of its own, whatever its right-hand side.
    class Watched final : public Differential {
    public:
        Watched(const Ref& rightHandSide, Rate* shown)
            : Differential("y", rightHandSide, 0), shown_(shown), keep_(shown) {}
        void Result(real& out, bool) override { out = shown_->value; }

    private:
        Rate* shown_;
        Ref keep_;
    };
    Watched& watched_ = *new Watched(Expr::Ref(rate_), shown_);
    Expr::Ref keepWatched_{&watched_};
    std::unique_ptr<Period> period_;
};

TEST_F(PeriodTest, IsFoundWhenAllValuesWereMetEquallyOftenAndTheLastOneNow) {
    EXPECT_FALSE(point(1, 0));
    EXPECT_FALSE(point(2, 0));
    EXPECT_FALSE(point(1, 0));  // (1, 0)
    EXPECT_TRUE(point(2, 0));   // (1, 1)
}

TEST_F(PeriodTest, IsNotFoundWhenTheEqualCountComesWithAnEarlierValue) {
    EXPECT_FALSE(point(1, 0));
    EXPECT_FALSE(point(2, 0));
    EXPECT_FALSE(point(2, 0));  // (0, 1)
    EXPECT_FALSE(point(1, 0));  // (1, 1), but the first value
    EXPECT_FALSE(point(2, 0));  // (1, 2)
    EXPECT_FALSE(point(1, 0));  // (2, 2), but the first value
    EXPECT_FALSE(point(1, 0));  // (3, 2)
    EXPECT_TRUE(point(2, 0));   // (3, 3)
}

TEST_F(PeriodTest, OfOneValueIsFoundAtItsFirstReturn) {
    EXPECT_FALSE(point(1, 0));
    EXPECT_TRUE(point(1, 0));
}

TEST_F(PeriodTest, ComparesValuesStrictlyWithTheAccuracy) {
    limits_.accuracy = 0.25L;
    EXPECT_FALSE(point(1, 0));
    EXPECT_FALSE(point(1.25L, 0));   // Recorded: the difference equals the accuracy.
    EXPECT_FALSE(point(1, 0));       // (1, 0)
    EXPECT_FALSE(point(1.125L, 0));  // The first value within the accuracy counts: (2, 0).
    EXPECT_FALSE(point(1.375L, 0));  // (2, 1)
    EXPECT_TRUE(point(1.25L, 0));    // (2, 2)
}

TEST_F(PeriodTest, LooksAtPointsWithARateFromZeroToTwiceTheAccuracyOnly) {
    limits_.accuracy = 0.25L;
    constexpr real tiny = 0x1p-60L;
    EXPECT_FALSE(point(1, 0.5L));
    EXPECT_FALSE(point(1, -tiny));
    EXPECT_FALSE(point(1, 0.5L + tiny));
    EXPECT_FALSE(point(1, std::numeric_limits<real>::quiet_NaN()));
    EXPECT_FALSE(point(1, -std::numeric_limits<real>::infinity()));
    EXPECT_TRUE(point(1, 0));
}

TEST_F(PeriodTest, RecordsOneValueLessThanTheBufferHolds) {
    options_.periodicBuffer = 3;
    EXPECT_FALSE(point(1, 0));
    EXPECT_FALSE(point(2, 0));
    EXPECT_FALSE(point(3, 0));  // Dropped.
    EXPECT_FALSE(point(3, 0));
    EXPECT_FALSE(point(1, 0));
    EXPECT_TRUE(point(2, 0));
}

TEST_F(PeriodTest, IsNeverFoundWithABufferOfOneOrLess) {
    for (const int capacity : {1, 0, -1, std::numeric_limits<int>::min()}) {
        options_.periodicBuffer = capacity;
        period_.reset();
        for (int i = 0; i < 5; ++i) EXPECT_FALSE(point(1, 0)) << capacity;
    }
}

TEST_F(PeriodTest, ValuesThatAreNotNumbersAreRecordedAndNeverMetAgain) {
    const real nan = std::numeric_limits<real>::quiet_NaN();
    EXPECT_FALSE(point(nan, 0));
    EXPECT_FALSE(point(nan, 0));
    EXPECT_FALSE(point(1, 0));
    EXPECT_FALSE(point(1, 0));
}

TEST_F(PeriodTest, OfADefinitionLooksAtItsOwnValueInPlaceOfARate) {
    limits_.accuracy = 0.25L;
    const Expr::Ref definition(new Algebraic("e", Expr::Ref(rate_)));
    period_ = std::make_unique<Period>(options_, limits_, static_cast<Differential&>(*definition));
    EXPECT_FALSE(point(0, 1)) << "too large for a turning point";
    EXPECT_FALSE(point(0, 0.125L)) << "the first that is remembered";
    EXPECT_FALSE(point(0, -0.125L));
    EXPECT_FALSE(point(0, 1));
    EXPECT_TRUE(point(0, 0.25L)) << "the same again, within the accuracy";
}

TEST(SteadyState, CountsPassesInARowInWhichEveryEquationWasSteady) {
    SteadyState steady;
    steady.count(2, 2);
    steady.count(2, 2);
    EXPECT_EQ(steady.run(), 2u);
    steady.count(1, 2);
    EXPECT_EQ(steady.run(), 0u);
    steady.count(2, 2);
    EXPECT_EQ(steady.run(), 1u);
}

/// Steady equations among y' = rate and x = rate after one step of 0.5.
int steadyEquations(real rate, unsigned steadyStop) {
    SeriesLimits limits;
    limits.accuracy = 0.25L;
    limits.steadyStop = steadyStop;
    Calculus calculus(limits, 0.5L);
    const Calculus::Scope scope(calculus);
    EquationTable equations;
    equations.enter(new Differential("y", Expr::Ref(new Number(rate)), 1));
    equations.enter(new Algebraic("x", Expr::Ref(new Number(rate))));
    TaylorStep taylor(calculus, equations, Evaluation::Compiled);
    taylor.evaluate();
    taylor.accept();
    taylor.evaluate();
    return taylor.steadyCount();
}

TEST(SteadyState, OfAnEquationAsksForAChangeStrictlyBelowTheAccuracy) {
    EXPECT_EQ(steadyEquations(0.5L, 1), 1);  // y moves by 0.25, x stays.
    EXPECT_EQ(steadyEquations(0.4375L, 1), 2);
}

TEST(SteadyState, IsNeverReachedWhenSwitchedOff) { EXPECT_EQ(steadyEquations(0, 0), 0); }

TEST(SteadyState, IsNotReachedByWhatIsNotANumber) {
    EXPECT_EQ(steadyEquations(std::numeric_limits<real>::quiet_NaN(), 1), 0);
}

}  // namespace
