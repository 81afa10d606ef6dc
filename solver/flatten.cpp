// SPDX-License-Identifier: MIT
// The graph of nodes flattened into slots and operations.
#include <algorithm>

#include "solver/schedule.hpp"

namespace {

bool isOperation(const Expr* node) { return node->operand(0) != nullptr; }

/// Constant over a step: only term 0 is not zero.
bool isConstant(const Expr* node) { return node->type() == ExprType::Number || node->type() == ExprType::Algebraic; }

}  // namespace

int Schedule::newSlot(Expr* node) {
    const int slot = static_cast<int>(now_.size());
    slots_.emplace(node, slot);
    now_.push_back(0);
    constant_.push_back(0);
    array_.push_back(-1);
    needed_.push_back(0);
    highest_.push_back(-1);
    operationAt_.push_back(-1);
    variableAt_.push_back(-1);
    return slot;
}

void Schedule::giveArray(int slot) {
    if (array_[at(slot)] < 0) array_[at(slot)] = static_cast<int>(arrays_++);
}

Schedule::Operation Schedule::operationOf(const Expr& node) const {
    const Expr* left = node.operand(0);
    const Expr* right = node.operand(1) != nullptr ? node.operand(1) : left;
    Operation operation{Kind::Plus, slotOf(&node), slotOf(left), slotOf(right)};
    switch (node.type()) {
        case ExprType::Plus:
            break;
        case ExprType::Minus:
            operation.kind = Kind::Minus;
            break;
        case ExprType::UnMinus:
            operation.kind = Kind::Negate;
            break;
        case ExprType::Multiply:
            operation.kind = isConstant(left) ? Kind::ScaleLeft : isConstant(right) ? Kind::ScaleRight : Kind::Multiply;
            break;
        case ExprType::Divide:
            operation.kind = isConstant(right) ? Kind::Ratio : Kind::Divide;
            break;
        default:
            operation.kind = Kind::Truncate;
            break;
    }
    return operation;
}

void Schedule::emit(Expr* root) {
    struct Frame {
        Expr* node;
        int next;
    };
    std::vector<Frame> stack{{root, 0}};
    while (!stack.empty()) {
        Frame& top = stack.back();
        if (top.next == 0 && slots_.count(top.node) != 0) {
            stack.pop_back();
            continue;
        }
        Expr* operand = top.node->operand(top.next++);
        if (operand != nullptr) {
            stack.push_back({operand, 0});
            continue;
        }
        Expr* node = top.node;
        stack.pop_back();
        const int slot = newSlot(node);
        if (!isOperation(node)) {
            leaves_.push_back({node, slot});
            continue;
        }
        const Operation operation = operationOf(*node);
        operationAt_[at(slot)] = static_cast<int>(all_.size());
        all_.push_back(operation);
        if (operation.kind == Kind::Multiply) giveArray(operation.left);
        if (operation.kind == Kind::Multiply || operation.kind == Kind::Divide) giveArray(operation.right);
        if (operation.kind == Kind::Divide) giveArray(operation.out);
    }
}

void Schedule::build() {
    built_ = true;
    for (Differential& variable : equations_) {
        if (variable.type() == ExprType::Algebraic) continue;
        const int slot = newSlot(&variable);
        giveArray(slot);
        variableAt_[at(slot)] = static_cast<int>(variables_.size());
        variables_.push_back({&variable, slot, -1, true, {}});
    }
    for (Variable& variable : variables_) {
        emit(variable.node->rightHandSide().get());
        variable.source = slotOf(variable.node->rightHandSide().get());
    }
    terms_.resize(arrays_ * stride_);
}
