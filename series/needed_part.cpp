// SPDX-License-Identifier: MIT
// What a set of variables is made from.
#include "series/needed_part.hpp"

#include <algorithm>

namespace zirk {

NeededPart::NeededPart(const TermGraph& graph, const Programs& programs)
    : graph_(graph),
      programs_(programs),
      whole_(programs.varying),
      wholeLanes_(whole_, programs),
      component_(components(graph)),
      wantingIn_(graph.slots.size()) {}

void NeededPart::beginPoint(const std::vector<SlotIndex>& wanting) {
    std::fill(wantingIn_.begin(), wantingIn_.end(), 0);
    for (const SlotIndex variable : wanting) ++wantingIn_[component_[variable]];
    wantedThen_ = wanting.size();
    isStale_ = false;
    program_ = &whole_;
    if (wanting.size() < graph_.variables) rebuild(wanting);
}

bool NeededPart::noteEnd(SlotIndex variable) {
    const bool isLast = --wantingIn_[component_[variable]] == 0;
    isStale_ |= isLast;
    return isLast;
}

void NeededPart::shrink(const std::vector<SlotIndex>& wanting) {
    // Rebuilding pays when a quarter of the sums has ended since.
    if (isStale_ && !wanting.empty() && 4 * wanting.size() <= 3 * wantedThen_) rebuild(wanting);
}

void NeededPart::rebuild(const std::vector<SlotIndex>& wanting) {
    std::vector<char> needed(graph_.slots.size());
    std::vector<SlotIndex> pending;
    const auto need = [&](SlotIndex slot) {
        if (slot == TermGraph::none || needed[slot] != 0) return;
        needed[slot] = 1;
        pending.push_back(slot);
    };
    for (const SlotIndex variable : wanting) need(variable);
    while (!pending.empty()) {
        const TermGraph::Slot& slot = graph_[pending.back()];
        pending.pop_back();
        need(slot.left);
        need(slot.right);
    }
    part_ = whole_.needing(needed);
    partLanes_ = LaneSections(part_, programs_);
    program_ = &part_;
    wantedThen_ = wanting.size();
    isStale_ = false;
}

}  // namespace zirk
