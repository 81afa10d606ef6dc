// SPDX-License-Identifier: MIT
// The rows of the elementary functions; their values: known digits, the C library bit for bit, and rules of our own.
#include "expr/elementary.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "expr/formula_text.hpp"
#include "expr/real.hpp"
#include "lang/keywords.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

constexpr real kInfinity = std::numeric_limits<real>::infinity();
constexpr real kNaN = std::numeric_limits<real>::quiet_NaN();

real viaDouble(real x) { return std::sqrt(static_cast<double>(x)); }

class Elementary : public NodeTest {
protected:
    /// The folded constant; the same value must come out of the evaluation itself.
    static real folded(ExprType function, real x) {
        const Ref node(function, number(x));
        EXPECT_EQ(node->type(), ExprType::Number);
        EXPECT_TRUE(sameValue(node->startValue(), evaluate(function, x)));
        return node->startValue();
    }

    static Ending endingAt(ExprType function, real x) {
        return endingOf([&] { Ref(function, number(x)); });
    }

    const Ending acoshEnding{"\n(COMP) acosh(x): x < 1\n", 1};
    const Ending atanhEnding{"\n(COMP) atanh(x): |x| > 1\n", 1};
};

TEST_F(Elementary, HaveTheirKnownValues) {
    const struct {
        ExprType function;
        real x;
        real value;
        real tolerance;
    } cases[] = {
        {ExprType::Sin, 1, 0.841470984807896506652502321630L, 1e-18L},
        {ExprType::Cos, 1, 0.540302305868139717400936607443L, 1e-18L},
        {ExprType::Tan, 1, 1.557407724654902230506974807458L, 1e-18L},
        {ExprType::Cotan, 1, 0.642092615934330703006419986594L, 1e-18L},
        {ExprType::ASin, 0.5L, 0.523598775598298873077107230547L, 1e-18L},
        {ExprType::ACos, 0.5L, 1.047197551196597746154214461093L, 1e-18L},
        {ExprType::ATan, 1, 0.785398163397448309615660845820L, 1e-18L},
        {ExprType::ACotan, 1, 0.785398163397448309615660845820L, 1e-18L},
        {ExprType::Sinh, 1, 1.175201193643801456882381850596L, 1e-18L},
        {ExprType::Cosh, 1, 1.543080634815243778477905620757L, 1e-18L},
        {ExprType::Tanh, 1, 0.761594155955764888119458282605L, 1e-18L},
        {ExprType::Cotanh, 1, 1.313035285499331303636161246931L, 1e-18L},
        {ExprType::ASinh, 2, 1.443635475178810342493276740273L, 1e-15L},
        {ExprType::ACosh, 2, 1.316957896924816708625046347308L, 1e-15L},
        {ExprType::ATanh, 0.5L, 0.549306144334054845697622618461L, 1e-10L},
        {ExprType::ACotanh, 2, 0.549306144334054845697622618461L, 1e-10L},
        {ExprType::Sqrt, 2, 1.414213562373095048801688724210L, 2e-16L},
        {ExprType::Exp, 1, 2.718281828459045235360287471353L, 1e-18L},
        {ExprType::Ln, 2, 0.693147180559945309417232121458L, 1e-18L},
        {ExprType::Trunc, -2.7L, -2, 0},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(isNear(folded(c.function, c.x), c.value, c.tolerance)) << functionName(c.function);
}

TEST_F(Elementary, AreThoseOfTheLibraryInExtendedPrecision) {
    for (const real given : {0.3L, -0.7L, 0.0L, -0.0L, 1.0L}) {
        const real x = unknown(given);
        EXPECT_TRUE(sameValue(folded(ExprType::Sin, x), sinl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cos, x), cosl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Tan, x), tanl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cotan, x), 1 / tanl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ASin, x), asinl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ACos, x), acosl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::ATan, x), atan2l(x, 1)));
        EXPECT_TRUE(sameValue(folded(ExprType::ACotan, x), atan2l(1 / x, 1)));
        EXPECT_TRUE(sameValue(folded(ExprType::Sinh, x), sinhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cosh, x), coshl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Tanh, x), tanhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Cotanh, x), 1 / tanhl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Exp, x), expl(x)));
        EXPECT_TRUE(sameValue(folded(ExprType::Ln, x), logl(x)));
    }
}

TEST_F(Elementary, GiveWhatTheLibraryGivesOutsideTheirDomain) {
    EXPECT_TRUE(std::isnan(folded(ExprType::ASin, 2)));
    EXPECT_TRUE(std::isnan(folded(ExprType::ACos, -2)));
    EXPECT_TRUE(std::isnan(folded(ExprType::Ln, -1)));
    EXPECT_EQ(folded(ExprType::Ln, 0), -kInfinity);
    EXPECT_TRUE(std::isnan(folded(ExprType::Sqrt, -1)));
    EXPECT_EQ(folded(ExprType::Cotan, 0), kInfinity);
    EXPECT_EQ(folded(ExprType::Cotanh, -0.0L), -kInfinity);
    EXPECT_EQ(folded(ExprType::Exp, 20000), kInfinity);
}

TEST_F(Elementary, GiveTheArcCotangentOfANegativeNumberBelowZero) {
    EXPECT_TRUE(isNear(folded(ExprType::ACotan, -1), -0.785398163397448309615660845820L, 1e-18L));
    EXPECT_EQ(folded(ExprType::ACotan, 0), atan2l(unknown(kInfinity), 1));
    EXPECT_EQ(folded(ExprType::ACotan, -0.0L), -atan2l(unknown(kInfinity), 1));
}

TEST_F(Elementary, TakeSquareRootAndTruncationThroughDouble) {
    EXPECT_EQ(folded(ExprType::Sqrt, 2), static_cast<real>(std::sqrt(2.0)));
    EXPECT_NE(folded(ExprType::Sqrt, 2), sqrtl(unknown(2)));
    EXPECT_EQ(folded(ExprType::Sqrt, 0.1L), static_cast<real>(std::sqrt(0.1)));
    EXPECT_EQ(folded(ExprType::Trunc, 1.9L), 1);
    EXPECT_EQ(folded(ExprType::Trunc, -1.9L), -1);
    EXPECT_TRUE(sameValue(folded(ExprType::Trunc, -0.5L), -0.0L));
    EXPECT_EQ(folded(ExprType::Trunc, 3 - 1e-18L), 3) << "rounded up on the way to double";
    EXPECT_EQ(folded(ExprType::Trunc, 1e400L), kInfinity);
}

TEST_F(Elementary, GiveZeroForTheInverseHyperbolicSineOfWhateverIsBelowTheAccuracy) {
    EXPECT_TRUE(sameValue(folded(ExprType::ASinh, -2), 0));
    EXPECT_TRUE(sameValue(folded(ExprType::ASinh, 1e-11L), 0));
    EXPECT_EQ(folded(ExprType::ASinh, limits.accuracy), logl(unknown(limits.accuracy) + viaDouble(1)));
    EXPECT_EQ(folded(ExprType::ASinh, 3), logl(unknown(3) + viaDouble(10)));
    limits.simplifySmall = false;
    EXPECT_EQ(folded(ExprType::ASinh, -2), logl(unknown(-2) + viaDouble(5)));
    EXPECT_TRUE(isNear(folded(ExprType::ASinh, -2), -1.443635475178810342493276740273L, 1e-14L));
}

TEST_F(Elementary, EndTheRunForTheInverseHyperbolicCosineBelowOne) {
    EXPECT_EQ(folded(ExprType::ACosh, 1), 0);
    EXPECT_EQ(folded(ExprType::ACosh, 1 + 1e-11L), 0);
    EXPECT_EQ(folded(ExprType::ACosh, 3), logl(unknown(3) + viaDouble(2) * viaDouble(4)));
    EXPECT_EQ(endingAt(ExprType::ACosh, 0.5L), acoshEnding);
    EXPECT_EQ(endingAt(ExprType::ACosh, -3), acoshEnding);
    EXPECT_TRUE(std::isnan(folded(ExprType::ACosh, kNaN)));
    limits.simplifySmall = false;
    EXPECT_EQ(folded(ExprType::ACosh, 1), 0);
    EXPECT_NE(folded(ExprType::ACosh, 1 + 1e-11L), 0);
}

TEST_F(Elementary, GiveOneForTheInverseHyperbolicTangentOfWhateverIsBelowTheAccuracy) {
    EXPECT_EQ(folded(ExprType::ATanh, -0.5L), 1);
    EXPECT_EQ(folded(ExprType::ATanh, 0), 1);
    EXPECT_EQ(folded(ExprType::ATanh, 1e-11L), 1);
    limits.simplifySmall = false;
    EXPECT_TRUE(isNear(folded(ExprType::ATanh, -0.5L), -0.549306144334054845697622618461L, 1e-18L));
    EXPECT_TRUE(sameValue(folded(ExprType::ATanh, 0), 0));
}

TEST_F(Elementary, SumTheInverseHyperbolicTangentUpToTheFirstTermBelowTheAccuracy) {
    limits.accuracy = 1e-3L;
    // 1/2 + 1/24 + 1/160 + 1/896 are not below; 1/4608 is, and is included.
    const real two = 2;
    real expected = 1 / two;
    expected = expected + 0.125L / 3;
    expected = expected + 0.03125L / 5;
    expected = expected + 0.0078125L / 7;
    expected = expected + 0.001953125L / 9;
    EXPECT_EQ(folded(ExprType::ATanh, 0.5L), expected);
}

TEST_F(Elementary, GiveInfinityForTheInverseHyperbolicTangentOfOne) {
    EXPECT_EQ(folded(ExprType::ATanh, 1), kInfinity);
    EXPECT_EQ(folded(ExprType::ATanh, -1), -kInfinity);
    EXPECT_EQ(endingAt(ExprType::ATanh, 1.5L), atanhEnding);
    EXPECT_EQ(endingAt(ExprType::ATanh, -1.5L), atanhEnding);
}

TEST_F(Elementary, TakeTheInverseHyperbolicCotangentFromTheReciprocal) {
    EXPECT_EQ(folded(ExprType::ACotanh, 2), folded(ExprType::ATanh, 0.5L));
    EXPECT_EQ(folded(ExprType::ACotanh, -2), 1);
    EXPECT_EQ(folded(ExprType::ACotanh, 1), kInfinity);
    EXPECT_EQ(folded(ExprType::ACotanh, -1), -kInfinity);
    EXPECT_EQ(endingAt(ExprType::ACotanh, 0.5L), atanhEnding);
    EXPECT_EQ(endingAt(ExprType::ACotanh, 0), atanhEnding);
    limits.simplifySmall = false;
    EXPECT_TRUE(isNear(folded(ExprType::ACotanh, -2), -0.549306144334054845697622618461L, 1e-18L));
}

TEST_F(Elementary, EndAlsoForNotANumber) {
    for (const bool on : {true, false}) {
        limits.simplifySmall = on;
        EXPECT_TRUE(std::isnan(folded(ExprType::ATanh, kNaN)));
        EXPECT_TRUE(std::isnan(folded(ExprType::ASinh, kNaN)));
    }
}

TEST_F(Elementary, GiveTheInitialValueOfAFunction) {
    const Ref x(differential("x", Ref(), 0.5L));
    EXPECT_EQ(initialOf(Ref(ExprType::Sin, x)), sinl(unknown(0.5L)));
    EXPECT_EQ(initialOf(Ref(ExprType::ACos, x)), acosl(unknown(0.5L)));
    EXPECT_EQ(initialOf(Ref(ExprType::Sqrt, x)), viaDouble(0.5L));
    EXPECT_EQ(endingOf([&] { initialOf(Ref(ExprType::ACosh, x)); }), acoshEnding);
}

TEST_F(Elementary, GiveTheSineAndTheTruncationOfTheValueOfTheirOperand) {
    const Ref operand(new Series({2.75L, 4, 5}, 1.5L));
    EXPECT_EQ(valueOf(Ref(ExprType::Sin, operand)), sinl(unknown(1.5L)));
    EXPECT_EQ(valueOf(Ref(ExprType::Trunc, operand)), 1);
    EXPECT_EQ(terms(Ref(ExprType::Trunc, operand), 3), (std::vector<real>{2, 0, 0}));
}

/// Well inside the domain of a function and of its expansion.
real tameArgument(ExprType kind) { return kind == ExprType::ACosh || kind == ExprType::ACotanh ? 1.5L : 0.5L; }

std::vector<std::string> writtenForms(const ElementaryFunction& function) {
    std::vector<std::string> forms;
    for (const std::string_view form : function.written) {
        if (!form.empty()) forms.emplace_back(form);
    }
    return forms;
}

class FunctionRows : public NodeTest {};

TEST_F(FunctionRows, StandOnceForEveryKindFromSinToTruncAndForNoOther) {
    std::vector<int> kinds;
    for (const ElementaryFunction& row : elementaryFunctions) kinds.push_back(static_cast<int>(row.kind));
    std::sort(kinds.begin(), kinds.end());
    std::vector<int> expected;
    for (int kind = 11; kind <= 30; ++kind) expected.push_back(kind);
    EXPECT_EQ(kinds, expected);
    for (const ElementaryFunction& row : elementaryFunctions) {
        EXPECT_EQ(findFunction(row.kind), &row);
        EXPECT_EQ(&functionOf(row.kind), &row);
    }
}

TEST_F(FunctionRows, AreMissingForOtherKinds) {
    for (const int kind : {-1, 0, 5, 10, 31}) {
        EXPECT_EQ(findFunction(static_cast<ExprType>(kind)), nullptr);
        const Ending expected{"#(ERR) Not a function kind: " + std::to_string(kind) + "\n", 1};
        EXPECT_EQ(endingOf([&] { functionOf(static_cast<ExprType>(kind)); }), expected);
    }
}

TEST_F(FunctionRows, HaveNamesThatNoOtherRowHas) {
    std::set<std::string> printedNames;
    std::set<std::string> allForms;
    for (const ElementaryFunction& row : elementaryFunctions) {
        EXPECT_TRUE(printedNames.insert(row.name).second) << row.name;
        const std::vector<std::string> forms = writtenForms(row);
        ASSERT_FALSE(forms.empty()) << row.name;
        for (const std::string& form : forms) EXPECT_TRUE(allForms.insert(form).second) << form;
        // Empty forms come last.
        for (std::size_t i = 0; i < forms.size(); ++i) EXPECT_EQ(row.written[i], forms[i]) << row.name;
    }
    EXPECT_EQ(allForms.size(), 38u);
}

TEST_F(FunctionRows, ShowInFormulasUnderTheirFirstName) {
    const Ref x(differential("x"));
    for (const ElementaryFunction& row : elementaryFunctions) {
        const Ref node(row.kind, x);
        EXPECT_EQ(node->type(), row.kind);
        EXPECT_EQ(printed(node), std::string(row.name) + "([x])");
        EXPECT_EQ(formulaText(*node), std::string(row.name) + "(x)");
        // The one name that is printed only.
        EXPECT_EQ(row.written[0], row.kind == ExprType::ACotanh ? "argcotanh" : row.name);
    }
    EXPECT_EQ(keywordToken("acotanh"), 257);
}

TEST_F(FunctionRows, HaveKeywordsWithTheTokenOfTheirKind) {
    std::map<ExprType, int> tokens{
        {ExprType::Sqrt, 281}, {ExprType::Exp, 279}, {ExprType::Ln, 280}, {ExprType::Trunc, 282}};
    for (int kind = 11; kind <= 26; ++kind) tokens[static_cast<ExprType>(kind)] = kind + 252;
    for (const ElementaryFunction& row : elementaryFunctions) {
        EXPECT_EQ(functionKind(tokens[row.kind]), row.kind) << row.name;
        for (const std::string& form : writtenForms(row)) EXPECT_EQ(keywordToken(form), tokens[row.kind]) << form;
    }
    for (const int token : {0, 40, 257, 258, 259, 260, 261, 262, 283}) {
        EXPECT_EQ(functionKind(token), ExprType::Nothing) << token;
    }
}

TEST_F(FunctionRows, AreReadInExpressionsAndInConstants) {
    for (const ElementaryFunction& row : elementaryFunctions) {
        const real x = tameArgument(row.kind);
        for (const std::string& form : writtenForms(row)) {
            Workbench bench;
            std::ostringstream text;
            text << "y' = " << form << "(z) & " << form << '(' << x << ");";
            Compiler(sourceOf(text.str()), bench.system).compile();
            const Differential& y = *bench.system.equations.resolve("y");
            EXPECT_EQ(y.rightHandSide()->type(), row.kind) << form;
            EXPECT_TRUE(sameValue(y.startValue(), row.value(x))) << form;
        }
    }
}

TEST_F(FunctionRows, GiveTheirValueToConstantsAndStartValues) {
    for (const ElementaryFunction& row : elementaryFunctions) {
        const real x = tameArgument(row.kind);
        EXPECT_TRUE(sameValue(evaluate(row.kind, x), row.value(x))) << row.name;
        EXPECT_TRUE(sameValue(Ref(row.kind, number(x))->startValue(), row.value(x))) << row.name;
        EXPECT_TRUE(sameValue(initialOf(Ref(row.kind, differential("x", Ref(), x))), row.value(x))) << row.name;
    }
}

TEST_F(FunctionRows, HaveOneRateForEveryVariableOfTheirExpansion) {
    std::string without;
    for (const ElementaryFunction& row : elementaryFunctions) {
        const Recipe& recipe = row.classic;
        if (recipe.variables == 0) {
            without += std::string(recipe.notImplemented) + ' ';
            continue;
        }
        ASSERT_LE(recipe.variables, 3) << row.name;
        EXPECT_GE(recipe.result, 0) << row.name;
        EXPECT_LT(recipe.result, recipe.variables) << row.name;
        Recipe::Variables variables;
        for (int i = 0; i < recipe.variables; ++i) {
            variables[static_cast<std::size_t>(i)] = differential("v" + std::to_string(i));
        }
        const Recipe::Variables rates = recipe.rates(differential("u"), differential("d"), variables);
        for (int i = 0; i < 3; ++i) {
            const bool isEmpty = rates[static_cast<std::size_t>(i)]->type() == ExprType::Nothing;
            EXPECT_EQ(isEmpty, i >= recipe.variables) << row.name << ' ' << i;
        }
    }
    EXPECT_EQ(without, "ACos ASinh ACosh Trunc ");
}

TEST_F(FunctionRows, ExpandToTheirDerivativeOrSayWhatToWriteInstead) {
    for (const ElementaryFunction& row : elementaryFunctions) {
        if (row.classic.variables == 0) continue;
        Workbench bench;
        bench.limits.accuracy = 1e-18L;
        const real x = tameArgument(row.kind);
        std::ostringstream text;
        text << "x' = 3 & " << x << "; y = " << row.written[0] << "(x);";
        prepareText(bench, text.str());
        const Differential* variable = asVariable(bench.system.equations.resolve("y")->rightHandSide().get());
        ASSERT_NE(variable, nullptr) << row.name;
        EXPECT_TRUE(isNear(variable->startValue(), row.value(x), 1e-15L)) << row.name;

        const real h = 1e-4L;
        const real derivative = (row.value(x + h) - row.value(x - h)) / (2 * h);
        const bool isItself = std::fabs(initialOf(variable->rightHandSide()) - 3 * derivative) < 1e-6L;
        const bool saysSo = row.classic.otherLaw == nullptr || row.classic.otherLaw(x) == nullptr;
        EXPECT_EQ(isItself, saysSo) << row.name;
        EXPECT_EQ(bench.calculus.remarks.function.empty(), saysSo) << row.name;
    }
}

TEST_F(FunctionRows, FollowAnotherLawOnlyWhereItDiffers) {
    const auto lawOf = [](ExprType kind, real u0) { return functionOf(kind).classic.otherLaw(u0) != nullptr; };
    EXPECT_TRUE(lawOf(ExprType::Cos, 0.5L));
    EXPECT_FALSE(lawOf(ExprType::Cos, 0));
    EXPECT_FALSE(lawOf(ExprType::Cos, pi)) << "to the digits of pi";
    EXPECT_TRUE(lawOf(ExprType::Ln, 2));
    for (const bool simplified : {true, false}) {
        limits.simplifySmall = simplified;
        EXPECT_EQ(lawOf(ExprType::ATanh, -0.5L), simplified);
        EXPECT_EQ(lawOf(ExprType::ACotanh, -2), simplified);
        EXPECT_EQ(lawOf(ExprType::ACotanh, 1e12L), simplified) << "its reciprocal is below the accuracy";
        EXPECT_FALSE(lawOf(ExprType::ATanh, 0.5L));
        EXPECT_FALSE(lawOf(ExprType::ACotanh, 2));
    }
}

}  // namespace
