// SPDX-License-Identifier: MIT
// Changes of the form and of the size of term arrays.
#include "solver/term_arrays.hpp"

#include <algorithm>
#include <type_traits>

void TermArrays::goWide() {
    isWide_ = true;
    // Some arrays may be one term ahead of the others.
    wide_.assign(halves_.begin(), halves_.end());
}

void TermArrays::widenRows(std::size_t stride) {
    const auto spread = [&](auto& terms) {
        typename std::decay<decltype(terms)>::type wider(arrays_ * stride);
        for (std::size_t array = 0; array < arrays_; ++array) {
            std::copy_n(&terms[array * stride_], stride_, &wider[array * stride]);
        }
        terms.swap(wider);
    };
    spread(halves_);
    if (isWide_) {
        spread(wide_);
    } else {
        wide_.clear();
    }
    stride_ = stride;
}
