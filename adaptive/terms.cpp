// SPDX-License-Identifier: MIT
// Group after group of values that follow the same law.
#include "adaptive/terms.hpp"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "adaptive/lanes.hpp"
#include "text/extended_bits.hpp"

namespace zirk {

namespace {

constexpr std::uint32_t none = Arrangement::none;

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
      rows_(static_cast<std::size_t>(arrangement.order + 1) * system.variables),
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

// Doubles multiply by a reciprocal: what that rounds is far below what their terms are needed for.

template <class T>
inline T Terms<T>::overFirst(T x, ValueIndex value) const {
    if constexpr (std::is_same_v<T, double>) return x * reciprocal_[value];
    return x / first_[value];
}

template <class T>
inline T Terms<T>::overOrder(T x, int k) const {
    if constexpr (std::is_same_v<T, double>) return x * ofOrder_[static_cast<std::size_t>(k)];
    return x / static_cast<T>(k);
}

/// Terms from 1 on: of the others rising arrays alone know, the rest adds products with them apart.
template <class T>
inline void Terms<T>::keep(ValueIndex value, int k, T term) {
    const auto index = static_cast<std::size_t>(k);
    const std::uint32_t rising = arrangement_.rising[value];
    const std::uint32_t falling = arrangement_.falling[value];
    const std::uint32_t weighted = arrangement_.weighted[value];
    if (rising != none) cells_[rising + index] = term;
    if (falling != none) cells_[falling - index] = term;
    if (weighted != none) cells_[weighted + index] = static_cast<T>(k) * term;
}

template <class T>
void Terms<T>::remember(ValueIndex value, int k, T term) {
    history_[value][static_cast<std::size_t>(k)] = term;
    weightedHistory_[value][static_cast<std::size_t>(k)] = static_cast<T>(k) * term;
}

template <class T>
void Terms<T>::begin(const std::vector<real>& first, T scale) {
    scale_ = scale;
    for (ValueIndex i = 0; i < system_.size(); ++i) {
        const T term = static_cast<T>(first[i]);
        now_[i] = term;
        first_[i] = term;
        if (arrangement_.rising[i] != none) cells_[arrangement_.rising[i]] = term;
        if (plain_) history_[i][0] = term;
    }
    std::copy_n(now_.begin(), system_.variables, rows_.begin());
    advanceVariables(0);
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
void Terms<T>::advanceVariables(int k) {
    const T factor = scale_ / static_cast<T>(k + 1);
    T* const next = rows_.data() + at(k + 1);
    const ValueIndex* const rates = system_.rates.data();
    for (ValueIndex i = 0; i < system_.variables; ++i) next[i] = now_[rates[i]] * factor;
    for (ValueIndex i = 0; i < system_.variables; ++i) now_[i] = next[i];
    for (const ValueIndex i : arrangement_.keptVariables) keep(i, k + 1, now_[i]);
    if (plain_) {
        for (ValueIndex i = 0; i < system_.variables; ++i) remember(i, k + 1, now_[i]);
    }
}

template <class T>
[[gnu::always_inline]] inline void Terms<T>::runGroup(const Arrangement::Group& group, int k) {
    const ValueIndex* const left = arrangement_.left.data();
    const ValueIndex* const right = arrangement_.right.data();
    T* const now = now_.data();
    const T* const first = first_.data();
    const T* const numbers = numbers_.data();
    T* const cells = cells_.data();
    const std::uint32_t* const rising = arrangement_.rising.data();
    const std::uint32_t* const falling = arrangement_.falling.data();
    const std::uint32_t* const weighted = arrangement_.weighted.data();
    const auto n = static_cast<std::size_t>(k);
    const auto order = static_cast<T>(k);
    const auto each = [&](auto term) {
        if (!group.isKept) {
            for (ValueIndex c = group.begin; c < group.end; ++c) now[c] = term(c, left[c], right[c]);
            return;
        }
        for (ValueIndex c = group.begin; c < group.end; ++c) {
            const T result = term(c, left[c], right[c]);
            now[c] = result;
            if (rising[c] != none) cells[rising[c] + n] = result;
            if (falling[c] != none) cells[falling[c] - n] = result;
            if (weighted[c] != none) cells[weighted[c] + n] = order * result;
        }
    };
    // The sum over i from 1 to k - 1 of x_i y_(k-i). The newest terms are not in it: reading what has just been written
    // would wait for the memory.
    const auto inner = [&](std::uint32_t x, std::uint32_t y) {
        return sumOfProducts(&cells[x + 1], &cells[y - n + 1], n - 1);
    };
    switch (group.law) {
        case Law::Time:
            return each([&](ValueIndex, ValueIndex, ValueIndex) { return k == 1 ? scale_ : T{0}; });
        case Law::Add:
            return each([&](ValueIndex, ValueIndex a, ValueIndex b) { return now[a] + now[b]; });
        case Law::Subtract:
            return each([&](ValueIndex, ValueIndex a, ValueIndex b) { return now[a] - now[b]; });
        case Law::Negate:
        case Law::FromNumber:
            return each([&](ValueIndex, ValueIndex a, ValueIndex) { return -now[a]; });
        case Law::AddNumber:
            return each([&](ValueIndex, ValueIndex a, ValueIndex) { return now[a]; });
        case Law::Scale:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex) { return now[a] * numbers[c]; });
        case Law::Ratio:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex) { return now[a] / numbers[c]; });
        case Law::ScaleBy:
            return each([&](ValueIndex, ValueIndex a, ValueIndex b) { return now[a] * first[b]; });
        case Law::RatioBy:
            return each([&](ValueIndex, ValueIndex a, ValueIndex b) { return overFirst(now[a], b); });
        case Law::Product:
            return each([&](ValueIndex, ValueIndex a, ValueIndex b) {
                return inner(rising[a], falling[b]) + (first[a] * now[b] + now[a] * first[b]);
            });
        case Law::SquareLaw:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex) {
                return numbers[c] * (inner(rising[a], falling[a]) + 2 * (first[a] * now[a]));
            });
        case Law::Quotient:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex b) {
                return overFirst(now[a] - (inner(rising[b], falling[c]) + now[b] * first[c]), b);
            });
        case Law::Reciprocal:
            return each([&](ValueIndex c, ValueIndex, ValueIndex b) {
                return -overFirst(inner(rising[b], falling[c]) + now[b] * first[c], b);
            });
        case Law::Root:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex) {
                return overFirst((now[a] - inner(rising[c], falling[c])) / 2, c);
            });
        case Law::Power:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex) {
                const T newest = now[a] * first[c];
                const T heavy = (inner(weighted[a], falling[c]) + order * newest) * (numbers[c] + 1);
                return overFirst(overOrder(heavy, k) - (inner(rising[a], falling[c]) + newest), a);
            });
        case Law::ProductRate:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex b) {
                return numbers[c] * (overOrder(inner(weighted[a], falling[b]), k) + now[a] * first[b]);
            });
        case Law::QuotientRate:
            return each([&](ValueIndex c, ValueIndex a, ValueIndex b) {
                return overFirst(numbers[c] * now[a] - overOrder(inner(weighted[c], falling[b]), k), b);
            });
        default:
            return each([&](ValueIndex, ValueIndex, ValueIndex) { return T{0}; });
    }
}

namespace {

/// The sum over i from 1 to k - 1 of f(i), in the order that belongs to the kind of number.
template <class Product>
real orderedSum(int k, const Product& product, real) {
    real sum = 0;
    for (int i = 1; i < k; ++i) sum += product(i);
    return sum;
}

template <class Product>
double orderedSum(int k, const Product& product, double) {
    double part[4] = {0, 0, 0, 0};
    for (int i = 1; i < k; ++i) part[(i - 1) % 4] += product(i);
    return (part[0] + part[2]) + (part[1] + part[3]);
}

}  // namespace

template <class T>
T Terms<T>::lawfulTerm(ValueIndex c, int k) const {
    const Value& value = system_.values[c];
    if (value.isConstant) return 0;
    const ValueIndex a = value.a;
    const ValueIndex b = value.b;
    const T n = numbers_[c];
    const auto term = [this](ValueIndex i, int j) { return history_[i][static_cast<std::size_t>(j)]; };
    const auto inner = [&](ValueIndex x, ValueIndex y) {
        return orderedSum(k, [&](int i) { return term(x, i) * term(y, k - i); }, T{});
    };
    const auto innerWeighted = [&](ValueIndex x, ValueIndex y) {
        const std::vector<T>& weighted = weightedHistory_[x];
        return orderedSum(k, [&](int i) { return weighted[static_cast<std::size_t>(i)] * term(y, k - i); }, T{});
    };
    switch (value.law) {
        case Law::Time:
            return k == 1 ? scale_ : T{0};
        case Law::Add:
            return term(a, k) + term(b, k);
        case Law::Subtract:
            return term(a, k) - term(b, k);
        case Law::Negate:
        case Law::FromNumber:
            return -term(a, k);
        case Law::AddNumber:
            return term(a, k);
        case Law::Scale:
            return term(a, k) * n;
        case Law::Ratio:
            return term(a, k) / n;
        case Law::ScaleBy:
            return term(a, k) * term(b, 0);
        case Law::RatioBy:
            return overFirst(term(a, k), b);
        case Law::Product:
            return inner(a, b) + (term(a, 0) * term(b, k) + term(a, k) * term(b, 0));
        case Law::SquareLaw:
            return n * (inner(a, a) + 2 * (term(a, 0) * term(a, k)));
        case Law::Quotient:
            return overFirst(term(a, k) - (inner(b, c) + term(b, k) * term(c, 0)), b);
        case Law::Reciprocal:
            return -overFirst(inner(b, c) + term(b, k) * term(c, 0), b);
        case Law::Root:
            return overFirst((term(a, k) - inner(c, c)) / 2, c);
        case Law::Power: {
            const T newest = term(a, k) * term(c, 0);
            const T heavy = (innerWeighted(a, c) + static_cast<T>(k) * newest) * (n + 1);
            return overFirst(overOrder(heavy, k) - (inner(a, c) + newest), a);
        }
        case Law::ProductRate:
            return n * (overOrder(innerWeighted(a, b), k) + term(a, k) * term(b, 0));
        case Law::QuotientRate:
            return overFirst(n * term(a, k) - overOrder(innerWeighted(c, b), k), b);
        default:
            return 0;
    }
}

template <class T>
void Terms<T>::run(int first, int last) {
    for (int k = first; k <= last; ++k) {
        if (plain_) {
            for (ValueIndex i = system_.variables; i < system_.size(); ++i) {
                now_[i] = lawfulTerm(i, k);
                remember(i, k, now_[i]);
                keep(i, k, now_[i]);
            }
        } else {
            for (const Arrangement::Group& group : arrangement_.varying) runGroup(group, k);
        }
        if (k < arrangement_.order) advanceVariables(k);
    }
}

template class Terms<real>;
template class Terms<double>;
template bool Terms<double>::continueFrom(const Terms<real>&, int);

}  // namespace zirk
