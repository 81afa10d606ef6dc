// SPDX-License-Identifier: MIT
// Formulas become values with few sums, and what they share is computed once.
#include "adaptive/lowering.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "adaptive/arrangement.hpp"
#include "lang/problem_content.hpp"

using namespace zirk;

namespace {

ValueSystem systemOf(const std::string& text) {
    const Problem problem = Problem::fromText(text);
    const ProblemContent& content = ProblemAccess::of(problem);
    std::vector<NodeIndex> rates;
    for (const ProblemContent::Variable& variable : content.variables) rates.push_back(variable.rate);
    return lower(*content.graph, rates, {});
}

/// Whether a term of the value is a sum over terms.
bool isSum(const Value& value) {
    switch (value.law) {
        case Law::Product:
        case Law::Quotient:
        case Law::Reciprocal:
        case Law::Root:
        case Law::Power:
        case Law::ProductRate:
        case Law::QuotientRate:
        case Law::SquareLaw:
            return !value.isConstant;
        default:
            return false;
    }
}

long sumsOf(const std::string& formula) {
    const ValueSystem system = systemOf("x' = " + formula + " & 0.5; y' = 1;");
    return std::count_if(system.values.begin() + system.variables, system.values.end(), isSum);
}

long valuesOf(const std::string& text, Law law) {
    const ValueSystem system = systemOf(text);
    return std::count_if(system.values.begin() + system.variables, system.values.end(),
                         [law](const Value& value) { return value.law == law; });
}

TEST(Lowering, TakesOneSumForExponentialsLogarithmsQuotientsRootsAndPowers) {
    for (const char* formula :
         {"exp(x)", "ln(x)", "sqrt(x)", "x*y", "x/y", "3/x", "x^-2", "x^0.5", "x^1.7", "x^2", "x*x", "x^-1", "2^x"}) {
        EXPECT_EQ(sumsOf(formula), 1) << formula;
    }
}

TEST(Lowering, TakesTwoSumsForFunctionsInPairs) {
    for (const char* formula : {"sin(x)", "cos(x)", "tan(x)", "cotan(x)", "sinh(x)", "cosh(x)", "tanh(x)", "cotanh(x)",
                                "atan(x)", "acotan(x)", "atanh(x)", "argcotanh(x)", "x^3", "x^4", "y^x"}) {
        EXPECT_EQ(sumsOf(formula), formula == std::string("y^x") ? 3 : 2) << formula;
    }
}

TEST(Lowering, TakesThreeSumsForFunctionsOverRoots) {
    for (const char* formula : {"asin(x)", "acos(x)", "asinh(x)", "acosh(x)"}) EXPECT_EQ(sumsOf(formula), 3) << formula;
}

TEST(Lowering, TakesNoSumForWhatIsLinear) {
    for (const char* formula :
         {"2*x", "x/3", "x + y", "x - 1", "1 - x", "-x", "t", "trunc(x)", "trunc(x)*y", "y/trunc(x + 2)", "2 + 3*t"}) {
        EXPECT_EQ(sumsOf(formula), 0) << formula;
    }
}

TEST(Lowering, SharesSinesAndCosinesOfOneOperand) {
    EXPECT_EQ(sumsOf("sin(x) + cos(x)"), 2);
    EXPECT_EQ(sumsOf("sin(x) + cos(y)"), 4);
    EXPECT_EQ(sumsOf("sinh(x) + cosh(x)"), 2);
    EXPECT_EQ(sumsOf("exp(x) + exp(x)*y"), 2);
    EXPECT_EQ(sumsOf("asin(x) + acos(x)"), 4) << "the square and the root once";
    EXPECT_EQ(sumsOf("tan(x) + tan(x)/y"), 3);
}

TEST(Lowering, SharesTheSquaresOfPowers) {
    EXPECT_EQ(sumsOf("x^4 + x^2"), 2);
    EXPECT_EQ(sumsOf("x^15"), 6);
}

TEST(Lowering, SharesSumsOfProductsThatDifferByAFactor) {
    EXPECT_EQ(sumsOf("2*x*y + y*x/3 - x*y"), 1);
    EXPECT_EQ(sumsOf("2*x/y - 3*x/y"), 1);
    EXPECT_EQ(sumsOf("(x - y)*x + 5*(y - x)*x"), 1) << "a difference the other way round";
    // x^2 + y^2, its power, and one product for each direction; the two bodies differ by sign and mass.
    EXPECT_EQ(valuesOf("x' = 3*(y - x)/sqrt((x - y)^2 + 1)^3; y' = 7*(x - y)/sqrt((x - y)^2 + 1)^3;", Law::Product), 2);
}

TEST(Lowering, TakesOneValueForOddPowersOfARoot) {
    EXPECT_EQ(valuesOf("x' = sqrt(x)^3;", Law::Power), 1);
    EXPECT_EQ(valuesOf("x' = t/sqrt(x)^3;", Law::Quotient), 0);
    EXPECT_EQ(valuesOf("x' = t/x^2.5;", Law::Quotient), 0);
    EXPECT_EQ(valuesOf("x' = t/x^2;", Law::Quotient), 1) << "whole powers have a sign";
}

TEST(Lowering, KnowsWhatIsConstantOverAStep) {
    const ValueSystem system = systemOf("x' = sin(trunc(x))*trunc(t)/(trunc(t) + 1) - 2^trunc(t);");
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        const Law law = system.values[i].law;
        EXPECT_EQ(system.values[i].isConstant, law != Law::Time) << i;
    }
}

TEST(Lowering, MakesDerivativesThemselvesRates) {
    const ValueSystem system = systemOf("x''' = 0;");
    EXPECT_EQ(system.variables, 3u);
    EXPECT_EQ(system.rates[0], 1u);
    EXPECT_EQ(system.rates[1], 2u);
    EXPECT_EQ(system.values[system.rates[2]].law, Law::Constant);
    EXPECT_EQ(valuesOf("x''' = 0;", Law::Constant), 1);
}

TEST(Lowering, LeavesOutWhatNoRateNeeds) { EXPECT_EQ(systemOf("x' = -x; y = sin(x)*exp(t);").size(), 2u); }

TEST(ArrangedValues, StandBehindTheirOperandsAndNextToTheirLikes) {
    const ValueSystem system =
        arranged(systemOf("x' = sin(x*y) + exp(y)/z + trunc(t)*x & 1; y' = cos(x*y) - ln(x) & 1; z' = sqrt(x) + "
                          "tanh(y*z) + asin(z/9) & 1;"));
    const Arrangement arrangement(system, 20);
    ValueIndex next = system.variables;
    for (const Arrangement::Group& group : arrangement.groups) {
        EXPECT_EQ(group.begin, next);
        next = group.end;
        for (ValueIndex i = group.begin; i < group.end; ++i) {
            EXPECT_EQ(system.values[i].law, group.law);
            EXPECT_EQ(system.values[i].isConstant, system.values[group.begin].isConstant);
            for (const ValueIndex operand : sameOrderOperands(system.values[i]).of) {
                EXPECT_TRUE(operand == Value::none || operand < group.begin) << "no order within a group";
            }
        }
    }
    EXPECT_EQ(next, system.size());
    EXPECT_EQ(arrangement.constants.size() + arrangement.varying.size(), arrangement.groups.size());
}

TEST(ArrangedValues, MeanWhatTheyMeant) {
    const ValueSystem before = systemOf("x' = y & 1; y' = 0 - x; z' = y/x;");
    const ValueSystem after = arranged(before);
    ASSERT_EQ(after.size(), before.size());
    for (ValueIndex i = 0; i < before.variables; ++i) {
        EXPECT_EQ(after.values[after.rates[i]].law, before.values[before.rates[i]].law);
        EXPECT_EQ(after.values[after.rates[i]].formula, before.values[before.rates[i]].formula);
    }
    const Value& quotient = after.values[after.rates[2]];
    EXPECT_EQ(quotient.a, 1u);
    EXPECT_EQ(quotient.b, 0u);
}

TEST(Arrangements, GiveArraysRoomForAllTermsWithoutOverlap) {
    const ValueSystem system =
        arranged(systemOf("x' = sin(x*y) & 1; y' = x^1.5 + y/x + acosh(x + 2) & 1; z' = tan(z) + sqrt(y);"));
    const int order = 21;
    const Arrangement arrangement(system, order);
    std::vector<char> used(arrangement.cells, 0);
    for (const Arrangement::Array& array : arrangement.arrays) {
        for (int k = 0; k <= order; ++k) {
            const auto cell = static_cast<std::int64_t>(array.first) + static_cast<std::int64_t>(k) * array.step;
            ASSERT_GE(cell, 0);
            ASSERT_LT(cell, static_cast<std::int64_t>(arrangement.cells));
            EXPECT_EQ(used[static_cast<std::size_t>(cell)], 0);
            used[static_cast<std::size_t>(cell)] = 1;
        }
    }
}

}  // namespace
