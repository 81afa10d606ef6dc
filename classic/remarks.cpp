// SPDX-License-Identifier: MIT
// The kinds of remarks, one after the other.
#include "classic/remarks.hpp"

#include <unordered_set>
#include <vector>

#include "expr/arithmetic.hpp"
#include "expr/formula_text.hpp"

namespace zirk {

namespace {

/// Whether a node is wanted, or a source of it, over definitions but not into derivative equations. Ends in loops too:
/// no node is entered that is in `seen`, which keeps those that were entered and lead to nothing.
template <class Wanted>
bool leadsTo(const Expr& root, Wanted wanted, std::unordered_set<const Expr*>& seen) {
    std::vector<const Expr*> pending{&root};
    while (!pending.empty()) {
        const Expr& node = *pending.back();
        pending.pop_back();
        if (!seen.insert(&node).second) continue;
        if (wanted(node)) return true;
        if (isDifferential(node)) continue;
        for (int i = 0; node.source(i) != nullptr; ++i) pending.push_back(node.source(i));
    }
    return false;
}

bool moves(const Expr& node) {
    if (node.type() == ExprType::Time) return true;
    return isDifferential(node) && !isWrittenZero(*asVariable(&node)->rightHandSide());
}

bool isStep(const Expr& node) { return node.type() == ExprType::Time || node.type() == ExprType::Trunc; }

/// The first time node and the first moving algebraic name that derivative equations use, with the equation.
class Uses {
public:
    explicit Uses(const EquationTable& equations) {
        for (const Differential& variable : equations) {
            if (isDifferential(variable)) search(variable);
        }
    }

    const Differential* ofTime = nullptr;
    const Differential* ofAlgebraic = nullptr;
    const Differential* algebraic = nullptr;

private:
    void search(const Differential& variable) {
        pending_.assign(1, variable.rightHandSide().get());
        while (!pending_.empty()) {
            const Expr* node = pending_.back();
            pending_.pop_back();
            if (!seen_.insert(node).second) continue;
            if (node->type() == ExprType::Time && ofTime == nullptr) ofTime = &variable;
            if (isAlgebraic(*node) && ofAlgebraic == nullptr && leadsTo(*node, moves, standing_)) {
                ofAlgebraic = &variable;
                algebraic = asVariable(node);
            }
            for (int i = 0; node->operand(i) != nullptr; ++i) pending_.push_back(node->operand(i));
        }
    }

    std::unordered_set<const Expr*> seen_;
    /// Used by definitions whose value never changes. The first that does is the last to be looked at.
    std::unordered_set<const Expr*> standing_;
    std::vector<const Expr*> pending_;
};

/// Whether the definition has a time node or a truncation in it, by itself or by name: then it is no good elsewhere.
bool isStepped(const Expr& definition) {
    std::unordered_set<const Expr*> seen;
    return leadsTo(definition, isStep, seen);
}

std::string aboutStart(const std::string& name, const Differential* variable) {
    const std::string text = "the start value of \"" + writtenName(name) + "\" sets nothing: ";
    return text + (variable == nullptr ? "there is no such variable" : "it is computed from others");
}

}  // namespace

std::vector<std::string> remarksOn(const Calculus& calculus, const EquationSystem& system) {
    std::vector<std::string> remarks;
    const Uses uses(system.equations);
    if (uses.ofTime != nullptr) {
        remarks.push_back("t is not the time in the equation of " + describe(*uses.ofTime) +
                          ": write T for it, and a clock, \"T' = 1;\"");
    }
    if (!calculus.remarks.function.empty()) remarks.push_back(calculus.remarks.function);
    if (uses.ofAlgebraic != nullptr) {
        remarks.push_back('"' + uses.algebraic->name() + "\" lags one step behind in the equation of " +
                          describe(*uses.ofAlgebraic) +
                          (isStepped(*uses.algebraic) ? ": take short steps of one size, -f 1 -s 0.001"
                                                      : ": write its formula there instead of its name"));
    }
    if (!calculus.remarks.constant.empty()) {
        remarks.push_back(calculus.remarks.constant + ", within the accuracy: -i 0 or a smaller -a keeps it");
    }
    if (system.hasOtherStartTime) remarks.emplace_back("all start values belong to time 0, whatever time is written");
    for (const auto& start : system.initialValues) {
        const Differential* variable = system.equations.find(start.first);
        if (variable != nullptr && !isAlgebraic(*variable)) continue;
        remarks.push_back(aboutStart(start.first, variable));
        break;
    }
    return remarks;
}

}  // namespace zirk
