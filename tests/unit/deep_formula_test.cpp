// SPDX-License-Identifier: MIT
// Formulas and chains far deeper than the machine stack.
#include <cmath>

#include "classic/taylor_step.hpp"
#include "expr/walk.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class DeepFormulas : public NodeTest {
protected:
    static constexpr int count = 1000000;

    /// ((t + t) + t) + ..., or t + (t + ...).
    static Ref sum(bool leftDeep) {
        const Ref t(new Time);
        Ref result = t;
        for (int i = 1; i < count; ++i) {
            result = leftDeep ? Ref(ExprType::Plus, result, t) : Ref(ExprType::Plus, t, result);
        }
        return result;
    }

    void checkAll(const Ref& formula) {
        calculus.time = 3;
        EXPECT_EQ(termOf(formula, 0), 0);
        EXPECT_EQ(termOf(formula, 1), count);
        EXPECT_EQ(valueOf(formula), real{3} * count);
        EXPECT_EQ(initialOf(formula), 0);
        EXPECT_EQ(printed(formula->Derivative()), "1e+06");
        const std::string text = printed(formula);
        // Per sum two brackets, three for the sign and its blanks; one for every t.
        EXPECT_EQ(text.size(), std::size_t{5} * (count - 1) + count);
        EXPECT_EQ(printed(formula->Converted()), text);
        nextStep();
        EXPECT_EQ(termOf(formula, 0), real{3} * count);
    }
};

TEST_F(DeepFormulas, OnTheLeftAreEvaluatedPrintedExpandedAndReleased) { checkAll(sum(true)); }

TEST_F(DeepFormulas, OnTheRightAreEvaluatedPrintedExpandedAndReleased) { checkAll(sum(false)); }

TEST_F(DeepFormulas, OfNegationsKeepTheirSign) {
    Ref formula(new Series({5, 7}, 2, 3));
    for (int i = 0; i < 200001; ++i) formula = Ref(ExprType::UnMinus, formula);
    EXPECT_EQ(terms(formula, 2), (std::vector<real>{-5, -7}));
    EXPECT_EQ(valueOf(formula), -2);
    EXPECT_EQ(initialOf(formula), -3);
}

TEST_F(DeepFormulas, OfNestedFunctionsAreExpandedInnermostFirst) {
    Ref formula(new Time);
    constexpr int depth = 20000;
    for (int i = 0; i < depth; ++i) formula = Ref(ExprType::Exp, Ref(ExprType::UnMinus, formula));
    system.equations.enter(new Differential("y", formula, 0));
    Expansion(calculus, system).prepare();
    EXPECT_EQ(system.equations.size(), std::size_t{depth} + 1);
    EXPECT_EQ(printed(system.equations.find("%0")->rightHandSide()), "(-[%0])");
    EXPECT_EQ(system.equations.find("%1")->startValue(), expl(unknown(-1)));
    EXPECT_EQ(printed(system.equations.find("y")->rightHandSide()), "[%19999]");
}

TEST_F(DeepFormulas, AskTheVariablesBelowThemForTheirTerms) {
    calculus.changeStep(0.5);
    Differential* z = differential("z");
    system.equations.enter(z);
    Ref formula(z);
    for (int i = 0; i < 1000; ++i) formula = Ref(ExprType::Plus, formula, number(1));
    Differential* y = differential("y", formula);
    system.equations.enter(y);
    z->setRightHandSide(Ref(ExprType::UnMinus, y));
    // y' = z + 1000, z' = -y. z has terms 0, -0, -125 by then: 0.25 * -500.
    EXPECT_EQ(terms(y, 4), (std::vector<real>{0, 500, 0, -125 * (real{0.5} / 3)}));
    EXPECT_EQ(z->highestTerm(), 2);
}

class Chains : public NodeTest {
protected:
    static std::string name(int i) { return "v" + std::to_string(1000000 + i); }
};

TEST_F(Chains, OfAlgebraicVariablesAreEvaluatedToTheirEnd) {
    constexpr int length = 100000;
    for (int i = 0; i < length; ++i) {
        system.equations.enter(new Algebraic(name(i), new Equation(name(i + 1), system.equations)));
    }
    system.equations.enter(new Algebraic(name(length), number(3)));
    system.equations.enter(new Differential("z", Ref(ExprType::Sin, new Equation(name(0), system.equations)), 0));
    Expansion(calculus, system).prepare();
    EXPECT_EQ(system.equations.find("%0")->startValue(), sinl(unknown(3)));
    EXPECT_EQ(printed(system.equations.find("%0")->rightHandSide()), "0");
    TaylorStep(calculus, system.equations, Evaluation::Compiled).evaluate();
    EXPECT_EQ(system.equations.find(name(0))->result(), 3);
    EXPECT_EQ(system.equations.find(name(length - 1))->result(), 3);
}

TEST_F(Chains, OfSinesAreExpanded) {
    constexpr int length = 10000;
    std::string text;
    for (int i = 0; i < length; ++i) text += name(i) + "' = sin(" + name(i + 1) + ");";
    prepareText(*this, text + name(length) + "' = 1;");
    EXPECT_EQ(system.equations.size(), std::size_t{3} * length + 1);
    EXPECT_EQ(printed(system.equations.find("%0")->rightHandSide()), "([%1] * [%2])");
    EXPECT_EQ(printed(system.equations.find("%19996")->rightHandSide()), "([%19997] * [%19998])");
    EXPECT_EQ(printed(system.equations.find("%19998")->rightHandSide()), "[%19999]");
    TaylorStep step(calculus, system.equations, Evaluation::Compiled);
    step.evaluate();
    step.accept();
    step.evaluate();
    EXPECT_TRUE(isNear(system.equations.find("%19998")->result(), sinl(unknown(static_cast<real>(0.1))), 1e-19L));
}

}  // namespace
