// SPDX-License-Identifier: MIT
// Where terms begin, and where doubles take over.
#include "adaptive/terms.hpp"

#include <algorithm>
#include <atomic>
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
Terms<T>::Terms(const ValueSystem& system, const Arrangement& arrangement, const Sections& sections, Crew& crew,
                bool plain)
    : system_(system),
      arrangement_(arrangement),
      sections_(sections),
      crew_(crew),
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
    touch();
}

/// Makes everything zero, each part's memory by whom it belongs to.
template <class T>
void Terms<T>::touch() {
    const Crew::Turn turn(crew_);
    if (sections_.areUsedBy(crew_)) {
        sections_.eachShare(crew_, [&](const Sections::Share& share) {
            for (const auto& [begin, end] : share.values) {
                std::fill(&now_[begin], &now_[begin] + (end - begin), T{0});
                std::fill(&first_[begin], &first_[begin] + (end - begin), T{0});
            }
            for (int k = 0; k <= arrangement_.order; ++k) {
                for (const auto& [begin, end] : share.variables)
                    std::fill(&rows_[at(k) + begin], &rows_[at(k) + end - 1] + 1, T{0});
            }
            for (const auto& [cell, step, isOfVariable] : share.arrays) {
                const auto terms = static_cast<std::uint32_t>(arrangement_.order) + 1;
                std::fill_n(&cells_[step > 0 ? cell : cell + 1 - terms], terms, T{0});
            }
        });
    }
    // What lies between, and all of it where one thread does everything.
    for (UntouchedVector<T>* numbers : {&now_, &first_, &rows_, &cells_})
        std::fill(numbers->begin(), numbers->end(), T{0});
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
    if (sections_.areUsedBy(crew_) && !plain_) return beginTogether(first);
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

/// The same by all members. Terms of constants of the present order are zero already.
template <class T>
void Terms<T>::beginTogether(const std::vector<real>& first) {
    sections_.eachRange(system_, crew_, [&](ValueIndex begin, ValueIndex end) {
        for (ValueIndex i = begin; i < end; ++i) {
            first_[i] = static_cast<T>(first[i]);
            // Scrap is not for all members at the same time.
            if (arrangement_.rising[i] != Arrangement::none) cells_[arrangement_.rising[i]] = first_[i];
        }
        for (ValueIndex i = begin; i < std::min(end, system_.variables); ++i) rows_[i] = first_[i];
    });
    sections_.eachShare(crew_, [&](const Sections::Share& share) { advanceVariables(tables(), 0, share); });
}

template <class T>
template <class Other>
bool Terms<T>::continueFrom(const Terms<Other>& before, int order) {
    if (!numbersFit_ || !fitsDouble(before.scale_)) return false;
    scale_ = static_cast<T>(before.scale_);
    std::atomic<bool> allFit{true};
    sections_.eachRange(system_, crew_, [&](ValueIndex begin, ValueIndex end) {
        for (ValueIndex i = begin; i < end; ++i) {
            if (!fitsDouble(before.first_[i])) return allFit.store(false, std::memory_order_relaxed);
            first_[i] = static_cast<T>(before.first_[i]);
        }
    });
    if (!allFit) return false;
    crew_.divide(arrangement_.divisors.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const ValueIndex divisor = arrangement_.divisors[i];
            reciprocal_[divisor] = static_cast<T>(1 / before.first_[divisor]);
        }
    });
    // What is no variable is computed before it is used, and constants stay zero.
    crew_.divide(system_.variables, [&](std::size_t begin, std::size_t end) {
        for (int k = 0; k <= order; ++k) {
            for (std::size_t i = at(k) + begin; i < at(k) + end; ++i) rows_[i] = static_cast<T>(before.rows_[i]);
        }
        for (std::size_t i = begin; i < end; ++i) now_[i] = rows_[at(order) + i];
    });
    const auto copyArrays = [&](const std::vector<Arrangement::Array>& arrays) {
        for (const Arrangement::Array& array : arrays) {
            // Variables are one term ahead.
            const int last = array.isOfVariable ? order : order - 1;
            std::uint32_t cell = array.first;
            for (int k = 0; k <= last; ++k, cell += static_cast<std::uint32_t>(array.step)) {
                cells_[cell] = static_cast<T>(before.cells_[cell]);
            }
        }
    };
    if (!sections_.areUsedBy(crew_)) {
        copyArrays(arrangement_.arrays);
    } else {
        sections_.eachShare(crew_, [&](const Sections::Share& share) { copyArrays(share.arrays); });
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
    if (plain_) return runPlainly(first, last);
    if (!sections_.areUsedBy(crew_)) return runOrders(tables(), first, last);
    runOrders(tables(), first, last, sections_, crew_);
}

template class Terms<real>;
template class Terms<double>;
template bool Terms<double>::continueFrom(const Terms<real>&, int);

}  // namespace zirk
