// SPDX-License-Identifier: MIT
// The solution as a function of time, kept after the run.
#include "zirk/solution.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <vector>

namespace {

using zirk::Expression;
using zirk::Integrator;
using zirk::Problem;
using zirk::Readout;
using zirk::real;
using zirk::Solution;

Solution solved(const Problem& problem, real end) {
    Integrator run(problem);
    Solution solution(problem);
    while (run.step(end)) solution.add(run);
    return solution;
}

real valueAt(const Problem& problem, const Solution& solution, const char* formula, real time) {
    Readout readout(problem, {problem.expression(formula)});
    real value = 0;
    solution.read(readout, &time, 1, &value);
    return value;
}

/// Largest difference of anything that was read from the run itself; a NaN counts.
real worstDifference(const char* text, real end, const std::vector<const char*>& formulas) {
    const Problem problem = Problem::fromText(text);
    std::vector<Expression> expressions;
    for (const char* formula : formulas) expressions.push_back(problem.expression(formula));
    Readout readout(problem, expressions);
    const std::size_t width = readout.size();
    std::vector<real> times, seen;
    Integrator run(problem);
    Solution solution(problem);
    while (run.step(end)) {
        solution.add(run);
        for (const real share : {0.0L, 0.1L, 0.5L, 0.98765L, 1.0L}) {
            const real length = run.time() - run.stepBegin();
            times.push_back(share == 1 ? run.time() : run.stepBegin() + share * length);
            seen.resize(times.size() * width);
            run.read(readout, times.back(), &seen[seen.size() - width]);
        }
    }
    std::vector<real> kept(seen.size());
    solution.read(readout, times.data(), times.size(), kept.data());
    real worst = 0;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const real difference = std::fabs(kept[i] - seen[i]);
        if (!(difference <= worst)) worst = difference;
    }
    EXPECT_GT(solution.steps(), 2U);
    return worst;
}

TEST(Solution, GivesTheBitsThatTheRunGaveInEveryStep) {
    EXPECT_EQ(
        worstDifference("x' = 10*(y - x) & 1; y' = x*(28 - z) - y & 1; z' = x*y - 8/3*z & 1; r = sqrt(x*x + y*y);", 5,
                        {"x", "z'", "r", "x*t - y"}),
        0);
}

TEST(Solution, GivesTheBitsOfRunsBackwardsAndWithJumps) {
    EXPECT_EQ(worstDifference("x'' = -x & 1;", -20, {"x", "x'", "x''"}), 0);
    EXPECT_EQ(worstDifference("x' = trunc(t) - x & 1; y' = x;", 9, {"x", "y", "t"}), 0);
}

TEST(Solution, FollowsTheClosedForm) {
    const Problem problem = Problem::fromText("x'' = -x & 1; e = x*x + x'*x';");
    const Solution solution = solved(problem, 10);
    for (real t = 0; t <= 10; t += 0.37L) {
        EXPECT_LE(std::fabs(valueAt(problem, solution, "x", t) - std::cos(t)), 1e-17L);
        EXPECT_LE(std::fabs(valueAt(problem, solution, "x'", t) + std::sin(t)), 1e-17L);
        EXPECT_LE(std::fabs(valueAt(problem, solution, "e + t", t) - (1 + t)), 1e-17L);
    }
}

TEST(Solution, ReadsTimesInAnyOrderRowByRow) {
    const Problem problem = Problem::fromText("x' = 1; y' = 2*t;");
    const Solution solution = solved(problem, 4);
    Readout readout(problem, {problem.expression("x"), problem.expression("y")});
    const real times[] = {4, 0, 3, 1};
    real values[8];
    solution.read(readout, times, 4, values);
    const real expected[] = {4, 16, 0, 0, 3, 9, 1, 1};
    for (int i = 0; i < 8; ++i) EXPECT_LE(std::fabs(values[i] - expected[i]), 1e-17L) << i;
}

TEST(Solution, ContainsWhatLiesBetweenItsEnds) {
    const Problem problem = Problem::fromText("x' = x & 1;");
    const Solution solution = solved(problem, -2);
    EXPECT_TRUE(solution.contains(0) && solution.contains(-2) && solution.contains(-1));
    EXPECT_FALSE(solution.contains(0.001L) || solution.contains(-2.001L) || solution.contains(std::nanl("")));
    EXPECT_THROW(valueAt(problem, solution, "x", 0.001L), std::out_of_range);
    EXPECT_THROW(valueAt(problem, solution, "x", std::nanl("")), std::out_of_range);
}

TEST(Solution, IsTheStartValuesBeforeTheFirstStep) {
    zirk::ProblemOptions options;
    options.start = 3;
    const Problem problem = Problem::fromText("x' = x & 7;", options);
    const Solution solution(problem);
    EXPECT_EQ(solution.steps(), 0U);
    EXPECT_EQ(solution.begin(), 3);
    EXPECT_EQ(solution.end(), 3);
    EXPECT_EQ(valueAt(problem, solution, "x + t", 3), 10);
    EXPECT_THROW(valueAt(problem, solution, "x", 2), std::out_of_range);
}

TEST(Solution, TakesOnlyTheStepThatGoesOnWhereItEnds) {
    const Problem problem = Problem::fromText("x'' = -x & 1;");
    Integrator run(problem);
    Solution solution(problem);
    EXPECT_THROW(solution.add(run), std::invalid_argument) << "no step yet";
    run.step(50);
    solution.add(run);
    EXPECT_THROW(solution.add(run), std::invalid_argument) << "twice";
    run.step(50);
    run.step(50);
    EXPECT_THROW(solution.add(run), std::invalid_argument) << "one left out";
    Integrator other(Problem::fromText("x'' = -x & 1;"));
    other.step(50);
    EXPECT_THROW(Solution(problem).add(other), std::invalid_argument) << "another problem";
    Integrator back(problem);
    Solution there(problem);
    back.step(0.1L);
    there.add(back);
    back.step(-5);
    EXPECT_THROW(there.add(back), std::invalid_argument) << "turned back";
    EXPECT_EQ(solution.steps(), 1U);
}

TEST(Solution, ComesBackFromItsBytes) {
    const Problem problem = Problem::fromText("x'' = -x & 1; y' = x*y & 2;");
    const Solution solution = solved(problem, 7);
    const Solution again = Solution::restored(problem, solution.bytes());
    ASSERT_EQ(again.steps(), solution.steps());
    for (real t = 0; t <= 7; t += 0.1L) {
        EXPECT_EQ(valueAt(problem, again, "x'*y", t), valueAt(problem, solution, "x'*y", t));
    }
    EXPECT_EQ(valueAt(problem, again, "y", 7), valueAt(problem, solution, "y", 7));
    const Solution start(problem);
    EXPECT_EQ(Solution::restored(problem, start.bytes()).end(), 0);
}

TEST(Solution, RefusesBytesThatAreNone) {
    const Problem problem = Problem::fromText("x'' = -x & 1;");
    const std::string bytes = solved(problem, 7).bytes();
    EXPECT_THROW(Solution::restored(problem, ""), std::invalid_argument);
    EXPECT_THROW(Solution::restored(problem, bytes + "x"), std::invalid_argument);
    EXPECT_THROW(Solution::restored(Problem::fromText("x' = 1;"), bytes), std::invalid_argument);
    for (std::size_t size = 0; size < bytes.size(); size += 7) {
        EXPECT_THROW(Solution::restored(problem, bytes.substr(0, size)), std::invalid_argument) << size;
    }
    // The counts of terms of the first step.
    for (const std::size_t at : {20U, 24U}) {
        std::string wrong = bytes;
        wrong[at + 3] = '\x7f';
        EXPECT_THROW(Solution::restored(problem, wrong), std::invalid_argument) << at;
    }
}

}  // namespace
