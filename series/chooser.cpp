// SPDX-License-Identifier: MIT
// When the program runs and when the nodes do.
#include "series/chooser.hpp"

#include <algorithm>

#include "series/series_pass.hpp"

namespace zirk {

namespace {

/// Making the program costs about as much as two points of low order by the nodes, or as so many terms of every
/// variable; runs that end before do without. At high orders it costs less than the first point.
constexpr int pointsBeforeBuilding = 4;
constexpr int termsBeforeBuilding = 30;
constexpr int lowOrder = 60;

}  // namespace

Chooser::Chooser(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads)
    : calculus_(calculus), equations_(equations), threads_(threads) {}

Chooser::~Chooser() = default;

int Chooser::highestTerm(SlotIndex variable) const { return pass_->highestTerm(variable); }

real Chooser::term(SlotIndex variable, int k) const { return pass_->term(variable, k); }

bool Chooser::isWaiting() {
    if (calculus_.limits.maxOrder > lowOrder || waited_ == pointsBeforeBuilding) return false;
    if (waited_ > 0) {
        int most = 0;
        for (const Differential& variable : equations_) {
            if (isDifferential(variable)) most = std::max(most, variable.ownOrder() + calculus_.limits.zeroTerms);
        }
        termsByNodes_ += most;
    }
    if (termsByNodes_ >= termsBeforeBuilding) return false;
    ++waited_;
    return true;
}

bool Chooser::sumAll() {
    if (calculus_.stepStamp == 0 || calculus_.limits.maxOrder < 2 || calculus_.limits.zeroTerms < 1) return false;
    if (pass_ == nullptr && isWaiting()) return false;
    if (retreat_.takesPoint()) return false;
    if (pass_ == nullptr) pass_ = std::make_unique<SeriesPass>(calculus_, equations_, threads_);
    const bool summed = pass_->sumAll();
    summed ? retreat_.succeed() : retreat_.fail();
    return summed;
}

}  // namespace zirk
