// SPDX-License-Identifier: MIT
// Arrays of Taylor terms for sums of products.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "series/halves.hpp"

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

    /// Makes room for terms 0 to `last`.
    void reserve(int last) {
        const auto wanted = static_cast<std::size_t>(last) + 1;
        if (wanted <= stride_) return;
        std::vector<Cell> wider(arrays_ * wanted);
        for (std::size_t array = 0; array < arrays_; ++array) {
            std::copy_n(&cells_[array * stride_], stride_, &wider[array * wanted]);
        }
        cells_.swap(wider);
        stride_ = wanted;
    }

    /// The same terms from cells of another form.
    template <class Other>
    void copy(const TermArrays<Other>& other) {
        stride_ = other.stride_;
        cells_.assign(other.cells_.begin(), other.cells_.end());
    }

    Cell& at(int array, int k) { return cells_[index(array, k)]; }
    const Cell& at(int array, int k) const { return cells_[index(array, k)]; }

    /// A[from] * B[to] + A[from - 1] * B[to + 1] + ..., `count` products.
    real sum(int a, int from, int b, int to, int count) const {
        return productSum(&at(a, from), &at(b, to), static_cast<std::size_t>(count));
    }

private:
    template <class Other>
    friend class TermArrays;

    std::size_t index(int array, int k) const {
        return static_cast<std::size_t>(array) * stride_ + static_cast<std::size_t>(k);
    }

    std::size_t arrays_;
    std::size_t stride_;
    std::vector<Cell> cells_;
};

}  // namespace zirk
