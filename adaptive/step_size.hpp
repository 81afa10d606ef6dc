// SPDX-License-Identifier: MIT
// How long a step may be, from the terms of its polynomials.
#pragma once

#include <vector>

#include "adaptive/step_series.hpp"

namespace zirk {

/// The order that takes the least work for a tolerance: 1 - ln(tolerance)/2 where the work grows with its square (A.
/// Jorba, M. Zou, Experimental Mathematics 14 (2005), section 3.2), and higher where it grows with less.
int orderFor(real tolerance);

/// Judges the terms of one step after the other.
class StepSize {
public:
    StepSize(const ValueSystem& system, real tolerance, Crew& crew);

    /// The longest step, in units of the scale; not a number when a term is not finite, infinite when nothing limits
    /// it. `isFresh` where the state may be special: at a start, and behind a jump.
    real longest(const StepSeries& series, bool isFresh);

    /// Whether the terms that were computed as doubles are small enough for that, for a step of this length.
    bool doublesSuffice(const StepSeries& series, real step) const;

    /// The least number of real terms for a step like this one.
    int wideTermsFor(const StepSeries& series, real step) const;

    /// The first function whose polynomial does not end at its value at the end of the step, or none. `values`: all of
    /// them there.
    ValueIndex firstDisagreement(const StepSeries& series, real step, const std::vector<real>& values) const;

    /// Whether the sums of the variables keep their digits: a term much larger than what is left at the end takes them
    /// away. `values`: all values at the end.
    bool keepsDigits(const StepSeries& series, real step, const std::vector<real>& end,
                     const std::vector<real>& values) const;

    /// The value that limits the step most.
    ValueIndex limiting() const { return limiting_; }

private:
    void weigh(const StepSeries& series);
    /// A length, and what limits it to that.
    struct Limit {
        real step;
        ValueIndex value;
    };
    /// Limits the step so that |term| step^k stays below `most`.
    static void consider(ValueIndex value, real term, int k, real most, Limit& limit);
    bool limitBy(const StepSeries& series, ValueIndex value, bool isFresh, Limit& limit) const;
    void limitFlat(const StepSeries& series, ValueIndex value, Limit& limit) const;
    void limitRoot(const StepSeries& series, ValueIndex value, Limit& limit) const;
    bool agrees(const StepSeries& series, ValueIndex value, real step, real actual) const;
    real relativeTerm(const StepSeries& series, int k) const;
    real visibleTerm(const StepSeries& series, int k) const;
    ValueIndex firstNotFinite(const StepSeries& series) const;

    const ValueSystem& system_;
    Crew& crew_;
    real tolerance_;
    Weights weights_;
    /// Least weight at the present step.
    real floor_ = 0;
    /// Functions, and what else has a polynomial that has to be right.
    std::vector<ValueIndex> checked_;
    std::vector<char> isWatched_;
    /// Those whose zeros are located.
    std::vector<ValueIndex> watched_;
    ValueIndex limiting_ = Value::none;
    std::vector<Limit> ofBlocks_;
};

}  // namespace zirk
