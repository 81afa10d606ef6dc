// SPDX-License-Identifier: MIT
// What function nodes can do by themselves.
#include "expr/function.hpp"

#include <ostream>
#include <string>

#include "expr/calculus.hpp"
#include "expr/leaves.hpp"
#include "zirk/error.hpp"

namespace zirk {

Function::Function(const ElementaryFunction& function, const Ref& operand)
    : UnOp(function.kind, operand), function_(function) {}

void Function::InitValue(real& out) {
    operand_->InitialValue(out);
    out = function_.value(out);
}

void Function::MakeDerivative() {
    throw Error(std::string("#(ERR) No derivative of ") + function_.name + " before it is expanded\n", 1);
}

void Function::requireExpansion() const {
    FunctionExpander* expander = Calculus::current().expander;
    if (expander == nullptr) throw Error("#(ERR) A function outside of an equation\n", 1);
    expander->require(type_);
}

Expr::Ref Function::ConvertExpr(const std::vector<Ref>& expanded) {
    operand_ = expanded[0];
    return Calculus::current().expander->expand(*this);
}

void Function::printPart(std::ostream& out, int i) const {
    if (i == 0) {
        out << function_.name << '(';
    } else {
        out << ')';
    }
}

Sin::Sin(const Ref& operand) : Function(functionOf(ExprType::Sin), operand) {}

void Sin::Result(real& out, bool) {
    operand_->Value(out);
    out = function_.value(out);
}

void Sin::MakeDerivative() {
    derivative_ = Ref(ExprType::Multiply, Ref(ExprType::Cos, operand_), operand_->Derivative());
}

Trunc::Trunc(const Ref& operand) : Function(functionOf(ExprType::Trunc), operand) {}

void Trunc::GetDY(int k, real& out) {
    // Asked for in every order: the operand's terms stay in rising order.
    operand_->DY(k, out);
    out = k == 0 ? function_.value(out) : 0;
}

void Trunc::Result(real& out, bool) {
    operand_->Value(out);
    out = function_.value(out);
}

void Trunc::MakeDerivative() { derivative_ = Ref(new Number(0)); }

Expr::Ref Trunc::ConvertExpr(const std::vector<Ref>& expanded) { return Ref(ExprType::Trunc, expanded[0]); }

}  // namespace zirk
