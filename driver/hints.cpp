// SPDX-License-Identifier: MIT
// The kinds of hints, one after the other.
#include "driver/hints.hpp"

#include <ostream>
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

void writeHints(std::ostream& out, const Calculus& calculus, const EquationSystem& system,
                const std::string& badOption) {
    const auto hint = [&out]() -> std::ostream& { return out << "#(HINT) "; };
    if (!badOption.empty()) hint() << badOption << ": the value is no number, or not only a number\n";
    const Uses uses(system.equations);
    if (uses.ofTime != nullptr) {
        hint() << "t is not the time in the equation of " << describe(*uses.ofTime)
               << ": write T for it, and a clock, \"T' = 1;\"\n";
    }
    if (!calculus.remarks.function.empty()) hint() << calculus.remarks.function << '\n';
    if (uses.ofAlgebraic != nullptr) {
        hint() << '"' << uses.algebraic->name() << "\" lags one step behind in the equation of "
               << describe(*uses.ofAlgebraic) << ": write its formula there instead of its name\n";
    }
    if (!calculus.remarks.constant.empty()) {
        hint() << calculus.remarks.constant << ", within the accuracy: -i 0 or a smaller -a keeps it\n";
    }
    if (system.hasOtherStartTime) hint() << "all start values belong to time 0, whatever time is written\n";
    for (const auto& start : system.initialValues) {
        if (system.equations.find(start.first) != nullptr) continue;
        hint() << "the start value of \"" << start.first << "\" sets nothing: there is no such variable\n";
        break;
    }
}

}  // namespace zirk
