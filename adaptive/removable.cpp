// SPDX-License-Identifier: MIT
// A polynomial through values on both sides, or on one at the end of an interval.
#include "adaptive/removable.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zirk {

namespace {

struct Sample {
    real at;
    real value;
};

/// The polynomial through the samples, at another place (A. C. Aitken, E. H. Neville).
real interpolate(std::vector<Sample> samples, real at) {
    for (std::size_t width = 1; width < samples.size(); ++width) {
        for (std::size_t i = 0; i + width < samples.size(); ++i) {
            const real left = samples[i].at;
            const real right = samples[i + width].at;
            samples[i].value = ((at - right) * samples[i].value + (left - at) * samples[i + 1].value) / (left - right);
        }
    }
    return samples.front().value;
}

}  // namespace

real limitOf(const std::function<real(real)>& function, real at, real begin, real end) {
    // So near that twelve values determine a function that is smooth over the interval, so far that rounding next to
    // 0/0 does not show.
    const real distance = (end - begin) / 256;
    constexpr int most = 12;
    std::vector<Sample> samples;
    const auto isInside = [&](real t) { return (t - begin) * (end - t) >= 0; };
    for (int i = 1; static_cast<int>(samples.size()) < most && i <= most; ++i) {
        for (const real t : {at - static_cast<real>(i) * distance, at + static_cast<real>(i) * distance}) {
            if (isInside(t) && static_cast<int>(samples.size()) < most) samples.push_back({t, function(t)});
        }
    }
    if (static_cast<int>(samples.size()) < most) return std::nan("");
    // A pole shows between the samples: there the polynomial and the function part.
    for (const real side : {-0.5L, 0.5L}) {
        const real t = at + side * distance;
        if (!isInside(t)) continue;
        const real actual = function(t);
        constexpr real agreement = 1e-9L;
        if (!(std::fabs(interpolate(samples, t) - actual) <= agreement * std::fabs(actual))) return std::nan("");
    }
    return interpolate(samples, at);
}

}  // namespace zirk
