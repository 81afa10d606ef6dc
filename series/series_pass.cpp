// SPDX-License-Identifier: MIT
// Order by order: leaves, constants, the program, then the next terms of the variables.
#include "series/series_pass.hpp"

#include <algorithm>
#include <limits>
#include <utility>

namespace zirk {

SeriesPass::SeriesPass(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads)
    : calculus_(calculus),
      all_(equations),
      distinct_(all_),
      crew_(threads),
      programs_(cutFor(crew_, Programs(distinct_.graph))),
      constantLanes_(programs_.constants, programs_),
      run_(programs_, crew_),
      needed_(distinct_.graph, programs_),
      sums_(distinct_.graph.variables),
      highestTerms_(all_) {
    for (SlotIndex slot = 0; slot < distinct_.graph.size(); ++slot) {
        if (!distinct_.graph.isLeaf(slot)) continue;
        const ExprType type = distinct_.graph[slot].type;
        (type == ExprType::Number ? numbers_ : type == ExprType::Time ? times_ : definitions_).push_back(slot);
    }
    defined_.resize(definitions_.size());
}

bool SeriesPass::begin() {
    run_.beginPoint();
    batching_.beginPoint();
    knowsHighest_ = false;
    wanting_.clear();
    const bool isAlone = crew_.members() == 1;
    if (!isAlone) beginTogether();
    if (isAlone) beginVariables(0, all_.variables);
    const auto startOf = [this](SlotIndex i) -> const real& { return distinct_.graph[i].node->startValue(); };
    if (!run_.setStarts(distinct_.graph.variables, startOf)) return false;
    for (SlotIndex i = 0; i < distinct_.graph.variables; ++i) {
        if (isAlone) sums_[i].begin(startOf(i), calculus_);
        if (sums_[i].wantsMore(calculus_)) wanting_.push_back(i);
    }
    needed_.beginPoint(wanting_);
    return setFixed();
}

void SeriesPass::beginVariables(std::size_t first, std::size_t last) const {
    for (auto i = static_cast<SlotIndex>(first); i < last; ++i) all_[i].node->BeginStep();
}

void SeriesPass::beginTogether() {
    crew_.divide(all_.variables, [&](std::size_t first, std::size_t last) {
        const Calculus::Scope scope(calculus_);
        beginVariables(first, last);
    });
    crew_.divide(distinct_.graph.variables, [&](std::size_t first, std::size_t last) {
        for (auto i = static_cast<SlotIndex>(first); i < last; ++i) {
            sums_[i].begin(distinct_.graph[i].node->startValue(), calculus_);
        }
    });
}

bool SeriesPass::setLeaf(SlotIndex leaf) {
    Expr& node = *distinct_.graph[leaf].node;
    for (int k = 0; k <= 2; ++k) {
        real term = 0;
        node.DY(k, term);
        if (!run_.setLeaf(leaf, k, term)) return false;
    }
    return true;
}

bool SeriesPass::setFixed() {
    for (std::size_t i = 0; i < definitions_.size(); ++i) {
        const real before = defined_[i];
        distinct_.graph[definitions_[i]].node->DY(0, defined_[i]);
        if (!sameValue(before, defined_[i])) run_.forgetConstants();
    }
    const auto set = [this](SlotIndex leaf) { return setLeaf(leaf); };
    if (!std::all_of(times_.begin(), times_.end(), set)) return false;
    if (run_.hasConstants()) return true;
    // Factors that are constant have only zero terms after the first while all of them are finite.
    return std::all_of(numbers_.begin(), numbers_.end(), set) &&
           std::all_of(definitions_.begin(), definitions_.end(), set) &&
           run_.runConstants(constantLanes_, calculus_.stepTable);
}

void SeriesPass::addTerms(int first, int last) {
    const bool isAlone = crew_.members() == 1;
    if (!isAlone) addTermsTogether(first, last);
    int orders = 0;  // that the components whose last sums end here took
    const auto ended = std::remove_if(wanting_.begin(), wanting_.end(), [&](SlotIndex variable) {
        SeriesSum& series = sums_[variable];
        if (isAlone) run_.addTerms(series, variable, first, last, calculus_);
        if (series.wantsMore(calculus_)) return false;
        if (needed_.noteEnd(variable)) orders = std::max(orders, series.k - 1);
        return true;
    });
    wanting_.erase(ended, wanting_.end());
    if (orders > 0) batching_.noteEnd(orders);
    needed_.shrink(wanting_);
}

void SeriesPass::addTermsTogether(int first, int last) {
    crew_.divide(wanting_.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            run_.addTerms(sums_[wanting_[i]], wanting_[i], first, last, calculus_);
        }
    });
}

void SeriesPass::adopt(std::size_t first, std::size_t last) const {
    for (auto i = static_cast<SlotIndex>(first); i < last; ++i) {
        asVariable(all_[i].node)->adopt(sums_[distinct_.representative[i]]);
    }
}

void SeriesPass::adoptTogether() {
    // So that no variable has to raise it, which all share.
    for (const SeriesSum& sum : sums_) calculus_.orderUsed = std::max(calculus_.orderUsed, sum.order());
    crew_.divide(all_.variables, [&](std::size_t first, std::size_t last) {
        const Calculus::Scope scope(calculus_);
        adopt(first, last);
    });
}

int SeriesPass::highestTerm(SlotIndex variable) const {
    if (isLevel_) return sums_[distinct_.representative[variable]].k - 1;
    if (!knowsHighest_.load(std::memory_order_acquire)) spreadHighest();
    return highest_[variable];
}

void SeriesPass::spreadHighest() const {
    const std::lock_guard<std::mutex> lock(highestMutex_);
    if (knowsHighest_) return;
    highest_.resize(all_.variables);
    for (SlotIndex i = 0; i < all_.variables; ++i) highest_[i] = sums_[distinct_.representative[i]].k - 1;
    highest_ = highestTerms_.spread(std::move(highest_));
    knowsHighest_.store(true, std::memory_order_release);
}

bool SeriesPass::sumAll() {
    const Crew::Turn turn(crew_);
    if (!begin()) return false;
    for (int k = 0; !wanting_.empty();) {
        const int last = batching_.lastWith(k);
        if (!run_.run(needed_.lanes(), k, last, calculus_.stepTable)) return false;
        addTerms(k + 1, last + 1);
        k = last + 1;
    }
    crew_.members() == 1 ? adopt(0, all_.variables) : adoptTogether();
    int lowest = std::numeric_limits<int>::max();
    int highest = 0;
    for (SlotIndex i = 0; i < all_.variables; ++i) {
        const SeriesSum& sum = sums_[distinct_.representative[i]];
        lowest = std::min(lowest, sum.k);
        highest = std::max(highest, sum.k);
    }
    isLevel_ = !HighestTerms::canDiffer(lowest, highest);
    return true;
}

}  // namespace zirk
