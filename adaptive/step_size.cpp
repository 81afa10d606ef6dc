// SPDX-License-Identifier: MIT
// Norms of terms, relative to the size of what they belong to.
#include "adaptive/step_size.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace zirk {

namespace {

/// What is cut off adds up over steps in proportion to their number, rounding only to its root: it has to be so much
/// smaller than the tolerance for the error to stay a random walk.
constexpr real cutOff = 0x1p-10L;

/// A variable counts relative to its own size, down to this share of the largest one. Below it is relative to that:
/// a cell of a rod far ahead of the front has no size to be relative to.
constexpr real smallestShare = 1e-100L;

/// A function has to be followed so far that its effect can be seen in the variables before it is there; for what they
/// show, their own terms answer.
constexpr real functionTolerance = 1e-6L;

/// A polynomial that has missed a feature of its function is off by more.
constexpr real agreement = 1e-4L;

/// Terms below so many tolerances may be doubles: 2^-10 of the tolerance is what that rounds. At eight times as many,
/// the energy of an orbit was seen to drift in proportion to time.
constexpr real doubleShare = 0x1p43L;

/// Below this the numbers of the processor lose digits: a function there counts as zero.
constexpr real tiny = 0x1p-16100L;

constexpr real infinite = std::numeric_limits<real>::infinity();

/// The k-th root; 53 bits are plenty for the length of a step.
real rootOf(real x, int k) {
    constexpr real least = 1e-300L;
    constexpr real most = 1e300L;
    if (x == 0 || !std::isfinite(x)) return x;
    if (x > least && x < most) return std::exp2(std::log2(static_cast<double>(x)) / k);
    int exponent = 0;
    const auto mantissa = static_cast<double>(std::frexp(x, &exponent));
    const double logarithm = (std::log2(mantissa) + exponent) / k;
    const double whole = std::floor(logarithm);
    return std::ldexp(static_cast<real>(std::exp2(logarithm - whole)), static_cast<int>(whole));
}

template <class T>
T power(T x, int k) {
    T result = 1;
    for (; k > 0; k /= 2, x *= x) {
        if (k % 2 == 1) result *= x;
    }
    return result;
}

/// Goes through the orders below `last`. Where states are special, as a pendulum that is let go where it is level, a
/// series may have terms at every fourth order only, or every eighth: the last two are zero or rounding, and the next
/// ones have to fall on the step as terms of a series do that has them all, by `factor` at most.
template <class Consider>
void considerLower(int last, Consider consider) {
    constexpr int most = 6;
    real factor = 8;
    for (int k = last - 1; k >= last - most && k > last / 2; --k) {
        factor *= 8;
        consider(k, factor);
    }
}

real sizeOf(const StepSeries& series, ValueIndex value) {
    real size = 0;
    for (int k = 0; k <= std::min(2, series.order() - 1); ++k) {
        size = std::max(size, std::fabs(series.valueTerm(value, k)));
    }
    return size;
}

}  // namespace

int orderFor(real tolerance) {
    constexpr real least = 4;
    // Two where the work of a step grows with the square of the order. Here it grows with less: sums take two products
    // at a time, and much of a step does not depend on the order. Higher still would cost less on orbits, but lets sums
    // of entire functions lose digits.
    constexpr real work = 1.6L;
    return static_cast<int>(std::max(least, std::ceil(1 - std::log(tolerance * cutOff) / work)));
}

StepSize::StepSize(const ValueSystem& system, real tolerance, Crew& crew)
    : system_(system), crew_(crew), tolerance_(tolerance), isWatched_(system.size(), 0) {
    weights_.exact.resize(system.variables);
    weights_.rounded.resize(system.variables);
    for (const ValueIndex value : system.watched) isWatched_[value] = 1;
    // Where a jump is located has to be as right as the solution.
    for (const Value& value : system.values) {
        if (isJumping(value)) isWatched_[value.a] = 1;
    }
    for (ValueIndex i = system.variables; i < system.size(); ++i) {
        const Value& value = system.values[i];
        if (!value.isConstant && (isFunction(value) || isWatched_[i] != 0)) checked_.push_back(i);
        if (!value.isConstant && isWatched_[i] != 0) watched_.push_back(i);
    }
    ofBlocks_.resize(std::max(Crew::blocks(system.variables), Crew::blocks(checked_.size())));
}

void StepSize::weigh(const StepSeries& series) {
    std::vector<real>& weights = weights_.exact;
    // The largest term from one index to another is the weight of a variable; returns the largest of all.
    const auto weighBy = [&](int from, int to) {
        crew_.inBlocks(system_.variables, [&](std::size_t block, std::size_t begin, std::size_t end) {
            std::fill(&weights[begin], &weights[end - 1] + 1, real{0});
            for (int k = from; k <= to; ++k) series.raise(weights, k, begin, end);
            ofBlocks_[block].step = *std::max_element(&weights[begin], &weights[end - 1] + 1);
        });
        real largest = 0;
        for (std::size_t i = 0; i < Crew::blocks(weights.size()); ++i) largest = std::max(largest, ofBlocks_[i].step);
        return largest;
    };
    real largest = weighBy(0, 2);
    if (largest == 0) largest = weighBy(3, series.order());
    floor_ = largest > 0 ? std::max(largest * smallestShare, tiny) : 1;
    crew_.divide(weights.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            weights[i] = std::max(weights[i], floor_);
            weights_.rounded[i] = static_cast<double>(weights[i]);
        }
    });
    weights_.haveDoubles = floor_ > std::numeric_limits<double>::min();
}

real StepSize::relativeTerm(const StepSeries& series, int k) const { return series.largest(k, weights_); }

/// The same with what is watched: its zeros are located on its own polynomial.
real StepSize::visibleTerm(const StepSeries& series, int k) const {
    real most = relativeTerm(series, k);
    for (const ValueIndex value : watched_) {
        const real size = sizeOf(series, value);
        if (k < series.order() && size > 0) most = std::max(most, std::fabs(series.valueTerm(value, k)) / size);
    }
    return most;
}

/// Where terms stop being numbers: what an operation or function has made at the lowest order.
ValueIndex StepSize::firstNotFinite(const StepSeries& series) const {
    for (int k = 1; k < series.order(); ++k) {
        for (const ValueIndex value : checked_) {
            if (!std::isfinite(series.valueTerm(value, k))) return value;
        }
    }
    return Value::none;
}

void StepSize::consider(ValueIndex value, real term, int k, real most, Limit& limit) {
    // Most of what is asked does not limit the step: a power tells that sooner than a root. One that a double cannot
    // hold is infinite and does not tell.
    if (term * static_cast<real>(power(static_cast<double>(limit.step), k)) <= most) return;
    limit = {std::min(limit.step, rootOf(most / term, k)), value};
}

real StepSize::longest(const StepSeries& series, bool isFresh) {
    weigh(series);
    Limit least{infinite, Value::none};
    const int p = series.order();
    for (const int k : {p, p - 1}) {
        const real ratio = relativeTerm(series, k);
        if (std::isnan(ratio)) {
            limiting_ = firstNotFinite(series);
            return ratio;
        }
        if (ratio > 0) consider(Value::none, ratio, k, tolerance_ * cutOff, least);
    }
    if (isFresh) {
        considerLower(p - 1, [&](int k, real factor) {
            consider(Value::none, relativeTerm(series, k), k, tolerance_ * cutOff * factor, least);
        });
    }
    // Blocks do not know of each other: what limits the step is rounded in the same way whoever asks.
    std::atomic<bool> allFinite{true};
    crew_.inBlocks(checked_.size(), [&](std::size_t block, std::size_t begin, std::size_t end) {
        Limit limit = least;
        for (std::size_t i = begin; i < end; ++i) {
            if (!limitBy(series, checked_[i], isFresh, limit)) return allFinite.store(false, std::memory_order_relaxed);
        }
        ofBlocks_[block] = limit;
    });
    if (!allFinite) {
        limiting_ = firstNotFinite(series);
        return std::nan("");
    }
    for (std::size_t block = 0; block < Crew::blocks(checked_.size()); ++block) {
        if (ofBlocks_[block].step < least.step) least = ofBlocks_[block];
    }
    limiting_ = least.value;
    return least.step;
}

/// False when a term that has to be looked at is not finite.
bool StepSize::limitBy(const StepSeries& series, ValueIndex value, bool isFresh, Limit& limit) const {
    const int p = series.order();
    const real size = sizeOf(series, value);
    const real tolerance = isWatched_[value] != 0 ? tolerance_ * cutOff : functionTolerance;
    for (const int k : {p - 1, p - 2}) {
        const real term = std::fabs(series.valueTerm(value, k));
        if (!std::isfinite(term)) return false;
        if (size > tiny && term > 0) consider(value, term, k, tolerance * size, limit);
    }
    if (isFresh && size > tiny && isWatched_[value] != 0) {
        considerLower(p - 2, [&](int k, real factor) {
            consider(value, std::fabs(series.valueTerm(value, k)), k, tolerance * size * factor, limit);
        });
    }
    limitFlat(series, value, limit);
    limitRoot(series, value, limit);
    return true;
}

void StepSize::limitFlat(const StepSeries& series, ValueIndex value, Limit& limit) const {
    const Law law = system_.values[value].law;
    if (law != Law::ProductRate && law != Law::QuotientRate) return;
    // Where a function does not move though its operand does (an exponential that is 0, a saturated tanh), its terms do
    // not say when it will: the operand may come half as near to zero, where functions live.
    const ValueIndex operand = system_.values[value].a;
    const real at = std::fabs(series.valueTerm(operand, 0));
    const real first = std::fabs(series.valueTerm(value, 0));
    const real slope = std::fabs(series.valueTerm(value, 1));
    const bool isSaturated = at > 8 && slope <= first * std::fabs(series.valueTerm(operand, 1)) * 0x1p-10L;
    if (first > tiny && slope > tiny && !isSaturated) return;
    const real most = std::max(at / 2, real{1});
    for (int k = 1; k < series.order(); ++k) {
        const real term = std::fabs(series.valueTerm(operand, k));
        if (term > 0) consider(value, term, k, most / 2, limit);
    }
}

void StepSize::limitRoot(const StepSeries& series, ValueIndex value, Limit& limit) const {
    const Value& root = system_.values[value];
    if (root.law != Law::Root && (root.law != Law::Power || root.n == std::trunc(root.n))) return;
    // The terms of sqrt(u^2) are those of u, and do not show where the root turns: what is under a root may come half
    // as near to zero. The first terms tell.
    const real most = std::fabs(series.valueTerm(root.a, 0)) / 2;
    for (int k = 1; k < std::min(5, series.order()); ++k) {
        const real term = std::fabs(series.valueTerm(root.a, k));
        if (term > 0 && most > 0) consider(value, term, k, most, limit);
    }
}

bool StepSize::doublesSuffice(const StepSeries& series, real step) const {
    if (series.wide() >= series.order()) return true;
    const int k = series.wide() + 1;
    return visibleTerm(series, k) * power(step, k) <= 16 * tolerance_ * doubleShare;
}

int StepSize::wideTermsFor(const StepSeries& series, real step) const {
    const real most = tolerance_ * doubleShare;
    int k = series.order();
    for (; k > 1; --k) {
        if (!(visibleTerm(series, k) * power(step, k) <= most)) break;
    }
    return k;
}

bool StepSize::keepsDigits(const StepSeries& series, real step, const std::vector<real>& end,
                           const std::vector<real>& values) const {
    const real length = std::fabs(step * series.scale());
    // Three bits of 64.
    constexpr real most = 3;
    // Where solutions have no singularities, steps are long and terms rise before they fall: x^k/k! is greatest at k =
    // x.
    const real factors[] = {power(step, 2), power(step, 4), power(step, 6)};
    const auto loses = [&](std::size_t index) {
        const auto i = static_cast<ValueIndex>(index);
        for (const int k : {2, 4, 6}) {
            if (k > series.order()) break;
            const real term = std::fabs(series.variableTerm(i, k)) * factors[k / 2 - 1];
            if (term <= most * std::fabs(end[i]) || term <= most * length * std::fabs(values[system_.rates[i]]))
                continue;
            if (term > floor_) return true;
        }
        return false;
    };
    return crew_.firstOf(system_.variables, loses) == system_.variables;
}

ValueIndex StepSize::firstDisagreement(const StepSeries& series, real step, const std::vector<real>& values) const {
    const std::size_t first = crew_.firstOf(
        checked_.size(), [&](std::size_t i) { return !agrees(series, checked_[i], step, values[checked_[i]]); });
    return first < checked_.size() ? checked_[first] : Value::none;
}

bool StepSize::agrees(const StepSeries& series, ValueIndex value, real step, real actual) const {
    if (!std::isfinite(actual)) return false;
    const real difference = std::fabs(actual - series.valueAt(value, step));
    const real size = std::max(std::fabs(actual), sizeOf(series, value));
    if (difference <= std::max(size * agreement, tiny)) return true;
    // Rounding of the operand shows in a function that is steep: |u| du(f) is what the operand's last place does.
    const Value& law = system_.values[value];
    if (law.law != Law::ProductRate && law.law != Law::QuotientRate) return false;
    const real rate = series.valueTerm(law.a, 1);
    if (rate == 0) return false;
    constexpr real places = 0x1p-56L;
    const real noise = places * std::fabs(series.valueTerm(law.a, 0) * (series.valueTerm(value, 1) / rate));
    return difference <= noise;
}

}  // namespace zirk
