// SPDX-License-Identifier: MIT
// A walk over the graph of nodes, operands first.
#include "classic/first_not_finite.hpp"

#include <cmath>
#include <unordered_map>
#include <vector>

#include "expr/formula_text.hpp"

namespace zirk {

namespace {

class Search {
public:
    std::string from(const Differential& variable) {
        enter(variable);
        // The list grows while it is walked: nearest variables first.
        for (std::size_t i = 0; i < variables_.size() && found_.empty(); ++i) {
            const Differential& next = *variables_[i];
            owner_ = &next;
            if (!std::isfinite(next.startValue())) {
                judgeStart(next);
            } else {
                valueOf(*next.rightHandSide());
            }
        }
        return found_;
    }

private:
    struct Frame {
        const Expr* node;
        int next;
    };

    void enter(const Differential& variable) {
        if (values_.emplace(&variable, variable.startValue()).second) variables_.push_back(&variable);
    }

    static const char* whatIs(real value) { return std::isnan(value) ? " is not a number" : " is infinite"; }

    void judgeStart(const Differential& variable) {
        const bool isFunction = variable.origin()->type() != ExprType::Nothing;
        const bool isDefined = isAlgebraic(variable);
        // The fault may lie further inside, in the operand or the definition; what these are made from is looked at
        // later then.
        const bool isConstant = isDefined && variable.rightHandSide()->type() == ExprType::Number;
        if (!isConstant && (isFunction || isDefined)) {
            const real inside = valueOf(isFunction ? *variable.origin()->operand(0) : *variable.rightHandSide());
            if (!found_.empty() || !std::isfinite(inside)) return;
        }
        found_ = "the " + (isFunction ? describe(variable) : "value of " + formulaText(variable)) +
                 whatIs(variable.startValue());
    }

    real valueOf(const Expr& root) {
        std::vector<Frame> stack{{&root, 0}};
        while (!stack.empty() && found_.empty()) {
            Frame& top = stack.back();
            const Expr& node = *top.node;
            const Expr* operand = values_.count(&node) != 0 ? nullptr : node.operand(top.next++);
            if (operand != nullptr) {
                stack.push_back({operand, 0});
                continue;
            }
            stack.pop_back();
            if (values_.count(&node) == 0) compute(node);
        }
        return found_.empty() ? values_.at(&root) : 0;
    }

    void compute(const Expr& node) {
        if (isVariable(node)) {
            enter(*asVariable(&node));
            return;
        }
        const real value = operate(node);
        values_.emplace(&node, value);
        if (node.type() == ExprType::Number && !std::isfinite(value))
            found_ = std::string("a constant") + whatIs(value);
        // Sums and products are infinite when the solution has grown beyond all bounds: no fault of the formula.
        if (std::isfinite(value) || node.type() != ExprType::Divide) return;
        if (!std::isfinite(values_.at(node.operand(0))) || !std::isfinite(values_.at(node.operand(1)))) return;
        // The variables of a function are its own business: their quotients are its derivative.
        const Expr& function = *owner_->origin();
        const bool isOfFunction = function.type() != ExprType::Nothing;
        found_ = (isOfFunction ? "the derivative of " + formulaText(function) : "the quotient " + formulaText(node)) +
                 whatIs(value);
    }

    real operate(const Expr& node) const {
        const auto value = [&](int i) { return values_.at(node.operand(i)); };
        switch (node.type()) {
            case ExprType::Plus:
                return value(0) + value(1);
            case ExprType::Minus:
                return value(0) - value(1);
            case ExprType::Multiply:
                return value(0) * value(1);
            case ExprType::Divide:
                return value(0) / value(1);
            case ExprType::UnMinus:
                return -value(0);
            case ExprType::Trunc:
                return std::trunc(static_cast<double>(value(0)));
            default:
                return node.startValue();
        }
    }

    std::vector<const Differential*> variables_;
    std::unordered_map<const Expr*, real> values_;
    /// Whose right-hand side is looked at.
    const Differential* owner_ = nullptr;
    std::string found_;
};

}  // namespace

std::string firstNotFinite(const Differential& variable) { return Search().from(variable); }

}  // namespace zirk
