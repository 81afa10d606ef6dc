// SPDX-License-Identifier: MIT
// Where terms begin, and where doubles take over.
#include "adaptive/terms.hpp"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "text/extended_bits.hpp"

namespace zirk {

namespace {

/// Beyond 2^-900 and 2^900, doubles may lose what counts: products of such numbers leave their range.
bool fitsDouble(const real& x) {
    constexpr unsigned most = 900;
    constexpr unsigned one = 16383;
    const unsigned exponent = bitsOf(x).biasedExponent();
    return exponent - (one - most) <= 2 * most || x == 0;
}

}  // namespace

template <class T>
Terms<T>::Terms(const ValueSystem& system, const Arrangement& arrangement, bool plain)
    : system_(system),
      arrangement_(arrangement),
      now_(system.size()),
      first_(system.size()),
      rows_(static_cast<std::size_t>(arrangement.order + 1) * arrangement.rowLength),
      cells_(arrangement.cells),
      reciprocal_(system.size()),
      plain_(plain) {
    for (int k = 0; k <= arrangement.order; ++k) ofOrder_.push_back(1 / static_cast<T>(k));
    for (const Value& value : system.values) {
        numbers_.push_back(static_cast<T>(value.n));
        numbersFit_ = numbersFit_ && fitsDouble(value.n);
    }
    if (plain) {
        history_.assign(system.size(), std::vector<T>(static_cast<std::size_t>(arrangement.order) + 1));
        weightedHistory_ = history_;
    }
}

template <class T>
void Terms<T>::clear() {
    std::fill(cells_.begin(), cells_.end(), T{0});
}

template <class T>
OrderTables<T> Terms<T>::tables() {
    return {
        &arrangement_,   system_.rates.data(), system_.variables, now_.data(),     first_.data(), reciprocal_.data(),
        numbers_.data(), cells_.data(),        rows_.data(),      ofOrder_.data(), scale_};
}

template <class T>
void Terms<T>::begin(const std::vector<real>& first, T scale) {
    scale_ = scale;
    std::copy(first.begin(), first.end(), first_.begin());
    now_ = first_;
    for (const Arrangement::Instruction& value : arrangement_.instructions) cells_[value.rising] = first_[value.value];
    if (plain_) {
        for (ValueIndex i = 0; i < system_.size(); ++i) history_[i][0] = first_[i];
    }
    std::copy_n(now_.begin(), system_.variables, rows_.begin());
    plain_ ? advancePlainly(0) : advanceVariables(tables(), 0);
    for (const Arrangement::Group& group : arrangement_.constants) {
        for (ValueIndex i = group.begin; i < group.end; ++i) now_[i] = 0;
    }
}

template <class T>
template <class Other>
bool Terms<T>::continueFrom(const Terms<Other>& before, int order) {
    if (!numbersFit_ || !fitsDouble(before.scale_)) return false;
    scale_ = static_cast<T>(before.scale_);
    for (ValueIndex i = 0; i < system_.size(); ++i) {
        if (!fitsDouble(before.first_[i])) return false;
        first_[i] = static_cast<T>(before.first_[i]);
    }
    for (const ValueIndex i : arrangement_.divisors) reciprocal_[i] = static_cast<T>(1 / before.first_[i]);
    // What is no variable is computed before it is used, and constants stay zero.
    for (ValueIndex i = 0; i < system_.variables; ++i) now_[i] = static_cast<T>(before.now_[i]);
    for (std::size_t i = 0; i < at(order + 1); ++i) rows_[i] = static_cast<T>(before.rows_[i]);
    for (const Arrangement::Array& array : arrangement_.arrays) {
        // Variables are one term ahead.
        const int last = array.isOfVariable ? order : order - 1;
        std::uint32_t cell = array.first;
        for (int k = 0; k <= last; ++k, cell += static_cast<std::uint32_t>(array.step)) {
            cells_[cell] = static_cast<T>(before.cells_[cell]);
        }
    }
    if (plain_) {
        for (ValueIndex i = 0; i < system_.size(); ++i) {
            const std::size_t last = static_cast<std::size_t>(order) + (i < system_.variables ? 1 : 0);
            for (std::size_t k = 0; k < last; ++k) {
                history_[i][k] = static_cast<T>(before.history_[i][k]);
                weightedHistory_[i][k] = static_cast<T>(before.weightedHistory_[i][k]);
            }
        }
    }
    return true;
}

template <class T>
void Terms<T>::run(int first, int last) {
    plain_ ? runPlainly(first, last) : runOrders(tables(), first, last);
}

template class Terms<real>;
template class Terms<double>;
template bool Terms<double>::continueFrom(const Terms<real>&, int);

}  // namespace zirk
