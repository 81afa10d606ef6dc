// SPDX-License-Identifier: MIT
// One run: state, time and the loop over steps.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adaptive/evaluation.hpp"
#include "adaptive/first_terms.hpp"
#include "adaptive/jumps.hpp"
#include "adaptive/lowering.hpp"
#include "adaptive/step_series.hpp"
#include "adaptive/step_size.hpp"
#include "adaptive/zero_watch.hpp"
#include "lang/problem_content.hpp"
#include "zirk/integrator.hpp"

namespace zirk {

/// The values of a system with all that works on them; made anew when formulas to watch are added.
struct Machine {
    Machine(const FormulaGraph& graph, const std::vector<NodeIndex>& rates, const std::vector<NodeIndex>& watched,
            const IntegratorOptions& options, Crew& crew);

    ValueSystem system;
    Arrangement arrangement;
    Sections sections;
    StepSeries series;
    StepSize size;
    Jumps jumps;
    FirstTerms firstTerms;
};

class AdaptiveRun {
public:
    AdaptiveRun(const Problem& problem, const IntegratorOptions& options);

    std::size_t watch(const Expression& expression, Crossing which);
    bool step(real end);
    /// At a time of the last step.
    void read(Evaluation& evaluation, real time, real* values);

    real stepBegin() const { return beginTime_; }
    real time() const { return time_; }
    const std::vector<ZeroCrossing>& crossings() const { return crossings_; }
    const IntegratorStatistics& statistics() const { return statistics_; }

    /// Of the last step, which there must have been.
    const StepSeries& series() const { return machine_->series; }
    const std::vector<real>& beginState() const { return beginState_; }
    /// At time().
    const std::vector<real>& state() const { return state_; }
    const ProblemContent* problem() const { return problem_.get(); }

private:
    /// Longer against the step before than this, a step may not be.
    static constexpr real mostGrowth = 8;

    /// A step as it is tried.
    struct Trial {
        /// Length in units of the scale.
        real length = 0;
        /// What it would be without the end of the run or a jump.
        real natural = 0;
        /// Whether the sum of its terms would have lost digits at a greater length.
        bool losesDigits = false;
        /// Its end, as the sum of two numbers.
        real time = 0;
        real timeRest = 0;
        bool endsAtJump = false;
        bool isLast = false;
    };

    void prepare(real end);
    bool tryToStep(real end);
    /// The series is again that of the last step.
    void restoreSeries();
    void evaluateFirst(const std::vector<real>& state, real time, bool piecesStay, std::vector<real>& first);
    void expand();
    real chooseLength();
    /// Values at the begin of a step; fails where one is not finite.
    void beginAnew();
    Trial firstTrial(real end);
    bool isTooShort(real length) const;
    void placeEnd(Trial& trial, real end) const;
    /// Makes the state at the end of a trial; the value that does not agree there, or none.
    ValueIndex tryStep(const Trial& trial);
    bool isZeroByZero(ValueIndex value) const;
    void accept(const Trial& trial);
    void findCrossings(const Trial& trial);
    void readStraight(Evaluation& evaluation, real time, real* values);

    [[noreturn]] void failAt(real time, ValueIndex value, real result) const;
    [[noreturn]] void failShort(ValueIndex value) const;
    [[noreturn]] void failSwitching(ValueIndex value) const;
    ValueIndex largestVariable() const;
    std::string nameOf(ValueIndex value) const;

    std::shared_ptr<const ProblemContent> problem_;
    IntegratorOptions options_;
    Crew crew_;
    FormulaGraph graph_;
    std::vector<NodeIndex> rates_;
    std::vector<NodeIndex> watchedFormulas_;
    std::vector<ZeroWatch> watches_;
    std::unique_ptr<Machine> machine_;
    /// What a step with newly watched formulas may have to go back to.
    std::unique_ptr<Machine> machineBefore_;
    bool isStale_ = true;

    // The state is the sum of two numbers each, so that steps add up without loss.
    std::vector<real> state_;
    std::vector<real> rest_;
    real time_;
    real timeRest_ = 0;
    /// Terms 0 of all values at the present state.
    std::vector<real> first_;
    bool isFirstCurrent_ = false;

    // The last step.
    std::vector<real> beginState_;
    real beginTime_;
    std::vector<real> beginFirst_;
    real beginScale_ = 0;
    int beginWide_ = 0;
    /// What it would have been without the end of the run or a jump.
    real naturalLength_ = 0;
    real scale_ = 0;
    /// How much longer than the last step the next one may be.
    real growth_ = mostGrowth;
    int wide_ = 0;
    /// At a start, and behind a jump.
    bool isFresh_ = true;
    std::vector<ZeroCrossing> crossings_;

    // Of the trial at hand.
    std::vector<real> gains_;
    std::vector<real> nextState_;
    std::vector<real> nextRest_;
    std::vector<real> nextFirst_;
    std::vector<real> readState_;

    IntegratorStatistics statistics_;
};

}  // namespace zirk
