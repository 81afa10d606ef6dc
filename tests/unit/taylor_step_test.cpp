// SPDX-License-Identifier: MIT
// What one evaluation pass does with values that somebody asked for before.
#include "classic/taylor_step.hpp"

#include <cmath>
#include <limits>

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class EvaluationPass : public NodeTest {};

TEST_F(EvaluationPass, ComputesAlgebraicEquationsAlsoWhenTheyWereAskedForBefore) {
    prepareText(*this, "y' = 0 & 2; x = y;");
    Differential& x = *system.equations.find("x");
    real value = 0;
    x.Value(value);
    EXPECT_EQ(value, 2);
    system.equations.find("y")->setInitialValue(5);
    x.Value(value);
    EXPECT_EQ(value, 2) << "the value of this point is kept";

    TaylorStep(calculus, system.equations, Evaluation::Compiled).evaluate();

    EXPECT_EQ(x.result(), 5);
    EXPECT_FALSE(calculus.forceRecompute);
}

/// y after ten points of y' = -y, the stamps moved to `stamp` before the sixth.
real decayedAcross(int stamp, Evaluation evaluation) {
    Workbench bench;
    prepareText(bench, "y' = -y & 1;");
    TaylorStep step(bench.calculus, bench.system.equations, evaluation);
    for (int point = 0; point < 10; ++point) {
        if (point == 5) {
            bench.calculus.stepStamp = stamp;
            bench.calculus.prevStepStamp = stamp - 1;
        }
        step.evaluate();
        step.accept();
    }
    return bench.system.equations.find("y")->result();
}

TEST(Stamps, WrapWithoutHarm) {
    for (const Evaluation evaluation : {Evaluation::NodeByNode, Evaluation::Compiled}) {
        const real plain = decayedAcross(100, evaluation);
        // The first point shows the start value; nine steps of 0.1 follow.
        EXPECT_NEAR(static_cast<double>(plain), std::exp(-0.9), 1e-10);
        EXPECT_EQ(decayedAcross(std::numeric_limits<int>::max() - 2, evaluation), plain);
        EXPECT_EQ(decayedAcross(-3, evaluation), plain);
    }
}

TEST(TermsOfNodes, AreThoseOfThePresentPointAlsoWhenAProgramSummedIt) {
    for (const Evaluation evaluation : {Evaluation::NodeByNode, Evaluation::Compiled}) {
        Workbench bench;
        prepareText(bench, "y' = -y & 1;");
        TaylorStep step(bench.calculus, bench.system.equations, evaluation);
        for (int point = 0; point < 8; ++point) {
            step.evaluate();
            step.accept();
        }
        step.evaluate();
        Differential& y = *bench.system.equations.find("y");
        const real start = y.startValue();
        EXPECT_EQ(termOf(&y, 0), start);
        EXPECT_EQ(termOf(&y, 1), -start * bench.calculus.step);
        EXPECT_EQ(step.term(0, 1), -start * bench.calculus.step);
    }
}

}  // namespace
