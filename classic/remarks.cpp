// SPDX-License-Identifier: MIT
// The kinds of remarks, one after the other.
#include "classic/remarks.hpp"

#include <unordered_set>
#include <vector>

#include "expr/formula_text.hpp"

namespace zirk {

namespace {

/// The first time node and the first algebraic name that derivative equations use, with the equation.
class Uses {
public:
    explicit Uses(const EquationTable& equations) {
        for (const Differential& variable : equations) {
            if (variable.type() == ExprType::Differential) search(variable);
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
            if (node->type() == ExprType::Algebraic && ofAlgebraic == nullptr && canMove(*node)) {
                ofAlgebraic = &variable;
                algebraic = static_cast<const Differential*>(node);
            }
            for (int i = 0; node->operand(i) != nullptr; ++i) pending_.push_back(node->operand(i));
        }
    }

    /// A definition made of constants only holds at every time.
    static bool canMove(const Expr& algebraic) {
        std::unordered_set<const Expr*> seen;
        std::vector<const Expr*> pending{&algebraic};
        while (!pending.empty()) {
            const Expr* node = pending.back();
            pending.pop_back();
            if (!seen.insert(node).second) continue;
            if (node->type() == ExprType::Time || node->type() == ExprType::Differential) return true;
            for (int i = 0; node->source(i) != nullptr; ++i) pending.push_back(node->source(i));
        }
        return false;
    }

    std::unordered_set<const Expr*> seen_;
    std::vector<const Expr*> pending_;
};

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
                          describe(*uses.ofAlgebraic) + ": write its formula there instead of its name");
    }
    if (!calculus.remarks.constant.empty()) {
        remarks.push_back(calculus.remarks.constant + ", within the accuracy: -i 0 or a smaller -a keeps it");
    }
    if (system.hasOtherStartTime) remarks.emplace_back("all start values belong to time 0, whatever time is written");
    for (const auto& start : system.initialValues) {
        if (system.equations.find(start.first) != nullptr) continue;
        remarks.push_back("the start value of \"" + start.first + "\" sets nothing: there is no such variable");
        break;
    }
    return remarks;
}

}  // namespace zirk
