// SPDX-License-Identifier: MIT
// What ends a run before its end time: a steady state, or a period.
#pragma once

#include <string>
#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "zirk/classic_options.hpp"

namespace zirk {

/// Counts consecutive points at which no equation moved.
class SteadyState {
public:
    /// After every pass, also one that is rejected.
    void count(int steadyEquations, std::size_t equations) {
        run_ = static_cast<std::size_t>(steadyEquations) == equations ? run_ + 1 : 0;
    }
    unsigned run() const { return run_; }

private:
    unsigned run_ = 0;
};

/// Watches one variable at its turning points: a period is found when it has met every recorded value equally often.
class Period {
public:
    Period(const PeriodOptions& options, const SeriesLimits& limits, Differential& watched)
        : limits_(limits), capacity_(options.periodicBuffer), watched_(watched) {}

    /// One test per point.
    bool found();

private:
    const SeriesLimits& limits_;
    const int capacity_;
    Differential& watched_;
    std::vector<real> values_;
    std::vector<int> hits_;
};

}  // namespace zirk
