// SPDX-License-Identifier: MIT
// The graph of nodes flattened into slots, and its strongly connected components.
#include "series/term_graph.hpp"

#include <algorithm>

namespace zirk {

namespace {

using Kind = TermGraph::Kind;

Kind kindOf(const Expr& node) {
    switch (node.type()) {
        case ExprType::Number:
            return Kind::Number;
        case ExprType::Algebraic:
            return Kind::Algebraic;
        case ExprType::Time:
            return Kind::Time;
        case ExprType::Plus:
            return Kind::Plus;
        case ExprType::Minus:
            return Kind::Minus;
        case ExprType::Multiply:
            return Kind::Multiply;
        case ExprType::Divide:
            return Kind::Divide;
        case ExprType::UnMinus:
            return Kind::Negate;
        default:
            return Kind::Truncate;
    }
}

class Flattening {
public:
    explicit Flattening(std::vector<TermGraph::Slot>& slots) : slots_(slots) {}

    void addVariable(Expr& variable) {
        variable.graphSlot = static_cast<int>(slots_.size());
        slots_.push_back({Kind::Variable, false, TermGraph::none, TermGraph::none, &variable});
    }

    int slotOf(Expr* root) {
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
        return root->graphSlot;
    }

private:
    struct Frame {
        Expr* node;
        int next;
    };

    bool isKnown(const Expr& node) const {
        const auto slot = static_cast<std::size_t>(node.graphSlot);
        return slot < slots_.size() && slots_[slot].node == &node;
    }

    static int slotOrNone(const Expr* node) { return node == nullptr ? TermGraph::none : node->graphSlot; }

    void add(Expr& node) {
        const Kind kind = kindOf(node);
        const int left = slotOrNone(node.operand(0));
        const int right = slotOrNone(node.operand(1));
        const auto isConstant = [this](int slot) {
            return slot == TermGraph::none || slots_[static_cast<std::size_t>(slot)].constant;
        };
        const bool constant = kind != Kind::Time && isConstant(left) && isConstant(right);
        node.graphSlot = static_cast<int>(slots_.size());
        slots_.push_back({kind, constant, left, right, &node});
    }

    std::vector<TermGraph::Slot>& slots_;
    std::vector<Frame> stack_;
};

}  // namespace

TermGraph::TermGraph(const EquationTable& equations) {
    Flattening flattening(slots);
    for (Differential& variable : equations) {
        if (variable.type() != ExprType::Algebraic) flattening.addVariable(variable);
    }
    variables = size();
    for (int i = 0; i < variables; ++i) {
        const auto& variable = static_cast<const Differential&>(*(*this)[i].node);
        const int source = flattening.slotOf(variable.rightHandSide().get());
        slots[static_cast<std::size_t>(i)].left = source;
    }
}

std::vector<int> components(const TermGraph& graph, const std::vector<int>& first) {
    // R. Tarjan, Depth-first search and linear graph algorithms, 1972; with a stack of its own instead of recursion.
    struct Frame {
        int slot;
        int next;
    };
    const auto size = static_cast<std::size_t>(graph.size());
    std::vector<int> component(size, -1);
    std::vector<int> index(size, -1);
    std::vector<int> low(size, 0);
    std::vector<int> open;
    std::vector<Frame> stack;
    int visited = 0;
    int closed = 0;
    const auto at = [](int slot) { return static_cast<std::size_t>(slot); };
    const auto visit = [&](int slot) {
        index[at(slot)] = low[at(slot)] = visited++;
        open.push_back(slot);
        stack.push_back({slot, 0});
    };
    for (int root = 0; root < graph.size(); ++root) {
        if (first[at(root)] != root || index[at(root)] >= 0) continue;
        visit(root);
        while (!stack.empty()) {
            Frame& top = stack.back();
            const int slot = top.slot;
            if (top.next < 2) {
                const int operand = top.next++ == 0 ? graph[slot].left : graph[slot].right;
                if (operand == TermGraph::none) continue;
                const int target = first[at(operand)];
                if (index[at(target)] < 0) {
                    visit(target);
                } else if (component[at(target)] < 0) {
                    low[at(slot)] = std::min(low[at(slot)], index[at(target)]);
                }
                continue;
            }
            stack.pop_back();
            if (!stack.empty()) low[at(stack.back().slot)] = std::min(low[at(stack.back().slot)], low[at(slot)]);
            if (low[at(slot)] != index[at(slot)]) continue;
            int member = TermGraph::none;
            do {
                member = open.back();
                open.pop_back();
                component[at(member)] = closed;
            } while (member != slot);
            ++closed;
        }
    }
    return component;
}

}  // namespace zirk
