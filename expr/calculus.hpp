// SPDX-License-Identifier: MIT
// What the operations of nodes read and write besides the nodes themselves: step, time and stamps of a run.
#pragma once

#include <string>
#include <vector>

#include "expr/expr.hpp"
#include "zirk/classic_options.hpp"

namespace zirk {

class UnOp;

/// Replaces a function node by variables; set while equations are prepared.
class FunctionExpander {
public:
    virtual ~FunctionExpander() = default;

    /// Error for a function that cannot be expanded.
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

    void rebuild(real step);

private:
    void extend(int last);

    real step_ = 0;
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

/// One record per system of equations, owned by whoever made the system. The limits stay the same over a run; all else
/// changes with it.
struct Calculus {
    /// The limits must live as long as the record.
    Calculus(const SeriesLimits& inForce, real firstStep);

    /// Every change of the step refills the table.
    void changeStep(real h);

    const SeriesLimits& limits;

    // Of the present pass.
    real step = 0;
    /// The end of the step, where the values are wanted.
    real time = 0;
    StepTable stepTable;
    /// Number of the pass, and that of the pass whose values the step begins from: the same one when a point is
    /// repeated.
    int stepStamp = 0;
    int prevStepStamp = -1;
    int orderUsed = 0;
    /// The next value asked for is computed anew.
    bool forceRecompute = false;

    // Of the preparation.
    /// Moves on whenever a start value or definition changes; initial values computed under an older one are stale.
    int initialStamp = 1;
    FunctionExpander* expander = nullptr;
    Remarks remarks;

    /// The record in force on this thread. The signatures of node operations are fixed, so they reach it here and only
    /// here.
    static Calculus& current() { return *current_; }

    /// Puts a record in force for the life of this object; the one before comes back then.
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
    static inline thread_local Calculus* current_ = nullptr;
};

}  // namespace zirk
