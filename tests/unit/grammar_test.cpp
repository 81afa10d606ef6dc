// SPDX-License-Identifier: MIT
// Statements into tables, and the messages of the parser.
#include <cmath>
#include <limits>
#include <sstream>

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Grammar : public testing::Test {
protected:
    /// Whether the text is accepted: 0, or 1.
    int compile(const std::string& text) {
        Compiler compiler(sourceOf(text), bench_.system);
        try {
            compiler.compile();
        } catch (const ParseError& error) {
            log_ += error.text();
            return 1;
        }
        log_ += compiler.messages();
        return 0;
    }

    const std::string& log() const { return log_; }
    const Differential* find(const std::string& name) const { return bench_.system.equations.find(name); }

    /// Right-hand side of a variable as it is before any expansion.
    std::string rightHandSide(const std::string& name) const {
        if (find(name) == nullptr) return "undefined";
        std::ostringstream out;
        find(name)->rightHandSide()->Print(out);
        return out.str();
    }

    /// Right-hand side that an expression becomes.
    std::string expression(const std::string& text) {
        EXPECT_EQ(compile("x = " + text + ";"), 0) << text;
        EXPECT_EQ(log(), "");
        return rightHandSide("x");
    }

    real start(const std::string& name) const { return find(name)->startValue(); }

    Workbench bench_;

private:
    std::string log_;
};

TEST_F(Grammar, GivesAFirstOrderEquationStartZero) {
    EXPECT_EQ(compile("y' = 1;"), 0);
    EXPECT_EQ(bench_.system.equations.size(), 1U);
    EXPECT_EQ(rightHandSide("y"), "1");
    EXPECT_EQ(start("y"), 0);
    EXPECT_EQ(find("y")->type(), ExprType::Differential);
}

TEST_F(Grammar, BreaksAnEquationOfHigherOrderIntoAChain) {
    EXPECT_EQ(compile("y'' = -y & 1; y'(0) = 0;"), 0);
    EXPECT_EQ(bench_.system.equations.size(), 2U);
    EXPECT_EQ(rightHandSide("y"), "y%1");
    EXPECT_EQ(start("y"), 1);
    EXPECT_EQ(rightHandSide("y%1"), "(-y)");
    EXPECT_EQ(start("y%1"), 0);
    EXPECT_EQ(bench_.system.initialValues, (std::map<std::string, real>{{"y%1", 0}}));
}

TEST_F(Grammar, TakesADigitAfterTheApostropheAsTheOrder) {
    EXPECT_EQ(compile("y'3 = t & 5; z''' = t & 5;"), 0);
    EXPECT_EQ(bench_.system.equations.size(), 6U);
    for (const std::string name : {"y", "z"}) {
        EXPECT_EQ(rightHandSide(name), name + "%1");
        EXPECT_EQ(rightHandSide(name + "%1"), name + "%2");
        EXPECT_EQ(rightHandSide(name + "%2"), "t");
        EXPECT_EQ(start(name), 5);
        EXPECT_EQ(start(name + "%1"), 0);
        EXPECT_EQ(start(name + "%2"), 0);
    }
}

TEST_F(Grammar, TakesOrderZeroAsAnAlgebraicEquation) {
    EXPECT_EQ(compile("y'0 = x'0 + x'1; x'0(0) = 4;"), 0);
    EXPECT_EQ(find("y")->type(), ExprType::Algebraic);
    EXPECT_EQ(rightHandSide("y"), "(x + x%1)");
    EXPECT_EQ(bench_.system.initialValues, (std::map<std::string, real>{{"x", 4}}));
}

TEST_F(Grammar, IgnoresTheStartValueOfAnAlgebraicEquation) {
    EXPECT_EQ(compile("x = y*2 & 5;"), 0);
    EXPECT_EQ(rightHandSide("x"), "(y * 2)");
    EXPECT_EQ(start("x"), 0);
    EXPECT_EQ(find("x")->type(), ExprType::Algebraic);
}

TEST_F(Grammar, ReportsAStartTimeOtherThanZeroAndStoresTheValue) {
    EXPECT_EQ(compile("y'(1) = 2;"), 0);
    EXPECT_EQ(log(), "#(ERR) ERROR: Start condition must be defined for zero, not for other value \"1\" at line #1\n");
    EXPECT_EQ(bench_.system.initialValues, (std::map<std::string, real>{{"y%1", 2}}));
}

TEST_F(Grammar, AcceptsEveryZeroAsTheStartTime) {
    EXPECT_EQ(compile("y'(0.0) = 2; y(0) = 1; y''(0e5) = 3; y'3(00) = 4; y'4(.0) = 5;"), 0);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(bench_.system.initialValues,
              (std::map<std::string, real>{{"y", 1}, {"y%1", 2}, {"y%2", 3}, {"y%3", 4}, {"y%4", 5}}));
}

TEST_F(Grammar, KeepsTheLastStartValueOfAName) {
    EXPECT_EQ(compile("y''(0) = 2; y'2(0) = 3; "), 0);
    EXPECT_EQ(bench_.system.initialValues, (std::map<std::string, real>{{"y%2", 3}}));
}

TEST_F(Grammar, LetsALaterEquationReplaceAnEarlierOne) {
    EXPECT_EQ(compile("y' = 1 & 5; y = 2; z = 1; z'' = 3 & 4;"), 0);
    EXPECT_EQ(bench_.system.equations.size(), 3U);
    EXPECT_EQ(find("y")->type(), ExprType::Algebraic);
    EXPECT_EQ(rightHandSide("y"), "2");
    EXPECT_EQ(rightHandSide("z"), "z%1");
    EXPECT_EQ(start("z"), 4);
}

TEST_F(Grammar, BindsOperatorsAsUsual) {
    EXPECT_EQ(expression("a - b - c"), "((a - b) - c)");
    EXPECT_EQ(expression("a / b * c"), "((a / b) * c)");
    EXPECT_EQ(expression("a + b * c"), "(a + (b * c))");
    EXPECT_EQ(expression("(a + b) * c"), "((a + b) * c)");
    EXPECT_EQ(expression("-a * b"), "((-a) * b)");
    EXPECT_EQ(expression("-a - -b"), "((-a) - (-b))");
    EXPECT_EQ(expression("a * -b + +c"), "((a * (-b)) + c)");
    EXPECT_EQ(expression("- - a"), "(-(-a))");
    EXPECT_EQ(expression("a'' + a'0"), "(a%2 + a)");
    EXPECT_EQ(expression("-2*3"), "-6");
    EXPECT_EQ(expression("pi"), "3.14159");
}

TEST_F(Grammar, AppliesEveryFunctionToAnExpression) {
    const std::pair<const char*, const char*> forms[] = {
        {"sin", "sin"},          {"cos", "cos"},           {"tg", "tan"},         {"tan", "tan"},
        {"cotg", "cotan"},       {"cotan", "cotan"},       {"arcsin", "asin"},    {"asin", "asin"},
        {"arccos", "acos"},      {"acos", "acos"},         {"arctg", "atan"},     {"arctan", "atan"},
        {"atg", "atan"},         {"atan", "atan"},         {"arccotg", "acotan"}, {"arccotan", "acotan"},
        {"acotg", "acotan"},     {"acotan", "acotan"},     {"sinh", "sinh"},      {"cosh", "cosh"},
        {"tgh", "tanh"},         {"tanh", "tanh"},         {"cotgh", "cotanh"},   {"cotanh", "cotanh"},
        {"argsinh", "asinh"},    {"asinh", "asinh"},       {"argcosh", "acosh"},  {"acosh", "acosh"},
        {"argtgh", "atanh"},     {"argtanh", "atanh"},     {"atgh", "atanh"},     {"atanh", "atanh"},
        {"argcotgh", "acotanh"}, {"argcotanh", "acotanh"}, {"exp", "exp"},        {"ln", "ln"},
        {"sqrt", "sqrt"},        {"trunc", "trunc"},
    };
    for (const auto& [written, printed] : forms) {
        EXPECT_EQ(expression(std::string(written) + "(t + y)"), std::string(printed) + "((t + y))") << written;
    }
}

TEST_F(Grammar, ComputesStartValuesWhileParsing) {
    const std::pair<const char*, real> cases[] = {
        {"-2*3", -6},     {"1 - 2 - 3", -4},   {"8/4/2", 1},   {"2 + 3*4", 14},      {"(2 + 3)*4", 20},
        {"-2 + 3", 1},    {"2*-3 + 1", -5},    {"+-+-7", 7},   {"1/3", 1.0L / 3},    {"-pi", -pi},
        {"sqrt(4)*2", 4}, {"trunc(-2.5)", -2}, {"cos(0)", 1},  {"exp(-(1 - 1))", 1}, {"2147483648", 2147483647},
        {"0.1", 0.1},     {"ln(1) + 1", 1},    {"-5/-2", 2.5}, {"acosh(1)+2", 2},    {"sqrt(2)", std::sqrt(2.0)},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(compile(std::string("y' = 1 & ") + text + ";"), 0) << text;
        EXPECT_EQ(start("y"), value) << text;
    }
    EXPECT_EQ(compile("y' = 1 & -0; z' = 1 & 1/-0;"), 0);
    EXPECT_TRUE(std::signbit(start("y"))) << "an exact negation";
    EXPECT_EQ(start("z"), -std::numeric_limits<real>::infinity());
}

TEST_F(Grammar, HasNoPowerOperator) {
    EXPECT_EQ(compile("a = 2^3;"), 1);
    EXPECT_EQ(log(), "#(ERR) ERROR: parse error \"^\" at line #1\n");
    EXPECT_EQ(find("a"), nullptr);
}

TEST_F(Grammar, KeepsWhatStandsBeforeAnError) {
    EXPECT_EQ(compile("a = 1;\nb = 2\nc = 3;"), 1);
    EXPECT_EQ(log(), "#(ERR) ERROR: parse error \"c\" at line #3\n");
    EXPECT_NE(find("a"), nullptr);
    EXPECT_EQ(find("b"), nullptr);
}

TEST_F(Grammar, NamesTheEmptyTextAtTheEndOfTheInput) {
    for (const char* text : {"", "\n", "a = 1", "a = 1;; "}) {
        bench_.system.initialValues.clear();
        EXPECT_EQ(compile(text), 1) << text;
    }
    EXPECT_EQ(log(),
              "#(ERR) ERROR: parse error \"\" at line #1\n#(ERR) ERROR: parse error \"\" at line #2\n"
              "#(ERR) ERROR: parse error \"\" at line #1\n#(ERR) ERROR: parse error \";\" at line #1\n");
}

TEST_F(Grammar, TracesStepFunctionsAndRejectsThem) {
    EXPECT_EQ(compile("y' = [t < 1 : 2];"), 1);
    EXPECT_EQ(log(),
              "steplimit2 stepfrep2 stepfT \n"
              "#(ERR) ERROR: Step functions have no meaning \"]\" at line #1\n");
}

TEST_F(Grammar, TracesCasesAndPointsFromTheRight) {
    EXPECT_EQ(compile("y' = 2*[x < 0, 1 : 2; 3 : 4]\n+ [t < -pi : sin(1)];"), 1);
    EXPECT_EQ(log(),
              "steplimit2 steplimit1 steplimit2 stepfrep2 stepfrep1 stepf steplimit2 stepfrep2 stepfT \n"
              "#(ERR) ERROR: Step functions have no meaning \"]\" at line #1\n"
              "#(ERR) ERROR: Step functions have no meaning \"]\" at line #2\n");
}

TEST_F(Grammar, OverflowsAtTwoHundredEntries) {
    // The stack holds its base, the name, its order, "=", 193 brackets, the number and ")".
    const auto nested = [](std::size_t n) { return "x = " + std::string(n, '(') + "1" + std::string(n, ')') + ";"; };
    EXPECT_EQ(compile(nested(193)), 0);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(compile(nested(194)), 1);
    EXPECT_EQ(log(), "#(ERR) ERROR: parser stack overflow \")\" at line #1\n");
}

TEST_F(Grammar, HoldsOneEntryForAllStatementsBefore) {
    std::string before;
    for (int i = 0; i < 1000; ++i) before += "y" + std::to_string(i) + " = 1;\n";
    const auto nested = [](std::size_t n) { return "x = " + std::string(n, '(') + "1" + std::string(n, ')') + ";"; };
    EXPECT_EQ(compile(before + nested(192)), 0);
    EXPECT_EQ(compile(before + nested(193)), 1);
    EXPECT_EQ(log(), "#(ERR) ERROR: parser stack overflow \")\" at line #1001\n");
}

}  // namespace
