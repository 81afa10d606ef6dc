// SPDX-License-Identifier: MIT
// Arrays of Taylor terms for sums of products.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "series/halves.hpp"
#include "series/program.hpp"

namespace zirk {

/// falling[0] * rising[0] + falling[-1] * rising[1] + ..., `count` products, added in this order from zero.
template <class Cell>
real productSum(const Cell* falling, const Cell* rising, std::size_t count) {
    real sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const real a = *(falling - i);
        const real b = rising[i];
        sum = sum + a * b;
    }
    return sum;
}

/// Terms of several values, each in one contiguous array.
template <class Cell>
class TermArrays {
public:
    /// With room for the first `terms` terms.
    TermArrays(std::size_t arrays, std::size_t terms) : arrays_(arrays), stride_(terms), cells_(arrays * terms) {}

    /// Makes room for the first `terms` terms.
    void reserve(std::size_t terms) {
        if (terms <= stride_) return;
        std::vector<Cell> wider(arrays_ * terms);
        for (std::size_t array = 0; array < arrays_; ++array) {
            std::copy_n(&cells_[array * stride_], stride_, &wider[array * terms]);
        }
        cells_.swap(wider);
        stride_ = terms;
    }

    /// The same terms from cells of another form.
    template <class Other>
    void copy(const TermArrays<Other>& other) {
        stride_ = other.stride_;
        cells_.assign(other.cells_.begin(), other.cells_.end());
    }

    Cell& at(ArrayIndex array, std::size_t k) { return cells_[array * stride_ + k]; }

    /// A[from] * B[to] + A[from - 1] * B[to + 1] + ..., `count` products.
    real sum(ArrayIndex a, std::size_t from, ArrayIndex b, std::size_t to, std::size_t count) const {
        return productSum(&cells_[a * stride_ + from], &cells_[b * stride_ + to], count);
    }

private:
    template <class Other>
    friend class TermArrays;

    std::size_t arrays_;
    std::size_t stride_;
    std::vector<Cell> cells_;
};

}  // namespace zirk
