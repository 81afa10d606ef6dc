// SPDX-License-Identifier: MIT
// Step size: halved when a point needs too many terms, enlarged when few suffice, cut at the end time.
#pragma once

#include <string>

#include "classic/resting.hpp"
#include "classic/standstill.hpp"
#include "classic/taylor_step.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Where the integration stands.
struct Progress {
    real previousTime = 0;
    bool firstPoint = true;
    bool recheckStiffness = true;
    /// The end time has cut the step.
    bool isLastStep = false;
};

/// The rules that change h, and the time with it.
class StepControl {
public:
    StepControl(Calculus& calculus, const ClassicOptions& options, TaylorStep& taylor, const EquationTable& equations,
                Progress& progress, ClassicObserver& observer);

    /// A step beyond the end time is cut before the first point.
    void clipFirstStep();

    /// True when the point needed more terms than the order limit, which is `maxOrder` without the trailing negligible
    /// ones, and has to be done again with half the step.
    /// Error when halving no longer changes the step, and when the time has stood still for too many passes.
    bool rejectPoint();

    /// Enlarges the step by a fifth after a point that needed few terms.
    void enlarge();

    /// On to the next point; the last one lies exactly at the end time. Error when the time cannot move and nothing
    /// but the end time could end the run, and when it has stood still for too many passes.
    void advance(bool onlyEndTimeStops);

private:
    /// Why a point was rejected.
    struct Obstacle {
        std::size_t variable = RestingVariables::nobody;
        /// Index of its first term other than zero, from the first pass that had one; 0 when there was
        /// none, or when it is term 0.
        int firstTerm = 0;
        /// Rejected passes of this point.
        int passes = 0;
    };

    int orderLimit() const;
    void noteObstacle(std::size_t culprit);
    std::string reason() const;
    void checkMotion(real acceptedTime);
    [[noreturn]] void failStuck(real time, const std::string& passes, const std::string& reason) const;

    Calculus& calculus_;
    const ClassicOptions& options_;
    TaylorStep& taylor_;
    Progress& progress_;
    const EquationTable& equations_;
    ClassicObserver& observer_;
    RestingVariables resting_;
    Standstill standstill_;
    /// Of the last rejected point, which goes on as long as `isRepeating_`.
    Obstacle obstacle_;
    bool isRepeating_ = false;
};

}  // namespace zirk
