// SPDX-License-Identifier: MIT
// At which times rows are written. They are found one after the other, however many there are.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "zirk/real.hpp"

namespace zirk::solve {

/// Which rows are asked for, besides those at zeros. Even and listed times exclude each other.
struct RowPlan {
    /// The ends of so many intervals; 0 for none. The last one ends at the end, and is shorter where it has to be.
    std::uint64_t intervals = 0;
    /// Length of the intervals; 0: they are equal.
    real spacing = 0;
    /// In the order in which a run meets them. (A run writes no time twice.)
    std::vector<real> listed;
    /// So many rows in every step, at equal distances, the last at its end; one at the start besides.
    unsigned perStep = 0;
    /// Steps that have them.
    std::uint64_t stepsWithRows = UINT64_MAX;
};

/// How many intervals of this length lead from start to end; what is missing or left over by rounding does not count.
/// `spacing` > 0.
real intervalsOf(real start, real end, real spacing);

/// The times of a plan in the order of a run from start to end, which may run backwards.
class RowTimes {
public:
    RowTimes(const RowPlan& plan, real start, real end);

    /// A step is done: its rows are due.
    void enterStep(real begin, real end);

    /// The next time, within the last step or not; nothing when no more is known.
    std::optional<real> next() const;
    /// Leaves the next time behind.
    void advance();

private:
    std::optional<real> planned() const;
    std::optional<real> inStep() const;
    /// True when a run meets a before b.
    bool isBefore(real a, real b) const { return isForward_ ? a < b : a > b; }

    const RowPlan plan_;
    const real start_;
    const real end_;
    const bool isForward_;
    std::uint64_t plannedIndex_ = 0;
    std::uint64_t steps_ = 0;
    real stepBegin_;
    real stepEnd_;
    unsigned stepIndex_;
};

}  // namespace zirk::solve
