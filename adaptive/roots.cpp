// SPDX-License-Identifier: MIT
// Intervals are halved until each holds one zero at most.
#include "adaptive/roots.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zirk {

namespace {

using Polynomial = std::vector<real>;

/// The same polynomial around another point: Horner's scheme, repeated.
Polynomial shifted(Polynomial c, real to) {
    const std::size_t n = c.size();
    for (std::size_t i = 0; i + 1 < n; ++i) {
        for (std::size_t k = n - 1; k > i; --k) c[k - 1] += to * c[k];
    }
    return c;
}

enum class Finding { NoZero, OneAtMost, Unknown };

/// What the expansion around the middle says of the interval of this radius.
Finding examine(const Polynomial& middle, real radius) {
    real others = 0;
    real slopes = 0;
    for (std::size_t k = middle.size(); k-- > 1;) {
        others = (others + std::fabs(middle[k])) * radius;
        if (k >= 2) slopes = (slopes + static_cast<real>(k) * std::fabs(middle[k])) * radius;
    }
    if (std::fabs(middle[0]) > others) return Finding::NoZero;
    if (middle.size() > 1 && std::fabs(middle[1]) > slopes) return Finding::OneAtMost;
    return Finding::Unknown;
}

/// The one zero between two points of different sign: Newton's steps as long as they stay between, halving otherwise.
real refine(const Polynomial& c, real low, real high, bool rising) {
    real u = (low + high) / 2;
    for (int i = 0; i < 200; ++i) {
        real value = 0;
        real slope = 0;
        for (std::size_t k = c.size(); k-- > 0;) {
            slope = slope * u + value;
            value = value * u + c[k];
        }
        if (value == 0) return u;
        ((value > 0) == rising ? high : low) = u;
        real next = u - value / slope;
        if (!(next > std::min(low, high) && next < std::max(low, high))) next = (low + high) / 2;
        if (next == u || next == low || next == high) return next;
        const bool settled = std::fabs(next - u) <= std::fabs(u) * 0x1p-64L;
        u = next;
        if (settled) return u;
    }
    return u;
}

class Search {
public:
    /// For a polynomial whose term 0 is not zero.
    Search(const Polynomial& c, std::vector<PolynomialRoot>& found)
        : c_(c), found_(found), isNegative_(c.front() < 0) {}

    /// Zeros with low < u <= high; intervals follow each other.
    void between(real low, real high, int depth) {
        const real middle = (low + high) / 2;
        const Finding finding = examine(shifted(c_, middle), (high - low) / 2);
        // So many halvings leave nothing that numbers could tell apart. A zero at the border of two intervals may by
        // rounding seem to lie in neither: the signs there decide in any case.
        constexpr int deepest = 62;
        if (finding != Finding::Unknown || depth == deepest) return takeChange(low, high);
        between(low, middle, depth + 1);
        between(middle, high, depth + 1);
    }

    /// A zero at the very end: of the sign after it nothing is known, the one before decides.
    void finish() {
        if (isAtZero_) found_.push_back({zero_, isNegative_});
    }

private:
    void takeChange(real low, real high) {
        const real atHigh = evaluate(c_, high);
        if (atHigh == 0) {
            if (!isAtZero_) zero_ = high;
            isAtZero_ = true;
            return;
        }
        if ((atHigh < 0) != isNegative_) {
            found_.push_back({isAtZero_ ? zero_ : refine(c_, low, high, isNegative_), isNegative_});
            isNegative_ = !isNegative_;
        }
        isAtZero_ = false;
    }

    const Polynomial& c_;
    std::vector<PolynomialRoot>& found_;
    /// Before the place that the search has come to.
    bool isNegative_;
    /// That place is a zero, or follows one.
    bool isAtZero_ = false;
    real zero_ = 0;
};

/// The same polynomial on 0 <= u <= 1, terms that are lost in rounding at its begin left out.
Polynomial onUnitInterval(Polynomial c, real end) {
    real size = 0;
    real power = 1;
    for (real& term : c) {
        term *= power;
        power *= end;
        size = std::max(size, std::fabs(term));
    }
    constexpr real rounding = 0x1p-60L;
    const auto counts = [&](real term) { return std::fabs(term) > size * rounding; };
    c.erase(c.begin(), std::find_if(c.begin(), c.end(), counts));
    return c;
}

bool isFinite(const Polynomial& c) {
    return std::all_of(c.begin(), c.end(), [](real term) { return std::isfinite(term); });
}

}  // namespace

real evaluate(const std::vector<real>& coefficients, real u) {
    real sum = 0;
    for (std::size_t k = coefficients.size(); k-- > 0;) sum = sum * u + coefficients[k];
    return sum;
}

int signAfterBegin(const std::vector<real>& coefficients, real end) {
    if (!isFinite(coefficients)) return 0;
    const Polynomial c = onUnitInterval(coefficients, end);
    return c.empty() ? 0 : c.front() > 0 ? 1 : -1;
}

std::vector<PolynomialRoot> roots(const std::vector<real>& coefficients, real end) {
    std::vector<PolynomialRoot> found;
    if (end == 0 || !isFinite(coefficients)) return found;
    // Zeros at 0 are divided out, which leaves the sign of the rest as it is.
    const Polynomial c = onUnitInterval(coefficients, end);
    if (c.empty()) return found;
    Search search(c, found);
    search.between(0, 1, 0);
    search.finish();
    for (PolynomialRoot& root : found) root.at *= end;
    return found;
}

}  // namespace zirk
