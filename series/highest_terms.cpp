// SPDX-License-Identifier: MIT
// Levels of variables, from the highest down.
#include "series/highest_terms.hpp"

#include <algorithm>

namespace zirk {

void HighestTerms::raise(SlotIndex root, int highest) {
    const auto lift = [&](SlotIndex slot) {
        if (slot == TermGraph::none || reached_[slot] >= highest) return;
        reached_[slot] = highest;
        pending_.push_back(slot);
    };
    lift(root);
    while (!pending_.empty()) {
        const SlotIndex slot = pending_.back();
        pending_.pop_back();
        if (graph_.isVariable(slot)) {
            level(highest).push_back(slot);
        } else {
            lift(graph_[slot].left);
            lift(graph_[slot].right);
        }
    }
}

std::vector<int> HighestTerms::spread(std::vector<int> highest) {
    // A system may have algebraic equations only.
    if (highest.empty()) return highest;
    const auto [lowest, top] = std::minmax_element(highest.begin(), highest.end());
    const int low = *lowest;
    const int high = *top;
    // Only who has two terms more than another one can ask it for more than it has.
    if (high - 1 <= low) return highest;
    reached_.assign(graph_.slots.size(), -1);
    std::copy(highest.begin(), highest.end(), reached_.begin());
    levels_.resize(std::max(levels_.size(), static_cast<std::size_t>(high) + 1));
    for (SlotIndex i = 0; i < graph_.variables; ++i) level(highest[i]).push_back(i);
    // From the top down, every slot is lifted at most once.
    for (int asked = high; asked > low + 1; --asked) {
        for (const SlotIndex slot : level(asked)) {
            if (reached_[slot] == asked) raise(graph_[slot].left, asked - 1);
        }
    }
    std::copy_n(reached_.begin(), highest.size(), highest.begin());
    for (std::vector<SlotIndex>& variables : levels_) variables.clear();
    return highest;
}

}  // namespace zirk
