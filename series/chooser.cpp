// SPDX-License-Identifier: MIT
// When the program runs and when the nodes do.
#include "series/chooser.hpp"

#include "series/series_pass.hpp"

namespace zirk {

namespace {

/// Making the program costs about as much as two points of low order by the nodes; short runs do without.
/// At high orders it costs less than the first.
constexpr int pointsBeforeBuilding = 4;
constexpr int lowOrder = 60;

}  // namespace

Chooser::Chooser(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads)
    : calculus_(calculus), equations_(equations), threads_(threads) {}

Chooser::~Chooser() = default;

int Chooser::highestTerm(SlotIndex variable) const { return pass_->highestTerm(variable); }

real Chooser::term(SlotIndex variable, int k) const { return pass_->term(variable, k); }

bool Chooser::sumAll() {
    if (calculus_.stepStamp == 0 || calculus_.limits.maxOrder < 2 || calculus_.limits.zeroTerms < 1) return false;
    if (waited_ < pointsBeforeBuilding && calculus_.limits.maxOrder <= lowOrder) {
        ++waited_;
        return false;
    }
    if (retreat_.takesPoint()) return false;
    if (pass_ == nullptr) pass_ = std::make_unique<SeriesPass>(calculus_, equations_, threads_);
    const bool summed = pass_->sumAll();
    summed ? retreat_.succeed() : retreat_.fail();
    return summed;
}

}  // namespace zirk
