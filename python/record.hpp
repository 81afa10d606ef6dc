// SPDX-License-Identifier: MIT
// What a run leaves behind, and the loop that records it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "python/ticker.hpp"
#include "zirk/solution.hpp"

namespace zirk::python {

/// Values at some times, a column for each formula.
struct Table {
    std::vector<real> times;
    /// Of the names of the problem, in their order.
    std::vector<std::vector<real>> columns;
    /// Of other formulas, as they were asked for. Entries never move.
    std::map<std::string, std::vector<real>> formulas;
};

/// Which times become rows, besides the one at which a zero ends the run. Without any, the ends of all steps do.
struct RowPlan {
    /// In the order of the run.
    std::optional<std::vector<real>> listed;
    /// The ends of so many intervals, equal ones when `spacing` is 0; the last one ends at the end.
    std::uint64_t intervals = 0;
    real spacing = 0;
};

struct RunPlan {
    IntegratorOptions integrator;
    real end = 0;
    RowPlan rows;
    /// The first `untilCount` ones end the run.
    std::vector<std::pair<Expression, Crossing>> watched;
    std::size_t untilCount = 0;
    /// Keeps the polynomials.
    bool isDense = true;
};

/// A solution as Python sees it: rows, zeros, polynomials.
struct Record {
    explicit Record(const Problem& p) : problem(p), end(p.start()) {}

    Problem problem;
    std::optional<Solution> dense;
    Table rows;
    Table events;
    /// For each event: which watched expression, and whether it rises.
    std::vector<std::uint32_t> watched;
    std::vector<bool> rising;
    /// The watched expression that ended the run, or -1.
    std::int64_t endedBy = -1;
    real end;
    IntegratorStatistics statistics;
    /// What the run took.
    double seconds = 0;

    bool contains(real time) const;
};

/// Solves and records; needs no lock. RunError when the run cannot go on: what is recorded until then is whole.
void solve(const RunPlan& plan, Record& record, Ticker& ticker);

}  // namespace zirk::python
