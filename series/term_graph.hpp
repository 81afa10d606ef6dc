// SPDX-License-Identifier: MIT
// How the terms of all variables are made from each other, as plain lists.
#pragma once

#include <vector>

#include "lang/equation_table.hpp"

namespace zirk {

/// Every node below the differential variables, once.
///
/// Variables come first, in the order of their names; of all other slots operands come before what is made from them.
struct TermGraph {
    enum class Kind : unsigned char {
        Variable,
        Number,
        Algebraic,
        Time,
        Plus,
        Minus,
        Multiply,
        Divide,
        Negate,
        Truncate
    };

    static constexpr int none = -1;

    struct Slot {
        Kind kind;
        /// Constant over a step: from term 1 on only zeros, as long as the value is finite.
        bool constant;
        /// Operands; for a variable `left` is its right-hand side.
        int left;
        int right;
        Expr* node;
    };

    explicit TermGraph(const EquationTable& equations);

    const Slot& operator[](int slot) const { return slots[static_cast<std::size_t>(slot)]; }
    bool isVariable(int slot) const { return slot < variables; }
    bool isLeaf(int slot) const { return slot >= variables && (*this)[slot].left == none; }
    int size() const { return static_cast<int>(slots.size()); }

    std::vector<Slot> slots;
    int variables = 0;
};

/// For every slot the first slot that has the same terms, bit for bit, at this and all later points.
///
/// Slots have the same terms when the same operation is done on operands that have the same terms; variables moreover
/// need bitwise equal values at the start. The coarsest such partition is found by refinement
/// (J. Hopcroft, An n log n algorithm for minimizing states in a finite automaton, 1971): O(n log n).
std::vector<int> congruentSlots(const TermGraph& graph);

/// For every slot the number of its strongly connected component, for graphs in which slot i stands for all j with
/// first[j] = i. A component's number is higher than those of all that it is made from; -1 for slots that are not
/// first.
std::vector<int> components(const TermGraph& graph, const std::vector<int>& first);

}  // namespace zirk
