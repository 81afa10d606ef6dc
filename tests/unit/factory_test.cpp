// SPDX-License-Identifier: MIT
// Folding of constants and dropping of neutral operands, row by row, with the simplification on and off.
#include <cmath>
#include <limits>

#include "expr/arithmetic.hpp"
#include "expr/function.hpp"
#include "expr/real.hpp"
#include "tests/unit/fixture.hpp"
#include "text/from_text.hpp"

using namespace zirk;

namespace {

constexpr real kInfinity = std::numeric_limits<real>::infinity();

class Factory : public NodeTest {
protected:
    Factory() { limits.accuracy = 0.25L; }

    /// Printed form of a kind over a constant and x, and of x and a constant.
    std::string ofConstantAndX(ExprType type, real a) const { return printed(Ref(type, number(a), x)); }
    std::string ofXAndConstant(ExprType type, real b) const { return printed(Ref(type, x, number(b))); }

    real folded(ExprType type, real a, real b) const {
        const Ref node(type, number(a), number(b));
        EXPECT_EQ(node->type(), ExprType::Number);
        return node->startValue();
    }

    const Ref x{differential("x")};
    const Ref y{differential("y")};
};

TEST_F(Factory, FoldsTwoConstantsWhateverTheSwitch) {
    for (const bool on : {true, false}) {
        limits.simplifySmall = on;
        EXPECT_EQ(folded(ExprType::Plus, 2, 3), 5);
        EXPECT_EQ(folded(ExprType::Minus, 2, 3), -1);
        EXPECT_EQ(folded(ExprType::Multiply, 2, 3), 6);
        EXPECT_EQ(folded(ExprType::Divide, 3, 2), 1.5L);
        EXPECT_EQ(folded(ExprType::Plus, 0.125L, 2), 2.125L) << "a small constant is added like any other";
        EXPECT_EQ(folded(ExprType::Multiply, 0.125L, 2), 0.25L);
        EXPECT_EQ(folded(ExprType::Divide, 1, 0), kInfinity);
        EXPECT_EQ(folded(ExprType::Divide, -1, 0), -kInfinity);
        EXPECT_TRUE(std::isnan(folded(ExprType::Divide, 0, 0)));
    }
}

TEST_F(Factory, FoldsInExtendedPrecision) {
    EXPECT_EQ(folded(ExprType::Divide, 1, 3), real{1} / 3);
    EXPECT_NE(folded(ExprType::Divide, 1, 3), static_cast<real>(1.0 / 3.0));
}

TEST_F(Factory, DropsASmallTermOfASum) {
    for (const real small : {0.0L, -0.0L, 0.125L, -0.125L}) {
        EXPECT_EQ(Ref(ExprType::Plus, number(small), x), x);
        EXPECT_EQ(Ref(ExprType::Plus, x, number(small)), x);
        EXPECT_EQ(Ref(ExprType::Minus, x, number(small)), x);
    }
    EXPECT_EQ(ofConstantAndX(ExprType::Plus, 0.25L), "(0.25 + [x])") << "smaller than the accuracy, not as small";
    EXPECT_EQ(ofXAndConstant(ExprType::Plus, -0.25L), "([x] + -0.25)");
    EXPECT_EQ(ofXAndConstant(ExprType::Minus, 0.25L), "([x] - 0.25)");
    EXPECT_EQ(ofConstantAndX(ExprType::Minus, -0.25L), "(-0.25 - [x])");
}

TEST_F(Factory, MakesANegationOfASmallConstantMinusX) {
    const Ref node(ExprType::Minus, number(0), x);
    EXPECT_EQ(node->type(), ExprType::UnMinus);
    EXPECT_EQ(printed(node), "(-[x])");
    EXPECT_EQ(ofConstantAndX(ExprType::Minus, -0.125L), "(-[x])");
}

TEST_F(Factory, MakesZeroOfAProductWithASmallFactor) {
    for (const real small : {0.0L, 0.125L, -0.125L}) {
        for (const Ref& node : {Ref(ExprType::Multiply, number(small), x), Ref(ExprType::Multiply, x, number(small))}) {
            EXPECT_EQ(node->type(), ExprType::Number);
            EXPECT_TRUE(sameValue(node->startValue(), 0));
        }
    }
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, 0.25L), "(0.25 * [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Multiply, 0.25L), "([x] * 0.25)");
}

TEST_F(Factory, DropsAFactorNearOne) {
    for (const real unit : {1.0L, 1.125L, 0.875L}) {
        EXPECT_EQ(Ref(ExprType::Multiply, number(unit), x), x);
        EXPECT_EQ(Ref(ExprType::Multiply, x, number(unit)), x);
        EXPECT_EQ(Ref(ExprType::Divide, x, number(unit)), x);
        EXPECT_EQ(ofConstantAndX(ExprType::Multiply, -unit), "(-[x])");
        EXPECT_EQ(ofXAndConstant(ExprType::Multiply, -unit), "(-[x])");
        EXPECT_EQ(ofXAndConstant(ExprType::Divide, -unit), "(-[x])");
    }
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, 1.25L), "(1.25 * [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Multiply, 0.75L), "([x] * 0.75)");
    EXPECT_EQ(ofXAndConstant(ExprType::Divide, -1.25L), "([x] / -1.25)");
}

TEST_F(Factory, HasNoRuleForAConstantDividend) {
    EXPECT_EQ(ofConstantAndX(ExprType::Divide, 0), "(0 / [x])");
    EXPECT_EQ(ofConstantAndX(ExprType::Divide, 1), "(1 / [x])");
    EXPECT_EQ(ofConstantAndX(ExprType::Divide, -1), "(-1 / [x])");
}

TEST_F(Factory, HasNoRuleForASmallDivisor) {
    EXPECT_EQ(ofXAndConstant(ExprType::Divide, 0), "([x] / 0)");
    EXPECT_EQ(ofXAndConstant(ExprType::Divide, 0.125L), "([x] / 0.125)");
}

TEST_F(Factory, TakesASmallFactorBeforeOneNearOne) {
    limits.accuracy = 4;
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, 1), "0");
    EXPECT_EQ(ofXAndConstant(ExprType::Multiply, -1), "0");
    EXPECT_EQ(ofXAndConstant(ExprType::Divide, 0), "[x]") << "near one within 4";
}

TEST_F(Factory, KeepsNotANumber) {
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, std::numeric_limits<real>::quiet_NaN()), "(nan * [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Plus, std::numeric_limits<real>::quiet_NaN()), "([x] + nan)");
}

TEST_F(Factory, WorksWithTheDefaultAccuracy) {
    limits.accuracy = realFromText("1e-10");
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, 1e-12L), "0");
    EXPECT_EQ(ofConstantAndX(ExprType::Multiply, -1), "(-[x])");
    EXPECT_EQ(Ref(ExprType::Divide, x, number(1)), x);
    EXPECT_EQ(ofConstantAndX(ExprType::Divide, 0), "(0 / [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Plus, limits.accuracy), "([x] + 1e-10)");
}

TEST_F(Factory, SimplifiesNothingWithTheSwitchOff) {
    limits.simplifySmall = false;
    EXPECT_EQ(ofConstantAndX(ExprType::Plus, 0), "(0 + [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Plus, 0), "([x] + 0)");
    EXPECT_EQ(ofConstantAndX(ExprType::Minus, 0), "(0 - [x])");
    EXPECT_EQ(ofXAndConstant(ExprType::Minus, 0), "([x] - 0)");
    for (const real factor : {0, 1, -1}) {
        const std::string text = factor == 0 ? "0" : factor == 1 ? "1" : "-1";
        EXPECT_EQ(ofConstantAndX(ExprType::Multiply, factor), "(" + text + " * [x])");
        EXPECT_EQ(ofXAndConstant(ExprType::Multiply, factor), "([x] * " + text + ")");
        EXPECT_EQ(ofXAndConstant(ExprType::Divide, factor), "([x] / " + text + ")");
        EXPECT_EQ(ofConstantAndX(ExprType::Divide, factor), "(" + text + " / [x])");
    }
}

TEST_F(Factory, MakesNodesOfOtherOperands) {
    EXPECT_EQ(printed(Ref(ExprType::Plus, x, y)), "([x] + [y])");
    EXPECT_EQ(printed(Ref(ExprType::Minus, x, x)), "([x] - [x])");
    EXPECT_EQ(printed(Ref(ExprType::Multiply, x, y)), "([x] * [y])");
    EXPECT_EQ(printed(Ref(ExprType::Divide, x, x)), "([x] / [x])");
}

TEST_F(Factory, SharesItsOperands) {
    const Ref sum(ExprType::Plus, x, y);
    EXPECT_EQ(sum->useCount(), 1);
    EXPECT_EQ(x->useCount(), 2);
    const Ref same(ExprType::Multiply, x, number(1));
    EXPECT_EQ(x->useCount(), 3);
}

TEST_F(Factory, NegatesConstantsByTheSignBit) {
    EXPECT_TRUE(sameValue(Ref(ExprType::UnMinus, number(0))->startValue(), -0.0L));
    EXPECT_TRUE(sameValue(Ref(ExprType::UnMinus, number(-0.0L))->startValue(), 0.0L));
    EXPECT_EQ(Ref(ExprType::UnMinus, number(2.5L))->startValue(), -2.5L);
    EXPECT_TRUE(
        std::signbit(Ref(ExprType::UnMinus, number(std::fabs(std::numeric_limits<real>::quiet_NaN())))->startValue()));
}

TEST_F(Factory, SimplifiesNothingOfOneOperand) {
    const Ref once(ExprType::UnMinus, x);
    EXPECT_EQ(printed(Ref(ExprType::UnMinus, once)), "(-(-[x]))");
}

template <class Node>
bool makes(ExprType kind, const Ref& operand) {
    return dynamic_cast<const Node*>(Ref(kind, operand).get()) != nullptr;
}

TEST_F(Factory, MakesANodeOfEachFunctionsClass) {
    EXPECT_TRUE(makes<Sin>(ExprType::Sin, x) && makes<Cos>(ExprType::Cos, x) && makes<Tan>(ExprType::Tan, x));
    EXPECT_TRUE(makes<Cotan>(ExprType::Cotan, x) && makes<ASin>(ExprType::ASin, x) && makes<ACos>(ExprType::ACos, x));
    EXPECT_TRUE(makes<ATan>(ExprType::ATan, x) && makes<ACotan>(ExprType::ACotan, x));
    EXPECT_TRUE(makes<Sinh>(ExprType::Sinh, x) && makes<Cosh>(ExprType::Cosh, x) && makes<Tanh>(ExprType::Tanh, x));
    EXPECT_TRUE(makes<Cotanh>(ExprType::Cotanh, x) && makes<ASinh>(ExprType::ASinh, x));
    EXPECT_TRUE(makes<ACosh>(ExprType::ACosh, x) && makes<ATanh>(ExprType::ATanh, x));
    EXPECT_TRUE(makes<ACotanh>(ExprType::ACotanh, x) && makes<Sqrt>(ExprType::Sqrt, x));
    EXPECT_TRUE(makes<Exp>(ExprType::Exp, x) && makes<Ln>(ExprType::Ln, x) && makes<Trunc>(ExprType::Trunc, x));
    EXPECT_FALSE(makes<Cos>(ExprType::Sin, x));
}

TEST_F(Factory, EndsWithTheNumberOfAnUnknownOneOperandKind) {
    for (const int kind : {-1, 0, 1, 2, 3, 4, 6, 7, 8, 9, 10, 31}) {
        const Ending expected{"#(ERR) Expr::Ref::Ref(ExprType, const Expr::Ref&): neznamy typ unarni operace (" +
                                  std::to_string(kind) + ")\n",
                              1};
        EXPECT_EQ(endingOf([&] { Ref(static_cast<ExprType>(kind), x); }), expected);
        EXPECT_EQ(endingOf([&] { Ref(static_cast<ExprType>(kind), number(1)); }), expected);
    }
}

TEST_F(Factory, EndsWithTheNumberOfAnUnknownTwoOperandKind) {
    for (const int kind : {-1, 0, 5, 6, 10, 11, 30, 31}) {
        const Ending expected{
            "#(ERR) Expr::Ref::Ref(ExprType, const Expr::Ref&, const Expr::Ref&): unknown binary operation (" +
                std::to_string(kind) + ")\n",
            1};
        EXPECT_EQ(endingOf([&] { Ref(static_cast<ExprType>(kind), x, y); }), expected);
        EXPECT_EQ(endingOf([&] { Ref(static_cast<ExprType>(kind), number(1), number(2)); }), expected);
    }
}

TEST_F(Factory, GivesDirectlyBuiltNegationsTermsToo) {
    const Ref node(ExprType::Minus, number(0), Ref(new Series({1, -2, 0})));
    EXPECT_EQ(termOf(node, 0), -1);
    EXPECT_EQ(termOf(node, 1), 2);
    EXPECT_TRUE(sameValue(termOf(node, 2), -0.0L));
}

}  // namespace
