// SPDX-License-Identifier: MIT
// The search for the smallest and the largest last term.
#include "classic/stiffness.hpp"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "text/extended_bits.hpp"

namespace zirk {

namespace {

/// Exponent for a mantissa in [0.5, 1), read from the number itself; 0 for zero and for what is not finite.
int binaryExponent(const real& x) {
    const int biased = bitsOf(x).biasedExponent();
    if (biased == ExtendedBits::notFinite) return 0;
    if (biased != 0) return biased - (ExtendedBits::bias - 1);
    int exponent = 0;
    std::frexp(x, &exponent);
    return exponent;
}

std::string_view nameOf(const Differential* variable) {
    return variable != nullptr ? std::string_view(variable->name()) : "";
}

}  // namespace

void Stiffness::test(bool& recheck) {
    real smallest = std::numeric_limits<real>::infinity();
    real largest = -smallest;
    const Differential* ofSmallest = nullptr;
    const Differential* ofLargest = nullptr;
    const std::vector<Differential*>& variables = equations_.list();
    for (std::size_t i = 0; i < variables.size(); ++i) {
        // The last term but one, and not the first.
        const int order = taylor_.highestTerm(i) - 1;
        if (order <= 0) continue;
        const real magnitude = std::fabs(taylor_.term(i, order));
        // Ties stay with the equation that comes first.
        if (smallest > magnitude) {
            smallest = magnitude;
            ofSmallest = variables[i];
        }
        if (magnitude > largest) {
            largest = magnitude;
            ofLargest = variables[i];
        }
    }
    last_ = {false, nameOf(ofLargest), nameOf(ofSmallest), binaryExponent(largest), binaryExponent(smallest), 0};
    last_.difference = std::abs(last_.largestExponent - last_.smallestExponent);
    last_.isStiff = last_.difference > options_.stiffExpDiff;
    if (last_.isStiff) recheck = false;
}

}  // namespace zirk
