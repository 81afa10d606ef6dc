// SPDX-License-Identifier: MIT
// The solution over one step as Taylor polynomials, in as few digits as their terms need.
#pragma once

#include <vector>

#include "adaptive/terms.hpp"

namespace zirk {

/// By what terms of each variable are measured; as doubles too, where none of them would become zero.
struct Weights {
    std::vector<real> exact;
    std::vector<double> rounded;
    bool haveDoubles = false;
};

/// Terms 0 to p of all variables and 0 to p - 1 of all values with an array, for one step.
///
/// Terms up to `wide` of the variables are real numbers with 64 bits. From there on terms are so small against the
/// solution that the 53 bits of a double lose nothing that the sum could hold; where they are not small, all are real.
/// Every polynomial is in u = (time - begin)/scale.
class StepSeries {
public:
    StepSeries(const ValueSystem& system, const Arrangement& arrangement, const Sections& sections, Crew& crew,
               bool plain);

    /// From terms 0 of all values. `wide` from 1 to the order. Goes on in real numbers where doubles have not the
    /// range.
    void expand(const std::vector<real>& first, real scale, int wide);

    int order() const { return arrangement_.order; }
    real scale() const { return scale_; }
    /// Terms of variables up to this one are real numbers.
    int wide() const { return wide_; }

    real variableTerm(ValueIndex i, int k) const {
        return k <= wide_ ? real_.variable(i, k) : static_cast<real>(double_.variable(i, k));
    }
    /// Term k < p of a value that has a rising array.
    real valueTerm(ValueIndex value, int k) const {
        return k < wide_ ? real_.terms(value)[k] : static_cast<real>(double_.terms(value)[k]);
    }

    /// Makes each of the numbers from `begin` to `end` - 1 at least |term k| of its variable.
    void raise(std::vector<real>& least, int k, std::size_t begin, std::size_t end) const;

    /// Largest |term k| over the variables, each divided by its weight; not a number when one is not finite.
    real largest(int k, const Weights& weights) const;

    /// What every variable gains up to u: the sum of terms 1 to p, from the small end.
    void gains(real u, std::vector<real>& out) const;

    /// The polynomial of a value with a rising array.
    real valueAt(ValueIndex value, real u) const;
    void polynomial(ValueIndex value, std::vector<real>& coefficients) const;

private:
    void addTails(real u, std::size_t begin, std::size_t end) const;

    const ValueSystem& system_;
    const Arrangement& arrangement_;
    Crew& crew_;
    Terms<real> real_;
    Terms<double> double_;
    real scale_ = 0;
    int wide_ = 0;
    mutable std::vector<double> tail_;
    mutable std::vector<real> ofBlocks_;
};

}  // namespace zirk
