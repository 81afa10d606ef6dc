// SPDX-License-Identifier: MIT
// Expression nodes and the counted handle that owns them.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "expr/real.hpp"

namespace zirk {

/// Kinds of nodes; the numbers are part of the messages of the factory.
enum class ExprType : int {
    Nothing = 0,
    Plus = 1,
    Minus = 2,
    Multiply = 3,
    Divide = 4,
    UnMinus = 5,
    Number = 6,
    Time = 7,
    Differential = 8,
    Algebraic = 9,
    Equation = 10,
    Sin = 11,
    Cos = 12,
    Tan = 13,
    Cotan = 14,
    ASin = 15,
    ACos = 16,
    ATan = 17,
    ACotan = 18,
    Sinh = 19,
    Cosh = 20,
    Tanh = 21,
    Cotanh = 22,
    ASinh = 23,
    ACosh = 24,
    ATanh = 25,
    ACotanh = 26,
    Sqrt = 27,
    Exp = 28,
    Ln = 29,
    Trunc = 30
};

/// A node of a formula: gives its Taylor terms, its values, its symbolic derivative and its printed form.
///
/// Term k of a node u over the step from t to t + h is h^k * u^(k)(t) / k!. Terms are cached per step and must be asked
/// for in rising order. Every operation survives formulas and chains of any depth: what would recurse deeply goes over
/// to a stack of its own.
class Expr {
public:
    /// The only owner of nodes: counts in the node, is never null, compares identity.
    class Ref {
    public:
        /// The shared empty node.
        Ref();
        /// A null pointer gives the shared empty node.
        Ref(Expr* node);  // NOLINT: nodes become handles where they are made
        Ref(const Ref& other) : node_(other.node_) { acquire(node_); }
        /// Leaves the shared empty node behind.
        Ref(Ref&& other) noexcept;
        ~Ref() { release(node_); }

        /// Factory of one-operand nodes; constants are folded. Error for a kind that has no such node.
        Ref(ExprType type, const Ref& operand);
        /// Factory of two-operand nodes; constants are folded, neutral operands dropped. Error as above.
        Ref(ExprType type, const Ref& left, const Ref& right);

        /// Lets the old node go last: `r = r` and `r = r->operand()` are safe.
        Ref& operator=(const Ref& other) {
            Expr* old = node_;
            node_ = other.node_;
            acquire(node_);
            release(old);
            return *this;
        }
        Ref& operator=(Ref&& other) noexcept {
            std::swap(node_, other.node_);
            return *this;
        }

        bool operator==(const Ref& other) const { return node_ == other.node_; }
        bool operator!=(const Ref& other) const { return node_ != other.node_; }
        Expr* operator->() const { return node_; }
        Expr& operator*() const { return *node_; }
        Expr* get() const { return node_; }

    private:
        static void acquire(Expr* node);
        static void release(Expr* node);
        static void destroy(Expr* node) noexcept;

        Expr* node_;
    };

    Expr(const Expr&) = delete;
    Expr& operator=(const Expr&) = delete;
    virtual ~Expr() = default;

    ExprType type() const { return type_; }
    /// Handles of this node; of the empty node those of this thread.
    int useCount() const { return type_ == ExprType::Nothing ? static_cast<int>(emptyUses_) : useCount_; }

    /// Computes term k into `out`, no caching.
    virtual void GetDY(int k, real& out) = 0;

    /// Brings the cache of terms up to the current step.
    virtual void BeginStep();

    /// Value at the end of the step, computed afresh; no node uses the flag.
    virtual void Result(real& out, bool flag) = 0;

    /// Builds the symbolic time derivative into the derivative field.
    virtual void MakeDerivative() = 0;

    /// Cached term k. Throws std::overflow_error("Order overflow") when k exceeds `maxOrder` of the limits, which is
    /// the number of terms that a series may have.
    virtual void DY(int k, real& out);

    /// Value at the initial point, computed afresh.
    virtual void InitValue(real& out) = 0;

    /// Error for a function that has no expanded form; asked before its operands are looked at.
    virtual void requireExpansion() const {}

    /// The expanded form of this node alone, from the expanded operands given right one first.
    virtual Ref ConvertExpr(const std::vector<Ref>& expanded) = 0;

    /// Writes the node in fully bracketed infix form, without a line end.
    void Print(std::ostream& out) const;

    /// Symbolic time derivative, built once. Error for a loop of algebraic definitions.
    const Ref& Derivative();

    /// Value at the end of the step, computed once per step stamp; sets the steady flag.
    void Value(real& out);

    /// Value at t = 0 as things stand now. Error for a loop of algebraic definitions.
    void InitialValue(real& out);

    /// The expanded form: no placeholder, no function but truncation. Right operands are expanded first.
    Ref Converted();

    /// Operand i of the formula, left first; null past the last.
    virtual Expr* operand(int i) const;

    /// What the value is made from: the operands; for an algebraic variable its definition.
    virtual Expr* source(int i) const { return operand(i); }

    /// What the derivative is made from.
    virtual Expr* derivativeSource(int i) const { return operand(i); }

    /// The node whose term of the same order (for a variable: of the order below) enters this node's term.
    virtual Expr* termSource(int i) const { return operand(i); }

    /// Text before operand i; past the last operand, the closing text.
    virtual void printPart(std::ostream& out, int i) const = 0;

    /// True when InitialValue would answer without computing.
    bool knowsInitialValue() const;

    const real& startValue() const { return start_; }
    const real& result() const { return result_; }
    int termStamp() const { return termStamp_; }
    int resultStamp() const { return resultStamp_; }
    bool isSteady() const { return steady_; }

    // The terms that this node has computed by itself, and those only: after a point that a program summed a variable
    // has term 0. The terms of a point, whoever summed it, are those of TaylorStep.

    /// Index of the highest term computed in this step; -1 when there is none.
    int highestTerm() const { return highest_; }
    /// Term k, not beyond highestTerm.
    const real& term(int k) const { return terms_[static_cast<std::size_t>(k)]; }

    /// Gives back the memory of all terms but term 0: others make them from now on.
    void dropTerms();

    /// Where a TermGraph put this node; it checks that the place is still the node's own.
    int graphSlot = -1;

protected:
    explicit Expr(ExprType type);

    /// Sets the steady flag from the value at the start of the step and the result.
    void noteSteadiness();

    /// Entry k of the term array, which grows as terms are touched.
    real& termSlot(int k);

    ExprType type_;
    bool steady_ = false;
    int useCount_ = 0;
    /// All nodes but the empty one belong to one thread at a time; that one never dies, so that each thread counts its
    /// own handles of it. (With an atomic count the parser itself took 1.6 times as long.)
    static inline thread_local unsigned emptyUses_ = 0;
    int highest_ = -1;
    int termStamp_;
    int resultStamp_;
    real start_ = 0;
    real result_ = 0;
    Ref derivative_;

private:
    friend struct ValueTask;
    friend struct TermTask;
    friend struct InitialTask;
    friend struct DerivativeTask;

    bool enterValue();
    void leaveValue();
    bool enterTerm(int k);
    void leaveTerm(int k);

    void growTerms(std::size_t size);

    bool inProgress_ = false;
    int initialStamp_ = 0;
    real initial_ = 0;
    std::vector<real> terms_;
    Expr* nextDead_ = nullptr;
};

/// The one shared empty node.
class NothingExpr final : public Expr {
public:
    static Expr* shared() {
        static Expr* const node = new NothingExpr;
        return node;
    }

    void GetDY(int k, real& out) override;
    void Result(real& out, bool flag) override;
    void MakeDerivative() override {}
    void InitValue(real& out) override;
    Ref ConvertExpr(const std::vector<Ref>&) override { return this; }
    void printPart(std::ostream& out, int i) const override;

private:
    NothingExpr() : Expr(ExprType::Nothing) {}
};

inline Expr::Ref::Ref() : Ref(nullptr) {}
inline Expr::Ref::Ref(Expr* node) : node_(node != nullptr ? node : NothingExpr::shared()) { acquire(node_); }
inline Expr::Ref::Ref(Ref&& other) noexcept : node_(other.node_) {
    other.node_ = NothingExpr::shared();
    acquire(other.node_);
}

inline void Expr::Ref::acquire(Expr* node) {
    if (node->type_ == ExprType::Nothing) {
        ++emptyUses_;
    } else {
        ++node->useCount_;
    }
}
inline void Expr::Ref::release(Expr* node) {
    if (node->type_ == ExprType::Nothing) {
        --emptyUses_;
    } else if (--node->useCount_ == 0) {
        destroy(node);
    }
}

/// A handle shows as its node's reference count.
std::ostream& operator<<(std::ostream& out, const Expr::Ref& handle);

}  // namespace zirk
