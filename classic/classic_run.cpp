// SPDX-License-Identifier: MIT
// Preparation and passes.
#include "classic/classic_run.hpp"

#include <utility>

#include "expand/expansion.hpp"

namespace zirk {

namespace {

/// Functions expanded, start values in place.
std::unique_ptr<CompiledSystem> prepared(std::unique_ptr<CompiledSystem> compiled, real step) {
    const Calculus::Scope scope(compiled->calculus);
    compiled->calculus.changeStep(step);
    Expansion(compiled->calculus, compiled->system).prepare();
    return compiled;
}

}  // namespace

using Pass = ClassicIntegrator::Pass;

ClassicRun::ClassicRun(std::unique_ptr<CompiledSystem> compiled, const ClassicOptions& options,
                       ClassicObserver* observer, Evaluation evaluation)
    : compiled_(prepared(std::move(compiled), options.step)),
      variables_(compiled_->system.equations.list()),
      options_(options),
      observer_(observer != nullptr ? *observer : silent_),
      taylor_(compiled_->calculus, compiled_->system.equations, evaluation, options_.threads),
      control_(compiled_->calculus, options_, taylor_, compiled_->system.equations, progress_, observer_),
      stiffness_(options_.stiffness, compiled_->system.equations, taylor_) {}

void ClassicRun::begin() {
    hasBegun_ = true;
    if (options_.period.periodicCount > 0) {
        Differential* watched = equations().find(options_.period.periodicName);
        if (watched != nullptr) {
            period_ = std::make_unique<Period>(options_.period, options_.limits, *watched);
        } else {
            observer_.periodUnknown(options_.period.periodicName);
        }
    }
    control_.clipFirstStep();
}

bool ClassicRun::isFinished() {
    // With the steady-state test on, nothing else ends the run: at the end time the step is 0 from then on.
    if (options_.limits.steadyStop != 0) return steady_.run() == options_.limits.steadyStop;
    if (period_ && period_->found()) return true;
    return calculus().time == options_.tMax;
}

void ClassicRun::goOn() {
    if (stiffness_.isDue(progress_.recheckStiffness)) {
        stiffness_.test(progress_.recheckStiffness);
        observer_.stiffnessTested(stiffness_.last());
    }
    control_.enlarge();
    control_.advance(options_.limits.steadyStop == 0 && !period_);
}

Pass ClassicRun::next() {
    if (hasEnded_) return Pass::End;
    if (failure_) std::rethrow_exception(failure_);
    try {
        return pass();
    } catch (...) {
        failure_ = std::current_exception();
        throw;
    }
}

Pass ClassicRun::pass() {
    const Calculus::Scope scope(compiled_->calculus);
    if (!hasBegun_) begin();
    if (hasPoint_) {
        if (isFinished()) {
            hasEnded_ = true;
            return Pass::End;
        }
        goOn();
    }
    taylor_.evaluate();
    steady_.count(taylor_.steadyCount(), equations().size());
    hasPoint_ = !control_.rejectPoint();
    ++(hasPoint_ ? statistics_.points : statistics_.rejected);
    return hasPoint_ ? Pass::Point : Pass::Rejected;
}

}  // namespace zirk
