// SPDX-License-Identifier: MIT
// Runs under the rules of mathematics: what integrators promise, against closed forms.
#include "zirk/integrator.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace zirk;

namespace {

constexpr real pi = 3.141592653589793238462643383279502884L;

class Solved {
public:
    explicit Solved(const std::string& text, const IntegratorOptions& options = {}, real start = 0)
        : problem(Problem::fromText(text, optionsAt(start))), run(problem, options) {}

    void to(real end) {
        while (run.step(end)) {
        }
    }
    real at(const std::string& formula, real time) const {
        Readout readout(problem, {problem.expression(formula)});
        real value = 0;
        run.read(readout, time, &value);
        return value;
    }
    real operator()(const std::string& formula) const { return at(formula, run.time()); }

    Problem problem;
    Integrator run;

private:
    static ProblemOptions optionsAt(real start) {
        ProblemOptions options;
        options.start = start;
        return options;
    }
};

real solution(const std::string& text, const std::string& formula, real end, real start = 0) {
    Solved solved(text, {}, start);
    solved.to(end);
    return solved(formula);
}

::testing::AssertionResult agree(real value, real truth, real tolerance) {
    if (std::fabs(value - truth) <= tolerance) return ::testing::AssertionSuccess();
    std::ostringstream out;
    out.precision(21);
    out << value << " instead of " << truth;
    return ::testing::AssertionFailure() << out.str();
}

std::string failureOf(Solved& solved, real end) {
    try {
        solved.to(end);
    } catch (const RunError& error) {
        return error.what();
    }
    return "";
}

// Jumps.

TEST(Jumps, OfTruncOfTheTimeAreSteps) {
    EXPECT_TRUE(agree(solution("x' = trunc(t);", "x", 4.5L), 0 + 1 + 2 + 3 + 4 * 0.5L, 1e-18L));
    EXPECT_TRUE(agree(solution("x' = trunc(t);", "x", -4.5L), 0 + 1 + 2 + 3 + 4 * 0.5L, 1e-18L)) << "backwards";
    EXPECT_TRUE(agree(solution("x' = trunc(-2*t);", "x", 2), -(0 + 1 + 2 + 3) * 0.5L, 1e-18L));
    EXPECT_TRUE(agree(solution("x' = trunc(t);", "x", 1.5L, -2), -1 + 0.5L, 1e-18L)) << "-1, twice 0, and half of 1";
}

TEST(Jumps, BeginOnTheSideToWhichTheOperandGoes) {
    EXPECT_EQ(solution("x' = trunc(t);", "x", 0.5L, 1), -0.0L) << "backwards from 1: below it at once";
    EXPECT_EQ(solution("x' = trunc(t);", "x", 1.5L, 1), 0.5L);
}

TEST(Jumps, OfTruncUpAndDownAreAllSeen) {
    // trunc(2.5 sin t) is 1 from asin 0.4 on, 2 from asin 0.8 on, and falls as it has risen.
    const real half = (pi - 2 * std::asin(0.4L)) + (pi - 2 * std::asin(0.8L));
    EXPECT_TRUE(agree(solution("x' = trunc(2.5*sin(t));", "x", pi), half, 1e-17L));
    EXPECT_TRUE(agree(solution("x' = trunc(2.5*sin(t));", "x", 201 * pi), half, 1e-14L));
    Solved solved("x' = trunc(2.5*sin(t));");
    solved.to(20 * pi);
    EXPECT_EQ(solved.run.statistics().jumps, 80u);
}

TEST(Jumps, OfStatesAreLocatedByTheirOwnPolynomials) {
    // Slopes 1, 2, 3, ...: 1 + 1/2 + 1/3 + 1/4 until x = 4, then 5 per unit of time.
    EXPECT_TRUE(agree(solution("x' = trunc(x) + 1;", "x", 2.25L), 4 + 5 * (2.25L - 25 / 12.0L), 3e-18L));
}

TEST(Jumps, OfOneTruncWithinAnotherAreCarriedOn) {
    real sum = 0;
    for (int i = 0; i < 40; ++i) sum += static_cast<real>(i / 4);
    EXPECT_TRUE(agree(solution("x' = trunc(trunc(t/2)/2);", "x", 40), sum, 1e-16L));
    EXPECT_TRUE(agree(solution("x' = trunc(trunc(t/2)/2);", "x", -40), sum, 1e-16L));
    EXPECT_TRUE(agree(solution("x' = trunc(trunc(t)*trunc(t)/4 + y); y' = 0;", "x", 5), 0 + 0 + 1 + 2 + 4, 1e-17L));
}

TEST(Jumps, AtOneTimeAreTakenTogether) {
    real sum = 0;
    for (int i = 0; i < 20; ++i) sum += static_cast<real>(i / 2) * static_cast<real>(i) / 2;
    EXPECT_TRUE(agree(solution("x' = trunc(t)*trunc(2*t);", "x", 10), sum, 1e-16L));
}

TEST(Jumps, DoNotHappenWhereTheOperandOnlyTouches) {
    // 1 - (t - 1)^2 touches 1 at t = 1, and leaves -1 ... 1 for good at 1 + sqrt 2.
    Solved solved("x' = trunc(1 - (t - 1)^2);");
    solved.to(2.25L);
    EXPECT_TRUE(agree(solved("x"), 0, 1e-9L));
    EXPECT_TRUE(agree(solution("x' = trunc(1 - (t - 1)^2);", "x", 2.5L), -(2.5L - 1 - std::sqrt(2.0L)), 1e-9L));
}

TEST(Jumps, OfTheInverseCotangentAreAtZero) {
    // The integral of acot is t acot t + ln(1 + t^2)/2, an odd part left out: even in t.
    const auto integral = [](real t) { return t * std::atan(1 / t) + std::log1p(t * t) / 2; };
    EXPECT_TRUE(agree(solution("x' = acotan(t);", "x", 2, -1), integral(2) - integral(1), 1e-18L));
}

TEST(Jumps, WithoutEndAreAnError) {
    Solved solved("x' = 1 - 2*trunc(x + 1) & 0.5;");
    const std::string failure = failureOf(solved, 2);
    EXPECT_NE(failure.find("trunc(x + 1) jumps to and fro without end at t = 0.5"), std::string::npos) << failure;
}

// Features that the terms of the solution do not show.

TEST(Switches, OfSaturatedTangentsAreNotJumpedOver) {
    // The integral of tanh(k (t - 3)) from 0 to 10 is 4 but for exp(-6 k).
    for (const char* k : {"100", "1e3", "1e4", "1e5"}) {
        EXPECT_TRUE(agree(solution("x' = tanh(" + std::string(k) + "*(t - 3));", "x", 10), 4, 1e-17L)) << k;
    }
    // By mpmath's quad() with 40 digits, pieces of widths that follow the switches.
    EXPECT_TRUE(agree(solution("x' = tanh(1e3*(t - 3)*(t - 3.5));", "x", 10), 9.0000263262259290052L, 1e-17L));
    EXPECT_TRUE(agree(solution("x' = tanh(1e4*(t - 3)*(t - 3.5));", "x", 100), 99.000000263190178025L, 1e-16L));
    EXPECT_TRUE(agree(solution("x' = tanh(1e3*cos(t));", "x", 100), -0.53096491487338363081L, 1e-16L));
    EXPECT_TRUE(agree(solution("x' = atan(1e7*cos(t));", "x", 100), -0.83403768215707150155L, 1e-16L));
}

TEST(Kinks, OfRootsOfSquaresAreNotJumpedOver) {
    // Both roots turn at a = pi/2, 3 pi/2, ... and at 3 and 3.1; there the run ends rather than go wrong.
    const std::pair<const char*, real> cases[] = {{"sqrt(cos(t)*cos(t))", pi / 2},
                                                  {"(cos(t)*cos(t))^1.5", pi / 2},
                                                  {"sqrt((t - 3)*(t - 3)*(t - 3.1)*(t - 3.1))", 3}};
    for (const auto& [formula, kink] : cases) {
        Solved solved("x' = " + std::string(formula) + ";");
        EXPECT_NE(failureOf(solved, 10).find("comes to the edge of its domain"), std::string::npos) << formula;
        EXPECT_TRUE(agree(solved.run.time(), kink, 1e-9L)) << formula;
    }
    // The integral of |cos t| to 100 by mpmath's quad() with 40 digits; rounding the corner takes less than the
    // tolerance.
    EXPECT_TRUE(agree(solution("x' = sqrt(cos(t)*cos(t) + 1e-24);", "x", 100), 63.493634358890241206L, 1e-16L));
}

TEST(Pulses, AreNotJumpedOver) {
    for (const real k : {10.0L, 1e4L, 1e6L, 1e8L}) {
        std::ostringstream text;
        text << "x' = exp(-" << k << "*(t - 5)*(t - 5));";
        const real area = std::sqrt(pi / k) / 2 * (2 * std::erf(std::sqrt(k) * 5));
        EXPECT_TRUE(agree(solution(text.str(), "x", 10), area, area * 1e-18L)) << text.str();
    }
    // Lorentz peaks: 2 atan(5 w)/w with w = 1e4 and 1e8.
    EXPECT_TRUE(agree(solution("x' = 1/(1 + 1e8*(t - 5)^2);", "x", 10), 2 * std::atan(5e4L) / 1e4L, 1e-21L));
    EXPECT_TRUE(agree(solution("x' = 1/(1 + 1e16*(t - 5)^2);", "x", 10), 2 * std::atan(5e8L) / 1e8L, 1e-25L));
}

// Time.

TEST(FormulasInTheTime, AreEvaluatedWhereTheStepsEnd) {
    EXPECT_TRUE(agree(solution("x' = cos(t);", "x", 1e4L), std::sin(1e4L), 1e-17L));
    // cos(1e15) - cos(1e15 + 10) by mpmath with 40 digits.
    EXPECT_TRUE(agree(solution("x' = sin(t);", "x", 1e15L + 10, 1e15L), -1.4107185104509374099L, 1e-17L));
}

// Numbers of any size.

TEST(Numbers, OfAnySizeAreKept) {
    EXPECT_TRUE(agree(solution("y' = -y & 1e4000;", "y/1e4000", 3), std::exp(-3.0L), 1e-18L));
    EXPECT_TRUE(agree(solution("y' = -y & 1e-4000;", "y/1e-4000", 3), std::exp(-3.0L), 1e-18L));
    EXPECT_TRUE(agree(solution("x' = 1e250*(1e70*x) & 1e-50;", "x/1e-50", 1e-320L), std::exp(1.0L), 1e-17L));
}

TEST(Numbers, ThatDoublesCannotHoldAreNotLost) {
    const real truth = std::exp(30.0L) - 1;
    EXPECT_TRUE(agree(solution("y' = 1e-320*z; z' = z & 1e200;", "y*1e120", 30), truth, truth * 1e-17L));
}

// Calls.

TEST(Step, ThatHasNowhereToGoDoesNothing) {
    Solved solved("x' = x & 1;");
    EXPECT_FALSE(solved.run.step(0));
    EXPECT_EQ(solved.run.statistics().steps, 0u);
    solved.to(1);
    EXPECT_FALSE(solved.run.step(1));
    EXPECT_EQ(solved.run.time(), 1);
}

TEST(Step, GoesToEitherSide) {
    Solved solved("x' = x & 1;");
    solved.to(2);
    solved.to(-3);
    EXPECT_TRUE(agree(solved("x"), std::exp(-3.0L), 1e-18L));
    solved.to(1);
    EXPECT_TRUE(agree(solved("x"), std::exp(1.0L), 5e-18L));
}

TEST(Step, EndsWhereItIsAskedToThoughThatChanges) {
    Solved solved("x'' = -x & 1;");
    real end = 0.125L;
    for (int i = 0; i < 40; ++i, end += 0.125L) {
        while (solved.run.step(end)) ASSERT_LE(solved.run.time(), end);
        ASSERT_EQ(solved.run.time(), end);
    }
    EXPECT_TRUE(agree(solved("x"), std::cos(5.0L), 1e-18L));
}

TEST(Step, IsNotLongerThanAllowed) {
    IntegratorOptions options;
    options.maxStep = 0.01L;
    Solved solved("x' = 1;", options);
    solved.to(1);
    EXPECT_LE(solved.run.statistics().longestStep, 0.01L);
    EXPECT_GE(solved.run.statistics().steps, 100u);
    EXPECT_TRUE(agree(solved("x"), 1, 1e-18L));
}

TEST(Step, AfterAFailureFailsAgainAndLeavesEverythingReadable) {
    // y = exp(1000 t) leaves the range of numbers at t = 11.356...
    Solved solved("y' = 1000*y & 1; v = ln(y)/1000;");
    ASSERT_NE(failureOf(solved, 20), "");
    const real time = solved.run.time();
    const real begin = solved.run.stepBegin();
    EXPECT_LT(begin, time);
    EXPECT_LT(time, 11.3566L);
    const real middle = begin + (time - begin) / 2;
    EXPECT_TRUE(agree(solved.at("v", middle), middle, 2e-18L));
    EXPECT_TRUE(agree(solved.at("v", begin), begin, 2e-18L));
    EXPECT_NE(failureOf(solved, 20), "");
    EXPECT_EQ(solved.run.time(), time);
    EXPECT_TRUE(agree(solved.at("v", middle), middle, 2e-18L));
    solved.run.watch(solved.problem.expression("v"));
    EXPECT_NE(failureOf(solved, 20), "");
    EXPECT_TRUE(agree(solved.at("v", middle), middle, 2e-18L)) << "with more values than before";
    solved.to(5);
    EXPECT_TRUE(agree(solved("v"), 5, 1e-17L)) << "and back again";
}

TEST(Step, ThatFailsElsewhereLeavesTheStepBeforeReadable) {
    Solved solved("x' = sqrt(1 - t) & 0;");
    ASSERT_TRUE(solved.run.step(0.75L));
    while (solved.run.step(0.75L)) {
    }
    const real middle = (solved.run.stepBegin() + solved.run.time()) / 2;
    const real before = solved.at("x", middle);
    // The integral of sqrt(1 - t).
    EXPECT_TRUE(agree(before, (1 - std::pow(1 - middle, 1.5L)) * 2 / 3, 1e-17L));
    EXPECT_THROW(solved.run.step(std::numeric_limits<real>::quiet_NaN()), RunError);
    EXPECT_EQ(solved.at("x", middle), before);
}

TEST(Failures, NameTheFormulaAndTheTime) {
    const std::pair<const char*, const char*> cases[] = {
        {"y' = y*y & 1;", "y has a singularity at t = 1"},
        {"x' = sqrt(t);", "sqrt(t) comes to the edge of its domain at t = 0"},
        {"x' = sqrt(x);", "sqrt(x) comes to the edge of its domain at t = 0"},
        {"x' = x^1.5;", "x^1.5 comes to the edge of its domain at t = 0"},
        {"x' = x & 1e-1980; y' = sqrt(x)^3;",
         "sqrt(x)^3 cannot be followed at t = 0: its terms leave the range of numbers"},
        {"x' = sqrt(t - 1);", "sqrt(t - 1) leaves its domain at t = 0"},
        {"x' = 1/t;", "1/t has no finite value at t = 0"},
        {"x' = asin(t);", "asin(t) comes to the edge of its domain at t = 1"},
    };
    for (const auto& [text, failure] : cases) {
        Solved solved(text);
        const std::string told = failureOf(solved, 2);
        EXPECT_NE(told.find(failure), std::string::npos) << text << ": " << told;
    }
}

TEST(Watches, AddedInTheMiddleOfARunSeeZerosFromThereOn) {
    Solved solved("x'' = -x & 1;");
    solved.to(2);
    EXPECT_EQ(solved.run.watch(solved.problem.expression("x")), 0u);
    const real middle = (solved.run.stepBegin() + solved.run.time()) / 2;
    EXPECT_TRUE(agree(solved.at("x", middle), std::cos(middle), 1e-18L));
    std::vector<real> zeros;
    while (solved.run.step(10)) {
        for (const ZeroCrossing& zero : solved.run.crossings()) zeros.push_back(zero.time);
    }
    ASSERT_EQ(zeros.size(), 2u);
    EXPECT_TRUE(agree(zeros[0], 1.5L * pi, 2e-18L));
    EXPECT_TRUE(agree(zeros[1], 2.5L * pi, 2e-18L));
}

TEST(Watches, ReportInTheOrderOfTheRunAndByDirection) {
    for (const real end : {7.0L, -7.0L}) {
        Solved solved("x'' = -x & 0; x'(0) = 1;");
        solved.run.watch(solved.problem.expression("x"));
        solved.run.watch(solved.problem.expression("x - 0.5"), Crossing::Up);
        solved.run.watch(solved.problem.expression("x - 0.5"), Crossing::Down);
        std::vector<std::size_t> watched;
        real last = 0;
        while (solved.run.step(end)) {
            for (const ZeroCrossing& zero : solved.run.crossings()) {
                EXPECT_GE(std::fabs(zero.time), std::fabs(last));
                last = zero.time;
                watched.push_back(zero.watched);
            }
        }
        // sin t backwards is -sin: below one half until it comes from there at pi + pi/6.
        const std::vector<std::size_t> expected =
            end > 0 ? std::vector<std::size_t>{1, 2, 0, 0, 1} : std::vector<std::size_t>{0, 1, 2, 0};
        EXPECT_EQ(watched, expected);
    }
}

TEST(Watches, SeeTwoZerosInOneStep) {
    Solved solved("x'' = -2 & 0; x'(0) = 2;");
    solved.run.watch(solved.problem.expression("x - 0.999999"));
    std::vector<real> zeros;
    while (solved.run.step(2)) {
        for (const ZeroCrossing& zero : solved.run.crossings()) zeros.push_back(zero.time);
    }
    // x = 2t - t^2
    ASSERT_EQ(zeros.size(), 2u);
    EXPECT_TRUE(agree(zeros[0], 1 - 0.001L, 1e-15L));
    EXPECT_TRUE(agree(zeros[1], 1 + 0.001L, 1e-15L));
}

TEST(Readouts, OfAProblemWithoutVariablesFollowTheTime) {
    Solved solved("y = acos(t)*2;");
    solved.to(1);
    EXPECT_TRUE(agree(solved.at("y", 0.5L), 2 * pi / 3, 1e-18L));
}

TEST(Readouts, KeepDigitsNearZero) {
    Solved solved("x' = 0 & 1e-15; y = exp(x) - 1; z = 1 - exp(x);");
    EXPECT_TRUE(agree(solved("y"), std::expm1(1e-15L), 1e-33L));
    EXPECT_TRUE(agree(solved("z"), -std::expm1(1e-15L), 1e-33L));
}

TEST(Tolerances, BoundTheError) {
    for (const real tolerance : {0.1L, 1e-3L, 1e-6L, 1e-9L, 1e-12L, 1e-15L, 1e-18L}) {
        IntegratorOptions options;
        options.tolerance = tolerance;
        Solved solved("x'' = -x & 1; y' = -2*t*y & 1;", options);
        solved.to(3);
        EXPECT_TRUE(agree(solved("x"), std::cos(3.0L), tolerance + 2e-19L)) << static_cast<double>(tolerance);
        EXPECT_TRUE(agree(solved("y"), std::exp(-9.0L), tolerance)) << static_cast<double>(tolerance);
    }
}

}  // namespace
