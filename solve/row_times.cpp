// SPDX-License-Identifier: MIT
// Two sequences, of planned times and of times within steps, merged.
#include "solve/row_times.hpp"

#include <cmath>

namespace zirk::solve {

real intervalsOf(real start, real end, real spacing) {
    // A billionth of an interval is rounding, and nobody wants a row for it.
    constexpr real slack = 1e-9L;
    return std::ceil(std::fabs(end - start) / spacing - slack);
}

RowTimes::RowTimes(const RowPlan& plan, real start, real end)
    : plan_(plan),
      start_(start),
      end_(end),
      isForward_(end >= start),
      stepBegin_(start),
      stepEnd_(start),
      // The start is like the end of a step.
      stepIndex_(plan.perStep) {
    // All of them are the same time.
    if (start == end && plan.intervals > 0) plannedIndex_ = plan.intervals;
}

void RowTimes::enterStep(real begin, real end) {
    stepBegin_ = begin;
    stepEnd_ = end;
    stepIndex_ = 1;
    ++steps_;
}

std::optional<real> RowTimes::planned() const {
    const std::uint64_t i = plannedIndex_;
    if (plan_.intervals > 0) {
        if (i > plan_.intervals) return std::nullopt;
        if (i == plan_.intervals) return end_;
        const real count = static_cast<real>(i);
        if (plan_.spacing > 0) return isForward_ ? start_ + plan_.spacing * count : start_ - plan_.spacing * count;
        return start_ + (end_ - start_) * count / static_cast<real>(plan_.intervals);
    }
    if (i >= plan_.listed.size()) return std::nullopt;
    return plan_.listed[i];
}

std::optional<real> RowTimes::inStep() const {
    if (plan_.perStep == 0 || stepIndex_ > plan_.perStep || steps_ > plan_.stepsWithRows) return std::nullopt;
    if (stepIndex_ == plan_.perStep) return stepEnd_;
    return stepBegin_ + (stepEnd_ - stepBegin_) * static_cast<real>(stepIndex_) / static_cast<real>(plan_.perStep);
}

std::optional<real> RowTimes::next() const {
    const std::optional<real> first = planned();
    const std::optional<real> second = inStep();
    if (!first || !second) return first ? first : second;
    return isBefore(*second, *first) ? second : first;
}

void RowTimes::advance() {
    const std::optional<real> time = next();
    if (!time) return;
    if (planned() == time) ++plannedIndex_;
    if (inStep() == time) ++stepIndex_;
}

}  // namespace zirk::solve
