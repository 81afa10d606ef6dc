// SPDX-License-Identifier: MIT
// The order of work of one run.
#pragma once

#include "driver/clock.hpp"
#include "driver/output.hpp"
#include "driver/settings.hpp"

namespace zirk {

/// Command line in, exit status out: 0 normal end, 1 error, 2 unreadable input, 3 input that does not compile.
int runProgram(int argc, char** argv, Evaluation evaluation);

/// Integrates the prepared equations from 0 to the end time and writes everything that belongs to it.
class Run {
public:
    Run(Settings& settings, Output& output, Evaluation evaluation);

    /// The whole run: begin, passes until there is nothing left, end.
    void solve();

    /// What stands before the first row, and the first step.
    void begin();

    /// One pass over the equations: a point, or one that is rejected and has to be done again with another step. False
    /// when the run is over. For callers with a limit of their own.
    bool pass();

    /// The last row and the processor times.
    void end();

private:
    void openPeriod();
    bool computePoint();
    void printPoint();
    bool isFinished();

    Settings& settings_;
    Output& output_;
    RunClock clock_;
    Progress progress_;
    TaylorStep taylor_;
    StepControl control_;
    Stiffness stiffness_;
    ResultTable table_;
    SteadyState steady_;
    std::unique_ptr<Period> period_;
    real nextPrint_;
    unsigned unprinted_ = 0;
};

}  // namespace zirk
