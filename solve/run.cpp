// SPDX-License-Identifier: MIT
// The loop over steps, and over what is due within each.
#include "solve/run.hpp"

#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "solve/number.hpp"
#include "solve/progress.hpp"
#include "solve/signals.hpp"

namespace zirk::solve {

Run::Run(const Problem& problem, const RunPlan& plan, RowWriter& writer, Output& output)
    : plan_(plan),
      writer_(writer),
      output_(output),
      integrator_(problem, plan.integrator),
      readout_(problem, plan.columns),
      times_(plan.rows, problem.start(), plan.end),
      isForward_(plan.end >= problem.start()),
      rowsAreSeen_(isatty(STDOUT_FILENO) != 0),
      values_(plan.columns.size()) {
    for (const auto& [expression, which] : plan.watched) integrator_.watch(expression, which);
}

void Run::writeRow(real time, Progress& progress) {
    // A zero may fall on a row.
    if (lastRow_ && *lastRow_ == time) return;
    integrator_.read(readout_, time, values_.data());
    const auto bad = std::find_if_not(values_.begin(), values_.end(), [](real x) { return std::isfinite(x); });
    if (bad != values_.end()) {
        const std::string& name = plan_.columns[static_cast<std::size_t>(bad - values_.begin())].text();
        std::string when;
        appendNumber(when, time, 15);
        throw RunError(name + (std::isnan(*bad) ? " has no value" : " has no finite value") + " at t = " + when, time);
    }
    if (rowsAreSeen_) progress.hide();
    writer_.write(values_.data());
    lastRow_ = time;
}

bool Run::writeRowsTo(real time, Progress& progress) {
    for (std::optional<real> next; (next = times_.next()); times_.advance()) {
        if (isForward_ ? *next > time : *next < time) break;
        writeRow(*next, progress);
        output_.tick();
        progress.tick();
        if (endingSignal() != 0) return false;
    }
    return true;
}

bool Run::finishStep(Progress& progress, RunResult& result) {
    times_.enterStep(integrator_.stepBegin(), integrator_.time());
    for (const ZeroCrossing& zero : integrator_.crossings()) {
        if (!writeRowsTo(zero.time, progress)) return false;
        writeRow(zero.time, progress);
        if (zero.watched >= plan_.untilCount) continue;
        result.isMet = true;
        return false;
    }
    return writeRowsTo(integrator_.time(), progress);
}

RunResult Run::solve(Progress& progress) {
    RunResult result;
    writer_.begin();
    bool goesOn = writeRowsTo(integrator_.time(), progress);
    while (goesOn && integrator_.step(plan_.end)) {
        goesOn = finishStep(progress, result);
        output_.tick();
        progress.tick();
        if (endingSignal() != 0) break;
    }
    result.isInterrupted = endingSignal() != 0;
    return result;
}

}  // namespace zirk::solve
