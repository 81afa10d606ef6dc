// SPDX-License-Identifier: MIT
// The part of a program that is left when some sums have ended.
#pragma once

#include <vector>

#include "series/sections.hpp"

namespace zirk {

/// What the variables whose sums go on are made from.
///
/// While one sum of a strongly connected component goes on, all of it is needed. So something can have become useless
/// only when the last sum of a component has ended.
class NeededPart {
public:
    NeededPart(const TermGraph& graph, const Programs& programs);

    /// A point begins; `wanting`: the variables whose sums go on.
    void beginPoint(const std::vector<SlotIndex>& wanting);

    /// The sum of a variable has ended; true when it was the last one of its component.
    bool noteEnd(SlotIndex variable);

    /// Leaves out what has become useless, where that pays.
    void shrink(const std::vector<SlotIndex>& wanting);

    const Program& program() const { return *program_; }
    /// The same, ready to run.
    const LaneSections& lanes() const { return program_ == &whole_ ? wholeLanes_ : partLanes_; }

private:
    void rebuild(const std::vector<SlotIndex>& wanting);

    const TermGraph& graph_;
    const Programs& programs_;
    const Program& whole_;
    const LaneSections wholeLanes_;
    const std::vector<SlotIndex> component_;
    /// Per component: its sums that go on.
    std::vector<SlotIndex> wantingIn_;
    /// Variables whose sums went on when the present program was made, and whether less of it would do since.
    std::size_t wantedThen_ = 0;
    bool isStale_ = false;
    const Program* program_ = &whole_;
    Program part_;
    LaneSections partLanes_;
};

}  // namespace zirk
