// SPDX-License-Identifier: MIT
// The evaluation pass.
#include "classic/taylor_step.hpp"

#include <algorithm>
#include <limits>
#include <new>

namespace zirk {

namespace {

/// Stamps of an endless run wrap without harm.
int following(int stamp) { return static_cast<int>(static_cast<unsigned>(stamp) + 1u); }

/// Terms that every sum computes at least: it ends after this many negligible ones at the earliest.
std::size_t shortestSum(const Calculus& calculus) {
    if (calculus.limits.zeroTerms < 1) return 0;
    const int terms = calculus.limits.useAllTerms ? calculus.limits.maxOrder
                                                  : std::min(calculus.limits.maxOrder, calculus.limits.zeroTerms);
    return static_cast<std::size_t>(std::max(terms, 0));
}

}  // namespace

void TaylorStep::claimTerms() {
    if (calculus_.stepStamp == 0 || termsClaimed_) return;
    termsClaimed_ = true;
    std::size_t series = 1;
    for (const Differential& variable : equations_) {
        if (isDifferential(variable)) ++series;
    }
    const std::size_t terms = shortestSum(calculus_);
    if (terms > (std::numeric_limits<std::size_t>::max() / sizeof(real)) / series) throw std::bad_alloc();
    // Never touched and given back at once: what cannot be had fails here and not after minutes.
    void* volatile claimed = ::operator new(series* terms * sizeof(real));
    ::operator delete(claimed);
}

void TaylorStep::evaluate() {
    claimTerms();
    calculus_.orderUsed = 0;
    steadyCount_ = 0;
    // What the chooser leaves is summed by the nodes, when their turn comes below.
    isCompiled_ = evaluation_ == Evaluation::Compiled && chooser_.sumAll();
    if (isCompiled_ && place_.empty()) findPlaces();
    for (Differential* variable : equations_.list()) {
        const bool isDefined = isAlgebraic(*variable);
        real value = 0;
        // Algebraic equations are computed at every visit, also when somebody asked for them before.
        calculus_.forceRecompute = isDefined;
        if (isDefined || !isCompiled_) variable->Value(value);
        if (variable->isSteady()) ++steadyCount_;
    }
    calculus_.forceRecompute = false;
}

void TaylorStep::findPlaces() {
    SlotIndex place = 0;
    for (const Differential* variable : equations_.list()) {
        place_.push_back(isAlgebraic(*variable) ? place : place++);
    }
}

int TaylorStep::highestTerm(std::size_t variable) const {
    const Differential& asked = *equations_.list()[variable];
    const bool isNodes = !isCompiled_ || isAlgebraic(asked);
    return isNodes ? asked.highestTerm() : chooser_.highestTerm(place_[variable]);
}

real TaylorStep::term(std::size_t variable, int k) const {
    const Differential& asked = *equations_.list()[variable];
    if (isAlgebraic(asked)) return k == 0 ? asked.startValue() : 0;
    return isCompiled_ ? chooser_.term(place_[variable], k) : asked.term(k);
}

void TaylorStep::accept() {
    calculus_.prevStepStamp = calculus_.stepStamp;
    calculus_.stepStamp = following(calculus_.stepStamp);
}

void TaylorStep::repeat() {
    calculus_.stepStamp = following(calculus_.stepStamp);
    calculus_.prevStepStamp = calculus_.stepStamp;
}

}  // namespace zirk
