// SPDX-License-Identifier: MIT
// One run, from its start to its end: which rows it writes.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "command/output.hpp"
#include "solve/request.hpp"
#include "solve/row_times.hpp"
#include "solve/row_writer.hpp"

namespace zirk::solve {

class Progress;

/// A request whose formulas have become numbers and expressions.
struct RunPlan {
    IntegratorOptions integrator;
    real end = 1;
    RowPlan rows;
    /// Zeros of the expressions in `watched` that follow the first `untilCount` ones are rows; those end the run.
    std::vector<std::pair<Expression, Crossing>> watched;
    std::size_t untilCount = 0;
    std::vector<Expression> columns;
};

/// How a run came to its end.
struct RunResult {
    /// By a zero that ends it.
    bool isMet = false;
    /// By a signal that wants the command to end.
    bool isInterrupted = false;
};

/// Goes from row to row.
class Run {
public:
    Run(const Problem& problem, const RunPlan& plan, RowWriter& writer, Output& output);

    /// The whole run. `progress` watches it. RunError when it cannot go on; rows so far are with the writer then.
    RunResult solve(Progress& progress);

    const Integrator& integrator() const { return integrator_; }

private:
    /// All rows that are due up to a time of the last step. False when a signal came.
    bool writeRowsTo(real time, Progress& progress);
    void writeRow(real time, Progress& progress);
    /// The rows of the last step. False when that is the end of the run.
    bool finishStep(Progress& progress, RunResult& result);

    const RunPlan& plan_;
    RowWriter& writer_;
    Output& output_;
    Integrator integrator_;
    Readout readout_;
    RowTimes times_;
    const bool isForward_;
    const bool rowsAreSeen_;
    std::vector<real> values_;
    std::optional<real> lastRow_;
};

}  // namespace zirk::solve
