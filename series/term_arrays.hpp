// SPDX-License-Identifier: MIT
// Arrays of Taylor terms for sums of products.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "series/halves.hpp"
#include "series/program.hpp"

namespace zirk {

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
    const Cell& at(ArrayIndex array, std::size_t k) const { return cells_[array * stride_ + k]; }

    Cell* all() { return cells_.data(); }
    /// Cells from one array to the next.
    std::size_t stride() const { return stride_; }

private:
    template <class Other>
    friend class TermArrays;

    std::size_t arrays_;
    std::size_t stride_;
    std::vector<Cell> cells_;
};

}  // namespace zirk
