// SPDX-License-Identifier: MIT
// Constants, time and variables: terms, the sum of the series, stamps, selection and look-up by name.
#include <cmath>

#include "expr/real.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Constants : public NodeTest {};

TEST_F(Constants, AreMadeFromTextAtDoublePrecision) {
    EXPECT_EQ(Ref(new Number("0.1"))->startValue(), static_cast<real>(0.1));
    EXPECT_NE(Ref(new Number("0.1"))->startValue(), 0.1L);
    EXPECT_EQ(Ref(new Number(2))->startValue(), 2);
    EXPECT_EQ(Ref(new Number(0.5))->startValue(), 0.5L);
    EXPECT_EQ(Ref(new Number(0.1L))->startValue(), 0.1L);
}

TEST_F(Constants, OfTheInputCarryDoublePrecision) {
    prepareText(*this, "x = 0.1;");
    EXPECT_EQ(system.equations.find("x")->rightHandSide()->startValue(), static_cast<real>(0.1));
}

TEST_F(Constants, HaveOneTerm) {
    EXPECT_EQ(terms(number(4), 3), (std::vector<real>{4, 0, 0}));
    EXPECT_EQ(valueOf(number(4)), 4);
    EXPECT_EQ(initialOf(number(4)), 4);
    EXPECT_EQ(printed(number(4)->Derivative()), "0");
}

class TheTime : public NodeTest {
protected:
    const Ref t{new Time};
};

TEST_F(TheTime, HasTheTermOneAndNotTheStep) {
    EXPECT_EQ(terms(t, 4), (std::vector<real>{0, 1, 0, 0}));
    EXPECT_EQ(initialOf(t), 0);
    EXPECT_EQ(printed(t->Derivative()), "1");
}

TEST_F(TheTime, StartsAStepAtTheValueThatSomebodyAskedForBefore) {
    calculus.time = 3;
    nextStep();
    EXPECT_EQ(termOf(t, 0), 0);
    EXPECT_EQ(valueOf(t), 3);
    EXPECT_EQ(termOf(t, 0), 0);
    calculus.time = 4;
    nextStep();
    EXPECT_EQ(termOf(t, 0), 3);
    nextStep();
    EXPECT_EQ(termOf(t, 0), 3) << "nobody asked";
}

TEST_F(TheTime, DoesNotCareWhetherAStepIsRepeated) {
    calculus.time = 3;
    valueOf(t);
    repeatStep();
    EXPECT_EQ(termOf(t, 0), 3);
}

class Variables : public NodeTest {
protected:
    /// A variable in the table, which breaks cycles in the end.
    Differential* variable(const Ref& rightHandSide, real start) {
        Differential* y = differential("y", rightHandSide, start);
        system.equations.enter(y);
        return y;
    }

    /// Highest term used in the sum of the given right-hand side's series; h = 1.
    void sum(const std::vector<real>& rate) {
        calculus.changeStep(1);
        made = variable(new Series(rate), 1);
        nextStep();
        value = valueOf(made);
        expected = 1;
        for (int k = 1; k <= made->highestTerm(); ++k) {
            expected = expected + rate[static_cast<std::size_t>(k) - 1] * (real{1} / k);
        }
    }

    const real h = 0.1;
    Differential* made = nullptr;
    real value = 0;
    real expected = 0;
};

TEST_F(Variables, ComputeTheirStartAsTermZero) {
    real out = 0;
    variable(number(1), 5)->GetDY(0, out);
    EXPECT_EQ(out, 5);
}

TEST_F(Variables, WithAConstantRateHaveTwoTerms) {
    EXPECT_EQ(terms(variable(number(1), 5), 4), (std::vector<real>{5, h, 0, 0}));
}

TEST_F(Variables, ThatGrowLikeThemselvesHaveTheTermsOfTheExponential) {
    Differential* y = variable(Ref(), 3);
    y->setRightHandSide(y);
    const std::vector<real> found = terms(y, 4);
    EXPECT_EQ(found[0], 3);
    EXPECT_EQ(found[1], 3 * h);
    EXPECT_EQ(found[2], (3 * h) * (h / 2));
    EXPECT_EQ(found[3], ((3 * h) * (h / 2)) * (h / 3));
}

TEST_F(Variables, ThatFollowTheTimeHaveAHalfStepAsSecondTerm) {
    EXPECT_EQ(terms(variable(new Time, 5), 4), (std::vector<real>{5, 0, h / 2, 0}));
}

TEST_F(Variables, UseTheStepInForce) {
    Differential* y = variable(number(3), 0);
    calculus.changeStep(1 / real{3});
    EXPECT_EQ(terms(y, 2)[1], 3 * (1 / real{3}));
    EXPECT_EQ(calculus.stepTable[0], 0);
    EXPECT_EQ(calculus.stepTable[7], (1 / real{3}) / 7);
    calculus.changeStep(0.1);
    EXPECT_EQ(calculus.stepTable[1], static_cast<real>(0.1));
}

TEST_F(Variables, StopTheirSumAfterTheWantedNegligibleTerms) {
    limits.zeroTerms = 2;
    sum({1, 1, 1, 1, 1e-15L, -1e-15L, 1e6L, 1e6L});
    EXPECT_EQ(made->highestTerm(), 6);
    EXPECT_EQ(calculus.orderUsed, 5);
    EXPECT_EQ(made->ownOrder(), 5);
    EXPECT_EQ(value, expected);
    EXPECT_NE(1e-15L + value, value) << "the negligible terms would not show";
}

TEST_F(Variables, CountOnlyConsecutiveNegligibleTerms) {
    limits.zeroTerms = 2;
    sum({1, 0, 1, 0, 1, 0, 0, 1e6L});
    EXPECT_EQ(made->highestTerm(), 7);
    EXPECT_EQ(calculus.orderUsed, 6);
    EXPECT_EQ(value, expected);
}

TEST_F(Variables, CompareTermsWithTheSumSoFarAndTheAccuracyStrictly) {
    limits.accuracy = 0.25L;
    limits.zeroTerms = 1;
    // Term 2 is 1, the sum with it 4: a quarter is not greater. Term 3 is 0.75, the sum with it 4.75.
    sum({2, 2, 2.25L, 8, 8, 8});
    EXPECT_EQ(made->highestTerm(), 3);
    EXPECT_EQ(calculus.orderUsed, 3);
}

TEST_F(Variables, SumToTheFullOrderWhenAsked) {
    limits.useAllTerms = true;
    limits.zeroTerms = 2;
    limits.maxOrder = 10;
    const std::vector<real> rate{1, 1, 1, 1, 1e-15L, -1e-15L, 1e-15L, 1e-15L, 1e-15L, 1e6L};
    sum(rate);
    EXPECT_EQ(made->highestTerm(), 9);
    EXPECT_EQ(calculus.orderUsed, 8) << "only the last two terms count";
    EXPECT_EQ(value, expected);
}

TEST_F(Variables, KeepTheCountOfNegligibleTermsWhileTheyAreSkipped) {
    limits.useAllTerms = true;
    limits.zeroTerms = 3;
    limits.maxOrder = 10;
    // Terms up to 6 are skipped, 7 is negligible, 8 is not, 9 is.
    sum({1, 0, 0, 0, 0, 0, 0, 8, 0, 0});
    EXPECT_EQ(calculus.orderUsed, 9);
}

TEST_F(Variables, SumNothingWithoutTermsOrWithoutNegligibleTerms) {
    limits.maxOrder = 0;
    sum({1, 1});
    EXPECT_EQ(value, 0);
    EXPECT_EQ(calculus.orderUsed, 0);
    limits.maxOrder = 34;
    limits.zeroTerms = 0;
    sum({1, 1});
    EXPECT_EQ(value, 0);
    EXPECT_EQ(calculus.orderUsed, 0);
}

TEST_F(Variables, UseTheFullOrderForZerosOnly) {
    Differential* y = variable(number(0), 0);
    nextStep();
    EXPECT_EQ(valueOf(y), 0);
    EXPECT_EQ(calculus.orderUsed, 34);
    EXPECT_TRUE(y->onlyZeroTerms());
}

TEST_F(Variables, NeverLowerTheOrderUsed) {
    calculus.orderUsed = 20;
    sum({1, 1, 0, 0, 0, 0, 0});
    EXPECT_EQ(made->ownOrder(), 3);
    EXPECT_EQ(calculus.orderUsed, 20);
}

TEST_F(Variables, StartAStepAtTheirLastValueUnlessItIsRepeated) {
    calculus.changeStep(0.5);
    Differential* y = variable(number(1), 0);
    nextStep();
    EXPECT_EQ(valueOf(y), 0.5L);
    repeatStep();
    calculus.changeStep(0.25);
    EXPECT_EQ(termOf(y, 0), 0);
    EXPECT_EQ(valueOf(y), 0.25L);
    EXPECT_EQ(y->startValue(), 0);
    nextStep();
    EXPECT_EQ(valueOf(y), 0.5L);
    EXPECT_EQ(y->startValue(), 0.25L);
}

TEST_F(Variables, ReportTheTermBeforeTheLast) {
    limits.zeroTerms = 2;
    int order = 5;
    real last = -1;
    Differential* fresh = differential("z", number(0), 0);
    const Ref keep(fresh);
    termOf(keep, 0);
    fresh->LastTerm(order, last);
    EXPECT_EQ(order, -1);
    EXPECT_EQ(last, -1);
    sum({1, 1, 1, 1, 1e-15L, -1e-15L});
    made->LastTerm(order, last);
    EXPECT_EQ(order, 5);
    EXPECT_EQ(last, 1e-15L * (real{1} / 5));
}

TEST_F(Variables, GiveTheirRightHandSideAsDerivativeAndTheirStartAsInitialValue) {
    const Ref rate(differential("r"));
    Differential* y = variable(rate, 4);
    EXPECT_EQ(y->Derivative(), rate);
    EXPECT_EQ(initialOf(y), 4);
    y->setInitialValue(6);
    EXPECT_EQ(initialOf(y), 6) << "the value at the moment of asking";
    EXPECT_EQ(y->Converted(), Ref(y));
}

class AlgebraicVariables : public NodeTest {
protected:
    Algebraic* const x = new Algebraic("x", Ref(ExprType::Plus, Ref(new Time), number(1)));
    const Ref keep{x};
};

TEST_F(AlgebraicVariables, AreConstantOverAStepAndFollowOneStepBehind) {
    calculus.time = 2;
    EXPECT_EQ(terms(keep, 3), (std::vector<real>{0, 0, 0}));
    EXPECT_EQ(valueOf(keep), 3);
    EXPECT_EQ(terms(keep, 3), (std::vector<real>{0, 0, 0}));
    calculus.time = 7;
    nextStep();
    EXPECT_EQ(terms(keep, 3), (std::vector<real>{3, 0, 0}));
    EXPECT_EQ(valueOf(keep), 8);
}

TEST_F(AlgebraicVariables, KeepTheValueOfARejectedPoint) {
    calculus.time = 2;
    valueOf(keep);
    repeatStep();
    EXPECT_EQ(termOf(keep, 0), 3);
}

TEST_F(AlgebraicVariables, GiveTheDerivativeAndInitialValueOfTheirDefinition) {
    EXPECT_EQ(initialOf(keep), 1);
    EXPECT_EQ(printed(keep->Derivative()), "1");
    int order = 5;
    real last = 3;
    x->LastTerm(order, last);
    EXPECT_EQ(order, -1);
    EXPECT_EQ(last, 3);
    EXPECT_EQ(keep->Converted(), keep);
}

}  // namespace
