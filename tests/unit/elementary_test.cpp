// SPDX-License-Identifier: MIT
// Values of the elementary functions: known digits, the C library bit for bit, and the rules of our own.
#include "expr/elementary.hpp"

#include <cmath>
#include <limits>

#include "expr/real.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

constexpr real kInfinity = std::numeric_limits<real>::infinity();
constexpr real kNaN = std::numeric_limits<real>::quiet_NaN();

real viaDouble(real x) { return std::sqrt(static_cast<double>(x)); }

class Elementary : public NodeTest {
protected:
    /// The folded constant; the same value must come out of the evaluation itself.
    static real folded(ExprType function, real x) {
        const Ref node(function, number(x));
        EXPECT_EQ(node->type(), ExprType::Number);
        EXPECT_TRUE(sameValue(node->startValue(), evaluate(function, x)));
        return node->startValue();
    }

    static Ending endingAt(ExprType function, real x) {
        return endingOf([&] { Ref(function, number(x)); });
    }

    const Ending acoshEnding{"\n(COMP) acosh(x): x < 1\n", 1};
    const Ending atanhEnding{"\n(COMP) atanh(x): |x| > 1\n", 1};
};

TEST_F(Elementary, HaveTheirKnownValues) {
    const struct {
        ExprType function;
        real x;
        real value;
        real tolerance;
    } cases[] = {
        {ExprType::Sin, 1, 0.841470984807896506652502321630L, 1e-18L},
        {ExprType::Cos, 1, 0.540302305868139717400936607443L, 1e-18L},
        {ExprType::Tan, 1, 1.557407724654902230506974807458L, 1e-18L},
        {ExprType::Cotan, 1, 0.642092615934330703006419986594L, 1e-18L},
        {ExprType::ASin, 0.5L, 0.523598775598298873077107230547L, 1e-18L},
        {ExprType::ACos, 0.5L, 1.047197551196597746154214461093L, 1e-18L},
        {ExprType::ATan, 1, 0.785398163397448309615660845820L, 1e-18L},
        {ExprType::ACotan, 1, 0.785398163397448309615660845820L, 1e-18L},
        {ExprType::Sinh, 1, 1.175201193643801456882381850596L, 1e-18L},
        {ExprType::Cosh, 1, 1.543080634815243778477905620757L, 1e-18L},
        {ExprType::Tanh, 1, 0.761594155955764888119458282605L, 1e-18L},
        {ExprType::Cotanh, 1, 1.313035285499331303636161246931L, 1e-18L},
        {ExprType::ASinh, 2, 1.443635475178810342493276740273L, 1e-15L},
        {ExprType::ACosh, 2, 1.316957896924816708625046347308L, 1e-15L},
        {ExprType::ATanh, 0.5L, 0.549306144334054845697622618461L, 1e-10L},
        {ExprType::ACotanh, 2, 0.549306144334054845697622618461L, 1e-10L},
        {ExprType::Sqrt, 2, 1.414213562373095048801688724210L, 2e-16L},
        {ExprType::Exp, 1, 2.718281828459045235360287471353L, 1e-18L},
        {ExprType::Ln, 2, 0.693147180559945309417232121458L, 1e-18L},
        {ExprType::Trunc, -2.7L, -2, 0},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(isNear(folded(c.function, c.x), c.value, c.tolerance)) << functionName(c.function);
}

TEST_F(Elementary, AreThoseOfTheLibraryInExtendedPrecision) {
    for (const real given : {0.3L, -0.7L, 0.0L, -0.0L, 1.0L}) {
        const real x = unknown(given);
        EXPECT_TRUE(sameValue(folded(ExprType::Sin, x), sinl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cos, x), cosl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Tan, x), tanl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cotan, x), 1 / tanl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ASin, x), asinl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ACos, x), acosl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ATan, x), atan2l(x, 1)));
        EXPECT_TRUE(sameValue(folded(ExprType::ACotan, x), atan2l(1 / x, 1)));
        EXPECT_TRUE(sameValue(folded(ExprType::Sinh, x), sinhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cosh, x), coshl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Tanh, x), tanhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cotanh, x), 1 / tanhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Exp, x), expl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Ln, x), logl(x)));
    }
}

TEST_F(Elementary, GiveWhatTheLibraryGivesOutsideTheirDomain) {
    EXPECT_TRUE(std::isnan(folded(ExprType::ASin, 2)));
    EXPECT_TRUE(std::isnan(folded(ExprType::ACos, -2)));
    EXPECT_TRUE(std::isnan(folded(ExprType::Ln, -1)));
    EXPECT_EQ(folded(ExprType::Ln, 0), -kInfinity);
    EXPECT_TRUE(std::isnan(folded(ExprType::Sqrt, -1)));
    EXPECT_EQ(folded(ExprType::Cotan, 0), kInfinity);
    EXPECT_EQ(folded(ExprType::Cotanh, -0.0L), -kInfinity);
    EXPECT_EQ(folded(ExprType::Exp, 20000), kInfinity);
}

TEST_F(Elementary, GiveTheArcCotangentOfANegativeNumberBelowZero) {
    EXPECT_TRUE(isNear(folded(ExprType::ACotan, -1), -0.785398163397448309615660845820L, 1e-18L));
    EXPECT_EQ(folded(ExprType::ACotan, 0), atan2l(unknown(kInfinity), 1));
    EXPECT_EQ(folded(ExprType::ACotan, -0.0L), -atan2l(unknown(kInfinity), 1));
}

TEST_F(Elementary, TakeSquareRootAndTruncationThroughDouble) {
    EXPECT_EQ(folded(ExprType::Sqrt, 2), static_cast<real>(std::sqrt(2.0)));
    EXPECT_NE(folded(ExprType::Sqrt, 2), sqrtl(unknown(2)));
    EXPECT_EQ(folded(ExprType::Sqrt, 0.1L), static_cast<real>(std::sqrt(0.1)));
    EXPECT_EQ(folded(ExprType::Trunc, 1.9L), 1);
    EXPECT_EQ(folded(ExprType::Trunc, -1.9L), -1);
    EXPECT_TRUE(sameValue(folded(ExprType::Trunc, -0.5L), -0.0L));
    EXPECT_EQ(folded(ExprType::Trunc, 3 - 1e-18L), 3) << "rounded up on the way to double";
    EXPECT_EQ(folded(ExprType::Trunc, 1e400L), kInfinity);
}

TEST_F(Elementary, GiveZeroForTheInverseHyperbolicSineOfWhateverIsBelowTheAccuracy) {
    EXPECT_TRUE(sameValue(folded(ExprType::ASinh, -2), 0));
    EXPECT_TRUE(sameValue(folded(ExprType::ASinh, 1e-11L), 0));
    EXPECT_EQ(folded(ExprType::ASinh, limits.accuracy), logl(unknown(limits.accuracy) + viaDouble(1)));
    EXPECT_EQ(folded(ExprType::ASinh, 3), logl(unknown(3) + viaDouble(10)));
    limits.simplifySmall = false;
    EXPECT_EQ(folded(ExprType::ASinh, -2), logl(unknown(-2) + viaDouble(5)));
    EXPECT_TRUE(isNear(folded(ExprType::ASinh, -2), -1.443635475178810342493276740273L, 1e-14L));
}

TEST_F(Elementary, EndTheRunForTheInverseHyperbolicCosineBelowOne) {
    EXPECT_EQ(folded(ExprType::ACosh, 1), 0);
    EXPECT_EQ(folded(ExprType::ACosh, 1 + 1e-11L), 0);
    EXPECT_EQ(folded(ExprType::ACosh, 3), logl(unknown(3) + viaDouble(2) * viaDouble(4)));
    EXPECT_EQ(endingAt(ExprType::ACosh, 0.5L), acoshEnding);
    EXPECT_EQ(endingAt(ExprType::ACosh, -3), acoshEnding);
    EXPECT_TRUE(std::isnan(folded(ExprType::ACosh, kNaN)));
    limits.simplifySmall = false;
    EXPECT_EQ(folded(ExprType::ACosh, 1), 0);
    EXPECT_NE(folded(ExprType::ACosh, 1 + 1e-11L), 0);
}

TEST_F(Elementary, GiveOneForTheInverseHyperbolicTangentOfWhateverIsBelowTheAccuracy) {
    EXPECT_EQ(folded(ExprType::ATanh, -0.5L), 1);
    EXPECT_EQ(folded(ExprType::ATanh, 0), 1);
    EXPECT_EQ(folded(ExprType::ATanh, 1e-11L), 1);
    limits.simplifySmall = false;
    EXPECT_TRUE(isNear(folded(ExprType::ATanh, -0.5L), -0.549306144334054845697622618461L, 1e-18L));
    EXPECT_TRUE(sameValue(folded(ExprType::ATanh, 0), 0));
}

TEST_F(Elementary, SumTheInverseHyperbolicTangentUpToTheFirstTermBelowTheAccuracy) {
    limits.accuracy = 1e-3L;
    // 1/2 + 1/24 + 1/160 + 1/896 are not below; 1/4608 is, and is included.
    const real two = 2;
    real expected = 1 / two;
    expected = expected + 0.125L / 3;
    expected = expected + 0.03125L / 5;
    expected = expected + 0.0078125L / 7;
    expected = expected + 0.001953125L / 9;
    EXPECT_EQ(folded(ExprType::ATanh, 0.5L), expected);
}

TEST_F(Elementary, GiveInfinityForTheInverseHyperbolicTangentOfOne) {
    EXPECT_EQ(folded(ExprType::ATanh, 1), kInfinity);
    EXPECT_EQ(folded(ExprType::ATanh, -1), -kInfinity);
    EXPECT_EQ(endingAt(ExprType::ATanh, 1.5L), atanhEnding);
    EXPECT_EQ(endingAt(ExprType::ATanh, -1.5L), atanhEnding);
}

TEST_F(Elementary, TakeTheInverseHyperbolicCotangentFromTheReciprocal) {
    EXPECT_EQ(folded(ExprType::ACotanh, 2), folded(ExprType::ATanh, 0.5L));
    EXPECT_EQ(folded(ExprType::ACotanh, -2), 1);
    EXPECT_EQ(folded(ExprType::ACotanh, 1), kInfinity);
    EXPECT_EQ(folded(ExprType::ACotanh, -1), -kInfinity);
    EXPECT_EQ(endingAt(ExprType::ACotanh, 0.5L), atanhEnding);
    EXPECT_EQ(endingAt(ExprType::ACotanh, 0), atanhEnding);
    limits.simplifySmall = false;
    EXPECT_TRUE(isNear(folded(ExprType::ACotanh, -2), -0.549306144334054845697622618461L, 1e-18L));
}

TEST_F(Elementary, EndAlsoForNotANumber) {
    for (const bool on : {true, false}) {
        limits.simplifySmall = on;
        EXPECT_TRUE(std::isnan(folded(ExprType::ATanh, kNaN)));
        EXPECT_TRUE(std::isnan(folded(ExprType::ASinh, kNaN)));
    }
}

TEST_F(Elementary, GiveTheInitialValueOfAFunction) {
    const Ref x(differential("x", Ref(), 0.5L));
    EXPECT_EQ(initialOf(Ref(ExprType::Sin, x)), sinl(unknown(0.5L)));
    EXPECT_EQ(initialOf(Ref(ExprType::ACos, x)), acosl(unknown(0.5L)));
    EXPECT_EQ(initialOf(Ref(ExprType::Sqrt, x)), viaDouble(0.5L));
    EXPECT_EQ(endingOf([&] { initialOf(Ref(ExprType::ACosh, x)); }), acoshEnding);
}

TEST_F(Elementary, GiveTheSineAndTheTruncationOfTheValueOfTheirOperand) {
    const Ref operand(new Series({2.75L, 4, 5}, 1.5L));
    EXPECT_EQ(valueOf(Ref(ExprType::Sin, operand)), sinl(unknown(1.5L)));
    EXPECT_EQ(valueOf(Ref(ExprType::Trunc, operand)), 1);
    EXPECT_EQ(terms(Ref(ExprType::Trunc, operand), 3), (std::vector<real>{2, 0, 0}));
}

}  // namespace
