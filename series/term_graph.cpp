// SPDX-License-Identifier: MIT
// The graph of nodes flattened into slots, and its strongly connected components.
#include "series/term_graph.hpp"

#include <algorithm>

namespace zirk {

namespace {

constexpr SlotIndex none = TermGraph::none;

class Flattening {
public:
    explicit Flattening(std::vector<TermGraph::Slot>& slots) : slots_(slots) {}

    void add(Expr& node) {
        const SlotIndex left = slotOrNone(node.operand(0));
        const SlotIndex right = slotOrNone(node.operand(1));
        const auto isConstant = [this](SlotIndex slot) { return slot == none || slots_[slot].isConstant; };
        const bool changes = isDifferential(node) || node.type() == ExprType::Time;
        node.graphSlot = static_cast<int>(slots_.size());
        slots_.push_back({node.type(), !changes && isConstant(left) && isConstant(right), left, right, &node});
    }

    SlotIndex slotOf(Expr* root) {
        stack_.push_back({root, 0});
        while (!stack_.empty()) {
            Frame& top = stack_.back();
            if (top.next == 0 && isKnown(*top.node)) {
                stack_.pop_back();
                continue;
            }
            Expr* operand = top.node->operand(top.next++);
            if (operand != nullptr) {
                stack_.push_back({operand, 0});
                continue;
            }
            add(*top.node);
            stack_.pop_back();
        }
        return slotOrNone(root);
    }

private:
    struct Frame {
        Expr* node;
        int next;
    };

    bool isKnown(const Expr& node) const {
        const SlotIndex slot = slotOrNone(&node);
        return slot < slots_.size() && slots_[slot].node == &node;
    }

    static SlotIndex slotOrNone(const Expr* node) {
        return node == nullptr ? none : static_cast<SlotIndex>(node->graphSlot);
    }

    std::vector<TermGraph::Slot>& slots_;
    std::vector<Frame> stack_;
};

}  // namespace

TermGraph::TermGraph(const EquationTable& equations) {
    Flattening flattening(slots);
    for (Differential& variable : equations) {
        if (variable.type() != ExprType::Algebraic) flattening.add(variable);
    }
    variables = size();
    for (SlotIndex i = 0; i < variables; ++i) {
        const auto& variable = *asVariable(slots[i].node);
        const SlotIndex rightHandSide = flattening.slotOf(variable.rightHandSide().get());
        slots[i].left = rightHandSide;
    }
}

std::vector<SlotIndex> components(const TermGraph& graph) {
    // R. Tarjan, Depth-first search and linear graph algorithms, 1972; with a stack of its own instead of recursion.
    struct Frame {
        SlotIndex slot;
        int next;
    };
    std::vector<SlotIndex> component(graph.size(), none);
    std::vector<SlotIndex> index(graph.size(), none);
    std::vector<SlotIndex> low(graph.size());
    std::vector<SlotIndex> open;
    std::vector<Frame> stack;
    SlotIndex visited = 0;
    SlotIndex closed = 0;
    const auto visit = [&](SlotIndex slot) {
        index[slot] = low[slot] = visited++;
        open.push_back(slot);
        stack.push_back({slot, 0});
    };
    for (SlotIndex root = 0; root < graph.size(); ++root) {
        if (index[root] != none) continue;
        visit(root);
        while (!stack.empty()) {
            Frame& top = stack.back();
            const SlotIndex slot = top.slot;
            if (top.next < 2) {
                const SlotIndex operand = top.next++ == 0 ? graph[slot].left : graph[slot].right;
                if (operand == none) continue;
                if (index[operand] == none) {
                    visit(operand);
                } else if (component[operand] == none) {
                    low[slot] = std::min(low[slot], index[operand]);
                }
                continue;
            }
            stack.pop_back();
            if (!stack.empty()) low[stack.back().slot] = std::min(low[stack.back().slot], low[slot]);
            if (low[slot] != index[slot]) continue;
            for (; component[slot] == none; open.pop_back()) component[open.back()] = closed;
            ++closed;
        }
    }
    return component;
}

}  // namespace zirk
