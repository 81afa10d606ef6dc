// SPDX-License-Identifier: MIT
// Elementary functions as nodes: they live from the input to the expansion, only Trunc longer.
#pragma once

#include "expr/arithmetic.hpp"
#include "expr/elementary.hpp"

namespace zirk {

/// f(u), one class per function; its expansion replaces it by variables.
class Function : public UnOp {
public:
    void InitValue(real& out) override;
    void MakeDerivative() override;
    void requireExpansion() const override;
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;

protected:
    Function(const ElementaryFunction& function, const Ref& operand);

    const ElementaryFunction& function_;
};

/// The node of a kind of function that has nothing of its own.
template <ExprType ofKind>
class FunctionOf final : public Function {
public:
    static constexpr ExprType kind = ofKind;
    explicit FunctionOf(const Ref& operand) : Function(functionOf(kind), operand) {}
};

using Cos = FunctionOf<ExprType::Cos>;
using Tan = FunctionOf<ExprType::Tan>;
using Cotan = FunctionOf<ExprType::Cotan>;
using ASin = FunctionOf<ExprType::ASin>;
using ACos = FunctionOf<ExprType::ACos>;
using ATan = FunctionOf<ExprType::ATan>;
using ACotan = FunctionOf<ExprType::ACotan>;
using Sinh = FunctionOf<ExprType::Sinh>;
using Cosh = FunctionOf<ExprType::Cosh>;
using Tanh = FunctionOf<ExprType::Tanh>;
using Cotanh = FunctionOf<ExprType::Cotanh>;
using ASinh = FunctionOf<ExprType::ASinh>;
using ACosh = FunctionOf<ExprType::ACosh>;
using ATanh = FunctionOf<ExprType::ATanh>;
using ACotanh = FunctionOf<ExprType::ACotanh>;
using Sqrt = FunctionOf<ExprType::Sqrt>;
using Exp = FunctionOf<ExprType::Exp>;
using Ln = FunctionOf<ExprType::Ln>;

/// Sine: the only expanded function with a value and a derivative of its own, cos(u) * u'.
class Sin final : public Function {
public:
    static constexpr ExprType kind = ExprType::Sin;
    explicit Sin(const Ref& operand);
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
};

/// Truncation toward zero: stays a function node. Term 0 is truncated, higher terms and the derivative are zero.
class Trunc final : public Function {
public:
    static constexpr ExprType kind = ExprType::Trunc;
    explicit Trunc(const Ref& operand);
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
    Expr* derivativeSource(int) const override { return nullptr; }
    void requireExpansion() const override {}
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
};

}  // namespace zirk
