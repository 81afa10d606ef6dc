// SPDX-License-Identifier: MIT
// The step table, and the settings that limit series.
#include "expr/calculus.hpp"

namespace zirk {

Calculus::Calculus(const SeriesLimits& inForce, real firstStep) : limits(inForce) { changeStep(firstStep); }

void Calculus::changeStep(real h) {
    step = h;
    stepTable.rebuild(h);
}

void StepTable::rebuild(real step) {
    step_ = step;
    factors_.assign(1, real{0});
}

void StepTable::extend(int last) {
    for (auto i = static_cast<int>(factors_.size()); i <= last; ++i) factors_.push_back(step_ / static_cast<real>(i));
}

void SeriesLimits::setOrder(int n) { maxOrder = saturatingSum(n, zeroTerms); }

void SeriesLimits::setZeroTerms(int n) {
    zeroTerms = n;
    maxOrder = saturatingSum(n, maxOrder);
}

}  // namespace zirk
