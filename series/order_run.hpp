// SPDX-License-Identifier: MIT
// Runs programs order by order, over terms stored as pairs of doubles as long as these can hold them.
#pragma once

#include <atomic>
#include <utility>
#include <vector>

#include "expr/series_sum.hpp"
#include "series/retreat.hpp"
#include "series/sections.hpp"
#include "series/term_arrays.hpp"

namespace zirk {

/// What a program works on.
template <class Cell>
struct OrderTerms {
    OrderTerms(const Programs& programs, std::size_t terms)
        : rowCells(programs.rows),
          fixedCells(programs.fixed),
          now(programs.nows),
          fixed(3 * fixedCells),
          rows(terms * rowCells),
          arrays(programs.arrays, terms) {}

    /// Term k of a variable.
    Cell& at(Place place, int k) { return const_cast<Cell&>(std::as_const(*this).at(place, k)); }
    const Cell& at(Place place, int k) const {
        const auto order = static_cast<std::size_t>(k);
        return place.where == Place::Row ? rows[order * rowCells + place.index] : arrays.at(place.index, order);
    }

    const std::size_t rowCells;
    const std::size_t fixedCells;
    std::vector<Cell> now;
    /// Three rows: terms 0 and 1, and those of all higher orders.
    std::vector<Cell> fixed;
    bool hasConstants = false;
    /// One row per order.
    std::vector<Cell> rows;
    TermArrays<Cell> arrays;
};

/// The terms of one point.
///
/// All are kept as pairs of doubles until one comes that two doubles cannot hold. The orders that ran with it run
/// again, and from there to the end of the point all are kept as they are; the next points may begin so. When a term is
/// not finite, that is told. Orders have to be run in rising order.
class OrderRun {
public:
    /// What is cut in the programs is run by the crew.
    OrderRun(const Programs& programs, Crew& crew);

    /// Forgets all terms: a new point begins.
    void beginPoint();

    /// Terms 0 of all variables, which `startOf` gives. False when one is not finite.
    template <class StartOf>
    bool setStarts(SlotIndex variables, const StartOf& startOf) {
        return runIn([&](auto& form) {
            std::atomic<bool> areHeld{true};
            crew_.divide(variables, [&](std::size_t begin, std::size_t end) {
                const FailedStores failed;
                bool areFinite = true;
                for (auto i = static_cast<SlotIndex>(begin); i < end; ++i) {
                    const real& start = startOf(i);
                    areFinite &= bitsOf(start).biasedExponent() != ExtendedBits::notFinite;
                    put(form.at(places_[i], 0), start);
                }
                if (!areFinite || failed.in(form.now)) areHeld.store(false, std::memory_order_relaxed);
            });
            return areHeld.load(std::memory_order_relaxed);
        });
    }

    /// Term k of a leaf, up to 2; all higher terms are term 2. False when it is not finite.
    bool setLeaf(SlotIndex slot, int k, real term);

    /// Constants from the leaves that they are made from. False when one is not finite.
    bool runConstants(const Lanes& lanes, StepTable& stepTable);

    /// Whether constants and their leaves are in place from an earlier point, in the form in force.
    bool hasConstants() const { return isWide_ ? wide_.hasConstants : narrow_.hasConstants; }
    void forgetConstants() { narrow_.hasConstants = wide_.hasConstants = false; }

    /// Runs orders `first` to `last`: order k gives terms k of all slots from terms k of all variables, and terms k + 1
    /// of the variables. False as soon as some term is not finite.
    bool run(const LaneSections& program, int first, int last, StepTable& stepTable);

    real term(SlotIndex variable, int k) const {
        return isWide_ ? wide_.at(places_[variable], k) : static_cast<real>(narrow_.at(places_[variable], k));
    }

    /// Adds terms `first` to `last` of a variable, but none after the last that the sum wants.
    void addTerms(SeriesSum& sum, SlotIndex variable, int first, int last, const Calculus& calculus) const {
        const std::size_t stride = places_[variable].where == Place::Row ? narrow_.rowCells : 1;
        const int count = last - first + 1;
        if (isWide_) {
            sum.addRun(&wide_.at(places_[variable], first), stride, count, calculus);
        } else {
            sum.addRun(&narrow_.at(places_[variable], first), stride, count, calculus);
        }
    }

    /// Whether pairs of doubles could not hold the terms of this point.
    bool isWide() const { return isWide_; }

private:
    void reserve(std::size_t terms);
    void goWide();

    /// Runs a program, or what stores many terms: with the form in force, and again with the other one when the first
    /// cannot hold them.
    template <class Run>
    bool runIn(const Run& run) {
        if (!isWide_) {
            if (run(narrow_)) return true;
            goWide();
        }
        return run(wide_);
    }

    const std::vector<Place>& places_;
    Crew& crew_;
    bool isWide_ = false;
    bool beganWide_ = false;
    Retreat retreat_;
    /// In every row and array there is room for so many.
    std::size_t terms_;
    OrderTerms<Halves> narrow_;
    OrderTerms<real> wide_;
};

}  // namespace zirk
