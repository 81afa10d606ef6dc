// SPDX-License-Identifier: MIT
// Which slots have the same terms, and the graph in which each of them stands once.
#pragma once

#include <vector>

#include "series/term_graph.hpp"

namespace zirk {

/// For every slot the first slot that has the same terms, bit for bit, at this and all later points.
///
/// Slots have the same terms when the same operation is done on operands that have the same terms; variables moreover
/// need bitwise equal values at the start of the step, which begins here. The coarsest such partition is found by
/// refinement (J. Hopcroft, An n log n algorithm for minimizing states in a finite automaton, 1971): O(n log n).
std::vector<SlotIndex> firstCongruent(const TermGraph& graph);

/// A graph without its repetitions.
struct DistinctTerms {
    explicit DistinctTerms(const TermGraph& whole);

    /// The first slot of each kind of terms, in the order of the whole graph.
    TermGraph graph;
    /// Per slot of the whole graph: the slot of `graph` that has its terms.
    std::vector<SlotIndex> representative;
};

}  // namespace zirk
