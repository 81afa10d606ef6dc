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

    /// Per variable the index of its last term as the nodes have it, from that of its own sum.
    std::vector<int> spread(std::vector<int> highest);

private:
    void raise(SlotIndex root, int highest);
    std::vector<SlotIndex>& level(int highest) { return levels_[static_cast<std::size_t>(highest)]; }

    const TermGraph& graph_;
    std::vector<int> reached_;
    std::vector<SlotIndex> pending_;
    /// Variables by the highest term that they have reached.
    std::vector<std::vector<SlotIndex>> levels_;
};

}  // namespace zirk
