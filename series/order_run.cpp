// SPDX-License-Identifier: MIT
// Orders in either form of the cells.
#include "series/order_run.hpp"

#include <atomic>

#include "series/order_loop.hpp"

namespace zirk {

namespace {

/// Room in every array before anybody knows how many terms there will be.
constexpr std::size_t termsAtFirst = 20;

/// Which program runs: constants are stored in the rows of what is fixed, other present terms in one place for all
/// orders.
enum class Values { Constant, Varying };

/// Calls runOrder(cells) for orders `first` to `last`.
template <class Cell, class RunOrder>
[[gnu::always_inline]] inline void eachOrder(Values values, OrderTerms<Cell>& terms, const real* factors,
                                             std::size_t first, std::size_t last, const RunOrder& runOrder) {
    Cell* const fixed = terms.fixed.data();
    OrderCells<Cell> cells{first,
                           terms.rows.data() + first * terms.rowCells,
                           terms.rows.data() + (first + 1) * terms.rowCells,
                           terms.now.data(),
                           fixed,
                           fixed,
                           terms.arrays.all() + first,
                           terms.arrays.stride(),
                           0};
    for (; cells.k <= last; ++cells.k, ++cells.arrays) {
        Cell* const fixedNow = fixed + std::min<std::size_t>(cells.k, 2) * terms.fixedCells;
        cells.fixed = fixedNow;
        if (values == Values::Constant) cells.now = fixedNow;
        cells.factor = factors[cells.k + 1];
        runOrder(cells);
        cells.row = cells.nextRow;
        cells.nextRow += terms.rowCells;
    }
}

template <class Cell>
[[gnu::always_inline]] inline void runLanes(const Lanes& program, const OrderCells<Cell>& cells) {
    const std::uint32_t* at = program.operands.data();
    const Lanes::Code* end = program.codes.data();
    for (const Lanes::Run& run : program.runs) {
        const Lanes::Code* const begin = end;
        end += run.codes;
        switch (run.lanes) {
            case 1:
                at = runBlocks<1>(begin, end, run.blocks, at, cells);
                break;
            case 2:
                at = runBlocks<2>(begin, end, run.blocks, at, cells);
                break;
            default:
                at = runBlocks<4>(begin, end, run.blocks, at, cells);
        }
    }
}

/// Runs orders `first` to `last`; false when some cell cannot hold its term.
template <class Cell>
bool runOrders(const Lanes& program, Values values, OrderTerms<Cell>& terms, const real* factors, std::size_t first,
               std::size_t last) {
    const FailedStores failed;
    const auto runOrder = [&](const OrderCells<Cell>& cells) __attribute__((always_inline)) {
        runLanes(program, cells);
    };
    eachOrder(values, terms, factors, first, last, runOrder);
    return !failed.in(terms.now);
}

/// The same by the members of a crew, each of which does every so many parts of a stage.
template <class Cell>
bool runOrders(const LaneSections& program, Crew& crew, OrderTerms<Cell>& terms, const real* factors, std::size_t first,
               std::size_t last) {
    std::atomic<bool> allHeld{true};
    crew.run([&](unsigned member) {
        const FailedStores failed;
        eachOrder(Values::Varying, terms, factors, first, last, [&](const OrderCells<Cell>& cells) {
            for (unsigned stage = 0; stage < program.stages(); ++stage) {
                for (unsigned part = member; part < program.parts; part += crew.members()) {
                    runLanes(program.section(stage, part), cells);
                }
                crew.wait();
            }
        });
        if (failed.in(terms.now)) allHeld.store(false, std::memory_order_relaxed);
    });
    return allHeld;
}

}  // namespace

// The form that is seldom used takes room when it is.
OrderRun::OrderRun(const Programs& programs, Crew& crew)
    : places_(programs.places),
      crew_(crew),
      terms_(termsAtFirst),
      narrow_(programs, termsAtFirst),
      wide_(programs, 0) {}

void OrderRun::beginPoint() {
    if (!isWide_) {
        retreat_.succeed();
    } else if (!beganWide_) {
        retreat_.fail();
    }
    beganWide_ = retreat_.takesPoint();
    isWide_ = beganWide_;
}

void OrderRun::reserve(std::size_t terms) {
    if (terms <= terms_) return;
    terms_ = 2 * terms;
    const auto makeRoom = [&](auto& form) {
        form.rows.resize(terms_ * form.rowCells);
        form.arrays.reserve(terms_);
    };
    makeRoom(narrow_);
    // In use now or to be used again.
    if (wide_.arrays.stride() > 0) makeRoom(wide_);
}

void OrderRun::goWide() {
    isWide_ = true;
    wide_.now.assign(narrow_.now.begin(), narrow_.now.end());
    wide_.fixed.assign(narrow_.fixed.begin(), narrow_.fixed.end());
    wide_.hasConstants = narrow_.hasConstants;
    wide_.rows.assign(narrow_.rows.begin(), narrow_.rows.end());
    wide_.arrays.copy(narrow_.arrays);
}

bool OrderRun::setLeaf(SlotIndex slot, int k, real term) {
    return runIn([&](auto& form) {
        return store(form.fixed[static_cast<std::size_t>(k) * form.fixedCells + places_[slot].index], term);
    });
}

bool OrderRun::runConstants(const Lanes& lanes, StepTable& stepTable) {
    const real* const factors = stepTable.upTo(3);
    return runIn([&](auto& form) {
        form.hasConstants = runOrders(lanes, Values::Constant, form, factors, 0, 2);
        return form.hasConstants;
    });
}

bool OrderRun::run(const LaneSections& program, int first, int last, StepTable& stepTable) {
    const real* const factors = stepTable.upTo(last + 1);
    const auto begin = static_cast<std::size_t>(first);
    const auto end = static_cast<std::size_t>(last);
    // Of the terms up to last + 1.
    reserve(end + 2);
    return runIn([&](auto& form) {
        return program.isCut() ? runOrders(program, crew_, form, factors, begin, end)
                               : runOrders(program.sections.front(), Values::Varying, form, factors, begin, end);
    });
}

}  // namespace zirk
