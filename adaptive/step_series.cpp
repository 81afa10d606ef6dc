// SPDX-License-Identifier: MIT
// Real terms first, doubles behind them, sums from the small end.
#include "adaptive/step_series.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adaptive/lanes.hpp"

namespace zirk {

StepSeries::StepSeries(const ValueSystem& system, const Arrangement& arrangement, const Sections& sections, Crew& crew,
                       bool plain)
    : system_(system),
      arrangement_(arrangement),
      crew_(crew),
      real_(system, arrangement, sections, crew, plain),
      double_(system, arrangement, sections, crew, plain),
      tail_(arrangement.rowLength),
      ofBlocks_(Crew::blocks(system.variables)) {}

void StepSeries::expand(const std::vector<real>& first, real scale, int wide) {
    scale_ = scale;
    wide_ = std::min(wide, order());
    real_.begin(first, scale);
    real_.run(1, wide_ - 1);
    if (wide_ == order()) return;
    const FlushTinyDoubles flush;
    bool held = double_.continueFrom(real_, wide_);
    if (held) {
        double_.run(wide_, order() - 1);
        const double* last = double_.row(order());
        held = std::all_of(last, last + system_.variables, [](double x) { return std::isfinite(x); });
    }
    if (held) return;
    double_.clear();
    real_.run(wide_, order() - 1);
    wide_ = order();
}

namespace {

template <class T>
real largestOf(const T* terms, const T* weights, std::size_t begin, std::size_t end) {
    T most = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const T term = std::fabs(terms[i]);
        // Not a number is greater than nothing: it falls through to the test.
        if (term <= most * weights[i]) continue;
        if (!std::isfinite(term)) return std::nan("");
        most = term / weights[i];
    }
    return most;
}

}  // namespace

void StepSeries::raise(std::vector<real>& least, int k, std::size_t begin, std::size_t end) const {
    const auto raiseTo = [&](const auto* terms) {
        for (std::size_t i = begin; i < end; ++i) {
            const real size = std::fabs(terms[i]);
            if (least[i] < size) least[i] = size;
        }
    };
    k <= wide_ ? raiseTo(real_.row(k)) : raiseTo(double_.row(k));
}

real StepSeries::largest(int k, const Weights& weights) const {
    const bool isWide = k <= wide_;
    std::vector<real> row;
    if (!isWide && !weights.haveDoubles) row.assign(double_.row(k), double_.row(k) + system_.variables);
    const real* const reals = isWide ? real_.row(k) : row.data();
    // Each block begins anew, so that what is rounded does not depend on who computes it.
    crew_.inBlocks(system_.variables, [&](std::size_t block, std::size_t begin, std::size_t end) {
        ofBlocks_[block] = isWide || !weights.haveDoubles
                               ? largestOf(reals, weights.exact.data(), begin, end)
                               : largestOf(double_.row(k), weights.rounded.data(), begin, end);
    });
    real most = 0;
    for (const real& ofBlock : ofBlocks_) {
        if (std::isnan(ofBlock)) return ofBlock;
        most = std::max(most, ofBlock);
    }
    return most;
}

void StepSeries::gains(real u, std::vector<real>& out) const {
    // Four variables at a time; what lies behind the last is zero.
    crew_.divide(arrangement_.rowLength / 4, [&](std::size_t first, std::size_t last) {
        addTails(u, 4 * first, 4 * last);
        const std::size_t end = std::min<std::size_t>(4 * last, system_.variables);
        for (std::size_t i = 4 * first; i < end; ++i) {
            real sum = tail_[i];
            for (int k = wide_; k >= 1; --k) sum = sum * u + real_.row(k)[i];
            out[i] = sum * u;
        }
    });
}

/// The sums of the terms that are doubles, over u to the power of the last that is not.
void StepSeries::addTails(real u, std::size_t begin, std::size_t end) const {
    if (wide_ == order()) {
        std::fill(tail_.begin() + static_cast<std::ptrdiff_t>(begin), tail_.begin() + static_cast<std::ptrdiff_t>(end),
                  0.0);
        return;
    }
    const FlushTinyDoubles flush;
    const auto x = static_cast<double>(u);
    for (std::size_t i = begin; i < end; i += 4) {
        // Two sums, of every other term: half the wait for one addition after the other.
        FourDoubles sums[2] = {};
        for (int k = order(); k > wide_; --k) {
            FourDoubles& sum = sums[static_cast<unsigned>(k - wide_) % 2];
            sum = sum * (x * x) + fourAt(double_.row(k) + i);
        }
        const FourDoubles tail = sums[1] + sums[0] * x;
        std::memcpy(&tail_[i], &tail, sizeof tail);
    }
}

real StepSeries::valueAt(ValueIndex value, real u) const {
    real sum = 0;
    if (wide_ < order()) {
        // Even and odd terms by themselves: half the wait for one addition after the other.
        const double* const terms = double_.terms(value);
        const auto x = static_cast<double>(u);
        double parts[2] = {0, 0};
        for (int k = order() - 1; k >= wide_; --k) {
            double& part = parts[static_cast<unsigned>(k - wide_) % 2];
            part = part * (x * x) + terms[k];
        }
        sum = parts[0] + parts[1] * x;
    }
    const real* const terms = real_.terms(value);
    for (int k = std::min(wide_, order()) - 1; k >= 0; --k) sum = sum * u + terms[k];
    return sum;
}

void StepSeries::polynomial(ValueIndex value, std::vector<real>& coefficients) const {
    coefficients.clear();
    for (int k = 0; k < order(); ++k) coefficients.push_back(valueTerm(value, k));
}

}  // namespace zirk
