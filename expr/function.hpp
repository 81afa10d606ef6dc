// SPDX-License-Identifier: MIT
// Elementary functions as nodes: they live from the input to the expansion, only Trunc longer.
#pragma once

#include "expr/arithmetic.hpp"

namespace zirk {

struct ElementaryFunction;

/// f(u) for any function kind; its expansion replaces it by variables.
class Function : public UnOp {
public:
    Function(const ElementaryFunction& function, const Ref& operand);

    void InitValue(real& out) override;
    void MakeDerivative() override;
    void requireExpansion() const override;
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;

protected:
    const ElementaryFunction& function_;
};

/// Sine: the only expanded function with a value and a derivative of its own, cos(u) * u'.
class Sin final : public Function {
public:
    explicit Sin(const Ref& operand);
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
};

/// Truncation toward zero: stays a function node. Term 0 is truncated, higher terms and the derivative are zero.
class Trunc final : public Function {
public:
    explicit Trunc(const Ref& operand);
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void MakeDerivative() override;
    Expr* derivativeSource(int) const override { return nullptr; }
    void requireExpansion() const override {}
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
};

}  // namespace zirk
