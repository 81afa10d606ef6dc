// SPDX-License-Identifier: MIT
// The two factories of nodes: constants are folded at once, neutral operands are dropped.
#include <cmath>
#include <cstdio>
#include <string>

#include "expr/arithmetic.hpp"
#include "expr/calculus.hpp"
#include "expr/elementary.hpp"
#include "expr/leaves.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

bool isNumber(const Expr::Ref& node) { return node->type() == ExprType::Number; }

Expr* newOperator(ExprType type, const Expr::Ref& left, const Expr::Ref& right) {
    switch (type) {
        case ExprType::Plus:
            return new Plus(left, right);
        case ExprType::Minus:
            return new Minus(left, right);
        case ExprType::Multiply:
            return new Multiply(left, right);
        case ExprType::Divide:
            return new Divide(left, right);
        default:
            throw Error(
                "#(ERR) Expr::Ref::Ref(ExprType, const Expr::Ref&, const Expr::Ref&): unknown binary operation (" +
                    std::to_string(static_cast<int>(type)) + ")\n",
                1);
    }
}

real fold(ExprType type, real a, real b) {
    switch (type) {
        case ExprType::Plus:
            return a + b;
        case ExprType::Minus:
            return a - b;
        case ExprType::Multiply:
            return a * b;
        default:
            return a / b;
    }
}

/// Drops neutral operands; null when no rule applies.
///
/// A constant below the accuracy counts as zero: it vanishes from sums and annihilates products. Where the left operand
/// is a constant, the rules for a constant on the right are not tried.
class Simplifier {
public:
    Simplifier(const Expr::Ref& left, const Expr::Ref& right, Calculus& calculus)
        : left_(left), right_(right), calculus_(calculus) {}

    Expr* simplified(ExprType type) const {
        switch (type) {
            case ExprType::Plus:
                return isNumber(left_) ? (isSmall(left_) ? right_.get() : nullptr) : withoutRight();
            case ExprType::Minus:
                return isNumber(left_) ? (isSmall(left_) ? new UnMinus(right_) : nullptr) : withoutRight();
            case ExprType::Multiply:
                return isNumber(left_) ? scaled(left_, right_) : scaled(right_, left_);
            case ExprType::Divide:
                return isNumber(left_) ? nullptr : unitFactor(right_, left_);
            default:
                return nullptr;
        }
    }

private:
    bool isSmall(const Expr::Ref& node) const {
        if (!isNumber(node) || !(std::fabs(node->startValue()) < calculus_.limits.accuracy)) return false;
        if (node->startValue() != 0) remark(node->startValue(), "0");
        return true;
    }

    Expr* withoutRight() const { return isSmall(right_) ? left_.get() : nullptr; }

    Expr* scaled(const Expr::Ref& factor, const Expr::Ref& other) const {
        if (isSmall(factor)) return new Number(0);
        return unitFactor(factor, other);
    }

    Expr* unitFactor(const Expr::Ref& factor, const Expr::Ref& other) const {
        if (!isNumber(factor)) return nullptr;
        const real x = factor->startValue();
        if (!(std::fabs(std::fabs(x) - 1) < calculus_.limits.accuracy)) return nullptr;
        // Rounding in what was folded before is nobody's meaning.
        constexpr real rounding = 1e-15L;
        if (std::fabs(std::fabs(x) - 1) > rounding) remark(x, x >= 0 ? "1" : "-1");
        return x >= 0 ? other.get() : new UnMinus(other);
    }

    void remark(real x, const char* taken) const {
        if (!calculus_.remarks.constant.empty()) return;
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.16Lg", x);
        calculus_.remarks.constant = std::string(static_cast<const char*>(digits)) + " counts as " + taken;
    }

    const Expr::Ref& left_;
    const Expr::Ref& right_;
    Calculus& calculus_;
};

Expr* makeUnary(ExprType type, const Expr::Ref& operand) {
    if (type == ExprType::UnMinus) {
        if (isNumber(operand)) return new Number(-operand->startValue());
        return new UnMinus(operand);
    }
    if (const ElementaryFunction* function = findFunction(type)) {
        if (isNumber(operand)) return new Number(function->value(operand->startValue()));
        return function->node(operand);
    }
    // The wording differs from that of the other factory on purpose.
    throw Error("#(ERR) Expr::Ref::Ref(ExprType, const Expr::Ref&): neznamy typ unarni operace (" +
                    std::to_string(static_cast<int>(type)) + ")\n",
                1);
}

Expr* makeBinary(ExprType type, const Expr::Ref& left, const Expr::Ref& right) {
    const int kind = static_cast<int>(type);
    if (kind >= 1 && kind <= 4) {
        if (isNumber(left) && isNumber(right)) return new Number(fold(type, left->startValue(), right->startValue()));
        Calculus& calculus = Calculus::current();
        if (calculus.limits.simplifySmall) {
            Expr* simple = Simplifier(left, right, calculus).simplified(type);
            if (simple != nullptr) return simple;
        }
    }
    return newOperator(type, left, right);
}

}  // namespace

Expr::Ref::Ref(ExprType type, const Ref& operand) : Ref(makeUnary(type, operand)) {}

Expr::Ref::Ref(ExprType type, const Ref& left, const Ref& right) : Ref(makeBinary(type, left, right)) {}

}  // namespace zirk
