// SPDX-License-Identifier: MIT
// Standard test problems against their closed forms, to the last digits that the method allows.
#include <cmath>

#include "classic/taylor_step.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Fixed steps of 1/32 with an accuracy far below the last bit.
class TestProblems : public NodeTest {
protected:
    void solve(const std::string& text, int steps) {
        limits.maxOrder = 60;
        limits.accuracy = 1e-24L;
        prepareText(*this, text);
        calculus.changeStep(1.0 / 32);
        TaylorStep step(calculus, system.equations, Evaluation::Compiled);
        for (int i = 0; i <= steps; ++i) {
            calculus.time = i / real{32};
            step.evaluate();
            EXPECT_LE(calculus.orderUsed, 56) << "the series did not converge";
            step.accept();
        }
    }

    ::testing::AssertionResult relative(const std::string& name, real expected, real tolerance) const {
        return isNear(system.equations.find(name)->result(), expected, tolerance * std::fabs(expected));
    }
};

TEST_F(TestProblems, OfExponentialGrowthReachE) {
    solve("y' = y & 1;", 32);
    EXPECT_TRUE(relative("y", 2.718281828459045235360287471352662498L, 1e-17L));
}

TEST_F(TestProblems, OfTheOscillatorReachCosineAndSine) {
    solve("y'' = -y & 1;", 32);
    EXPECT_TRUE(relative("y", 0.540302305868139717400936607442976604L, 1e-17L));
    EXPECT_TRUE(relative("y%1", -0.841470984807896506652502321630298999L, 1e-17L));
}

// Problems A1, A2 and A4 of T. E. Hull, W. H. Enright, B. M. Fellen, A. E. Sedgwick, Comparing numerical methods for
// ordinary differential equations, SIAM J. Numer. Anal. 9 (1972) 603-637, at t = 1.

TEST_F(TestProblems, OfNegativeExponential) {
    solve("y' = -y & 1;", 32);
    EXPECT_TRUE(relative("y", 0.367879441171442321595523770161460867L, 1e-17L));
}

TEST_F(TestProblems, OfTheRiccatiSpecialCase) {
    // y = 1 / sqrt(1 + t).
    solve("y' = -y*y*y/2 & 1;", 32);
    EXPECT_TRUE(relative("y", 0.707106781186547524400844362104849039L, 1e-17L));
}

TEST_F(TestProblems, OfTheLogisticCurve) {
    // y = 20 / (1 + 19*exp(-t/4)).
    solve("y' = y/4*(1 - y/20) & 1;", 32);
    EXPECT_TRUE(relative("y", 20 / (1 + 19 * expl(-0.25L)), 1e-17L));
}

TEST_F(TestProblems, OfACircularOrbitAreExactWithTheRootWrittenInline) {
    const std::string r = "sqrt(x*x + y*y)";
    solve("x' = u & 1; y' = v & 0; u' = -x/(" + r + "*" + r + "*" + r + ") & 0; v' = -y/(" + r + "*" + r + "*" + r +
              ") & 1;",
          32);
    EXPECT_TRUE(relative("x", cosl(1), 2e-17L));
    EXPECT_TRUE(relative("y", sinl(1), 2e-17L));
}

}  // namespace
