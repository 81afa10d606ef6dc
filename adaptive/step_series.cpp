// SPDX-License-Identifier: MIT
// Real terms first, doubles behind them, sums from the small end.
#include "adaptive/step_series.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adaptive/lanes.hpp"

namespace zirk {

StepSeries::StepSeries(const ValueSystem& system, const Arrangement& arrangement, bool plain)
    : system_(system),
      arrangement_(arrangement),
      real_(system, arrangement, plain),
      double_(system, arrangement, plain),
      tail_(arrangement.rowLength) {}

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
real largestOf(const T* terms, const std::vector<T>& weights) {
    T most = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const T term = std::fabs(terms[i]);
        // Not a number is greater than nothing: it falls through to the test.
        if (term <= most * weights[i]) continue;
        if (!std::isfinite(term)) return std::nan("");
        most = term / weights[i];
    }
    return most;
}

}  // namespace

void StepSeries::raise(std::vector<real>& least, int k) const {
    const auto raiseTo = [&](const auto* terms) {
        for (std::size_t i = 0; i < least.size(); ++i) {
            const real size = std::fabs(terms[i]);
            if (least[i] < size) least[i] = size;
        }
    };
    k <= wide_ ? raiseTo(real_.row(k)) : raiseTo(double_.row(k));
}

real StepSeries::largest(int k, const Weights& weights) const {
    if (k <= wide_) return largestOf(real_.row(k), weights.exact);
    if (weights.haveDoubles) return largestOf(double_.row(k), weights.rounded);
    const std::vector<real> row(double_.row(k), double_.row(k) + system_.variables);
    return largestOf(row.data(), weights.exact);
}

void StepSeries::gains(real u, std::vector<real>& out) const {
    const auto variables = static_cast<std::size_t>(system_.variables);
    const int wide = wide_;
    std::fill(tail_.begin(), tail_.end(), 0.0);
    if (wide < order()) {
        const FlushTinyDoubles flush;
        const auto x = static_cast<double>(u);
        for (std::size_t i = 0; i < variables; i += 4) {
            // Two sums, of every other term: half the wait for one addition after the other.
            FourDoubles sums[2] = {};
            for (int k = order(); k > wide; --k) {
                FourDoubles& sum = sums[static_cast<unsigned>(k - wide) % 2];
                sum = sum * (x * x) + fourAt(double_.row(k) + i);
            }
            const FourDoubles tail = sums[1] + sums[0] * x;
            std::memcpy(&tail_[i], &tail, sizeof tail);
        }
    }
    for (std::size_t i = 0; i < variables; ++i) {
        real sum = tail_[i];
        for (int k = wide; k >= 1; --k) sum = sum * u + real_.row(k)[i];
        out[i] = sum * u;
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
