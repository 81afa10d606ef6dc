// SPDX-License-Identifier: MIT
// The sum of a variable's Taylor series, with its stop at a negligible tail.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "expr/calculus.hpp"

namespace zirk {

/// Takes terms in rising order until enough negligible ones have come in a row.
struct SeriesSum {
    real sum = 0;
    /// Index of the next term.
    int k = 0;
    int negligible = 0;
    bool onlyZeros = true;

    /// Begins anew, with term 0.
    void begin(const real& start, const Calculus& calculus) {
        *this = SeriesSum();
        sum = 0;
        add(start, calculus);
    }

    bool wantsMore(const Calculus& calculus) const {
        return k < calculus.limits.maxOrder && negligible < calculus.limits.zeroTerms;
    }

    void add(real term, const Calculus& calculus) {
        sum = sum + term;
        if (onlyZeros) onlyZeros = term == 0;
        if (isNegligible(term, sum, calculus)) {
            // With all terms wanted, an early negligible term leaves the count as it is.
            const bool early = k < static_cast<std::int64_t>(calculus.limits.maxOrder) - calculus.limits.zeroTerms;
            if (!calculus.limits.useAllTerms || !early) ++negligible;
        } else {
            negligible = 0;
        }
        ++k;
    }

    /// Small against the sum `with` it. Far below 1 the product of sum and accuracy is no number other than zero any
    /// more: there a term has to be zero itself.
    static bool isNegligible(real term, real with, const Calculus& calculus) {
        const real bound = std::fabs(with * calculus.limits.accuracy);
        if (bound > std::fabs(term)) return true;
        // Apart from the rest, so that only one comparison is made where terms are none.
        if (term != 0) return false;
        return bound == 0 && with != 0 && calculus.limits.accuracy > 0;
    }

    /// Takes up to `count` terms, `stride` cells apart, and none after the last that it wants. (A function of its own:
    /// where it is called from a loop, compilers would make many versions of it.)
    template <class Cell>
    [[gnu::noinline]] void addRun(const Cell* terms, std::size_t stride, int count, const Calculus& calculus) {
        // A copy, so that the sum stays in a register.
        SeriesSum series = *this;
        const int zeroTerms = calculus.limits.zeroTerms;
        int left = std::min(count, calculus.limits.maxOrder - k);
        while (left > 0 && series.negligible < zeroTerms) {
            const int part = std::min(left, zeroTerms);
            if (!series.addCertain(terms, stride, part, calculus)) {
                for (int i = 0; i < part && series.negligible < zeroTerms; ++i) {
                    series.add(terms[static_cast<std::size_t>(i) * stride], calculus);
                }
            }
            terms += static_cast<std::size_t>(part) * stride;
            left -= part;
        }
        *this = series;
    }

    /// Adds as many terms as end a series when all are negligible, with one test for all: none before was negligible
    /// and the last one is not, so the series cannot have ended among them. False, with none added, when that is not
    /// so.
    template <class Cell>
    bool addCertain(const Cell* terms, std::size_t stride, int count, const Calculus& calculus) {
        if (negligible != 0 || onlyZeros || count < calculus.limits.zeroTerms) return false;
        real next = sum;
        const Cell* const last = terms + static_cast<std::size_t>(count - 1) * stride;
        for (; terms != last; terms += stride) next = next + *terms;
        const real lastTerm = *last;
        next = next + lastTerm;
        if (isNegligible(lastTerm, next, calculus)) return false;
        sum = next;
        k += count;
        return true;
    }

    /// The trailing negligible terms are in the sum but not in the order.
    int order() const { return k - negligible; }
};

}  // namespace zirk
