// SPDX-License-Identifier: MIT
// The equations and start values that replace each function.
#include <cmath>

#include "tests/unit/fixture.hpp"

namespace {

class Recipes : public NodeTest {
protected:
    /// Dump of y = f(x) with x' = z, x(0) as given; without the lines of the three variables themselves.
    std::string ofFunction(const std::string& function, const std::string& start) {
        prepareText(*this, "x' = z & " + start + "; z' = 1 & 2; y = " + function + "(x);");
        const std::string dump = dumpOf(system.equations);
        const std::string tail = "DIF: \tx' = [z] & " + start + ";\n";
        const std::size_t at = dump.find(tail);
        EXPECT_NE(at, std::string::npos) << dump;
        return dump.substr(0, at) + dump.substr(dump.find("ALG"), dump.find("DIF: \tz") - dump.find("ALG"));
    }

    real startOf(const std::string& name) const { return system.equations.resolve(name)->startValue(); }
};

TEST_F(Recipes, OfSine) {
    EXPECT_EQ(ofFunction("sin", "0.5"),
              "DIF: \t%0' = ([%1] * [z]) & 0.479426;\n"
              "DIF: \t%1' = ((-[%0]) * [z]) & 0.877583;\n"
              "ALG: \ty = [%0];\n");
    EXPECT_EQ(startOf("%0"), sinl(unknown(0.5L)));
    EXPECT_EQ(startOf("%1"), cosl(unknown(0.5L)));
}

TEST_F(Recipes, OfCosineHaveTheSignsOfSine) {
    EXPECT_EQ(ofFunction("cos", "0.5"),
              "DIF: \t%0' = ([%1] * [z]) & 0.877583;\n"
              "DIF: \t%1' = ((-[%0]) * [z]) & 0.479426;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfHyperbolicSineAndCosine) {
    EXPECT_EQ(ofFunction("sinh", "0.5"),
              "DIF: \t%0' = ([%1] * [z]) & 0.521095;\n"
              "DIF: \t%1' = ([%0] * [z]) & 1.12763;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfHyperbolicCosineStartWithItself) {
    EXPECT_EQ(ofFunction("cosh", "0.5"),
              "DIF: \t%0' = ([%1] * [z]) & 1.12763;\n"
              "DIF: \t%1' = ([%0] * [z]) & 0.521095;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfTangent) {
    EXPECT_EQ(ofFunction("tan", "0.5"),
              "DIF: \t%0' = ([z] + (([%0] * [%0]) * [z])) & 0.546302;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfCotangent) {
    EXPECT_EQ(ofFunction("cotan", "0.5"),
              "DIF: \t%0' = (-([z] + (([%0] * [%0]) * [z]))) & 1.83049;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfHyperbolicTangent) {
    EXPECT_EQ(ofFunction("tanh", "0.5"),
              "DIF: \t%0' = ([z] - (([%0] * [%0]) * [z])) & 0.462117;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfHyperbolicCotangentHaveTheFormOfTheTangent) {
    EXPECT_EQ(ofFunction("cotanh", "0.5"),
              "DIF: \t%0' = ([z] - (([%0] * [%0]) * [z])) & 2.16395;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfExponential) {
    EXPECT_EQ(ofFunction("exp", "0.5"),
              "DIF: \t%0' = ([z] * [%0]) & 1.64872;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfLogarithmDivideByTheNewVariable) {
    EXPECT_EQ(ofFunction("ln", "0.5"),
              "DIF: \t%0' = ([z] / [%0]) & -0.693147;\n"
              "ALG: \ty = [%0];\n");
}

TEST_F(Recipes, OfSquareRootStartInExtendedPrecision) {
    EXPECT_EQ(ofFunction("sqrt", "0.5"),
              "DIF: \t%0' = (([z] / [%0]) * 0.5) & 0.707107;\n"
              "ALG: \ty = [%0];\n");
    EXPECT_EQ(startOf("%0"), sqrtl(unknown(0.5L)));
    EXPECT_NE(startOf("%0"), static_cast<real>(std::sqrt(0.5)));
}

TEST_F(Recipes, OfArcSineReuseTheQuotient) {
    EXPECT_EQ(ofFunction("asin", "0.5"),
              "DIF: \t%0' = ([z] / [%1]) & 0.523599;\n"
              "DIF: \t%1' = ((-[x]) * ([z] / [%1])) & 0.866025;\n"
              "ALG: \ty = [%0];\n");
    EXPECT_EQ(startOf("%1"), sqrtl(unknown(0.75L)));
    const Expr* product = system.equations.resolve("%1")->rightHandSide().get();
    EXPECT_EQ(product->operand(1), system.equations.resolve("%0")->rightHandSide().get());
}

TEST_F(Recipes, OfArcTangent) {
    EXPECT_EQ(ofFunction("atan", "0.5"),
              "DIF: \t%0' = ([z] * 2) & 1;\n"
              "DIF: \t%1' = ([%0] * [z]) & 1.25;\n"
              "DIF: \t%2' = ([z] / [%1]) & 0.463648;\n"
              "ALG: \ty = [%2];\n");
}

TEST_F(Recipes, OfArcCotangent) {
    EXPECT_EQ(ofFunction("acotan", "0.5"),
              "DIF: \t%0' = ([z] * 2) & 1;\n"
              "DIF: \t%1' = ([%0] * [z]) & 1.25;\n"
              "DIF: \t%2' = ((-[z]) / [%1]) & 1.10715;\n"
              "ALG: \ty = [%2];\n");
}

TEST_F(Recipes, OfInverseHyperbolicTangent) {
    EXPECT_EQ(ofFunction("atanh", "0.5"),
              "DIF: \t%0' = ([z] * -2) & -1;\n"
              "DIF: \t%1' = ([%0] * [z]) & 0.75;\n"
              "DIF: \t%2' = ([z] / [%1]) & 0.549306;\n"
              "ALG: \ty = [%2];\n");
}

TEST_F(Recipes, OfInverseHyperbolicCotangent) {
    EXPECT_EQ(ofFunction("argcotanh", "2.5"),
              "DIF: \t%0' = ([z] * -2) & -5;\n"
              "DIF: \t%1' = ([%0] * [z]) & -5.25;\n"
              "DIF: \t%2' = ([z] / [%1]) & 0.423649;\n"
              "ALG: \ty = [%2];\n");
}

TEST_F(Recipes, OfTheExponentialOfTimeAreSimplified) {
    prepareText(*this, "y' = exp(t) & 1;");
    EXPECT_EQ(dumpOf(system.equations), "DIF: \t%0' = [%0] & 1;\nDIF: \ty' = [%0] & 1;\n");
}

TEST_F(Recipes, OfTheExponentialOfTimeAreProductsWithTheSwitchOff) {
    limits.simplifySmall = false;
    prepareText(*this, "y' = exp(t) & 1;");
    EXPECT_EQ(dumpOf(system.equations), "DIF: \t%0' = (1 * [%0]) & 1;\nDIF: \ty' = [%0] & 1;\n");
}

TEST_F(Recipes, OfALogarithmThatStartsAtZeroDivideByIt) {
    prepareText(*this, "y' = ln(t + 1);");
    EXPECT_EQ(dumpOf(system.equations), "DIF: \t%0' = (1 / [%0]) & 0;\nDIF: \ty' = [%0] & 0;\n");
    nextStep();
    EXPECT_TRUE(std::isinf(termOf(system.equations.resolve("%0"), 1)));
}

TEST_F(Recipes, OfFunctionsOutsideTheirDomainAreMadeAllTheSame) {
    prepareText(*this, "y' = asin(x) + ln(-x) + sqrt(-x); x' = 1 & 1;");
    EXPECT_EQ(system.equations.size(), 6u);
    EXPECT_TRUE(std::isnan(startOf("%0"))) << "sqrt";
    EXPECT_TRUE(std::isnan(startOf("%1"))) << "ln";
    EXPECT_EQ(startOf("%2"), asinl(unknown(1)));
    EXPECT_EQ(startOf("%3"), 0);
}

TEST_F(Recipes, EndWithTheMessagesOfTheirValues) {
    EXPECT_EQ(endingOf([&] { prepareText(*this, "y' = atanh(x); x' = 1 & 1.5;"); }),
              (Ending{"\n(COMP) atanh(x): |x| > 1\n", 1}));
}

}  // namespace
