// SPDX-License-Identifier: MIT
// Runs programs order by order, over terms stored as pairs of doubles as long as these can hold them.
#pragma once

#include <vector>

#include "expr/series_sum.hpp"
#include "parallel/crew.hpp"
#include "parallel/retreat.hpp"
#include "series/program.hpp"
#include "series/term_arrays.hpp"

namespace zirk {

/// What a program works on.
template <class Cell>
struct OrderTerms {
    OrderTerms(std::size_t slots, std::size_t variables, std::size_t arrayCount, std::size_t terms)
        : now(slots), constant(slots), rows(variables), arrays(arrayCount, terms) {}

    /// Per slot, not used by variables: the term of the present order, and term 0 of constants.
    std::vector<Cell> now;
    std::vector<Cell> constant;
    /// Terms of all variables, one row per order.
    std::vector<Cell> rows;
    TermArrays<Cell> arrays;
};

/// The terms of one point.
///
/// All are kept as pairs of doubles until one comes that two doubles cannot hold. Its order runs again, and from there
/// to the end of the point all are kept as they are; the next points may begin so. When a term is not finite, that is
/// told. Orders have to be run in rising order.
class OrderRun {
public:
    /// For programs that name so many slots, variables among them, and arrays; those that are cut are run by the crew.
    OrderRun(std::size_t slots, std::size_t variables, std::size_t arrays, Crew& crew);

    /// Forgets all terms: a new point begins.
    void beginPoint();

    /// Term 0 of a variable, kept in `array` as well unless that is none. False when it is not finite.
    bool setStart(SlotIndex variable, ArrayIndex array, const real& start);

    /// The same where the form in force holds it; false where it does not, with nothing done. Variables that share
    /// nothing may be set at the same time.
    bool fitStart(SlotIndex variable, ArrayIndex array, const real& start) {
        return isWide_ ? storeStart(wide_, variable, array, start) : storeStart(narrow_, variable, array, start);
    }

    /// The present term of a slot that is no variable. False when it is not finite.
    bool setNow(SlotIndex slot, real term);

    /// Takes the present term of each of these slots for its term 0 as a constant.
    void keepConstants(const std::vector<SlotIndex>& slots);

    /// Runs orders `first` to `last`: order k gives terms k of all slots from terms k of all variables, and terms k + 1
    /// of the variables. False as soon as some term is not finite.
    bool run(const Program& program, int first, int last, StepTable& stepTable);

    real term(SlotIndex variable, int k) const {
        const std::size_t index = at(variable, k);
        return isWide_ ? wide_.rows[index] : static_cast<real>(narrow_.rows[index]);
    }

    /// Adds terms `first` to `last` of a variable, but none after the last that the sum wants.
    void addTerms(SeriesSum& sum, SlotIndex variable, int first, int last, const Calculus& calculus) const {
        const std::size_t index = at(variable, first);
        const int count = last - first + 1;
        if (isWide_) {
            sum.addRun(&wide_.rows[index], variables_, count, calculus);
        } else {
            sum.addRun(&narrow_.rows[index], variables_, count, calculus);
        }
    }

    /// Whether pairs of doubles could not hold the terms of this point.
    bool isWide() const { return isWide_; }

private:
    template <class Cell>
    static bool storeStart(OrderTerms<Cell>& form, SlotIndex variable, ArrayIndex array, const real& start) {
        const bool held = store(form.rows[variable], start);
        return array == TermGraph::none ? held : held && store(form.arrays.at(array, 0), start);
    }
    template <class Cell>
    std::size_t runAll(const Program& program, std::size_t first, std::size_t last, const real* factors,
                       OrderTerms<Cell>& terms);
    std::size_t at(SlotIndex variable, int k) const { return static_cast<std::size_t>(k) * variables_ + variable; }
    void reserve(std::size_t terms);
    void goWide();

    /// Does what stores one term, with the form in force; again with the other one when the first cannot hold the term.
    template <class Action>
    bool storeOne(const Action& action);

    std::size_t variables_;
    Crew& crew_;
    bool isWide_ = false;
    bool beganWide_ = false;
    Retreat retreat_;
    /// Of every variable and array there is room for so many.
    std::size_t terms_ = 0;
    OrderTerms<Halves> narrow_;
    OrderTerms<real> wide_;
};

}  // namespace zirk
