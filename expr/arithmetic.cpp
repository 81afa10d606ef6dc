// SPDX-License-Identifier: MIT
// Term recurrences, values and derivatives of the operators.
#include "expr/arithmetic.hpp"

#include <ostream>

#include "expr/calculus.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

real termOf(const Expr::Ref& node, int k) {
    real term = 0;
    node->DY(k, term);
    return term;
}

real valueOf(const Expr::Ref& node) {
    real value = 0;
    node->Value(value);
    return value;
}

real initialOf(const Expr::Ref& node) {
    real value = 0;
    node->InitialValue(value);
    return value;
}

}  // namespace

Expr::Ref BinOp::ConvertExpr(const std::vector<Ref>& expanded) {
    const Ref& right = expanded[0];
    const Ref& left = expanded[1];
    if (left == left_ && right == right_) return this;
    return Ref(type_, left, right);
}

void BinOp::printPart(std::ostream& out, int i) const {
    static constexpr const char* symbols[] = {"", " + ", " - ", " * ", " / "};
    out << (i == 0 ? "(" : i == 1 ? symbols[static_cast<int>(type_)] : ")");
}

void Plus::GetDY(int k, real& out) {
    left_->DY(k, out);
    out = out + termOf(right_, k);
}

void Plus::Result(real& out, bool) {
    out = valueOf(left_);
    out = out + valueOf(right_);
}

void Plus::InitValue(real& out) {
    out = initialOf(left_);
    out = out + initialOf(right_);
}

void Plus::MakeDerivative() {
    const Ref leftRate = left_->Derivative();
    derivative_ = Ref(ExprType::Plus, leftRate, right_->Derivative());
}

void Minus::GetDY(int k, real& out) {
    left_->DY(k, out);
    out = out - termOf(right_, k);
}

void Minus::Result(real& out, bool) {
    out = valueOf(left_);
    out = out - valueOf(right_);
}

void Minus::InitValue(real& out) {
    out = initialOf(left_);
    out = out - initialOf(right_);
}

void Minus::MakeDerivative() {
    const Ref leftRate = left_->Derivative();
    derivative_ = Ref(ExprType::Minus, leftRate, right_->Derivative());
}

void Multiply::GetDY(int k, real& out) {
    real sum = 0;
    for (int i = 0; i <= k; ++i) {
        const real a = termOf(left_, k - i);
        sum = sum + a * termOf(right_, i);
    }
    out = sum;
}

void Multiply::Result(real& out, bool) {
    out = valueOf(left_);
    out = out * valueOf(right_);
}

void Multiply::InitValue(real& out) {
    const real a = initialOf(left_);
    out = initialOf(right_) * a;
}

void Multiply::MakeDerivative() {
    const Ref outer(ExprType::Multiply, left_, right_->Derivative());
    const Ref inner(ExprType::Multiply, left_->Derivative(), right_);
    derivative_ = Ref(ExprType::Plus, inner, outer);
}

void Divide::GetDY(int k, real& out) {
    real sum = 0;
    for (int i = 0; i < k; ++i) {
        real c = 0;
        DY(i, c);
        sum = sum + c * termOf(right_, k - i);
    }
    const real a = termOf(left_, k);
    out = (a - sum) / termOf(right_, 0);
}

void Divide::Result(real& out, bool) {
    out = valueOf(left_);
    out = out / valueOf(right_);
}

void Divide::InitValue(real& out) {
    out = initialOf(left_);
    out = out / initialOf(right_);
}

void Divide::MakeDerivative() {
    const Ref square(ExprType::Multiply, right_, right_);
    const Ref outer(ExprType::Multiply, left_, right_->Derivative());
    const Ref inner(ExprType::Multiply, left_->Derivative(), right_);
    const Ref difference(ExprType::Minus, inner, outer);
    derivative_ = Ref(ExprType::Divide, difference, square);
}

void UnOp::GetDY(int, real&) { throw Error("#(ERR) virtual void UnOp::GetDY(int, real&) called!\n", 1); }

void UnOp::Result(real&, bool) { throw Error("#(ERR) virtual void UnOp::Result(real&, bool) called!\n", 1); }

void UnMinus::GetDY(int k, real& out) { out = -termOf(operand_, k); }

void UnMinus::Result(real& out, bool) { out = -valueOf(operand_); }

void UnMinus::InitValue(real& out) { out = -initialOf(operand_); }

void UnMinus::MakeDerivative() { derivative_ = Ref(ExprType::UnMinus, operand_->Derivative()); }

Expr::Ref UnMinus::ConvertExpr(const std::vector<Ref>& expanded) {
    if (expanded[0] == operand_) return this;
    return Ref(ExprType::UnMinus, expanded[0]);
}

void UnMinus::printPart(std::ostream& out, int i) const { out << (i == 0 ? "(-" : ")"); }

bool isWrittenZero(const Expr& node, int depth) {
    constexpr int deepest = 20;
    if (depth > deepest) return false;
    const auto isZero = [&](int i) { return isWrittenZero(*node.operand(i), depth + 1); };
    switch (node.type()) {
        case ExprType::Number:
            return node.startValue() == 0;
        case ExprType::Multiply:
            return isZero(0) || isZero(1);
        case ExprType::Plus:
        case ExprType::Minus:
            return isZero(0) && isZero(1);
        case ExprType::Divide:
        case ExprType::UnMinus:
            return isZero(0);
        default:
            return false;
    }
}

}  // namespace zirk
