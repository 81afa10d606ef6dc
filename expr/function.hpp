// SPDX-License-Identifier: MIT
// Elementary functions as nodes: they live from the input to the expansion, only Trunc longer.
#pragma once

#include "expr/arithmetic.hpp"

namespace zirk {

/// f(u) for any function kind; its expansion replaces it by variables.
class Function : public UnOp {
public:
    void InitValue(real& out) override;
    void MakeDerivative() override;
    void requireExpansion() const override;
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;

protected:
    Function(ExprType type, const Ref& operand) : UnOp(type, operand) {}
};

/// The functions that have nothing of their own.
template <ExprType kind>
class PlainFunction final : public Function {
public:
    explicit PlainFunction(const Ref& operand) : Function(kind, operand) {}
};

using Cos = PlainFunction<ExprType::Cos>;
using Tan = PlainFunction<ExprType::Tan>;
using Cotan = PlainFunction<ExprType::Cotan>;
using ASin = PlainFunction<ExprType::ASin>;
using ACos = PlainFunction<ExprType::ACos>;
using ATan = PlainFunction<ExprType::ATan>;
using ACotan = PlainFunction<ExprType::ACotan>;
using Sinh = PlainFunction<ExprType::Sinh>;
using Cosh = PlainFunction<ExprType::Cosh>;
using Tanh = PlainFunction<ExprType::Tanh>;
using Cotanh = PlainFunction<ExprType::Cotanh>;
using ASinh = PlainFunction<ExprType::ASinh>;
using ACosh = PlainFunction<ExprType::ACosh>;
using ATanh = PlainFunction<ExprType::ATanh>;
using ACotanh = PlainFunction<ExprType::ACotanh>;
using Sqrt = PlainFunction<ExprType::Sqrt>;
using Exp = PlainFunction<ExprType::Exp>;
using Ln = PlainFunction<ExprType::Ln>;

/// Sine: the only expanded function with a value and a derivative of its own, cos(u) * u'.
class Sin final : public Function {
public:
    explicit Sin(const Ref& operand) : Function(ExprType::Sin, operand) {}
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
};

/// Truncation toward zero: stays a function node. Term 0 is truncated, higher terms and the derivative are zero.
class Trunc final : public Function {
public:
    explicit Trunc(const Ref& operand) : Function(ExprType::Trunc, operand) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
    Expr* derivativeSource(int) const override { return nullptr; }
    void requireExpansion() const override {}
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
};

}  // namespace zirk
