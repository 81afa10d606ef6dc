// SPDX-License-Identifier: MIT
// Every function integrated and compared with its closed form, or with what its equations say where that differs.
#include <cmath>
#include <limits>

#include "classic/taylor_step.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// V along u' = u from u0 to u0 * e, one unit of time in steps of 1/64.
class ClosedForms : public NodeTest {
protected:
    void integrate(const std::string& function, real from, const std::string& start) {
        limits.maxOrder = 60;
        limits.accuracy = 1e-24L;
        prepareText(*this, "u' = u & " + start + "; y = " + function + "(u);");
        calculus.changeStep(1.0 / 64);
        TaylorStep step(calculus, system.equations, Evaluation::Compiled);
        for (int i = 0; i <= 64; ++i) {
            calculus.time = i / real{64};
            step.evaluate();
            EXPECT_LE(calculus.orderUsed, 56) << "the series did not converge";
            step.accept();
        }
        u = system.equations.find("u")->result();
        EXPECT_TRUE(isNear(u, from * expl(1), 4e-18L * std::fabs(from)));
        v = system.equations.find("y")->rightHandSide()->result();
    }

    /// Relative to the larger of 1 and the value.
    ::testing::AssertionResult endsAt(real expected) const {
        return isNear(v, expected, 2e-17L * std::fmax(real{1}, std::fabs(expected)));
    }

    const real u0 = 0.25L;
    const real end = 0.25L * 2.718281828459045235360287471353L;
    real u = 0;
    real v = 0;
};

TEST_F(ClosedForms, OfSine) {
    integrate("sin", u0, "0.25");
    EXPECT_TRUE(endsAt(sinl(end)));
}

TEST_F(ClosedForms, OfCosineRunBackwardsFromTwiceTheStart) {
    integrate("cos", u0, "0.25");
    EXPECT_TRUE(endsAt(cosl(end - 2 * u0)));
    EXPECT_FALSE(isNear(v, cosl(end), 1e-3L));
}

TEST_F(ClosedForms, OfTangent) {
    integrate("tan", u0, "0.25");
    EXPECT_TRUE(endsAt(tanl(end)));
}

TEST_F(ClosedForms, OfCotangent) {
    integrate("cotan", u0, "0.25");
    EXPECT_TRUE(endsAt(1 / tanl(end)));
}

TEST_F(ClosedForms, OfArcSine) {
    integrate("asin", u0, "0.25");
    EXPECT_TRUE(endsAt(asinl(end)));
}

TEST_F(ClosedForms, OfArcTangent) {
    integrate("atan", u0, "0.25");
    EXPECT_TRUE(endsAt(atanl(end)));
}

TEST_F(ClosedForms, OfArcCotangent) {
    integrate("acotan", u0, "0.25");
    EXPECT_TRUE(endsAt(atanl(1 / end)));
}

TEST_F(ClosedForms, OfHyperbolicSine) {
    integrate("sinh", u0, "0.25");
    EXPECT_TRUE(endsAt(sinhl(end)));
}

TEST_F(ClosedForms, OfHyperbolicCosine) {
    integrate("cosh", u0, "0.25");
    EXPECT_TRUE(endsAt(coshl(end)));
}

TEST_F(ClosedForms, OfHyperbolicTangent) {
    integrate("tanh", u0, "0.25");
    EXPECT_TRUE(endsAt(tanhl(end)));
}

TEST_F(ClosedForms, OfHyperbolicCotangent) {
    integrate("cotanh", u0, "0.25");
    EXPECT_TRUE(endsAt(1 / tanhl(end)));
}

TEST_F(ClosedForms, OfInverseHyperbolicTangent) {
    integrate("atanh", u0, "0.25");
    EXPECT_TRUE(endsAt(atanhl(end)));
}

TEST_F(ClosedForms, OfInverseHyperbolicTangentOfANegativeNumberStartAtOne) {
    integrate("atanh", -u0, "-0.25");
    EXPECT_TRUE(endsAt(1 + atanhl(-end) - atanhl(-u0)));
}

TEST_F(ClosedForms, OfInverseHyperbolicCotangent) {
    integrate("argcotanh", 2, "2");
    EXPECT_TRUE(endsAt(atanhl(1 / (2 * expl(1)))));
}

TEST_F(ClosedForms, OfSquareRoot) {
    integrate("sqrt", u0, "0.25");
    EXPECT_TRUE(endsAt(sqrtl(end)));
}

TEST_F(ClosedForms, OfExponential) {
    integrate("exp", u0, "0.25");
    EXPECT_TRUE(endsAt(expl(end)));
}

TEST_F(ClosedForms, OfLogarithmAreASquareRoot) {
    integrate("ln", 2, "2");
    const real start = logl(2);
    EXPECT_TRUE(endsAt(sqrtl(start * start + 2 * (2 * expl(1)) - 4)));
    EXPECT_FALSE(isNear(v, logl(u), 1e-3L));
}

TEST_F(ClosedForms, OfTruncationFollowTheValue) {
    integrate("trunc", 2, "2");
    EXPECT_EQ(v, 5);
}

}  // namespace
