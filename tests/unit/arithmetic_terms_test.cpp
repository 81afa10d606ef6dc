// SPDX-License-Identifier: MIT
// Terms of the operators against loops written out here, bit for bit; their values, derivatives and initial values.
#include <cmath>

#include "expr/arithmetic.hpp"
#include "expr/real.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Twelve terms whose products and sums are all inexact, so that every order of adding shows.
std::vector<real> unevenTerms(real seed) {
    std::vector<real> result;
    for (int i = 0; i < 12; ++i) {
        result.push_back(seed);
        seed = seed * -1.7L / (i + 1) + 0.1L;
    }
    return result;
}

/// Notes which terms it was asked for.
class Listener final : public Differential {
public:
    Listener(const std::string& name, std::string& log) : Differential(name, Ref(), 1), log_(log) {}
    void DY(int k, real& out) override {
        log_ += name() + std::to_string(k) + " ";
        out = 1;
    }

private:
    std::string& log_;
};

class TaylorTerms : public NodeTest {
protected:
    const std::vector<real> a = unevenTerms(0.7L);
    const std::vector<real> b = unevenTerms(-1.3L);
    const Ref left{new Series(a)};
    const Ref right{new Series(b)};
    const int count = 12;
};

TEST_F(TaylorTerms, OfASumAndADifferenceAreThoseOfTheirOperands) {
    const Ref sum(ExprType::Plus, left, right);
    const Ref difference(ExprType::Minus, left, right);
    for (std::size_t k = 0; k < 12; ++k) {
        EXPECT_EQ(termOf(sum, static_cast<int>(k)), a[k] + b[k]);
        EXPECT_EQ(termOf(difference, static_cast<int>(k)), a[k] - b[k]);
    }
}

TEST_F(TaylorTerms, OfAProductAreTheCauchyProductOfItsOperands) {
    const std::vector<real> found = terms(Ref(ExprType::Multiply, left, right), count);
    bool orderMatters = false;
    for (std::size_t k = 0; k < 12; ++k) {
        real expected = 0;
        real backwards = 0;
        for (std::size_t i = 0; i <= k; ++i) {
            expected = expected + a[k - i] * b[i];
            backwards = backwards + a[i] * b[k - i];
        }
        EXPECT_EQ(found[k], expected) << k;
        orderMatters = orderMatters || expected != backwards;
    }
    EXPECT_TRUE(orderMatters) << "the operands would not show a wrong order";
}

TEST_F(TaylorTerms, OfAQuotientFollowFromTheLowerOnes) {
    const std::vector<real> found = terms(Ref(ExprType::Divide, left, right), count);
    std::vector<real> c;
    for (std::size_t k = 0; k < 12; ++k) {
        real s = 0;
        for (std::size_t i = 0; i < k; ++i) s = s + c[i] * b[k - i];
        c.push_back((a[k] - s) / b[0]);
        EXPECT_EQ(found[k], c[k]) << k;
    }
}

TEST_F(TaylorTerms, OfAProductAreAskedForInAFixedOrder) {
    std::string log;
    const Ref product(ExprType::Multiply, Ref(new Listener("a", log)), Ref(new Listener("b", log)));
    real out = 0;
    product->GetDY(2, out);
    EXPECT_EQ(log, "a2 b0 a1 b1 a0 b2 ");
    EXPECT_EQ(out, 3);
}

TEST_F(TaylorTerms, OfTwoConstantSeriesHaveAConstantProduct) {
    const Ref product(ExprType::Multiply, Ref(new Series({3})), Ref(new Series({5})));
    EXPECT_EQ(termOf(product, 0), 15);
    EXPECT_EQ(termOf(product, 1), 0);
}

TEST_F(TaylorTerms, OfAQuotientByZeroAreInfiniteOrNotANumber) {
    const Ref zero(new Series({0, 1}));
    EXPECT_TRUE(std::isinf(termOf(Ref(ExprType::Divide, Ref(new Series({1})), zero), 0)));
    EXPECT_TRUE(std::isnan(termOf(Ref(ExprType::Divide, zero, zero), 0)));
}

TEST_F(TaylorTerms, OfANegationInvertTheSignOfZeroToo) {
    const Ref negation(ExprType::UnMinus, Ref(new Series({0, -0.0L, 2})));
    EXPECT_TRUE(sameValue(termOf(negation, 0), -0.0L));
    EXPECT_TRUE(sameValue(termOf(negation, 1), 0.0L));
    EXPECT_EQ(termOf(negation, 2), -2);
}

TEST_F(TaylorTerms, OfAProductStartFromPositiveZero) {
    const Ref product(ExprType::Multiply, Ref(new Series({-0.0L})), Ref(new Series({1})));
    EXPECT_TRUE(sameValue(termOf(product, 0), 0.0L));
}

TEST_F(TaylorTerms, OfAQuotientComputeTheirOwnLowerOnesWhenNobodyAskedForThem) {
    const std::vector<real> rising = terms(Ref(ExprType::Divide, left, right), 3);
    const Ref quotient(ExprType::Divide, left, right);
    termOf(quotient, 0);
    EXPECT_EQ(termOf(quotient, 2), rising[2]);
    EXPECT_EQ(quotient->highestTerm(), 2);
}

/// A node whose terms the test changes between steps.
class ChangingSeries final : public Series {
public:
    ChangingSeries() : Series({}) {}
    void GetDY(int k, real& out) override { out = given[static_cast<std::size_t>(k)]; }

    std::vector<real> given;
};

TEST_F(TaylorTerms, OfAQuotientInAFreshStepOweNothingToTheStepBefore) {
    auto* const above = new ChangingSeries;
    auto* const below = new ChangingSeries;
    const Ref quotient(ExprType::Divide, Ref(above), Ref(below));
    above->given = b;
    below->given = a;
    terms(quotient, 5);
    above->given = a;
    below->given = b;
    const std::vector<real> fresh = terms(Ref(ExprType::Divide, left, right), 5);
    nextStep();
    terms(above, 5);
    terms(below, 5);
    // Nobody asked the quotient for terms 0 to 3 in this step; their places still hold those of the step before.
    EXPECT_EQ(termOf(quotient, 4), fresh[4]);
    for (int k = 0; k < 4; ++k) EXPECT_EQ(termOf(quotient, k), fresh[static_cast<std::size_t>(k)]) << k;
}

// Term 2 asks the divisor for term 2 before term 1, and so gets a term 1 that is stale, on purpose: a cache computes
// the one term that is asked for, and terms must be asked for in rising order.
TEST_F(TaylorTerms, OfAQuotientOutOfOrderTakeAStaleTermOfTheDivisor) {
    auto* const above = new ChangingSeries;
    auto* const below = new ChangingSeries;
    const Ref quotient(ExprType::Divide, Ref(above), Ref(below));
    above->given = {1, 1, 1};
    below->given = {1, 5, 1};
    terms(quotient, 3);
    above->given = {8, 20, 30};
    below->given = {2, 3, 4};
    nextStep();
    // C[0] = 8/2 = 4; C[1] = (20 - 4*5)/2 = 0 with the old 5; C[2] = (30 - (4*4 + 0*5))/2 = 7.
    EXPECT_EQ(termOf(quotient, 2), 7);
    EXPECT_EQ(termOf(quotient, 1), 0);
    nextStep();
    // C[1] = (20 - 4*3)/2 = 4; C[2] = (30 - (4*4 + 4*3))/2 = 1.
    EXPECT_EQ(terms(quotient, 3), (std::vector<real>{4, 4, 1}));
}

TEST_F(TaylorTerms, OfAProductAreKeptOneByOneSoOnlyRisingOrderIsSafe) {
    auto* const factor = new ChangingSeries;
    const Ref product(ExprType::Multiply, Ref(factor), Ref(new Series({2})));
    factor->given = {3, 5, 7};
    EXPECT_EQ(terms(product, 3), (std::vector<real>{6, 10, 14}));
    factor->given = {4, 6, 8};
    nextStep();
    EXPECT_EQ(termOf(product, 2), 16);
    // A product needs no lower term of its own, so term 1 is still that of the step before, on purpose: terms must be
    // asked for in rising order.
    EXPECT_EQ(termOf(product, 1), 10);
    nextStep();
    EXPECT_EQ(terms(product, 3), (std::vector<real>{8, 12, 16}));
}

class Values : public NodeTest {
protected:
    const Ref left{new Series({}, 7, 1)};
    const Ref right{new Series({}, 3, -9)};
};

TEST_F(Values, AreThoseOfTheOperandsCombined) {
    EXPECT_EQ(valueOf(Ref(ExprType::Plus, left, right)), 10);
    EXPECT_EQ(valueOf(Ref(ExprType::Minus, left, right)), 4);
    EXPECT_EQ(valueOf(Ref(ExprType::Multiply, left, right)), 21);
    EXPECT_EQ(valueOf(Ref(ExprType::Divide, left, right)), real{7} / 3);
    EXPECT_EQ(valueOf(Ref(ExprType::UnMinus, left)), -7);
    EXPECT_TRUE(sameValue(valueOf(Ref(ExprType::UnMinus, Ref(new Series({}, 0)))), -0.0L));
}

TEST_F(Values, AtTheStartAreThoseOfTheOperandsCombined) {
    EXPECT_EQ(initialOf(Ref(ExprType::Plus, left, right)), -8);
    EXPECT_EQ(initialOf(Ref(ExprType::Minus, left, right)), 10);
    EXPECT_EQ(initialOf(Ref(ExprType::Multiply, left, right)), -9);
    EXPECT_EQ(initialOf(Ref(ExprType::Divide, left, right)), real{1} / -9);
    EXPECT_EQ(initialOf(Ref(ExprType::UnMinus, left)), -1);
}

TEST_F(Values, AreKeptForAStep) {
    const Ref variable(new Algebraic("v", number(1)));
    const Ref sum(ExprType::Plus, variable, variable);
    EXPECT_EQ(valueOf(sum), 2);
    static_cast<Algebraic&>(*variable).setRightHandSide(number(5));
    EXPECT_EQ(valueOf(sum), 2);
    nextStep();
    EXPECT_EQ(valueOf(sum), 10);
}

class Derivatives : public NodeTest {
protected:
    static std::string of(const Ref& node) { return printed(node->Derivative()); }

    const Ref x{differential("x", Ref(differential("a")))};
    const Ref y{differential("y", Ref(differential("b")))};
    const Ref t{new Time};
};

TEST_F(Derivatives, FollowTheRulesOfCalculus) {
    EXPECT_EQ(of(Ref(ExprType::Plus, x, y)), "([a] + [b])");
    EXPECT_EQ(of(Ref(ExprType::Minus, x, y)), "([a] - [b])");
    EXPECT_EQ(of(Ref(ExprType::Multiply, x, y)), "(([a] * [y]) + ([x] * [b]))");
    EXPECT_EQ(of(Ref(ExprType::Divide, x, y)), "((([a] * [y]) - ([x] * [b])) / ([y] * [y]))");
    EXPECT_EQ(of(Ref(ExprType::UnMinus, x)), "(-[a])");
}

TEST_F(Derivatives, AreSimplifiedLikeAllNodes) {
    EXPECT_EQ(of(Ref(ExprType::Multiply, t, x)), "([x] + (t * [a]))");
    EXPECT_EQ(of(Ref(ExprType::Multiply, number(3), x)), "(3 * [a])");
    EXPECT_EQ(of(Ref(ExprType::Divide, number(3), x)), "((-(3 * [a])) / ([x] * [x]))");
    EXPECT_EQ(of(Ref(ExprType::Plus, t, number(2))), "1");
    EXPECT_EQ(of(Ref(ExprType::UnMinus, t)), "-1");
}

TEST_F(Derivatives, AreWrittenOutWithTheSwitchOff) {
    limits.simplifySmall = false;
    EXPECT_EQ(of(Ref(ExprType::Multiply, t, x)), "((1 * [x]) + (t * [a]))");
    EXPECT_EQ(of(Ref(ExprType::Multiply, number(3), x)), "((0 * [x]) + (3 * [a]))");
    EXPECT_EQ(of(Ref(ExprType::Divide, x, number(2))), "((([a] * 2) - ([x] * 0)) / 4)");
}

TEST_F(Derivatives, ShareTheOperands) {
    const int before = x->useCount();
    const Ref product(ExprType::Multiply, x, y);
    product->Derivative();
    EXPECT_EQ(x->useCount(), before + 2);
}

TEST_F(Derivatives, OfASineAreACosineTimesTheInnerOne) {
    EXPECT_EQ(of(Ref(ExprType::Sin, x)), "(cos([x]) * [a])");
    EXPECT_EQ(of(Ref(ExprType::Trunc, x)), "0");
}

}  // namespace
