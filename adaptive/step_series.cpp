// SPDX-License-Identifier: MIT
// Real terms first, doubles behind them, sums from the small end.
#include "adaptive/step_series.hpp"

#include <algorithm>
#include <cmath>

#include "adaptive/lanes.hpp"

namespace zirk {

StepSeries::StepSeries(const ValueSystem& system, const Arrangement& arrangement, bool plain)
    : system_(system),
      arrangement_(arrangement),
      real_(system, arrangement, plain),
      double_(system, arrangement, plain),
      tail_(system.variables) {}

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

real StepSeries::largest(int k, const std::vector<real>& weights) const {
    real most = 0;
    const bool isReal = k <= wide_;
    for (ValueIndex i = 0; i < system_.variables; ++i) {
        const real term = std::fabs(isReal ? real_.row(k)[i] : static_cast<real>(double_.row(k)[i]));
        // Not a number is greater than nothing: it falls through to the test.
        if (term <= most * weights[i]) continue;
        if (!std::isfinite(term)) return std::nan("");
        most = term / weights[i];
    }
    return most;
}

void StepSeries::gains(real u, std::vector<real>& out) const {
    const auto variables = static_cast<std::size_t>(system_.variables);
    const int wide = wide_;
    std::fill(tail_.begin(), tail_.end(), 0.0);
    if (wide < order()) {
        const FlushTinyDoubles flush;
        const auto x = static_cast<double>(u);
        for (int k = order(); k > wide; --k) {
            const double* const row = double_.row(k);
            for (std::size_t i = 0; i < variables; ++i) tail_[i] = tail_[i] * x + row[i];
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
