// SPDX-License-Identifier: MIT
// Order by order: leaves, constants, the program, then the next terms of the variables.
#include "series/series_pass.hpp"

#include <algorithm>
#include <utility>

#include "series/sections.hpp"

namespace zirk {

SeriesPass::SeriesPass(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads)
    : calculus_(calculus),
      all_(equations),
      distinct_(all_),
      programs_(distinct_.graph),
      crew_(threads),
      run_(distinct_.graph.slots.size(), distinct_.graph.variables, programs_.arrays, crew_),
      needed_(distinct_.graph, programs_.varying),
      sums_(distinct_.graph.variables),
      highestTerms_(all_) {
    for (SlotIndex slot = 0; slot < distinct_.graph.size(); ++slot) {
        if (distinct_.graph.isLeaf(slot)) leaves_.push_back(slot);
        if (distinct_.graph[slot].isConstant) constants_.push_back(slot);
    }
    cutProgram();
}

void SeriesPass::cutProgram() {
    if (crew_.isAlone()) return;
    const Schedule schedule = crew_.cut(tasksOf(programs_.varying));
    if (schedule.parts == 1) return;
    programs_.varying = inSections(programs_.varying, schedule);
    crew_.hire(schedule.parts);
}

bool SeriesPass::begin() {
    run_.beginPoint();
    batching_.beginPoint();
    knowsHighest_ = false;
    wanting_.clear();
    for (const SlotIndex leaf : leaves_) distinct_.graph[leaf].node->BeginStep();
    crew_.divide(all_.variables, [&](std::size_t first, std::size_t last) {
        const Calculus::Scope scope(calculus_);
        for (std::size_t i = first; i < last; ++i) all_.slots[i].node->BeginStep();
    });
    if (!setStarts()) return false;
    for (SlotIndex i = 0; i < distinct_.graph.variables; ++i) {
        if (sums_[i].wantsMore(calculus_)) wanting_.push_back(i);
    }
    needed_.beginPoint(wanting_);
    return true;
}

bool SeriesPass::setStarts() {
    std::atomic<bool> allFit{true};
    crew_.divide(distinct_.graph.variables, [&](std::size_t first, std::size_t last) {
        for (auto i = static_cast<SlotIndex>(first); i < last; ++i) {
            const real& start = distinct_.graph[i].node->startValue();
            if (!run_.fitStart(i, programs_.arrayOf[i], start)) allFit.store(false, std::memory_order_relaxed);
            sums_[i].begin(start, calculus_);
        }
    });
    if (allFit) return true;
    for (SlotIndex i = 0; i < distinct_.graph.variables; ++i) {
        if (!run_.setStart(i, programs_.arrayOf[i], distinct_.graph[i].node->startValue())) return false;
    }
    return true;
}

bool SeriesPass::setLeaves(int k) {
    return std::all_of(leaves_.begin(), leaves_.end(), [&](SlotIndex leaf) {
        real term = 0;
        distinct_.graph[leaf].node->DY(k, term);
        return run_.setNow(leaf, term);
    });
}

bool SeriesPass::runConstants(int k) {
    // Factors that are constant have only zero terms after the first while all of them are finite.
    if (!run_.run(programs_.constants, k, k, calculus_.stepTable)) return false;
    if (k == 0) run_.keepConstants(constants_);
    return true;
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
        // From term 2 on every leaf is zero, and what is computed from constants only is what it was at term 1.
        if (k <= 2 && !setLeaves(k)) return false;
        if (k <= 1 && !runConstants(k)) return false;
        const int last = k < 2 && !leaves_.empty() ? k : batching_.lastWith(k);
        if (!run_.run(needed_.program(), k, last, calculus_.stepTable)) return false;
        addTerms(k + 1, last + 1);
        k = last + 1;
    }
    crew_.members() == 1 ? adopt(0, all_.variables) : adoptTogether();
    return true;
}

}  // namespace zirk
