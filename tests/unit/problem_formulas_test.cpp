// SPDX-License-Identifier: MIT
// Which operator binds tighter, and that formulas are written with the brackets that their meaning needs and no others.
#include <random>

#include "tests/unit/problem_fixture.hpp"

using namespace zirk;

namespace {

TEST(ProblemFormulas, BindAsMathematicsDoes) {
    const Problem problem = Problem::fromText("a' = 1; b' = 1; c' = 1;");
    const std::pair<const char*, const char*> pairs[] = {
        {"a - b - c", "(a - b) - c"},
        {"a - b + c", "(a - b) + c"},
        {"a/b/c", "(a/b)/c"},
        {"a/b*c", "(a/b)*c"},
        {"a + b*c", "a + (b*c)"},
        {"a*b + c", "(a*b) + c"},
        {"a*b^c", "a*(b^c)"},
        {"a^b*c", "(a^b)*c"},
        {"a^b^c", "a^(b^c)"},
        {"-a^b", "-(a^b)"},
        {"-a*b", "(-a)*b"},
        {"-a + b", "(-a) + b"},
        {"a^-b", "a^(-b)"},
        {"a^-b*c", "(a^(-b))*c"},
        {"a^-b + c", "(a^(-b)) + c"},
        {"a^-b^c", "a^(-(b^c))"},
        {"a^+b", "a^b"},
        {"a*-b", "a*(-b)"},
        {"a*-b^c", "a*(-(b^c))"},
        {"a/-b/c", "(a/(-b))/c"},
        {"a--b", "a + b"},
        {"- -a", "a"},
        {"-+-a", "a"},
        {"2^-1^2", "0.5"},
        {"-2^2", "0 - 4"},
        {"(-2)^2", "4"},
        {"2^3^2", "512"},
    };
    for (const auto& [left, right] : pairs) {
        EXPECT_EQ(valueOf(problem.expression(left), 0, {1.7L, 2.9L, 3.3L}),
                  valueOf(problem.expression(right), 0, {1.7L, 2.9L, 3.3L}))
            << left;
    }
    // Other brackets give other values here, so that the table can fail.
    EXPECT_NE(valueOf(problem.expression("(a^b)^c"), 0, {1.7L, 2.9L, 3.3L}),
              valueOf(problem.expression("a^(b^c)"), 0, {1.7L, 2.9L, 3.3L}));
}

TEST(ProblemFormulas, AreWrittenAsTheyAreMeant) {
    for (const char* formula : {"a - b - c",    "a - (b - c)", "a - (b + c)",
                                "a/b/c",        "a/(b/c)",     "a/(b*c)",
                                "a*b^c",        "(a*b)^c",     "a^b^c",
                                "(a^b)^c",      "-a^b",        "(-a)^b",
                                "-a*b",         "-(a*b)",      "a^-b",
                                "a^-b^c",       "a^(-b*c)",    "a^(b + c)",
                                "a*-b",         "-(a + b)",    "-sin(a)",
                                "sin(a + b)^2", "(a + b)*c",   "(a + b)*(b + c)",
                                "a + b*c",      "a - 2",       "-2*a",
                                "a^-2",         "(-2)^a",      "2^a",
                                "a/-2",         "t*a",         "a + b + (a + c)",
                                "2*a - b",      "exp(-a^2/2)"}) {
        EXPECT_EQ(rewritten(formula), formula);
    }
}

TEST(ProblemFormulas, LoseBracketsThatMeanNothing) {
    const std::pair<const char*, const char*> pairs[] = {
        {"((a))", "a"},
        {"(a*b)*c", "a*b*c"},
        {"a*(b*c)", "b*c*a"},
        {"a + (b + c)", "b + c + a"},
        {"(a*b) + (c)", "a*b + c"},
        {"a + (-2)", "a - 2"},
        {"2 + a", "a + 2"},
        {"a*2", "2*a"},
        {"a^(b^c)", "a^b^c"},
        {"a^(-b)", "a^-b"},
        {"-(a^b)", "-a^b"},
        {"(-a)*b", "-a*b"},
        {"0 - a", "-a"},
        {"a*1 + 0", "a"},
        {"tg(a) + arctg(a)", "tan(a) + atan(a)"},
        {"argcotgh(a)", "argcotanh(a)"},
    };
    for (const auto& [written, expected] : pairs) EXPECT_EQ(rewritten(written), expected) << written;
}

/// Any formula, with brackets wherever they may be.
std::string anyFormula(std::mt19937& random, int depth) {
    const auto choice = [&random](unsigned count) { return static_cast<unsigned>(random() % count); };
    if (depth == 0) {
        constexpr const char* leaves[] = {"a", "b", "c", "t", "2", "0.5", "3"};
        return leaves[choice(7)];
    }
    const unsigned kind = choice(8);
    const std::string left = anyFormula(random, depth - 1);
    if (kind == 0) return "(-" + left + ")";
    if (kind == 1) return "sin(" + left + ")";
    const std::string right = anyFormula(random, depth - 1);
    if (kind == 2) return "(" + left + ")^2";
    return "(" + left + ")" + "+-*/-*"[kind - 2] + "(" + right + ")";
}

TEST(ProblemFormulas, OfAnyKindKeepTheirValueWhenTheyAreWrittenOut) {
    std::mt19937 random(7);
    int compared = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string formula = anyFormula(random, 1 + i % 5);
        const std::string model = "a' = 1; b' = 1; c' = 1; f = " + formula + ";";
        if (errorOf(model) != "no error") continue;
        const Problem problem = Problem::fromText(model);
        const Problem again = Problem::fromText(problem.explain());
        const long double value = valueOf(problem.expression("f"), 0.3L, {1.7L, -2.9L, 0.7L});
        const long double other = valueOf(again.expression("f"), 0.3L, {1.7L, -2.9L, 0.7L});
        if (value != value) continue;
        EXPECT_EQ(value, other) << formula << "\n" << problem.explain();
        ++compared;
    }
    EXPECT_GT(compared, 1500);
}

TEST(ProblemFormulas, AreCutWhereTheyBecomeTooLong) {
    const Problem problem = Problem::fromText("x' = sin(x) + cos(x) + tan(x);");
    const ProblemContent& content = ProblemAccess::of(problem);
    const FormulaNames names = namesOf(content);
    const auto text = [&](std::size_t most) {
        return formulaText(*content.graph, content.variables[0].rate, names, most);
    };
    EXPECT_EQ(text(100), "sin(x) + cos(x) + tan(x)");
    EXPECT_EQ(text(24), "sin(x) + cos(x) + tan(x)");
    EXPECT_EQ(text(23), "sin(x) + cos(x) + tan(x...");
    EXPECT_EQ(text(3), "sin...");
}

TEST(ProblemFormulas, CallTheirPartsByName) {
    const Problem problem = Problem::fromText("x' = -x/r^3; r = sqrt(x*x + 1); y' = x' + r;");
    const ProblemContent& content = ProblemAccess::of(problem);
    const FormulaNames names = namesOf(content);
    EXPECT_EQ(formulaText(*content.graph, content.variables[0].rate, names), "-x/r^3");
    EXPECT_EQ(formulaText(*content.graph, content.variables[1].rate, names), "r + x'");
    EXPECT_EQ(formulaText(*content.graph, content.equations[1].formula, names), "sqrt(x*x + 1)");
}

}  // namespace
