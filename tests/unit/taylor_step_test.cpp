// SPDX-License-Identifier: MIT
// What one evaluation pass does with values that somebody asked for before.
#include "solver/taylor_step.hpp"

#include "tests/unit/fixture.hpp"

namespace {

class EvaluationPass : public NodeTest {};

TEST_F(EvaluationPass, ComputesAlgebraicEquationsAlsoWhenTheyWereAskedForBefore) {
    prepareText(settings, "y' = 0 & 2; x = y;");
    Differential& x = *settings.equations.find("x");
    real value = 0;
    x.Value(value);
    EXPECT_EQ(value, 2);
    settings.equations.find("y")->setInitialValue(5);
    x.Value(value);
    EXPECT_EQ(value, 2) << "the value of this point is kept";

    TaylorStep(settings, settings.equations, Evaluation::Scheduled).evaluate();

    EXPECT_EQ(x.result(), 5);
    EXPECT_FALSE(settings.forceRecompute);
}

}  // namespace
