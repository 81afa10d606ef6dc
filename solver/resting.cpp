// SPDX-License-Identifier: MIT
// Reachability over the graph of all nodes, built once and spread once per question.
#include "solver/resting.hpp"

#include <algorithm>
#include <unordered_map>

namespace {

bool isVariable(const Expr* node) {
    return node->type() == ExprType::Differential || node->type() == ExprType::Algebraic;
}

bool hasMoved(const Expr* node) {
    const bool canMove = node->type() == ExprType::Time || node->type() == ExprType::Algebraic;
    return canMove && !(node->startValue() == node->result());
}

}  // namespace

void RestingVariables::buildGraph() {
    std::unordered_map<const Expr*, std::size_t> indexOf;
    const auto indexed = [&](const Expr* expr) {
        const auto entry = indexOf.emplace(expr, nodes_.size());
        if (entry.second) nodes_.push_back({expr, {}, false});
        return entry.first->second;
    };
    for (const Differential& variable : equations_) indexed(&variable);
    // The list grows while it is walked: every node is visited once.
    for (std::size_t user = 0; user < nodes_.size(); ++user) {
        const Expr* expr = nodes_[user].expr;
        if (isVariable(expr)) {
            const Expr* rightHandSide = static_cast<const Differential*>(expr)->rightHandSide().get();
            nodes_[indexed(rightHandSide)].users.push_back(user);
            continue;
        }
        for (int i = 0; expr->operand(i) != nullptr; ++i) nodes_[indexed(expr->operand(i))].users.push_back(user);
    }
}

void RestingVariables::spreadMotion() {
    std::vector<std::size_t> moving;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        nodes_[i].reachesMotion = false;
        if (hasMoved(nodes_[i].expr)) moving.push_back(i);
    }
    while (!moving.empty()) {
        const std::size_t index = moving.back();
        moving.pop_back();
        for (const std::size_t user : nodes_[index].users) {
            if (nodes_[user].reachesMotion) continue;
            nodes_[user].reachesMotion = true;
            moving.push_back(user);
        }
    }
}

int RestingVariables::order(int limit, const Differential** culprit) {
    if (nodes_.empty()) buildGraph();
    spreadMotion();
    int highest = 0;
    *culprit = nullptr;
    // Variables were entered first, in the order of their names.
    for (std::size_t i = 0; i < equations_.size(); ++i) {
        const auto* variable = static_cast<const Differential*>(nodes_[i].expr);
        if (variable->type() == ExprType::Algebraic) continue;
        // With a limit below zero nothing that rests is within it either.
        if (limit >= 0 && variable->onlyZeroTerms() && !nodes_[i].reachesMotion) continue;
        highest = std::max(highest, variable->ownOrder());
        if (variable->ownOrder() > limit && *culprit == nullptr) *culprit = variable;
    }
    return highest;
}
