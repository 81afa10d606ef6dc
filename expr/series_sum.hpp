// SPDX-License-Identifier: MIT
// The sum of a variable's Taylor series, with its stop at a negligible tail.
#pragma once

#include <cmath>
#include <cstdint>

#include "expr/calculus.hpp"

/// Takes terms in rising order until enough negligible ones have come in a row.
struct SeriesSum {
    real sum = 0;
    /// Index of the next term.
    int k = 0;
    int negligible = 0;
    bool onlyZeros = true;

    bool wantsMore(const Calculus& calculus) const { return k < calculus.maxOrder && negligible < calculus.zeroTerms; }

    void add(real term, const Calculus& calculus) {
        sum = sum + term;
        if (onlyZeros) onlyZeros = term == 0;
        if (std::fabs(sum * calculus.accuracy) > std::fabs(term)) {
            // With all terms wanted, an early negligible term leaves the count as it is.
            const bool early = k < static_cast<std::int64_t>(calculus.maxOrder) - calculus.zeroTerms;
            if (!calculus.useAllTerms || !early) ++negligible;
        } else {
            negligible = 0;
        }
        ++k;
    }

    /// The trailing negligible terms are in the sum but not in the order.
    int order() const { return k - negligible; }
};
