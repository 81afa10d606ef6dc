// SPDX-License-Identifier: MIT
// How far the nodes would have computed the terms of every variable.
#pragma once

#include <vector>

#include "series/term_graph.hpp"

namespace zirk {

/// Raises the highest term of each variable to what the others ask of it.
///
/// A variable asks every variable that its right-hand side is made from for one term less than it has itself.
class HighestTerms {
public:
    explicit HighestTerms(const TermGraph& graph) : graph_(graph) {}

    /// Whether some variable may be asked for more than it has: only who has two terms more than another one can do
    /// that.
    static bool canDiffer(int lowest, int highest) { return highest - 1 > lowest; }

    /// Per variable the index of its last term as the nodes have it, from that of its own sum.
    std::vector<int> spread(std::vector<int> highest);

private:
    void findSources();
    void raise(SlotIndex root, int highest);
    std::vector<SlotIndex>& level(int highest) { return levels_[static_cast<std::size_t>(highest)]; }

    const TermGraph& graph_;
    /// Of variables and slots that several need: the nearest such ones that each is made from, in one list, found when
    /// they are asked for first; where those of each slot begin.
    std::vector<SlotIndex> sources_;
    std::vector<std::size_t> firstSource_;
    std::vector<int> reached_;
    std::vector<SlotIndex> pending_;
    /// Variables by the highest term that they have reached.
    std::vector<std::vector<SlotIndex>> levels_;
};

}  // namespace zirk
