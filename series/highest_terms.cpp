// SPDX-License-Identifier: MIT
// Levels of variables, from the highest down.
#include "series/highest_terms.hpp"

#include <algorithm>

namespace zirk {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void HighestTerms::raise(int root, int highest) {
    const auto lift = [&](int slot) {
        if (slot == TermGraph::none || reached_[at(slot)] >= highest) return;
        reached_[at(slot)] = highest;
        pending_.push_back(slot);
    };
    lift(root);
    while (!pending_.empty()) {
        const int slot = pending_.back();
        pending_.pop_back();
        if (graph_.isVariable(slot)) {
            levels_[at(highest)].push_back(slot);
        } else {
            lift(graph_[slot].left);
            lift(graph_[slot].right);
        }
    }
}

void HighestTerms::spread(std::vector<int>& highest) {
    // A system may have algebraic equations only.
    if (highest.empty()) return;
    const auto ends = std::minmax_element(highest.begin(), highest.end());
    const int low = *ends.first;
    const int high = *ends.second;
    // Only who has two terms more than another one can ask it for more than it has.
    if (high - 1 <= low) return;
    reached_.assign(graph_.slots.size(), -1);
    std::copy(highest.begin(), highest.end(), reached_.begin());
    levels_.resize(std::max(levels_.size(), at(high) + 1));
    for (int i = 0; i < graph_.variables; ++i) levels_[at(highest[at(i)])].push_back(i);
    // From the top down, every slot is lifted at most once.
    for (int level = high; level > low + 1; --level) {
        for (const int slot : levels_[at(level)]) {
            if (reached_[at(slot)] == level) raise(graph_[slot].left, level - 1);
        }
    }
    std::copy_n(reached_.begin(), highest.size(), highest.begin());
    for (std::vector<int>& level : levels_) level.clear();
}

}  // namespace zirk
