// SPDX-License-Identifier: MIT
// The printed forms of nodes, and the dump lines of variables.
#include "tests/unit/fixture.hpp"

namespace {

class PrintedForms : public NodeTest {
protected:
    static std::string lineOf(const Differential& variable) {
        std::ostringstream out;
        variable.TreeDump(out);
        return out.str();
    }

    const Ref y{differential("y")};
    const Ref z{new Algebraic("z", number(1))};
};

TEST_F(PrintedForms, AreFullyBracketed) {
    EXPECT_EQ(printed(Ref()), "[NULL]");
    EXPECT_EQ(printed(Ref(ExprType::Plus, y, z)), "([y] + {z})");
    EXPECT_EQ(printed(Ref(ExprType::Minus, y, z)), "([y] - {z})");
    EXPECT_EQ(printed(Ref(ExprType::Multiply, y, z)), "([y] * {z})");
    EXPECT_EQ(printed(Ref(ExprType::Divide, y, z)), "([y] / {z})");
    EXPECT_EQ(printed(Ref(ExprType::UnMinus, y)), "(-[y])");
    EXPECT_EQ(printed(new Time), "t");
    EXPECT_EQ(printed(Ref(ExprType::Minus, Ref(ExprType::Minus, y, y), Ref(ExprType::Minus, y, y))),
              "(([y] - [y]) - ([y] - [y]))");
    EXPECT_EQ(printed(Ref(ExprType::Multiply, Ref(ExprType::UnMinus, Ref(ExprType::Sin, y)), number(2.5L))),
              "((-sin([y])) * 2.5)");
}

TEST_F(PrintedForms, NameEveryFunction) {
    std::string names;
    for (int kind = 11; kind <= 30; ++kind) names += printed(Ref(static_cast<ExprType>(kind), y)) + ' ';
    EXPECT_EQ(names,
              "sin([y]) cos([y]) tan([y]) cotan([y]) asin([y]) acos([y]) atan([y]) acotan([y]) sinh([y]) cosh([y]) "
              "tanh([y]) cotanh([y]) asinh([y]) acosh([y]) atanh([y]) acotanh([y]) sqrt([y]) exp([y]) ln([y]) "
              "trunc([y]) ");
}

TEST_F(PrintedForms, OfPlaceholdersAreNames) { EXPECT_EQ(printed(new Equation("y%1", system.equations)), "y%1"); }

TEST_F(PrintedForms, OfConstantsFollowTheStream) {
    EXPECT_EQ(printed(number(real{1} / 3)), "0.333333");
    EXPECT_EQ(printed(number(1e-12L)), "1e-12");
    std::ostringstream out;
    out.precision(3);
    out << std::scientific;
    number(real{1} / 3)->Print(out);
    EXPECT_EQ(out.str(), "3.333e-01");
}

TEST_F(PrintedForms, OfNegativeConstantsHaveNoBrackets) {
    EXPECT_EQ(printed(Ref(ExprType::UnMinus, number(2))), "-2");
    EXPECT_EQ(printed(Ref(ExprType::Plus, y, Ref(ExprType::UnMinus, number(2)))), "([y] + -2)");
}

TEST_F(PrintedForms, OfEquationsAreWholeLines) {
    const Ref handle(differential("a", Ref(ExprType::Multiply, y, number(2)), 1.5L));
    EXPECT_EQ(lineOf(static_cast<Differential&>(*handle)), "#(TREEDUMP) DIF: \ta' = ([y] * 2) & 1.5;\n");
    EXPECT_EQ(lineOf(static_cast<Differential&>(*z)), "#(TREEDUMP) ALG: \tz = 1;\n");
    EXPECT_EQ(lineOf(static_cast<Differential&>(*y)), "#(TREEDUMP) DIF: \ty' = [NULL] & 0;\n");
}

TEST_F(PrintedForms, OfEquationsShowTheValueAtTheStartOfTheStep) {
    calculus.changeStep(0.5);
    Differential* a = differential("a", number(1), 2);
    const Ref handle(a);
    nextStep();
    valueOf(handle);
    EXPECT_EQ(lineOf(*a), "#(TREEDUMP) DIF: \ta' = 1 & 2;\n");
    nextStep();
    valueOf(handle);
    EXPECT_EQ(lineOf(*a), "#(TREEDUMP) DIF: \ta' = 1 & 2.5;\n");
}

}  // namespace
