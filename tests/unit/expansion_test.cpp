// SPDX-License-Identifier: MIT
// How the preparation rewrites whole systems: names, order, start values, and right-hand sides built on demand.
#include "expand/expansion.hpp"

#include <cmath>

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Preparation : public NodeTest {
protected:
    std::string prepared(const std::string& text) {
        prepareText(*this, text);
        return dumpOf(system.equations);
    }
    real startOf(const std::string& name) const { return system.equations.resolve(name)->startValue(); }
    Ending endingWith(const std::string& text) {
        return endingOf([&] { prepareText(*this, text); });
    }
};

TEST_F(Preparation, ReplacesASineByTwoVariables) {
    EXPECT_EQ(prepared("y' = sin(t) & 0;"),
              "DIF: \t%0' = [%1] & 0;\n"
              "DIF: \t%1' = (-[%0]) & 1;\n"
              "DIF: \ty' = [%0] & 0;\n");
}

TEST_F(Preparation, WritesTheDerivativeOfTheTimeOutWithTheSwitchOff) {
    limits.simplifySmall = false;
    EXPECT_EQ(prepared("y' = sin(t) & 0;"),
              "DIF: \t%0' = ([%1] * 1) & 0;\n"
              "DIF: \t%1' = ((-[%0]) * 1) & 1;\n"
              "DIF: \ty' = [%0] & 0;\n");
}

TEST_F(Preparation, ExpandsInnerFunctionsFirst) {
    EXPECT_EQ(prepared("y' = sin(sin(t));"),
              "DIF: \t%0' = [%1] & 0;\n"
              "DIF: \t%1' = (-[%0]) & 1;\n"
              "DIF: \t%2' = ([%3] * [%1]) & 0;\n"
              "DIF: \t%3' = ((-[%2]) * [%1]) & 1;\n"
              "DIF: \ty' = [%2] & 0;\n");
}

TEST_F(Preparation, ExpandsTheRightOperandFirst) {
    for (const std::string symbol : {" + ", " - ", " * ", " / "}) {
        Workbench fresh;
        prepareText(fresh, "y' = exp(t)" + symbol + "tan(t);");
        EXPECT_EQ(dumpOf(fresh.system.equations),
                  "DIF: \t%0' = (1 + ([%0] * [%0])) & 0;\n"
                  "DIF: \t%1' = [%1] & 1;\n"
                  "DIF: \ty' = ([%1]" +
                      symbol + "[%0]) & 0;\n");
    }
}

TEST_F(Preparation, SharesNothingBetweenTwoUsesOfOneFunction) {
    EXPECT_EQ(prepared("y' = sin(t) + sin(t);"),
              "DIF: \t%0' = [%1] & 0;\n"
              "DIF: \t%1' = (-[%0]) & 1;\n"
              "DIF: \t%2' = [%3] & 0;\n"
              "DIF: \t%3' = (-[%2]) & 1;\n"
              "DIF: \ty' = ([%2] + [%0]) & 0;\n");
}

TEST_F(Preparation, NumbersFunctionsInTheOrderOfNamesAndSortsThemAsText) {
    std::string text;
    for (const char name : {'k', 'j', 'i', 'h', 'g', 'f', 'e', 'd', 'c', 'b', 'a'}) {
        text += std::string(1, name) + "' = exp(t);";
    }
    prepareText(*this, text);
    std::string order;
    for (const Differential& variable : system.equations) order += variable.name() + ' ';
    EXPECT_EQ(order, "%0 %1 %10 %2 %3 %4 %5 %6 %7 %8 %9 a b c d e f g h i j k ");
    EXPECT_EQ(printed(system.equations.resolve("a")->rightHandSide()), "[%0]");
    EXPECT_EQ(printed(system.equations.resolve("k")->rightHandSide()), "[%10]");
}

TEST_F(Preparation, FoldsAFunctionOfAConstant) { EXPECT_EQ(prepared("y' = sin(5);"), "DIF: \ty' = -0.958924 & 0;\n"); }

TEST_F(Preparation, ExpandsAFunctionOfAConstantAlgebraicVariable) {
    EXPECT_EQ(prepared("x = 5; y' = sin(x);"),
              "DIF: \t%0' = 0 & -0.958924;\n"
              "DIF: \t%1' = 0 & 0.283662;\n"
              "ALG: \tx = 5;\n"
              "DIF: \ty' = [%0] & 0;\n");
}

TEST_F(Preparation, LeavesTruncationInPlaceAndExpandsItsOperand) {
    EXPECT_EQ(prepared("y' = trunc(3 * exp(t));"),
              "DIF: \t%0' = [%0] & 1;\n"
              "DIF: \ty' = trunc((3 * [%0])) & 0;\n");
}

TEST_F(Preparation, TakesATruncationInsideAFunctionAsConstant) {
    EXPECT_EQ(prepared("x' = 1 & 2.5; y' = exp(trunc(x));"),
              "DIF: \t%0' = 0 & 7.38906;\n"
              "DIF: \tx' = 1 & 2.5;\n"
              "DIF: \ty' = [%0] & 0;\n");
}

TEST_F(Preparation, ExpandsASineOfItsOwnVariable) {
    EXPECT_EQ(prepared("y' = sin(y) & 1;"),
              "DIF: \t%0' = ([%1] * [%0]) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * [%0]) & 0.540302;\n"
              "DIF: \ty' = [%0] & 1;\n");
}

TEST_F(Preparation, ExpandsNestedSinesOfTheirOwnVariable) {
    EXPECT_EQ(prepared("y' = sin(sin(y)) & 1;"),
              "DIF: \t%0' = ([%1] * [%2]) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * [%2]) & 0.540302;\n"
              "DIF: \t%2' = ([%3] * ([%1] * [%2])) & 0.745624;\n"
              "DIF: \t%3' = ((-[%2]) * ([%1] * [%2])) & 0.666367;\n"
              "DIF: \ty' = [%2] & 1;\n");
}

TEST_F(Preparation, ExpandsAPendulumWhateverItsNames) {
    EXPECT_EQ(prepared("omega' = -sin(phi); phi' = omega & 1;"),
              "DIF: \t%0' = ([%1] * [omega]) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * [omega]) & 0.540302;\n"
              "DIF: \tomega' = (-[%0]) & 0;\n"
              "DIF: \tphi' = [omega] & 1;\n");
}

TEST_F(Preparation, ExpandsAPendulumWithTheAngleFirst) {
    EXPECT_EQ(prepared("b' = -sin(a); a' = b & 1;"),
              "DIF: \t%0' = ([%1] * [b]) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * [b]) & 0.540302;\n"
              "DIF: \ta' = [b] & 1;\n"
              "DIF: \tb' = (-[%0]) & 0;\n");
}

TEST_F(Preparation, ExpandsASecondOrderPendulum) {
    EXPECT_EQ(prepared("y'' = -sin(y) & 1;"),
              "DIF: \t%0' = ([%1] * [y%1]) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * [y%1]) & 0.540302;\n"
              "DIF: \ty' = [y%1] & 1;\n"
              "DIF: \ty%1' = (-[%0]) & 0;\n");
}

TEST_F(Preparation, ExpandsSinesOfEachOther) {
    EXPECT_EQ(prepared("y' = sin(z) & 1; z' = sin(y) & 2;"),
              "DIF: \t%0' = ([%1] * [%2]) & 0.909297;\n"
              "DIF: \t%1' = ((-[%0]) * [%2]) & -0.416147;\n"
              "DIF: \t%2' = ([%3] * [%0]) & 0.841471;\n"
              "DIF: \t%3' = ((-[%2]) * [%0]) & 0.540302;\n"
              "DIF: \ty' = [%0] & 1;\n"
              "DIF: \tz' = [%2] & 2;\n");
}

TEST_F(Preparation, LooksThroughAlgebraicVariables) {
    EXPECT_EQ(prepared("x = sin(y); y' = x & 1; z' = exp(x);"),
              "DIF: \t%0' = ([%1] * {x}) & 0.841471;\n"
              "DIF: \t%1' = ((-[%0]) * {x}) & 0.540302;\n"
              "DIF: \t%2' = (([%1] * {x}) * [%2]) & 2.31978;\n"
              "ALG: \tx = [%0];\n"
              "DIF: \ty' = {x} & 1;\n"
              "DIF: \tz' = [%2] & 0;\n");
}

TEST_F(Preparation, LooksThroughAlgebraicVariablesThatComeLater) {
    EXPECT_EQ(prepared("a' = exp(x); x = sin(y); y' = x & 1;"),
              "DIF: \t%0' = (([%2] * {x}) * [%0]) & 2.31978;\n"
              "DIF: \t%1' = ([%2] * {x}) & 0.841471;\n"
              "DIF: \t%2' = ((-[%1]) * {x}) & 0.540302;\n"
              "DIF: \ta' = [%0] & 0;\n"
              "ALG: \tx = [%1];\n"
              "DIF: \ty' = {x} & 1;\n");
}

TEST_F(Preparation, EndsForAnAlgebraicLoopInsideAFunction) {
    const Ending ending = endingWith("x = y; y = x; z' = sin(x);");
    EXPECT_EQ(ending.text.rfind("#(ERR) ", 0), 0u) << ending;
    EXPECT_EQ(ending.text.find('\n'), ending.text.size() - 1) << ending;
    EXPECT_EQ(ending.status, 1);
}

TEST_F(Preparation, AcceptsAnAlgebraicLoopOutsideOfFunctions) {
    EXPECT_EQ(prepared("x = y; y = x; z' = x;"),
              "ALG: \tx = {y};\n"
              "ALG: \ty = {x};\n"
              "DIF: \tz' = {x} & 0;\n");
}

TEST_F(Preparation, EndsForAnUndefinedName) {
    EXPECT_EQ(endingWith("y' = z;"), (Ending{"\n#(ERR) Reference to undefined equation \"z\"\n", 1}));
}

TEST_F(Preparation, EndsForAnUndefinedNameInsideAFunction) {
    EXPECT_EQ(endingWith("y' = sin(2*z);"), (Ending{"\n#(ERR) Reference to undefined equation \"z\"\n", 1}));
}

TEST_F(Preparation, EndsForFunctionsWithoutAnExpansion) {
    EXPECT_EQ(endingWith("y' = acos(t);"), (Ending{"#(ERR) ACos::ConvertExpr() is not implemented\n", 1}));
    EXPECT_EQ(endingWith("y = 1 + asinh(t);"), (Ending{"#(ERR) ASinh::ConvertExpr() is not implemented\n", 1}));
    EXPECT_EQ(endingWith("y = exp(acosh(t+1));"), (Ending{"#(ERR) ACosh::ConvertExpr() is not implemented\n", 1}));
}

TEST_F(Preparation, DoesNotSeeInitialValuesOfVariablesThatComeLater) {
    prepareText(*this, "a' = sin(b); b' = 1 & 5; b(0) = 2;");
    EXPECT_EQ(startOf("%0"), sinl(unknown(5)));
    EXPECT_EQ(startOf("b"), 2);
}

TEST_F(Preparation, SeesInitialValuesOfVariablesThatCameBefore) {
    prepareText(*this, "c' = sin(b); b' = 1 & 5; b(0) = 2;");
    EXPECT_EQ(startOf("%0"), sinl(unknown(2)));
}

TEST_F(Preparation, AppliesAnInitialValueAfterTheVariablesOwnFunctions) {
    prepareText(*this, "b' = sin(b) & 5; b(0) = 2;");
    EXPECT_EQ(startOf("%0"), sinl(unknown(5)));
    EXPECT_EQ(startOf("b"), 2);
    EXPECT_EQ(system.equations.resolve("b")->result(), 2);
}

TEST_F(Preparation, AsksAgainForAnInitialValueThatHasChanged) {
    prepareText(*this, "a' = sin(m); m = 2*x; x' = 1 & 5; x(0) = 2; z' = sin(m);");
    EXPECT_EQ(startOf("%0"), sinl(unknown(10)));
    EXPECT_EQ(startOf("%2"), sinl(unknown(4)));
}

TEST_F(Preparation, GivesDerivativesTheirInitialValues) {
    EXPECT_EQ(prepared("y'' = -y & 3; y'(0) = 7;"),
              "DIF: \ty' = [y%1] & 3;\n"
              "DIF: \ty%1' = (-[y]) & 7;\n");
}

TEST_F(Preparation, MakesTemporariesLikeAnyVariable) {
    calculus.stepStamp = 4;
    prepareText(*this, "y' = exp(t+1);");
    const Differential& made = *system.equations.resolve("%0");
    EXPECT_EQ(made.type(), ExprType::Differential);
    EXPECT_EQ(made.startValue(), expl(unknown(1)));
    EXPECT_EQ(made.result(), expl(unknown(1)));
    EXPECT_EQ(made.resultStamp(), 4);
    EXPECT_EQ(made.termStamp(), 3);
}

}  // namespace
