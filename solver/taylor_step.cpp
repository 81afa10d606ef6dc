// SPDX-License-Identifier: MIT
// The evaluation pass.
#include "solver/taylor_step.hpp"

namespace {

/// Stamps of an endless run wrap without harm.
int following(int stamp) { return static_cast<int>(static_cast<unsigned>(stamp) + 1u); }

}  // namespace

void TaylorStep::evaluate() {
    calculus_.orderUsed = 0;
    steadyCount_ = 0;
    // What the schedule leaves is summed by the nodes, when their turn comes below.
    if (evaluation_ == Evaluation::Scheduled) schedule_.sumAll();
    for (Differential& variable : equations_) {
        const bool isAlgebraic = variable.type() == ExprType::Algebraic;
        real value = 0;
        // Algebraic equations are computed at every visit, also when somebody asked for them before.
        if (isAlgebraic) calculus_.forceRecompute = true;
        variable.Value(value);
        if (variable.isSteady()) ++steadyCount_;
        if (isAlgebraic) calculus_.forceRecompute = false;
    }
}

void TaylorStep::accept() {
    calculus_.prevStepStamp = calculus_.stepStamp;
    calculus_.stepStamp = following(calculus_.stepStamp);
}

void TaylorStep::repeat() {
    calculus_.stepStamp = following(calculus_.stepStamp);
    calculus_.prevStepStamp = calculus_.stepStamp;
}
