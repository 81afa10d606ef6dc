// SPDX-License-Identifier: MIT
// The slice of the settings that nodes read: step, stamps, limits and shared constants.
#pragma once

#include <string>
#include <vector>

#include "expr/expr.hpp"
#include "expr/real.hpp"

namespace zirk {

class UnOp;

/// Replaces a function node by variables; set while equations are prepared.
class FunctionExpander {
public:
    virtual ~FunctionExpander() = default;

    /// Failure for a function that cannot be expanded.
    virtual void require(ExprType function) const = 0;

    /// The variable that stands for f(u); `function` holds its expanded operand already.
    virtual Expr::Ref expand(UnOp& function) = 0;
};

/// Factors h / i by which a variable's terms follow from those of its right-hand side.
///
/// Entry 0 is zero, entry i is h / i (i converted to `real`, one division). The entries are made when first asked for,
/// so that a large order limit costs nothing before a series needs it.
class StepTable {
public:
    const real& operator[](int i) {
        if (static_cast<std::size_t>(i) >= factors_.size()) extend(i);
        return factors_[static_cast<std::size_t>(i)];
    }

    /// Entries 0 to i.
    const real* upTo(int i) { return &(*this)[i] - i; }

    /// Number of factors in force: the order limit plus the trailing zero terms.
    int size() const { return size_; }

    void rebuild(real step, int size);

private:
    void extend(int last);

    real step_ = 0;
    int size_ = 0;
    std::vector<real> factors_;
};

/// What the preparation did otherwise than the author of a model may expect: the first case of each kind, as a
/// sentence.
struct Remarks {
    /// A function whose equations are not those of its derivative.
    std::string function;
    /// A constant that was taken as 0 or 1.
    std::string constant;
};

/// What the operations of nodes read and write besides the nodes themselves.
struct Calculus {
    Calculus();

    /// Rebuilds the step table for n terms.
    void setMaxOrder(int n);

    /// Step from text or options: the value passes through double precision.
    void setStep(double h);

    /// Step of the integrator, in full precision.
    void changeStep(real h);

    int orderUsed = 0;
    int maxOrder = 15;
    int stepStamp = 0;
    int prevStepStamp = -1;
    int zeroTerms = 4;
    bool simplifySmall = true;
    bool forceRecompute = false;
    unsigned steadyStop = 0;
    bool useAllTerms = false;
    real step;
    real accuracy;
    real zero;
    real one;
    real pi;
    real twoPi;
    real halfPi;
    real time = 0;
    real ln2;
    StepTable stepTable;

    /// Moves on whenever a start value or definition changes; initial values computed under an older one are stale.
    int initialStamp = 1;
    FunctionExpander* expander = nullptr;
    Remarks remarks;

    /// The record in force. The signatures of node operations are fixed, so they reach it here and only here.
    static Calculus& current() { return *current_; }

    /// Puts a record in force for the life of this object.
    class Scope {
    public:
        explicit Scope(Calculus& calculus) : before_(current_) { current_ = &calculus; }
        ~Scope() { current_ = before_; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Calculus* before_;
    };

private:
    static Calculus* current_;
};

/// Which variables are selected for output, by name.
struct Selection {
    std::string printList;
    std::string noPrintList;

    /// Substring search of "name:" on purpose: the key of y1 is also found inside the entry "zy1:".
    bool selects(const std::string& name) const;
};

}  // namespace zirk
