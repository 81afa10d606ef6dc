// SPDX-License-Identifier: MIT
// How far rounding may have moved a value.
#include "adaptive/rounding.hpp"

#include <gtest/gtest.h>

#include <string>

#include "adaptive/lowering.hpp"
#include "lang/problem_content.hpp"
#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

/// Of the rate of x at x = `x`, in units of 2^-64.
real roundingOfRate(const std::string& formula, real x) {
    const Problem problem = Problem::fromText("x' = " + formula + ";");
    const ProblemContent& content = ProblemAccess::of(problem);
    const ValueSystem system = lower(*content.graph, {content.variables[0].rate}, {});
    std::vector<real> values(system.size(), x);
    for (ValueIndex i = 1; i < system.size(); ++i) {
        const Value& value = system.values[i];
        const auto of = [&](ValueIndex operand) { return operand == Value::none ? 0 : values[operand]; };
        values[i] = firstTerm(value, of(value.a), of(value.b), of(value.side));
    }
    return roundingOf(system, values)[system.rates[0]];
}

TEST(Rounding, OfADifferenceIsThatOfItsOperands) {
    // 3*1000 is off by twice its size, 2 less than that.
    EXPECT_EQ(roundingOfRate("3*x - 2", 1000), 2998 + 6000);
    EXPECT_EQ(roundingOfRate("x - 1000", 1000), 1000) << "though the value is zero";
}

TEST(Rounding, GrowsWithTheSlopeOfAFunction) {
    EXPECT_EQ(roundingOfRate("sqrt(x)", 4), 2 + 1);
    EXPECT_EQ(roundingOfRate("1/x", 4), 0.25L + 0.25L);
    EXPECT_EQ(roundingOfRate("x*x", 3), 9 + 18);
    EXPECT_EQ(roundingOfRate("x^-1.5", 4), 0.125L + 1.5L * 0.125L);
}

TEST(Rounding, AtTheZeroOfARootIsNoNumberThatCounts) { EXPECT_EQ(roundingOfRate("sqrt(x)", 0), 0); }

TEST(Rounding, DoesNotStopRunsWhoseFunctionsSeeNothingElse) {
    for (const char* text : {"x'' = -x & 1; y' = sin(x^2 + x'^2 - 1);", "x' = x & 1; y' = tanh(x/3 - x*(1/3));"}) {
        Integrator integrator(Problem::fromText(text));
        while (integrator.step(1)) continue;
        EXPECT_LT(integrator.statistics().steps, 20u) << text;
    }
}

}  // namespace
