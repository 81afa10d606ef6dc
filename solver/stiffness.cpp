// SPDX-License-Identifier: MIT
// The test and its lines.
#include "solver/stiffness.hpp"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

/// Exponent for a mantissa in [0.5, 1); 0 for zero and for what is not finite.
int binaryExponent(real x) {
    int exponent = 0;
    if (std::isfinite(x)) std::frexp(x, &exponent);
    return exponent;
}

}  // namespace

void Stiffness::findExtremes() {
    constexpr real huge = std::numeric_limits<real>::infinity();
    smallest_ = {huge, "", 0};
    largest_ = {-huge, "", 0};
    for (const Differential& variable : equations_) {
        int order = -1;
        real term = 0;
        variable.LastTerm(order, term);
        if (order <= 0) continue;
        const real magnitude = std::fabs(term);
        // Ties stay with the equation that comes first.
        if (smallest_.magnitude > magnitude) smallest_ = {magnitude, variable.name(), 0};
        if (magnitude > largest_.magnitude) largest_ = {magnitude, variable.name(), 0};
    }
    smallest_.exponent = binaryExponent(smallest_.magnitude);
    largest_.exponent = binaryExponent(largest_.magnitude);
}

void Stiffness::test(bool& recheck) {
    if (stiff_ && !recheck && !settings_.stiffEveryStep) return;
    findExtremes();
    const int difference = std::abs(largest_.exponent - smallest_.exponent);
    stiff_ = difference > settings_.stiffExpDiff;
    if (stiff_) {
        line_ << "#(COMP) System is STIFF!" << endOfLine;
        recheck = false;
    }
    line_ << "#(TST) Max(" << largest_.name << ")=" << largest_.exponent << "  Min(" << smallest_.name
          << ")=" << smallest_.exponent << "  Diff=" << difference << endOfLine;
}
