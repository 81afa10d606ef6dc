// SPDX-License-Identifier: MIT
// Formulas in messages: brackets where they are needed, names as they are written, and an end to what is long.
#include "expr/formula_text.hpp"

#include "classic/first_not_finite.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class FormulaText : public NodeTest {
protected:
    /// The definition of z, as it is after the preparation.
    std::string of(const std::string& definition) {
        prepareText(*this, "z = " + definition + "; x'' = -x & 1; y' = x & 2;");
        return formulaText(*system.equations.find("z")->rightHandSide());
    }
};

TEST_F(FormulaText, HasNoMoreBracketsThanItNeeds) {
    EXPECT_EQ(of("x*y + y/x"), "x*y + y/x");
    EXPECT_EQ(of("(x + y)*(x - y)"), "(x + y)*(x - y)");
    EXPECT_EQ(of("x - (y - x) - y"), "x - (y - x) - y");
    EXPECT_EQ(of("x/(y*x)/y"), "x/(y*x)/y");
    EXPECT_EQ(of("-(x + y)*(-x)"), "-(x + y)*(-x)");
    EXPECT_EQ(of("2.5 - x*t"), "2.5 - x*t");
}

TEST_F(FormulaText, WritesDerivativesWithApostrophes) { EXPECT_EQ(of("x' + y"), "x' + y"); }

TEST_F(FormulaText, ShowsVariablesOfAFunctionAsTheFunction) {
    EXPECT_EQ(of("sqrt(x*x + exp(-y))"), "sqrt(x*x + exp(-y))");
    EXPECT_EQ(describe(*system.equations.find("%0")), "function exp(-y)");
    EXPECT_EQ(describe(*system.equations.find("x%1")), "variable \"x%1\"");
}

TEST_F(FormulaText, IsCutWhereItIsLongOrDeep) {
    std::string sum = "x";
    for (int i = 0; i < 39; ++i) sum += " + x";
    EXPECT_EQ(of(sum), "x + x + x + x + x + x + x + x + x + x + x + x + x + x + x + ...");
    std::string deep = "y";
    for (int i = 0; i < 100000; ++i) deep += " - x";
    EXPECT_LT(of(deep).size(), 70u);
}

class FirstNotFinite : public NodeTest {
protected:
    std::string of(const std::string& text) {
        prepareText(*this, text);
        return firstNotFinite(*system.equations.find("y"));
    }
};

TEST_F(FirstNotFinite, IsAQuotientOfFiniteNumbers) {
    EXPECT_EQ(of("y' = 1 + 2/(x - 1); x' = 1 & 1;"), "the quotient 2/(x - 1) is infinite");
    EXPECT_EQ(of("y' = y/x; x' = 1;"), "the quotient y/x is not a number");
}

TEST_F(FirstNotFinite, IsFoundBehindOtherVariables) {
    EXPECT_EQ(of("y' = z; z' = u; u' = 1/y;"), "the quotient 1/y is infinite");
}

TEST_F(FirstNotFinite, IsTheInnerOfTwoFunctions) {
    EXPECT_EQ(of("y' = exp(sqrt(x)); x' = 1 & -1;"), "the function sqrt(x) is not a number");
}

TEST_F(FirstNotFinite, IsAStartValueThatNobodyMade) {
    EXPECT_EQ(of("y' = x; x' = 1 & ln(-1);"), "the value of x is not a number");
}

TEST_F(FirstNotFinite, IsNothingWhereEverythingIsFinite) { EXPECT_EQ(of("y' = 1/(x + 1) + sqrt(x + 1); x' = 1;"), ""); }

}  // namespace
