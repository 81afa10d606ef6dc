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

/// Terms from 1 on: of the first ones rising arrays alone know, the rest adds products with them apart.
template <class T>
inline void Terms<T>::keep(const Arrangement::Instruction& to, int k, T term) {
    T* const cells = cells_.data();
    const auto n = static_cast<std::size_t>(k);
    if (to.rising != none) cells[to.rising + n] = term;
    if (to.falling != none) cells[to.falling - n] = term;
    if (to.weighted != none) cells[to.weighted + n] = static_cast<T>(k) * term;
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
    // The scale is a power of two: nothing is rounded here.
    const T factor = scale_ * ofOrder_[static_cast<std::size_t>(k) + 1];
    T* const next = rows_.data() + at(k + 1);
    T* const now = now_.data();
    const ValueIndex* const rates = system_.rates.data();
    const ValueIndex variables = system_.variables;
    for (ValueIndex i = 0; i < variables; ++i) next[i] = now[rates[i]] * factor;
    for (ValueIndex i = 0; i < variables; ++i) now[i] = next[i];
    for (const ValueIndex i : arrangement_.keptVariables) keep(arrangement_.instructions[i], k + 1, next[i]);
    if (plain_) {
        for (ValueIndex i = 0; i < system_.variables; ++i) remember(i, k + 1, now_[i]);
    }
}

template <class T>
void Terms<T>::runGroups(int k) {
    using Instruction = Arrangement::Instruction;
    const Instruction* const instructions = arrangement_.instructions.data();
    T* const now = now_.data();
    const T* const first = first_.data();
    const T* const numbers = numbers_.data();
    // Term k, term 1 and term k - 1 of arrays that begin at cell 0.
    T* const newest = cells_.data() + k;
    T* const newestFalling = cells_.data() - k;
    const T* const second = cells_.data() + 1;
    const T* const secondFalling = newestFalling + 1;
    const auto n = static_cast<std::size_t>(k);
    const auto order = static_cast<T>(k);
    const Arrangement::Group* group = nullptr;
    const auto each = [&](auto term) {
        const ValueIndex end = group->end;
        if (!group->isKept) {
            for (ValueIndex c = group->begin; c < end; ++c) now[c] = term(c, instructions[c]);
            return;
        }
        for (ValueIndex c = group->begin; c < end; ++c) {
            const Instruction& i = instructions[c];
            const T result = term(c, i);
            now[c] = result;
            if (i.rising != none) newest[i.rising] = result;
            if (i.falling != none) newestFalling[i.falling] = result;
            if (i.weighted != none) newest[i.weighted] = order * result;
        }
    };
    // The sum over i from 1 to k - 1 of x_i y_(k-i). The newest terms are not in it: reading what has just been written
    // would wait for the memory.
    const auto inner = [&](std::uint32_t x, std::uint32_t y) {
        return sumOfProducts(second + x, secondFalling + y, n - 1);
    };
    using Index = ValueIndex;
    for (const Arrangement::Group& next : arrangement_.varying) {
        group = &next;
        switch (group->law) {
            case Law::Time:
                each([&](Index, const Instruction&) { return k == 1 ? scale_ : T{0}; });
                break;
            case Law::Add:
                each([&](Index, const Instruction& i) { return now[i.a] + now[i.b]; });
                break;
            case Law::Subtract:
                each([&](Index, const Instruction& i) { return now[i.a] - now[i.b]; });
                break;
            case Law::Negate:
            case Law::FromNumber:
                each([&](Index, const Instruction& i) { return -now[i.a]; });
                break;
            case Law::AddNumber:
                each([&](Index, const Instruction& i) { return now[i.a]; });
                break;
            case Law::Scale:
                each([&](Index c, const Instruction& i) { return now[i.a] * numbers[c]; });
                break;
            case Law::Ratio:
                each([&](Index c, const Instruction& i) { return now[i.a] / numbers[c]; });
                break;
            case Law::ScaleBy:
                each([&](Index, const Instruction& i) { return now[i.a] * first[i.b]; });
                break;
            case Law::RatioBy:
                each([&](Index, const Instruction& i) { return overFirst(now[i.a], i.b); });
                break;
            case Law::Product:
                each([&](Index c, const Instruction& i) {
                    return numbers[c] * (inner(i.x, i.y) + (first[i.a] * now[i.b] + now[i.a] * first[i.b]));
                });
                break;
            case Law::SquareLaw:
                each([&](Index c, const Instruction& i) {
                    return numbers[c] * (inner(i.x, i.y) + 2 * (first[i.a] * now[i.a]));
                });
                break;
            case Law::Quotient:
                each([&](Index c, const Instruction& i) {
                    return overFirst(numbers[c] * now[i.a] - (inner(i.x, i.y) + now[i.b] * first[c]), i.b);
                });
                break;
            case Law::Reciprocal:
                each([&](Index c, const Instruction& i) {
                    return -overFirst(inner(i.x, i.y) + now[i.b] * first[c], i.b);
                });
                break;
            case Law::Root:
                each([&](Index c, const Instruction& i) { return overFirst((now[i.a] - inner(i.x, i.y)) / 2, c); });
                break;
            case Law::Power:
                each([&](Index c, const Instruction& i) {
                    const T last = now[i.a] * first[c];
                    const T heavy = (inner(i.x, i.y) + order * last) * (numbers[c] + 1);
                    return overFirst(overOrder(heavy, k) - (inner(i.z, i.y) + last), i.a);
                });
                break;
            case Law::ProductRate:
                each([&](Index c, const Instruction& i) {
                    return numbers[c] * (overOrder(inner(i.x, i.y), k) + now[i.a] * first[i.b]);
                });
                break;
            case Law::QuotientRate:
                each([&](Index c, const Instruction& i) {
                    return overFirst(numbers[c] * now[i.a] - overOrder(inner(i.x, i.y), k), i.b);
                });
                break;
            default:
                each([&](Index, const Instruction&) { return T{0}; });
        }
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
        return orderedSum(
            k, [&](int i) { return term(x, i) * term(y, k - i); }, T{});
    };
    const auto innerWeighted = [&](ValueIndex x, ValueIndex y) {
        const std::vector<T>& weighted = weightedHistory_[x];
        return orderedSum(
            k, [&](int i) { return weighted[static_cast<std::size_t>(i)] * term(y, k - i); }, T{});
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
            return n * (inner(a, b) + (term(a, 0) * term(b, k) + term(a, k) * term(b, 0)));
        case Law::SquareLaw:
            return n * (inner(a, a) + 2 * (term(a, 0) * term(a, k)));
        case Law::Quotient:
            return overFirst(n * term(a, k) - (inner(b, c) + term(b, k) * term(c, 0)), b);
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
                keep(arrangement_.instructions[i], k, now_[i]);
            }
        } else {
            runGroups(k);
        }
        if (k < arrangement_.order) advanceVariables(k);
    }
}

template class Terms<real>;
template class Terms<double>;
template bool Terms<double>::continueFrom(const Terms<real>&, int);

}  // namespace zirk
