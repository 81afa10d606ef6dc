// SPDX-License-Identifier: MIT
// Levels of variables, from the highest down.
#include "series/highest_terms.hpp"

#include <algorithm>

namespace zirk {

void HighestTerms::findSources() {
    constexpr SlotIndex none = TermGraph::none;
    std::vector<char> isJoint(graph_.slots.size());
    std::vector<char> isUsed(graph_.slots.size());
    for (const TermGraph::Slot& slot : graph_.slots) {
        for (const SlotIndex operand : {slot.left, slot.right}) {
            if (operand == none || graph_.isLeaf(operand)) continue;
            isJoint[operand] |= isUsed[operand];
            isUsed[operand] = 1;
        }
    }
    for (SlotIndex slot = 0; slot < graph_.size(); ++slot) {
        firstSource_.push_back(sources_.size());
        if (!graph_.isVariable(slot) && isJoint[slot] == 0) continue;
        pending_.assign(1, slot);
        while (!pending_.empty()) {
            const TermGraph::Slot& made = graph_[pending_.back()];
            pending_.pop_back();
            for (const SlotIndex operand : {made.left, made.right}) {
                if (operand == none || graph_.isLeaf(operand)) continue;
                const bool isSource = graph_.isVariable(operand) || isJoint[operand] != 0;
                (isSource ? sources_ : pending_).push_back(operand);
            }
        }
    }
    firstSource_.push_back(sources_.size());
}

void HighestTerms::raise(SlotIndex root, int highest) {
    pending_.assign(1, root);
    while (!pending_.empty()) {
        const SlotIndex slot = pending_.back();
        pending_.pop_back();
        for (std::size_t i = firstSource_[slot]; i < firstSource_[slot + std::size_t{1}]; ++i) {
            const SlotIndex source = sources_[i];
            if (reached_[source] >= highest) continue;
            reached_[source] = highest;
            (graph_.isVariable(source) ? level(highest) : pending_).push_back(source);
        }
    }
}

std::vector<int> HighestTerms::spread(std::vector<int> highest) {
    // A system may have algebraic equations only.
    if (highest.empty()) return highest;
    const auto [lowest, top] = std::minmax_element(highest.begin(), highest.end());
    const int low = *lowest;
    const int high = *top;
    if (!canDiffer(low, high)) return highest;
    if (firstSource_.empty()) findSources();
    reached_.assign(graph_.slots.size(), -1);
    std::copy(highest.begin(), highest.end(), reached_.begin());
    levels_.resize(std::max(levels_.size(), static_cast<std::size_t>(high) + 1));
    for (SlotIndex i = 0; i < graph_.variables; ++i) level(highest[i]).push_back(i);
    // From the top down, every slot is lifted at most once.
    for (int asked = high; asked > low + 1; --asked) {
        for (const SlotIndex slot : level(asked)) {
            if (reached_[slot] == asked) raise(slot, asked - 1);
        }
    }
    std::copy_n(reached_.begin(), highest.size(), highest.begin());
    for (std::vector<SlotIndex>& variables : levels_) variables.clear();
    return highest;
}

}  // namespace zirk
