// SPDX-License-Identifier: MIT
// The loop over points: what an integrator by the classic rules is made of.
#pragma once

#include <exception>
#include <memory>

#include "classic/step_control.hpp"
#include "classic/stiffness.hpp"
#include "classic/stop_tests.hpp"
#include "lang/model_content.hpp"

namespace zirk {

/// Owns everything that changes during one run.
///
/// One pass after the other: compute the point, and reject it or hand it out; then, before the next one, look whether
/// something ends the run, test for stiffness, enlarge the step and go on. Whoever shows points does so in between.
class ClassicRun {
public:
    /// As ClassicIntegrator; `observer` may be null.
    ClassicRun(std::unique_ptr<CompiledSystem> compiled, const ClassicOptions& options, ClassicObserver* observer,
               Evaluation evaluation);

    ClassicIntegrator::Pass next();

    const EquationTable& equations() const { return compiled_->system.equations; }
    /// The same in the order of their names; fixed once the run is made.
    const std::vector<Differential*>& variables() const { return variables_; }
    const EquationSystem& system() const { return compiled_->system; }
    const Calculus& calculus() const { return compiled_->calculus; }
    const Progress& progress() const { return progress_; }
    const StiffnessTest& stiffness() const { return stiffness_.last(); }
    const ClassicStatistics& statistics() const { return statistics_; }
    /// Terms of the last pass.
    TaylorStep& taylor() { return taylor_; }

private:
    ClassicIntegrator::Pass pass();
    void begin();
    bool isFinished();
    void goOn();

    const std::unique_ptr<CompiledSystem> compiled_;
    const std::vector<Differential*> variables_;
    const ClassicOptions options_;
    ClassicObserver silent_;
    ClassicObserver& observer_;
    Progress progress_;
    TaylorStep taylor_;
    StepControl control_;
    Stiffness stiffness_;
    SteadyState steady_;
    std::unique_ptr<Period> period_;
    ClassicStatistics statistics_;
    bool hasBegun_ = false;
    bool hasPoint_ = false;
    bool hasEnded_ = false;
    /// What ended the run early.
    std::exception_ptr failure_;
};

}  // namespace zirk
