// SPDX-License-Identifier: MIT
// How the terms of all variables are made from each other, as plain lists.
#pragma once

#include <cstdint>
#include <vector>

#include "lang/equation_table.hpp"

namespace zirk {

/// Number of a slot in its graph; variables are the first slots.
using SlotIndex = std::uint32_t;

/// Every node below the differential variables, once.
///
/// Variables come first, in the order of their names; of all other slots operands come before what is made from them.
struct TermGraph {
    /// In place of a slot or an array: there is none.
    static constexpr std::uint32_t none = 0xffffffff;

    struct Slot {
        ExprType type;
        /// Over a step: from term 1 on only zeros, as long as the value is finite.
        bool isConstant;
        /// Operands; for a variable `left` is its right-hand side.
        SlotIndex left;
        SlotIndex right;
        Expr* node;
    };

    TermGraph() = default;
    explicit TermGraph(const EquationTable& equations);

    const Slot& operator[](SlotIndex slot) const { return slots[slot]; }
    bool isVariable(SlotIndex slot) const { return slot < variables; }
    bool isLeaf(SlotIndex slot) const { return slot >= variables && slots[slot].left == none; }
    SlotIndex size() const { return static_cast<SlotIndex>(slots.size()); }

    std::vector<Slot> slots;
    SlotIndex variables = 0;
};

/// For every slot the number of its strongly connected component; a component's number is higher than those of all that
/// it is made from.
std::vector<SlotIndex> components(const TermGraph& graph);

}  // namespace zirk
