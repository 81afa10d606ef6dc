// SPDX-License-Identifier: MIT
// One point by the schedule: sums in the order of the nodes' own recurrences.
#include "solver/schedule.hpp"

#include <algorithm>
#include <cmath>

Schedule::Schedule(Calculus& calculus, const EquationTable& equations) : calculus_(calculus), equations_(equations) {}

void Schedule::reserveTerms(int k) {
    const auto wanted = static_cast<std::size_t>(k) + 1;
    if (wanted <= stride_) return;
    const std::size_t wider = 2 * wanted;
    std::vector<real> moved(arrays_ * wider);
    for (std::size_t i = 0; i < arrays_; ++i) std::copy_n(&terms_[i * stride_], stride_, &moved[i * wider]);
    terms_.swap(moved);
    stride_ = wider;
}

void Schedule::keep(int slot, int k) {
    if (array_[at(slot)] >= 0) history(slot)[k] = now(slot);
}

void Schedule::begin() {
    for (const Leaf& leaf : leaves_) {
        leaf.node->BeginStep();
        constant_[at(leaf.slot)] = leaf.node->startValue();
    }
    for (Variable& variable : variables_) {
        variable.node->BeginStep();
        variable.series = SeriesSum();
        variable.series.sum = calculus_.zero;
        now(variable.slot) = variable.node->startValue();
        keep(variable.slot, 0);
        variable.series.add(now(variable.slot), calculus_);
    }
}

void Schedule::setLeaves(int k) {
    for (const Leaf& leaf : leaves_) {
        // From term 2 on every leaf is zero.
        if (k <= 2) leaf.node->DY(k, now(leaf.slot));
        keep(leaf.slot, k);
    }
}

bool Schedule::runOperations(int k) {
    const auto top = static_cast<std::size_t>(k);
    for (const Operation& operation : active_) {
        const real left = now(operation.left);
        real& out = now(operation.out);
        switch (operation.kind) {
            case Kind::Plus:
                out = left + now(operation.right);
                break;
            case Kind::Minus:
                out = left - now(operation.right);
                break;
            case Kind::Negate:
                out = -left;
                break;
            case Kind::Truncate:
                out = k == 0 ? static_cast<real>(std::trunc(static_cast<double>(left))) : 0;
                break;
            case Kind::Multiply: {
                const real* a = history(operation.left) + top;
                const real* b = history(operation.right);
                real sum = 0;
                for (std::size_t i = 0; i <= top; ++i) sum = sum + *(a - i) * b[i];
                out = sum;
                break;
            }
            case Kind::Divide: {
                const real* c = history(operation.out);
                const real* b = history(operation.right);
                real sum = 0;
                for (std::size_t i = 0; i < top; ++i) sum = sum + c[i] * b[top - i];
                out = (left - sum) / b[0];
                break;
            }
            // One factor is constant: the other products are exact zeros as long as every term is finite. Adding to
            // zero stays: it turns a negative zero into a positive one.
            case Kind::ScaleLeft:
                if (!std::isfinite(now(operation.right))) return false;
                out = 0 + constant_[at(operation.left)] * now(operation.right);
                break;
            case Kind::ScaleRight:
                if (!std::isfinite(left)) return false;
                out = 0 + left * constant_[at(operation.right)];
                break;
            case Kind::Ratio:
                out = left / constant_[at(operation.right)];
                if (!std::isfinite(out)) return false;
                break;
        }
        keep(operation.out, k);
    }
    return true;
}

void Schedule::advanceVariables(int k) {
    const real factor = calculus_.stepTable[k + 1];
    // All next terms first: a right-hand side may be another variable, still at its present term.
    for (const Variable& variable : variables_) {
        if (variable.needed) history(variable.slot)[k + 1] = now(variable.source) * factor;
    }
    for (Variable& variable : variables_) {
        if (!variable.needed) continue;
        now(variable.slot) = history(variable.slot)[k + 1];
        if (variable.series.wantsMore(calculus_)) variable.series.add(now(variable.slot), calculus_);
    }
}

std::size_t Schedule::countWanting() const {
    return static_cast<std::size_t>(std::count_if(variables_.begin(), variables_.end(),
                                                  [this](const Variable& v) { return v.series.wantsMore(calculus_); }));
}

void Schedule::markNeeded() {
    std::fill(needed_.begin(), needed_.end(), char{0});
    const auto need = [this](int slot) {
        if (needed_[at(slot)] != 0) return;
        needed_[at(slot)] = 1;
        pending_.push_back(slot);
    };
    for (Variable& variable : variables_) {
        variable.needed = variable.series.wantsMore(calculus_);
        if (variable.needed) need(variable.source);
    }
    while (!pending_.empty()) {
        const std::size_t slot = at(pending_.back());
        pending_.pop_back();
        if (operationAt_[slot] >= 0) {
            const Operation& operation = all_[at(operationAt_[slot])];
            need(operation.left);
            need(operation.right);
        } else if (variableAt_[slot] >= 0) {
            Variable& variable = variables_[at(variableAt_[slot])];
            variable.needed = true;
            need(variable.source);
        }
    }
    active_.clear();
    for (const Operation& operation : all_) {
        if (needed_[at(operation.out)] != 0) active_.push_back(operation);
    }
}

void Schedule::raise(int root, int highest) {
    const auto lift = [&](int slot) {
        if (highest_[at(slot)] >= highest) return;
        highest_[at(slot)] = highest;
        pending_.push_back(slot);
    };
    lift(root);
    while (!pending_.empty()) {
        const std::size_t slot = at(pending_.back());
        pending_.pop_back();
        if (operationAt_[slot] >= 0) {
            const Operation& operation = all_[at(operationAt_[slot])];
            lift(operation.left);
            lift(operation.right);
        } else if (variableAt_[slot] >= 0) {
            levels_[at(highest)].push_back(variableAt_[slot]);
        }
    }
}

void Schedule::spreadHighest() {
    int low = calculus_.maxOrder;
    int high = 0;
    for (const Variable& variable : variables_) {
        highest_[at(variable.slot)] = variable.series.k - 1;
        low = std::min(low, variable.series.k - 1);
        high = std::max(high, variable.series.k - 1);
    }
    // A variable asks others for one term less than its own highest.
    if (high - 1 <= low) return;
    std::fill(highest_.begin(), highest_.end(), -1);
    levels_.assign(at(high) + 1, {});
    for (const Variable& variable : variables_) {
        highest_[at(variable.slot)] = variable.series.k - 1;
        levels_[at(variable.series.k - 1)].push_back(variableAt_[at(variable.slot)]);
    }
    // From the top down, every slot is lifted at most once.
    for (int level = high; level > 0; --level) {
        for (const int index : levels_[at(level)]) {
            const Variable& variable = variables_[at(index)];
            if (highest_[at(variable.slot)] == level) raise(variable.source, level - 1);
        }
    }
}

bool Schedule::sumAll() {
    if (calculus_.stepStamp == 0 || calculus_.maxOrder < 2 || calculus_.zeroTerms < 1) return false;
    if (!built_) build();
    begin();
    std::size_t marked = countWanting();
    if (marked > 0) markNeeded();
    std::size_t wanting = marked;
    for (int k = 0; wanting > 0; ++k) {
        reserveTerms(k + 1);
        setLeaves(k);
        if (!runOperations(k)) return false;
        advanceVariables(k);
        wanting = countWanting();
        if (4 * wanting <= 3 * marked && wanting > 0) {
            markNeeded();
            marked = wanting;
        }
    }
    spreadHighest();
    for (const Variable& variable : variables_) {
        variable.node->adopt(variable.series, history(variable.slot), highest_[at(variable.slot)]);
    }
    return true;
}
