// SPDX-License-Identifier: MIT
// The four operators and negation.
#pragma once

#include "expr/expr.hpp"

namespace zirk {

/// A node of two operands.
class BinOp : public Expr {
public:
    Expr* operand(int i) const override { return i == 0 ? left_.get() : i == 1 ? right_.get() : nullptr; }

    /// Rebuilt by the factory; the same node when neither operand changed.
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;

    const Ref& left() const { return left_; }
    const Ref& right() const { return right_; }

protected:
    BinOp(ExprType type, const Ref& left, const Ref& right) : Expr(type), left_(left), right_(right) {}

    Ref left_;
    Ref right_;
};

/// Sum: C[k] = A[k] + B[k].
class Plus final : public BinOp {
public:
    Plus(const Ref& left, const Ref& right) : BinOp(ExprType::Plus, left, right) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
};

/// Difference: C[k] = A[k] - B[k].
class Minus final : public BinOp {
public:
    Minus(const Ref& left, const Ref& right) : BinOp(ExprType::Minus, left, right) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
};

/// Product A * B.
///
/// With A and B the Taylor terms of the operands, term k is
///     C[k] = A[k]*B[0] + A[k-1]*B[1] + ... + A[0]*B[k]
/// added in this order from zero; the order shows in the last bits of the result table.
/// Terms are scaled by h^k / k! already, so no step size appears here.
class Multiply final : public BinOp {
public:
    Multiply(const Ref& left, const Ref& right) : BinOp(ExprType::Multiply, left, right) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
};

/// Quotient A / B.
///
///     s = C[0]*B[k] + C[1]*B[k-1] + ... + C[k-1]*B[1],  C[k] = (A[k] - s) / B[0]
/// added in this order from zero. B[0] = 0 gives infinities and not-a-numbers, no message.
class Divide final : public BinOp {
public:
    Divide(const Ref& left, const Ref& right) : BinOp(ExprType::Divide, left, right) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
};

/// A node of one operand. Functions inherit term and value operations that must never run.
class UnOp : public Expr {
public:
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    Expr* operand(int i) const override { return i == 0 ? operand_.get() : nullptr; }
    const Ref& argument() const { return operand_; }

protected:
    UnOp(ExprType type, const Ref& operand) : Expr(type), operand_(operand) {}

    Ref operand_;
};

/// Negation: the sign bit inverted, so a zero term becomes a negative zero.
class UnMinus final : public UnOp {
public:
    explicit UnMinus(const Ref& operand) : UnOp(ExprType::UnMinus, operand) {}
    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
    Ref ConvertExpr(const std::vector<Ref>& expanded) override;
    void printPart(std::ostream& out, int i) const override;
};

/// Zero as it is written, whatever the variables are: a variable with such a rate stays where it is. Not looked for
/// more than some 20 levels deep.
bool isWrittenZero(const Expr& node, int depth = 0);

}  // namespace zirk
