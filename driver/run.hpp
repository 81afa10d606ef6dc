// SPDX-License-Identifier: MIT
// One run of the equations, with everything that the command writes about it.
#pragma once

#include "command/output.hpp"
#include "driver/clock.hpp"
#include "driver/settings.hpp"
#include "report/result_table.hpp"
#include "text/line.hpp"

namespace zirk {

/// Integrates from 0 to the end time and writes the script, the table, the dumps and the messages of the loop.
class Run : private ClassicObserver {
public:
    /// Prepares the equations. Error where that fails.
    Run(const Settings& settings, Output& output, const Model& model, Evaluation evaluation);
    ~Run() override;
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// All equations as they are solved.
    void dumpTree();

    /// What will not be what it seems, a line for each kind of thing; `badOption`: what is wrong with a value,
    /// or empty.
    void writeHints(const std::string& badOption);

    /// The whole run: begin, passes until there is nothing left, end.
    void solve();

    /// What stands before the first row.
    void begin();

    /// One pass over the equations: a point, or one that is rejected and has to be done again with another step. False
    /// when the run is over. For callers with a limit of their own.
    bool pass();

    /// The last row and the processor times.
    void end();

    ClassicIntegrator& integrator() { return integrator_; }

private:
    void stepHalved(real step, real time) override;
    void stepEnlarged(real step, real time) override;
    void stiffnessTested(const StiffnessTest& test) override;
    void periodUnknown(const std::string& name) override;

    bool isDue() const;
    void printPoint();

    const Settings& settings_;
    Output& output_;
    ClassicIntegrator integrator_;
    RunClock clock_;
    ResultTable table_;
    Line log_;
    real nextPrint_ = 0;
    unsigned unprinted_ = 0;
};

}  // namespace zirk
