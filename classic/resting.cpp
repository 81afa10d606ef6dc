// SPDX-License-Identifier: MIT
// Two questions about the graph of all nodes, which is built once: what motion reaches, and what zeros are fed by.
#include "classic/resting.hpp"

#include <algorithm>
#include <unordered_map>

namespace zirk {

namespace {

bool hasMoved(const Expr& node) {
    const bool canMove = node.type() == ExprType::Time || isAlgebraic(node);
    return canMove && !(node.startValue() == node.result());
}

/// Of a node without operands in the graph: zero whatever else is.
bool isZeroLeaf(const Expr& node) {
    switch (node.type()) {
        case ExprType::Number:
            return node.startValue() == 0;
        case ExprType::Algebraic:
            return node.startValue() == 0 && node.result() == 0;
        default:
            return false;
    }
}

bool isLeaf(const Expr& node) { return !isDifferential(node) && node.operand(0) == nullptr; }

}  // namespace

void RestingVariables::buildGraph() {
    std::unordered_map<const Expr*, std::size_t> indexOf;
    const auto entered = [&](const Expr* expr) -> Node& {
        const auto [entry, isNew] = indexOf.emplace(expr, nodes_.size());
        if (isNew) nodes_.push_back({expr, {}});
        return nodes_[entry->second];
    };
    for (const Differential& variable : equations_) entered(&variable);
    // The list grows while it is walked: every node is visited once.
    for (std::size_t user = 0; user < nodes_.size(); ++user) {
        const Expr* expr = nodes_[user].expr;
        if (isDifferential(*expr)) entered(asVariable(expr)->rightHandSide().get()).uses.push_back({user, false});
        // Definitions of algebraic equations are not entered: their values are what others see over a step.
        for (int i = 0; expr->operand(i) != nullptr; ++i) {
            entered(expr->operand(i)).uses.push_back({user, expr->type() == ExprType::Divide && i == 1});
        }
    }
}

void RestingVariables::spreadMotion() {
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        nodes_[i].reachesMotion = false;
        if (hasMoved(*nodes_[i].expr)) pending_.push_back(i);
    }
    while (!pending_.empty()) {
        const std::size_t index = pending_.back();
        pending_.pop_back();
        for (const Use& use : nodes_[index].uses) {
            Node& user = nodes_[use.user];
            if (user.reachesMotion) continue;
            user.reachesMotion = true;
            pending_.push_back(use.user);
        }
    }
}

void RestingVariables::feed(std::size_t index) {
    if (nodes_[index].isFed) return;
    nodes_[index].isFed = true;
    pending_.push_back(index);
}

// What may be other than zero is found as the smallest set; the largest set of zeros is the rest.
void RestingVariables::spreadFeeding() {
    for (Node& node : nodes_) {
        node.isFed = false;
        node.fedOperands = 0;
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const Expr& expr = *nodes_[i].expr;
        const bool mayBeZero = isDifferential(expr) ? asVariable(&expr)->onlyZeroTerms() : isZeroLeaf(expr);
        if ((isDifferential(expr) || isLeaf(expr)) && !mayBeZero) feed(i);
    }
    while (!pending_.empty()) {
        const std::size_t index = pending_.back();
        pending_.pop_back();
        for (const Use& use : nodes_[index].uses) {
            Node& user = nodes_[use.user];
            // A quotient is zero with its numerator, whatever the divisor is; a product needs both of its factors.
            if (!use.isDivisor) ++user.fedOperands;
            const int needed = user.expr->type() == ExprType::Multiply ? 2 : 1;
            if (user.fedOperands >= needed) feed(use.user);
        }
    }
}

RestingVariables::Count RestingVariables::count(int limit) {
    if (nodes_.empty()) buildGraph();
    hasHistory_ = true;
    spreadMotion();
    spreadFeeding();
    Count result;
    // Variables were entered first, in the order of their names.
    for (std::size_t i = 0; i < equations_.size(); ++i) {
        Node& node = nodes_[i];
        if (!isDifferential(*node.expr)) continue;
        const Differential& variable = *asVariable(node.expr);
        node.wasZero = node.wasZero && variable.onlyZeroTerms();
        // With a limit below zero nothing that rests is within it either.
        if (limit >= 0 && node.wasZero && (!node.reachesMotion || !node.isFed)) continue;
        result.order = std::max(result.order, variable.ownOrder());
        if (variable.ownOrder() > limit && result.culprit == nobody) result.culprit = i;
    }
    return result;
}

void RestingVariables::beginPoint() {
    if (!hasHistory_) return;
    hasHistory_ = false;
    for (Node& node : nodes_) node.wasZero = true;
}

}  // namespace zirk
