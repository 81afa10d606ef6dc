// SPDX-License-Identifier: MIT
// What a text means: names, start values, settings, formulas, and the text that it is explained by.
#include "zirk/problem.hpp"

#include <cmath>

#include "tests/unit/problem_fixture.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

using Names = std::vector<std::string>;

TEST(ProblemTest, NamesComeInTheOrderOfTheTextWithDerivativesBelowTheOrder) {
    EXPECT_EQ(Problem::fromText("k = 2; x'' = -k*x; a = x; y' = 1;").names(), (Names{"k", "x", "x'", "a", "y"}));
    EXPECT_EQ(Problem::fromText("y''' = 1;").names(), (Names{"y", "y'", "y''"}));
    EXPECT_EQ(Problem::fromText("y'3 = 1;").names(), (Names{"y", "y'", "y''"}));
    EXPECT_EQ(Problem::fromText("y'6 = 1; y(0) = 1;").names(), (Names{"y", "y'", "y''", "y'''", "y'4", "y'5"}));
}

TEST(ProblemTest, NamesMayBeUsedBeforeTheyAreDefined) {
    const Problem problem = Problem::fromText("x' = k*v; v = w + 1; w = x*t; k = 2;");
    // 2*(3*5 + 1) at x = 3, t = 5.
    EXPECT_EQ(valueOf(problem.expression("x'"), 5, {3}), 32);
}

TEST(ProblemTest, DefinitionsAreSharedAndNotCopied) {
    const Problem problem = Problem::fromText("r = sqrt(x*x + 1); x' = x/r; y' = y/r; z = r;");
    const ProblemContent& content = ProblemAccess::of(problem);
    const FormulaGraph& graph = *content.graph;
    EXPECT_EQ(graph[content.variables[0].rate].right, content.names[0].formula);
    EXPECT_EQ(graph[content.variables[1].rate].right, content.names[0].formula);
    EXPECT_EQ(content.names[3].formula, content.names[0].formula);
}

TEST(ProblemTest, DerivativesBelowTheOrderAreVariablesAndTheHighestIsItsRightHandSide) {
    const Problem problem = Problem::fromText("x'' = 7*x - x'; y' = x'' + x';");
    const ProblemContent& content = ProblemAccess::of(problem);
    EXPECT_EQ(content.variables[0].rate, content.variables[1].node);
    EXPECT_EQ(valueOf(problem.expression("x''"), 0, {2, 5}), 9);
    EXPECT_EQ(valueOf(problem.expression("y'"), 0, {2, 5}), 14);
    EXPECT_EQ(valueOf(problem.expression("x'2"), 0, {2, 5}), 9);
    EXPECT_EQ(valueOf(problem.expression("x'0"), 0, {2, 5}), 2);
}

TEST(ProblemTest, ANamedPartIsANodeOfTheProblemAndOtherFormulasHaveGraphsOfTheirOwn) {
    const Problem problem = Problem::fromText("x' = k*x; k = t + 1;");
    const FormulaGraph* graph = ProblemAccess::of(problem).graph.get();
    const NodeIndex size = graph->size();
    for (const char* name : {"x", "k", "x'", " ( x ) "}) {
        EXPECT_EQ(&ExpressionAccess::graphOf(problem.expression(name)), graph) << name;
    }
    const Expression product = problem.expression("k*x*t");
    EXPECT_NE(&ExpressionAccess::graphOf(product), graph);
    EXPECT_EQ(graph->size(), size);
    EXPECT_EQ(valueOf(product, 2, {5}), 30);
    EXPECT_EQ(product.text(), "k*x*t");
}

TEST(ProblemTest, StartValuesAreFormulasOfConstantsAndZeroWhereTheTextIsSilent) {
    const Problem problem = Problem::fromText("x'' = 0 & 2*x0^2 - 1; x0 = one + 2; one = 1; x'(0) = -pi; y' = 1;");
    const auto& variables = ProblemAccess::of(problem).variables;
    EXPECT_EQ(variables[0].start, 17);
    EXPECT_EQ(variables[1].start, -3.14159265358979323846264338327950288L);
    EXPECT_EQ(variables[2].start, 0);
}

TEST(ProblemTest, TheTimeOfStartValuesIsAFormulaThatEqualsTheStart) {
    ProblemOptions options;
    options.start = 0.75L;
    const Problem problem = Problem::fromText("x' = 1; x(3*q) = 4; q = 1/4;", options);
    EXPECT_EQ(ProblemAccess::of(problem).variables[0].start, 4);
    EXPECT_EQ(problem.start(), 0.75L);
    EXPECT_EQ(errorOf("x' = 1;\nx(1) = 2;"),
              "2:3: start value of x is given for t = 1, but the run starts at t = 0 [1]");
    EXPECT_EQ(errorOf("x'' = 1; x'(-(1)) = 2;", options),
              "1:13: start value of x' is given for t = -1, but the run starts at t = 0.75 [-]");
}

TEST(ProblemTest, SettingsReplaceDefinitionsAndStartValues) {
    const auto options = withSettings({{"k", "2*m"}, {"x", "k + 1"}, {"x'", "-k"}, {"k", "3*m"}});
    const Problem problem = Problem::fromText("x'' = k*x & 1; x'(0) = 2; k = t; m = 5;", options);
    const auto& variables = ProblemAccess::of(problem).variables;
    EXPECT_EQ(problem.constant("k"), 15) << "the last setting of a name counts";
    EXPECT_EQ(variables[0].start, 16) << "a setting sees what others set";
    EXPECT_EQ(variables[1].start, -15);
    EXPECT_EQ(valueOf(problem.expression("x''"), 0, {2}), 30);
}

TEST(ProblemTest, ASettingIsSeenByWhatTheTextMakesFromIt) {
    const Problem problem = Problem::fromText("x' = 1 & k; l = 2*k; k = 1/0;", withSettings({{"k", "4"}}));
    EXPECT_EQ(ProblemAccess::of(problem).variables[0].start, 4);
    EXPECT_EQ(problem.constant("l + k"), 12);
}

TEST(ProblemTest, ConstantsMayNameDefinitionsThatAreConstant) {
    const Problem problem = Problem::fromText("x' = x; k = 2*m; m = 3;");
    EXPECT_EQ(problem.constant("2^k + pi - pi"), 64);
    EXPECT_EQ(problem.constant(" ( 1/3 ) "), 1.0L / 3);
    EXPECT_THROW(problem.constant("x"), ParseError);
    EXPECT_THROW(problem.constant("t"), ParseError);
    EXPECT_THROW(problem.constant("x'"), ParseError);
}

TEST(ProblemTest, WhatIsExplainedReadsBack) {
    ProblemOptions options;
    options.start = 2;
    const std::string text = "k = 2; e = x'*x' + k*x^2; x'' = -x - k/3*x' + sin(t) & k; x'(2) = -1/4; f = x*x^1 - t;";
    const std::string expected =
        "x'' = -x - 0.6666666666666666667*x' + sin(t) & 2;\n"
        "x'(2) = -0.25;\n"
        "k = 2;\n"
        "e = x'*x' + 2*x^2;\n"
        "f = x*x - t;\n";
    EXPECT_EQ(Problem::fromText(text, options).explain(), expected);
    EXPECT_EQ(Problem::fromText(expected, options).explain(), expected);
}

TEST(ProblemTest, AnExplanationNamesWhatIsSharedInsteadOfRepeatingIt) {
    EXPECT_EQ(Problem::fromText("x' = -(x*y); y' = x' + 2*p; p = y*x; q = x*y; z'' = z'0 + p;").explain(),
              "x' = -p & 0;\ny' = x' + 2*p & 0;\nz'' = p + z & 0;\nz'(0) = 0;\np = x*y;\nq = p;\n");
}

TEST(ProblemTest, ATextMayHoldDefinitionsOnly) { EXPECT_EQ(Problem::fromText("a = 2*t;").names(), Names{"a"}); }

TEST(ProblemTest, AByteOrderMarkIsSkippedAndBlanksAndCommentsMeanNothing) {
    const std::string blanks = "\xef\xbb\xbf/* \xe9 * / ** **/x '= 1\f\v\r\n&// 2;\n3;//";
    EXPECT_EQ(Problem::fromText(blanks).explain(), "x' = 1 & 3;\n");
    EXPECT_EQ(errorOf("\xef\xbb\xbfx ' '= 1"), "1:8: unexpected \"'\"; expected \"=\" or \"(\" [']");
}

}  // namespace
