// SPDX-License-Identifier: MIT
// Order by order: leaves, constants, the program, then the next terms of the variables.
#include "series/series_pass.hpp"

#include <algorithm>

namespace zirk {

namespace {

/// Orders that run without a look at what else there is to do.
constexpr int mostAtOnce = 16;

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
      component_(components(graph_, first_)),
      run_(graph_.slots.size(), programs_.variables.size(), at(programs_.arrays)) {
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
    sums_.resize(programs_.variables.size());
    highest_.resize(at(graph_.variables));
    wantingIn_.resize(graph_.slots.size());
}

bool SeriesPass::begin() {
    run_.clear();
    hasHighest_ = false;
    for (const int leaf : leaves_) graph_[leaf].node->BeginStep();
    for (int i = 0; i < graph_.variables; ++i) graph_[i].node->BeginStep();
    std::fill(wantingIn_.begin(), wantingIn_.end(), 0);
    wanting_.clear();
    ends_.clear();
    for (std::size_t i = 0; i < programs_.variables.size(); ++i) {
        const Programs::Variable& variable = programs_.variables[i];
        const real& start = graph_[variable.slot].node->startValue();
        if (!run_.setStart(static_cast<int>(i), variable.array, start)) return false;
        sums_[i].begin(start, calculus_);
        if (!sums_[i].wantsMore(calculus_)) continue;
        wanting_.push_back(static_cast<int>(i));
        ++wantingIn_[at(component_[at(variable.slot)])];
    }
    if (wanting_.size() == programs_.variables.size()) {
        useAll();
    } else {
        useNeeded();
    }
    return true;
}

bool SeriesPass::setLeaves(int k) {
    return std::all_of(leaves_.begin(), leaves_.end(), [&](int leaf) {
        real term = 0;
        graph_[leaf].node->DY(k, term);
        return run_.setNow(leaf, term);
    });
}

bool SeriesPass::runConstants(int k) {
    if (constants_.empty()) return true;
    // Factors that are constant have only zero terms after the first while all of them are finite.
    if (!run_.run(programs_.constants, k, k, calculus_.stepTable)) return false;
    if (k == 0) run_.keepConstants(constants_);
    return true;
}

int SeriesPass::lastAtOnce(int k) const {
    // Until order 2 leaves change from order to order.
    if (k < 2 && !leaves_.empty()) return k;
    // One order less than the point before took, so that few are computed in vain.
    const auto end = std::find_if(endsBefore_.begin(), endsBefore_.end(), [k](int orders) { return orders - 1 > k; });
    return end == endsBefore_.end() ? k : std::min(*end - 2, k + mostAtOnce - 1);
}

void SeriesPass::addTerms(int first, int last) {
    int orders = 0;  // that the components whose last sums end here took
    const auto ended = std::remove_if(wanting_.begin(), wanting_.end(), [&](int index) {
        SeriesSum& series = sums_[at(index)];
        run_.addTerms(series, index, first, last, calculus_);
        if (series.wantsMore(calculus_)) return false;
        if (--wantingIn_[at(component_[at(programs_.variables[at(index)].slot)])] == 0) {
            orders = std::max(orders, series.k - 1);
        }
        return true;
    });
    wanting_.erase(ended, wanting_.end());
    // Only when all sums of a component have ended something may have become useless.
    if (orders > 0) {
        ends_.push_back(orders);
        stale_ = true;
    }
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

void SeriesPass::handOver() const {
    for (int i = 0; i < graph_.variables; ++i) {
        static_cast<Differential&>(*graph_[i].node).adopt(sums_[at(standIn_[at(i)])]);
    }
}

int SeriesPass::highestTerm(int i) {
    if (!hasHighest_) {
        for (int j = 0; j < graph_.variables; ++j) highest_[at(j)] = sums_[at(standIn_[at(j)])].k - 1;
        highestTerms_.spread(highest_);
        hasHighest_ = true;
    }
    return highest_[at(i)];
}

bool SeriesPass::sumAll() {
    if (!begin()) return false;
    for (int k = 0; !wanting_.empty();) {
        // From term 2 on every leaf is zero, and what is computed from constants only is what it was at term 1.
        if (k <= 2 && !setLeaves(k)) return false;
        if (k <= 1 && !runConstants(k)) return false;
        const int last = lastAtOnce(k);
        run_.reserve(last);
        if (!run_.run(*active_, k, last, calculus_.stepTable)) return false;
        addTerms(k + 1, last + 1);
        k = last + 1;
    }
    handOver();
    std::swap(ends_, endsBefore_);
    return true;
}

}  // namespace zirk
