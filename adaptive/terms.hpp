// SPDX-License-Identifier: MIT
// The Taylor terms of all values at one step, order by order, in one kind of number.
#pragma once

#include <vector>

#include "adaptive/order_loop.hpp"
#include "parallel/untouched.hpp"

namespace zirk {

/// Terms of variables for all orders so far, of all other values for the present order, and the arrays to sum over.
///
/// T is real or double. A step begins in real numbers; where the terms have become small against the solution, doubles
/// go on from them (see StepSeries).
template <class T>
class Terms {
public:
    /// All must live as long as this does. `plain`: every term straight from its law, over terms kept value by value,
    /// to the same bits.
    Terms(const ValueSystem& system, const Arrangement& arrangement, const Sections& sections, Crew& crew, bool plain);

    /// A step begins with terms 0 of all values; terms are scaled to `scale`. Makes term 1 of the variables as well.
    void begin(const std::vector<real>& first, T scale);

    /// Goes on where `before` stands, which has run the orders below `order`. False when one of its terms is too large
    /// or too small for this kind of number.
    template <class Other>
    bool continueFrom(const Terms<Other>& before, int order);

    /// Terms `first` to `last` of all values, and then one more of the variables.
    void run(int first, int last);

    /// Term k of a variable.
    T variable(ValueIndex i, int k) const { return rows_[at(k) + i]; }
    /// Terms k of all variables.
    const T* row(int k) const { return rows_.data() + at(k); }

    /// Terms 0, 1, ... of a value that has a rising array.
    const T* terms(ValueIndex value) const { return &cells_[arrangement_.rising[value]]; }

    /// Forgets all cells, which must be finite when a step begins.
    void clear();

private:
    template <class Other>
    friend class Terms;

    std::size_t at(int k) const { return static_cast<std::size_t>(k) * arrangement_.rowLength; }
    OrderTables<T> tables();
    void touch();
    void runPlainly(int first, int last);
    void advancePlainly(int k);
    void beginTogether(const std::vector<real>& first);
    T lawfulTerm(ValueIndex value, int k) const;
    void remember(ValueIndex value, int k, T term);

    const ValueSystem& system_;
    const Arrangement& arrangement_;
    const Sections& sections_;
    Crew& crew_;
    T scale_ = 0;
    /// Terms of the present order; zero for constants from order 1 on.
    UntouchedVector<T> now_;
    /// Terms 0.
    UntouchedVector<T> first_;
    std::vector<T> numbers_;
    /// Whether a double can hold them.
    bool numbersFit_ = true;
    UntouchedVector<T> rows_;
    UntouchedVector<T> cells_;
    /// For doubles: 1 over terms 0 of divisors, and over orders.
    std::vector<T> reciprocal_;
    std::vector<T> ofOrder_;
    /// In the plain way: term k of value i at [i][k]; and k times that, a product of its own because doubles round it
    /// once more.
    bool plain_;
    std::vector<std::vector<T>> history_;
    std::vector<std::vector<T>> weightedHistory_;
};

extern template class Terms<real>;
extern template class Terms<double>;

}  // namespace zirk
