// SPDX-License-Identifier: MIT
// Constants, the independent variable, and the unknowns of the system.
#pragma once

#include <string>

#include "expr/expr.hpp"
#include "text/from_text.hpp"

namespace zirk {

struct SeriesSum;

/// A constant. Term 0 is the constant, all others are zero.
class Number final : public Expr {
public:
    explicit Number(real value) : Expr(ExprType::Number) { start_ = value; }
    explicit Number(double value) : Number(static_cast<real>(value)) {}
    explicit Number(int value) : Number(static_cast<real>(value)) {}
    /// The text carries double precision.
    explicit Number(const char* text);

    void GetDY(int k, real& out) override;
    void BeginStep() override {}
    void DY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream& out, int i) const override;
};

/// The independent variable t.
///
/// Term 1 is the constant one and not h, on purpose; the value at the start of the step follows the result field, which
/// changes only when somebody asks for the node's value.
class Time final : public Expr {
public:
    Time() : Expr(ExprType::Time) {}

    void GetDY(int k, real& out) override;
    void BeginStep() override;
    void DY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream& out, int i) const override;
};

/// A variable with y' = right-hand side. Term k is f[k-1] * (h / k), f being the right-hand side.
class Differential : public Expr {
public:
    Differential(const std::string& name, const Ref& rightHandSide, real initialValue);

    void GetDY(int k, real& out) override;
    void BeginStep() override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    Expr* termSource(int i) const override { return i == 0 ? rightHandSide_.get() : nullptr; }
    Expr* derivativeSource(int) const override { return nullptr; }
    void printPart(std::ostream& out, int i) const override;

    /// One full line: the equation and the value at the start of the step.
    virtual void TreeDump(std::ostream& out) const;

    /// Index of the last term but one that this node computed, and that term when the index is 0 or more; always -1 for
    /// an algebraic variable.
    void LastTerm(int& order, real& last) const {
        order = type() == ExprType::Algebraic ? -1 : highest_ - 1;
        if (order >= 0) last = term(order);
    }

    const std::string& name() const { return name_; }
    const Ref& rightHandSide() const { return rightHandSide_; }
    void setRightHandSide(const Ref& rightHandSide) { rightHandSide_ = rightHandSide; }

    /// Start value and result, as an initial-value statement sets them.
    void setInitialValue(real value);

    /// The function that this variable stands for, or is part of; empty for variables of the input.
    const Ref& origin() const { return origin_; }
    void setOrigin(const Ref& function) { origin_ = function; }

    /// Terms that the last sum of this variable needed, and whether all of them were exactly zero.
    int ownOrder() const { return ownOrder_; }
    bool onlyZeroTerms() const { return onlyZeroTerms_; }

    /// Takes a sum that was made elsewhere; the terms stay there, and this node's own are made when it is asked for
    /// them.
    void adopt(const SeriesSum& series);

    /// Breaks cycles of handles before a table of equations goes.
    void detach();

protected:
    Differential(ExprType type, const std::string& name, const Ref& rightHandSide);

private:
    void takeSum(const SeriesSum& series);

    std::string name_;
    Ref rightHandSide_;
    Ref origin_;
    bool onlyZeroTerms_ = false;
    int ownOrder_ = 0;
};

/// A variable with an algebraic definition; constant over a step for everybody who asks for its terms.
class Algebraic final : public Differential {
public:
    Algebraic(const std::string& name, const Ref& definition) : Differential(ExprType::Algebraic, name, definition) {}

    void GetDY(int k, real& out) override;
    void BeginStep() override;
    void DY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void InitValue(real& out) override;
    void MakeDerivative() override;
    Expr* source(int i) const override { return i == 0 ? rightHandSide().get() : nullptr; }
    Expr* derivativeSource(int i) const override { return source(i); }
    Expr* termSource(int) const override { return nullptr; }
    void printPart(std::ostream& out, int i) const override;
    void TreeDump(std::ostream& out) const override;
};

/// A node that stands in the table of equations under a name, differential or algebraic.
inline bool isVariable(const Expr& node) {
    return node.type() == ExprType::Differential || node.type() == ExprType::Algebraic;
}

inline bool isAlgebraic(const Expr& node) { return node.type() == ExprType::Algebraic; }
inline bool isDifferential(const Expr& node) { return node.type() == ExprType::Differential; }

/// The node as a variable; null for any other node.
inline Differential* asVariable(Expr* node) { return isVariable(*node) ? static_cast<Differential*>(node) : nullptr; }
inline const Differential* asVariable(const Expr* node) {
    return isVariable(*node) ? static_cast<const Differential*>(node) : nullptr;
}

}  // namespace zirk
