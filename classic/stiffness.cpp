// SPDX-License-Identifier: MIT
// The test and its lines.
#include "classic/stiffness.hpp"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace zirk {

namespace {

/// Exponent for a mantissa in [0.5, 1), read from the number itself; 0 for zero and for what is not finite.
int binaryExponent(const real& x) {
    std::uint16_t signAndExponent = 0;
    std::memcpy(&signAndExponent, reinterpret_cast<const char*>(&x) + 8, sizeof signAndExponent);
    const int biased = signAndExponent & 0x7fff;
    if (biased == 0x7fff) return 0;
    if (biased != 0) return biased - 16382;
    int exponent = 0;
    std::frexp(x, &exponent);
    return exponent;
}

}  // namespace

void Stiffness::findExtremes() {
    real smallest = std::numeric_limits<real>::infinity();
    real largest = -smallest;
    const Differential* ofSmallest = nullptr;
    const Differential* ofLargest = nullptr;
    for (const Differential* variable : equations_.list()) {
        int order = -1;
        real term = 0;
        variable->LastTerm(order, term);
        if (order <= 0) continue;
        const real magnitude = std::fabs(term);
        // Ties stay with the equation that comes first.
        if (smallest > magnitude) {
            smallest = magnitude;
            ofSmallest = variable;
        }
        if (magnitude > largest) {
            largest = magnitude;
            ofLargest = variable;
        }
    }
    smallest_ = extreme(ofSmallest, smallest);
    largest_ = extreme(ofLargest, largest);
}

Stiffness::Extreme Stiffness::extreme(const Differential* variable, const real& magnitude) {
    return {variable != nullptr ? std::string_view(variable->name()) : "", binaryExponent(magnitude)};
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

}  // namespace zirk
