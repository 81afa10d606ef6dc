// SPDX-License-Identifier: MIT
// The loop over instructions: the order of additions and multiplications inside each term is that of the nodes.
#include "series/order_run.hpp"

#include <atomic>
#include <cmath>

namespace zirk {

namespace {

/// Room in every array before anybody knows how many terms there will be.
constexpr std::size_t termsAtFirst = 40;

/// Runs instructions `first` to `last` - 1 of a program for order k; returns whether all cells could hold their terms.
template <class Cell>
[[gnu::always_inline]] inline bool runInstructions(const Program& program, std::size_t first, std::size_t last,
                                                   std::size_t k, std::size_t variables, const real* factors,
                                                   OrderTerms<Cell>& terms) {
    using Code = Program::Code;
    using Result = Program::Result;
    const Program::Instruction* const begin = program.instructions.data() + first;
    const Program::Instruction* const end = program.instructions.data() + last;
    Cell* const now = terms.now.data();
    Cell* const row = terms.rows.data() + k * variables;
    Cell* const nextRow = row + variables;
    TermArrays<Cell>& arrays = terms.arrays;
    const auto at = [&](SlotIndex slot) -> real { return (slot < variables ? row : now)[slot]; };
    const real& factor = factors[k + 1];
    // At order 0 the present term of a constant is the constant.
    const Cell* const constant = k == 0 ? now : terms.constant.data();
    real acc = 0;
    bool allHeld = true;
    for (const Program::Instruction* i = begin; i != end; ++i) {
        if (i->load != TermGraph::none) acc = at(i->load);
        switch (i->code) {
            case Code::Nothing:
                break;
            case Code::Plus:
                acc = acc + at(i->a);
                break;
            case Code::Minus:
                acc = acc - at(i->a);
                break;
            case Code::MinusFrom:
                acc = at(i->a) - acc;
                break;
            case Code::Negate:
                acc = -acc;
                break;
            case Code::Truncate:
                acc = k == 0 ? static_cast<real>(std::trunc(static_cast<double>(acc))) : 0;
                break;
            // One factor is constant: the other products are exact zeros as long as every term is finite. Adding to
            // zero stays: it turns a negative zero into a positive one.
            case Code::Scale:
                acc = 0 + acc * constant[i->a];
                break;
            case Code::Ratio:
                acc = acc / constant[i->a];
                break;
            case Code::Product:
                acc = arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::PlusProduct:
                acc = acc + arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::MinusProduct:
                acc = acc - arrays.sum(i->a, k, i->b, 0, k + 1);
                break;
            case Code::Quotient:
                acc = (acc - arrays.sum(i->b, k, i->a, 0, k)) / arrays.at(i->b, 0);
                break;
        }
        // Tests that the processor foresees cost less than one more switch.
        if (i->result == Result::Nothing) continue;
        if (i->result == Result::Store) {
            allHeld &= store(now[i->target], acc);
        } else if (i->result == Result::Keep) {
            allHeld &= store(arrays.at(i->array, k), acc);
        } else {
            const real term = acc * factor;
            allHeld &= store(nextRow[i->target], term);
            if (i->result == Result::NextKept) allHeld &= store(arrays.at(i->array, k + 1), term);
        }
    }
    return allHeld;
}

/// Runs orders `first` to `last`; returns the first one in which some cell cannot hold its term, or last + 1.
template <class Cell>
std::size_t runOrders(const Program& program, std::size_t first, std::size_t last, std::size_t variables,
                      const real* factors, OrderTerms<Cell>& terms) {
    for (std::size_t k = first; k <= last; ++k) {
        if (!runInstructions(program, 0, program.instructions.size(), k, variables, factors, terms)) return k;
    }
    return last + 1;
}

/// The same by the members of a crew, each of which does every so many parts of a stage.
template <class Cell>
std::size_t runOrders(const Program& program, std::size_t first, std::size_t last, std::size_t variables,
                      const real* factors, OrderTerms<Cell>& terms, Crew& crew) {
    std::atomic<std::size_t> failed{last + 1};
    const unsigned stages = program.stages();
    crew.run([&](unsigned member) {
        // All run an order to its end in which one of them fails; who is late may find that it has failed already.
        for (std::size_t k = first; k <= last && k <= failed.load(std::memory_order_relaxed); ++k) {
            for (unsigned stage = 0; stage < stages; ++stage) {
                for (unsigned part = member; part < program.parts; part += crew.members()) {
                    const auto [begin, behind] = program.section(stage, part);
                    const bool held = runInstructions(program, begin, behind, k, variables, factors, terms);
                    // Nobody is in another order: whoever else writes, writes the same.
                    if (!held) failed.store(k, std::memory_order_relaxed);
                }
                crew.wait(member);
            }
        }
    });
    return failed;
}

}  // namespace

// The form that is seldom used takes room when it is.
OrderRun::OrderRun(std::size_t slots, std::size_t variables, std::size_t arrays, Crew& crew)
    : variables_(variables), crew_(crew), narrow_(slots, variables, arrays, termsAtFirst), wide_(0, 0, arrays, 0) {}

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
        form.rows.resize(terms_ * variables_);
        form.arrays.reserve(terms_);
    };
    makeRoom(narrow_);
    // In use now or to be used again.
    if (!wide_.now.empty()) makeRoom(wide_);
}

void OrderRun::goWide() {
    isWide_ = true;
    wide_.now.assign(narrow_.now.begin(), narrow_.now.end());
    wide_.constant.assign(narrow_.constant.begin(), narrow_.constant.end());
    wide_.rows.assign(narrow_.rows.begin(), narrow_.rows.end());
    wide_.arrays.copy(narrow_.arrays);
}

template <class Action>
bool OrderRun::storeOne(const Action& action) {
    if (!isWide_) {
        if (action(narrow_)) return true;
        goWide();
    }
    return action(wide_);
}

bool OrderRun::setStart(SlotIndex variable, ArrayIndex array, const real& start) {
    return storeOne([&](auto& form) { return storeStart(form, variable, array, start); });
}

bool OrderRun::setNow(SlotIndex slot, real term) {
    return storeOne([&](auto& form) { return store(form.now[slot], term); });
}

void OrderRun::keepConstants(const std::vector<SlotIndex>& slots) {
    const auto keep = [&](auto& form) {
        for (const SlotIndex slot : slots) form.constant[slot] = form.now[slot];
    };
    isWide_ ? keep(wide_) : keep(narrow_);
}

template <class Cell>
std::size_t OrderRun::runAll(const Program& program, std::size_t first, std::size_t last, const real* factors,
                             OrderTerms<Cell>& terms) {
    if (crew_.members() == 1 || program.parts == 1) {
        return runOrders(program, first, last, variables_, factors, terms);
    }
    return runOrders(program, first, last, variables_, factors, terms, crew_);
}

bool OrderRun::run(const Program& program, int first, int last, StepTable& stepTable) {
    const real* const factors = stepTable.upTo(last + 1);
    const auto end = static_cast<std::size_t>(last);
    auto next = static_cast<std::size_t>(first);
    // Of the terms up to last + 1.
    reserve(end + 2);
    if (!isWide_) {
        next = runAll(program, next, end, factors, narrow_);
        if (next > end) return true;
        goWide();
    }
    return runAll(program, next, end, factors, wide_) > end;
}

}  // namespace zirk
