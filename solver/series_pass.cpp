// SPDX-License-Identifier: MIT
// Order by order: leaves, constants, the program, then the next terms of the variables.
#include "solver/series_pass.hpp"

#include <algorithm>
#include <cmath>

namespace {

/// Orders that run without a look at what else there is to do.
constexpr int ordersAtOnce = 16;

TermGraph begunGraph(const EquationTable& equations) {
    TermGraph graph(equations);
    for (int i = 0; i < graph.variables; ++i) graph[i].node->BeginStep();
    return graph;
}

}  // namespace

SeriesPass::SeriesPass(Calculus& calculus, const EquationTable& equations)
    : calculus_(calculus),
      graph_(begunGraph(equations)),
      first_(congruentSlots(graph_)),
      programs_(graph_, first_),
      highestTerms_(graph_),
      component_(components(graph_, first_)) {
    for (int slot = 0; slot < graph_.size(); ++slot) {
        if (first_[at(slot)] != slot) continue;
        usersFirst_.push_back(slot);
        if (graph_.isLeaf(slot)) leaves_.push_back(slot);
        if (graph_[slot].constant) constants_.push_back(slot);
    }
    std::stable_sort(usersFirst_.begin(), usersFirst_.end(),
                     [this](int a, int b) { return component_[at(a)] > component_[at(b)]; });
    standIn_.resize(at(graph_.variables));
    const int variables = static_cast<int>(programs_.variables.size());
    for (int i = 0; i < variables; ++i) standIn_[at(programs_.variables[at(i)].slot)] = i;
    for (int i = 0; i < graph_.variables; ++i) standIn_[at(i)] = standIn_[at(first_[at(i)])];
    state_.now.resize(graph_.slots.size());
    state_.constant.resize(graph_.slots.size());
    state_.arrays.setCount(at(programs_.arrays));
    state_.sums.resize(programs_.variables.size());
    rowSize_ = programs_.variables.size();
    rows_.resize(rowSize_);
    highest_.resize(at(graph_.variables));
    wantingIn_.resize(graph_.slots.size());
}

void SeriesPass::begin() {
    state_.arrays.clear();
    for (const int leaf : leaves_) graph_[leaf].node->BeginStep();
    for (int i = 0; i < graph_.variables; ++i) graph_[i].node->BeginStep();
    std::fill(wantingIn_.begin(), wantingIn_.end(), 0);
    wanting_.clear();
    for (std::size_t i = 0; i < programs_.variables.size(); ++i) {
        const Programs::Variable& variable = programs_.variables[i];
        const real start = graph_[variable.slot].node->startValue();
        rows_[i] = start;
        if (variable.array != TermGraph::none) state_.arrays.keep(variable.array, 0, start);
        SeriesSum& series = state_.sums[i];
        series = SeriesSum();
        series.sum = calculus_.zero;
        series.add(start, calculus_);
        if (!series.wantsMore(calculus_)) continue;
        wanting_.push_back(static_cast<int>(i));
        ++wantingIn_[at(component_[at(variable.slot)])];
    }
    if (wanting_.size() == programs_.variables.size()) {
        useAll();
    } else {
        useNeeded();
    }
}

void SeriesPass::setLeaves(int k) {
    for (const int leaf : leaves_) graph_[leaf].node->DY(k, state_.now[at(leaf)]);
}

bool SeriesPass::runConstants(int k) {
    runOrders(programs_.constants, k, k, nullptr, 0, calculus_, state_);
    if (k == 1) return true;
    for (const int slot : constants_) state_.constant[at(slot)] = state_.now[at(slot)];
    return std::all_of(programs_.computedConstants.begin(), programs_.computedConstants.end(),
                       [this](int slot) { return std::isfinite(state_.constant[at(slot)]); });
}

int SeriesPass::makeRoom(int k) {
    // Until order 2 leaves change from order to order.
    const int last = k < 2 ? k : k + ordersAtOnce - 1;
    const std::size_t wanted = (at(last) + 2) * rowSize_;
    if (rows_.size() < wanted) rows_.resize(wanted);
    state_.arrays.reserve(last + 1);
    return last;
}

void SeriesPass::dropEnded() {
    const auto ended = std::remove_if(wanting_.begin(), wanting_.end(), [this](int index) {
        if (state_.sums[at(index)].wantsMore(calculus_)) return false;
        if (--wantingIn_[at(component_[at(programs_.variables[at(index)].slot)])] == 0) stale_ = true;
        return true;
    });
    wanting_.erase(ended, wanting_.end());
    // Only when all sums of a component have ended something may have become useless.
    if (stale_ && !wanting_.empty() && 4 * wanting_.size() <= 3 * marked_) useNeeded();
}

void SeriesPass::useAll() {
    active_ = &programs_.varying;
    marked_ = wanting_.size();
    stale_ = false;
}

void SeriesPass::useNeeded() {
    needed_.assign(graph_.slots.size(), char{0});
    for (const int index : wanting_) needed_[at(programs_.variables[at(index)].slot)] = 1;
    // Members of one component need each other; components come after those that need them.
    std::size_t next = 0;
    const auto need = [this](int slot) {
        if (slot != TermGraph::none) needed_[at(first_[at(slot)])] = 1;
    };
    while (next < usersFirst_.size()) {
        const int component = component_[at(usersFirst_[next])];
        std::size_t end = next;
        bool anyNeeded = false;
        for (; end < usersFirst_.size() && component_[at(usersFirst_[end])] == component; ++end) {
            anyNeeded |= needed_[at(usersFirst_[end])] != 0;
        }
        for (; next < end; ++next) {
            if (!anyNeeded) continue;
            const int slot = usersFirst_[next];
            needed_[at(slot)] = 1;
            need(graph_[slot].left);
            need(graph_[slot].right);
        }
    }
    part_ = programs_.varying.needing(needed_);
    active_ = &part_;
    marked_ = wanting_.size();
    stale_ = false;
}

void SeriesPass::handOver() {
    for (int i = 0; i < graph_.variables; ++i) highest_[at(i)] = state_.sums[at(standIn_[at(i)])].k - 1;
    highestTerms_.spread(highest_);
    for (int i = 0; i < graph_.variables; ++i) {
        const std::size_t index = at(standIn_[at(i)]);
        auto& variable = static_cast<Differential&>(*graph_[i].node);
        variable.adopt(state_.sums[index], highest_[at(i)], &rows_[index], rowSize_);
    }
}

bool SeriesPass::sumAll() {
    begin();
    for (int k = 0; !wanting_.empty();) {
        // From term 2 on every leaf is zero, and what is computed from constants only is what it was at term 1.
        if (k <= 2) setLeaves(k);
        if (k <= 1 && !runConstants(k)) return false;
        const int last = makeRoom(k);
        k = runOrders(*active_, k, last, &rows_[at(k) * rowSize_], rowSize_, calculus_, state_);
        if (state_.anyWild) return false;
        if (state_.anyEnded) dropEnded();
    }
    handOver();
    return true;
}
