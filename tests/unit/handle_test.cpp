// SPDX-License-Identifier: MIT
// Counting handles, the caches that all nodes share, and the operations that must never run.
#include <stdexcept>

#include "expr/arithmetic.hpp"
#include "expr/function.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// Counts how many of its kind have died.
class Mortal final : public Differential {
public:
    Mortal(const Ref& rightHandSide, int& deaths) : Differential("m", rightHandSide, 0), deaths_(deaths) {}
    ~Mortal() override { ++deaths_; }

private:
    int& deaths_;
};

/// Counts its computations.
class Counter final : public Expr {
public:
    explicit Counter(real value) : Expr(ExprType::Plus), value_(value) {}
    void GetDY(int k, real& out) override { out = value_ + k, ++termCount; }
    void Result(real& out, bool) override { out = value_, ++valueCount; }
    void MakeDerivative() override { derivative_ = Ref(new Number(0)), ++derivativeCount; }
    void InitValue(real& out) override { out = value_; }
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream&, int) const override {}

    int termCount = 0;
    int valueCount = 0;
    int derivativeCount = 0;

private:
    real value_;
};

class Handles : public NodeTest {};

TEST_F(Handles, OfANullPointerReferToTheSharedEmptyNodeAndRaiseItsCount) {
    const int before = NothingExpr::shared()->useCount();
    {
        const Ref null(static_cast<Expr*>(nullptr));
        const Ref absent;
        EXPECT_EQ(null, absent);
        EXPECT_EQ(null->type(), ExprType::Nothing);
        EXPECT_EQ(null->useCount(), before + 2);
    }
    EXPECT_EQ(NothingExpr::shared()->useCount(), before);
}

TEST_F(Handles, CountThemselvesInTheNode) {
    Expr* node = new Number(7);
    EXPECT_EQ(node->useCount(), 0);
    const Ref first(node);
    EXPECT_EQ(node->useCount(), 1);
    {
        const Ref second = first;
        EXPECT_EQ(node->useCount(), 2);
        Ref third;
        third = second;
        EXPECT_EQ(node->useCount(), 3);
    }
    EXPECT_EQ(node->useCount(), 1);
}

TEST_F(Handles, DeleteTheNodeWithTheLastOne) {
    int deaths = 0;
    {
        const Ref outer(new Mortal(new Mortal(Ref(), deaths), deaths));
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 2);
}

TEST_F(Handles, SurviveAssignmentToThemselves) {
    int deaths = 0;
    Ref r(new Mortal(Ref(), deaths));
    const Ref& same = r;
    r = same;
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(r->useCount(), 1);
    EXPECT_EQ(printed(r), "[m]");
}

TEST_F(Handles, SurviveAssignmentFromAHandleInsideTheirOwnNode) {
    int deaths = 0;
    Ref r(ExprType::UnMinus, Ref(new Mortal(Ref(), deaths)));
    r = static_cast<UnOp&>(*r).argument();
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(printed(r), "[m]");
    EXPECT_EQ(r->useCount(), 1);

    r = Ref(new Mortal(r, deaths));
    r = static_cast<Differential&>(*r).rightHandSide();
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(r->useCount(), 1);
}

TEST_F(Handles, ReleaseTheNodeThatTheyHeld) {
    int deaths = 0;
    Ref r(new Mortal(Ref(), deaths));
    r = Ref();
    EXPECT_EQ(deaths, 1);
}

TEST_F(Handles, CompareIdentityAndNotStructure) {
    const Ref x(differential("x"));
    const Ref a(ExprType::Plus, x, x);
    const Ref b(ExprType::Plus, x, x);
    EXPECT_EQ(printed(a), printed(b));
    EXPECT_TRUE(a != b);
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a == Ref(a.get()));
}

class NewNodes : public NodeTest {};

TEST_F(NewNodes, AreStampedOneStepBack) {
    calculus.stepStamp = 7;
    const Ref x(differential("x", Ref(), 3));
    const Ref sum(ExprType::Plus, x, x);
    EXPECT_EQ(sum->termStamp(), 6);
    EXPECT_EQ(sum->resultStamp(), 6);
    EXPECT_EQ(sum->highestTerm(), -1);
    EXPECT_FALSE(sum->isSteady());
}

TEST_F(NewNodes, OfADifferentialEquationHaveTheirValueAlready) {
    calculus.stepStamp = 7;
    const Ref x(differential("x", number(5), 3));
    EXPECT_EQ(x->startValue(), 3);
    EXPECT_EQ(x->result(), 3);
    EXPECT_EQ(x->termStamp(), 6);
    EXPECT_EQ(x->resultStamp(), 7);
    EXPECT_EQ(valueOf(x), 3);
    EXPECT_EQ(calculus.orderUsed, 0);
}

TEST_F(NewNodes, OfAnAlgebraicEquationStartAtZero) {
    calculus.stepStamp = 7;
    const Ref x(new Algebraic("x", number(5)));
    EXPECT_EQ(x->type(), ExprType::Algebraic);
    EXPECT_EQ(x->startValue(), 0);
    EXPECT_EQ(x->result(), 0);
    EXPECT_EQ(x->termStamp(), 6);
    EXPECT_EQ(x->resultStamp(), 6);
}

class Caches : public NodeTest {};

TEST_F(Caches, GiveTermsUpToTheMaximumOrder) {
    limits.maxOrder = 9;
    const Ref x(differential("x", Ref(), 1));
    const Ref sum(ExprType::Plus, x, x);
    static_cast<Differential&>(*x).setRightHandSide(number(1));
    EXPECT_EQ(termOf(sum, 9), 0);
    try {
        termOf(sum, 10);
        FAIL() << "no exception";
    } catch (const std::overflow_error& error) {
        EXPECT_STREQ(error.what(), "Order overflow");
    }
    EXPECT_THROW(termOf(x, 10), std::overflow_error);
}

TEST_F(Caches, ComputeATermOncePerStep) {
    auto* node = new Counter(5);
    const Ref handle(node);
    EXPECT_EQ(termOf(handle, 0), 5);
    EXPECT_EQ(termOf(handle, 0), 5);
    EXPECT_EQ(node->termCount, 1);
    EXPECT_EQ(termOf(handle, 1), 6);
    EXPECT_EQ(node->termCount, 2);
    nextStep();
    EXPECT_EQ(termOf(handle, 0), 5);
    EXPECT_EQ(node->termCount, 3);
}

TEST_F(Caches, GiveAStaleTermWhenALowerOneIsAskedForAfterAHigherOne) {
    const Ref x(differential("x", Ref(), 3));
    // In the table, which breaks the cycle in the end.
    system.equations.enter(&static_cast<Differential&>(*x));
    static_cast<Differential&>(*x).setRightHandSide(x);
    const Ref sum(ExprType::Plus, x, x);
    calculus.changeStep(1);
    const std::vector<real> before = terms(sum, 4);
    EXPECT_EQ(before[2], 3);

    static_cast<Differential&>(*x).setInitialValue(30);
    nextStep();
    EXPECT_EQ(termOf(sum, 3), 2 * (15 * (real{1} / 3)));
    EXPECT_EQ(termOf(sum, 2), 3) << "term 2 of the step before";
}

TEST_F(Caches, ComputeAValueOncePerStepOrWhenForced) {
    auto* node = new Counter(5);
    const Ref handle(node);
    EXPECT_EQ(valueOf(handle), 5);
    EXPECT_EQ(valueOf(handle), 5);
    EXPECT_EQ(node->valueCount, 1);
    calculus.forceRecompute = true;
    valueOf(handle);
    EXPECT_FALSE(calculus.forceRecompute);
    EXPECT_EQ(node->valueCount, 2);
    nextStep();
    valueOf(handle);
    EXPECT_EQ(node->valueCount, 3);
    EXPECT_EQ(node->resultStamp(), calculus.stepStamp);
}

TEST_F(Caches, ForceOnlyTheFirstNodeThatSeesTheFlag) {
    auto* node = new Counter(5);
    const Ref inner(node);
    const Ref sum(ExprType::Plus, inner, inner);
    valueOf(sum);
    EXPECT_EQ(node->valueCount, 1);
    calculus.forceRecompute = true;
    EXPECT_EQ(valueOf(sum), 10);
    EXPECT_EQ(node->valueCount, 1);
}

TEST_F(Caches, CallANodeSteadyBelowTheAccuracyAndNotAtIt) {
    limits.accuracy = 0.5L;
    limits.steadyStop = 1;
    const Ref below(new Algebraic("x", number(0.25L)));
    const Ref at(new Algebraic("x", number(0.5L)));
    valueOf(below);
    valueOf(at);
    EXPECT_TRUE(below->isSteady());
    EXPECT_FALSE(at->isSteady());
    limits.steadyStop = 0;
    nextStep();
    valueOf(below);
    EXPECT_FALSE(below->isSteady());
}

TEST_F(Caches, BuildADerivativeOnce) {
    auto* node = new Counter(5);
    const Ref handle(node);
    EXPECT_EQ(handle->Derivative(), handle->Derivative());
    EXPECT_EQ(node->derivativeCount, 1);
}

TEST_F(NewNodes, AreVariablesWhenTheyStandForAnEquation) {
    const Ref x(differential("x"));
    const Ref z(new Algebraic("z", x));
    EXPECT_EQ(asVariable(x.get()), x.get());
    EXPECT_EQ(asVariable(static_cast<const Expr*>(z.get())), z.get());
    EXPECT_FALSE(isAlgebraic(*x));
    EXPECT_TRUE(isAlgebraic(*z));
    for (const Ref& other : {Ref(), number(1), Ref(new Time), Ref(ExprType::Plus, x, z), Ref(ExprType::Cos, x),
                             Ref(new Equation("x", system.equations))}) {
        EXPECT_FALSE(isVariable(*other)) << printed(other);
        EXPECT_FALSE(isAlgebraic(*other)) << printed(other);
        EXPECT_EQ(asVariable(other.get()), nullptr) << printed(other);
    }
}

class ForbiddenOperations : public NodeTest {
protected:
    static Ending termEnding(const Ref& node) {
        real out = 0;
        return endingOf([&] { node->GetDY(1, out); });
    }
};

TEST_F(ForbiddenOperations, OfAFunctionNameTheOneOperandClass) {
    const Ref x(differential("x"));
    real out = 0;
    for (int kind = 11; kind <= 29; ++kind) {
        const Ref function(static_cast<ExprType>(kind), x);
        EXPECT_EQ(termEnding(function), (Ending{"#(ERR) virtual void UnOp::GetDY(int, real&) called!\n", 1})) << kind;
        if (kind == 11) continue;
        EXPECT_EQ(endingOf([&] { function->Result(out, true); }),
                  (Ending{"#(ERR) virtual void UnOp::Result(real&, bool) called!\n", 1}))
            << kind;
    }
}

TEST_F(ForbiddenOperations, OfLeavesHaveThreeMarks) {
    EXPECT_EQ(termEnding(number(1)), (Ending{"#(ERR) virtual void Number::GetDY(int, real&) called!!!\n", 1}));
    EXPECT_EQ(termEnding(new Time), (Ending{"#(ERR) virtual void Time::GetDY(int, real&) called!!!\n", 1}));
    EXPECT_EQ(termEnding(new Algebraic("x", number(1))),
              (Ending{"#(ERR) virtual void Algebraic::GetDY(int, real&) called!!!\n", 1}));
}

TEST_F(ForbiddenOperations, OfTheEmptyNodeHaveOneMark) {
    const Ref nothing;
    real out = 0;
    EXPECT_EQ(termEnding(nothing), (Ending{"#(ERR) virtual void NothingExpr::GetDY(int, real&) called!\n", 1}));
    EXPECT_EQ(endingOf([&] { nothing->Result(out, true); }),
              (Ending{"#(ERR) virtual void NothingExpr::Result(real&, bool) called!\n", 1}));
    EXPECT_EQ(endingOf([&] { nothing->InitValue(out); }),
              (Ending{"#(ERR) virtual void NothingExpr::InitValue(real&) called!\n", 1}));
}

TEST_F(Handles, OfTheEmptyNodeExpandAndDeriveToItself) {
    const Ref nothing;
    EXPECT_EQ(nothing->Converted(), nothing);
    EXPECT_EQ(nothing->Derivative(), nothing);
    EXPECT_EQ(printed(nothing), "[NULL]");
}

TEST_F(ForbiddenOperations, OfFunctionsWithoutAnEquationAreErrors) {
    const Ref function(ExprType::Cos, differential("x"));
    EXPECT_EQ(endingOf([&] { function->Derivative(); }),
              (Ending{"#(ERR) No derivative of cos before it is expanded\n", 1}));
    EXPECT_EQ(endingOf([&] { function->Converted(); }), (Ending{"#(ERR) A function outside of an equation\n", 1}));
}

TEST_F(Handles, ShowAsTheReferenceCountOfTheirNode) {
    const Expr::Ref one(new Number(7));
    const Expr::Ref two = one;
    std::ostringstream text;
    text << one;
    EXPECT_EQ(text.str(), "2");
}

}  // namespace
