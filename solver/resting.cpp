// SPDX-License-Identifier: MIT
// Reachability over the graph of variables, built once and spread once per question.
#include "solver/resting.hpp"

#include <algorithm>
#include <unordered_set>

void RestingVariables::buildGraph() {
    std::unordered_map<const Expr*, std::size_t> indexOf;
    for (Differential& variable : equations_) {
        indexOf[&variable] = nodes_.size();
        nodes_.push_back({&variable, {}, {}, false});
    }
    for (std::size_t user = 0; user < nodes_.size(); ++user) {
        std::unordered_set<const Expr*> seen;
        std::vector<const Expr*> stack{nodes_[user].variable->rightHandSide().get()};
        while (!stack.empty()) {
            const Expr* node = stack.back();
            stack.pop_back();
            if (!seen.insert(node).second) continue;
            if (node->type() == ExprType::Time) nodes_[user].times.push_back(node);
            const auto variable = indexOf.find(node);
            if (variable != indexOf.end()) {
                nodes_[variable->second].users.push_back(user);
                continue;
            }
            for (int i = 0; node->operand(i) != nullptr; ++i) stack.push_back(node->operand(i));
        }
    }
}

void RestingVariables::spreadMotion() {
    const auto moved = [](const Expr* node) { return !(node->startValue() == node->result()); };
    std::vector<std::size_t> moving;
    const auto mark = [&](std::size_t index) {
        if (nodes_[index].reachesMotion) return;
        nodes_[index].reachesMotion = true;
        moving.push_back(index);
    };
    for (Node& node : nodes_) node.reachesMotion = false;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const Node& node = nodes_[i];
        if (std::any_of(node.times.begin(), node.times.end(), moved)) mark(i);
        if (node.variable->type() != ExprType::Algebraic || !moved(node.variable)) continue;
        for (const std::size_t user : node.users) mark(user);
    }
    while (!moving.empty()) {
        const std::size_t index = moving.back();
        moving.pop_back();
        for (const std::size_t user : nodes_[index].users) mark(user);
    }
}

int RestingVariables::order(int limit, const Differential** culprit) {
    if (nodes_.empty()) buildGraph();
    spreadMotion();
    int highest = 0;
    *culprit = nullptr;
    for (const Node& node : nodes_) {
        if (node.variable->type() == ExprType::Algebraic) continue;
        if (node.variable->onlyZeroTerms() && !node.reachesMotion) continue;
        const int order = node.variable->ownOrder();
        highest = std::max(highest, order);
        if (order > limit && *culprit == nullptr) *culprit = node.variable;
    }
    return highest;
}
