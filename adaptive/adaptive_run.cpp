// SPDX-License-Identifier: MIT
// The loop over steps: expand, choose, try, accept.
#include "adaptive/adaptive_run.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <utility>

#include "adaptive/removable.hpp"
#include "text/extended_bits.hpp"

namespace zirk {

namespace {

/// A sum and what rounding took from it (D. E. Knuth, The Art of Computer Programming, vol. 2, 4.2.2).
void addExactly(real a, real b, real& sum, real& rest) {
    sum = a + b;
    const real part = sum - a;
    rest = (a - (sum - part)) + (b - part);
}

/// Where nothing limits a step, its length stops growing here.
constexpr real longestEver = 0x1p1000L;

/// What is smaller is zero.
constexpr real vanishing = 0x1p-16100L;

/// Between steps that begin at the same time so many jumps are taken for one event.
constexpr int mostJumpsAtOnce = 1000;

}  // namespace

Machine::Machine(const FormulaGraph& graph, const std::vector<NodeIndex>& rates, const std::vector<NodeIndex>& watched,
                 const IntegratorOptions& options, Crew& crew)
    : system(arranged(lower(graph, rates, watched))),
      arrangement(system, orderFor(options.tolerance)),
      sections(system, arrangement, crew),
      series(system, arrangement, sections, crew, options.plain),
      size(system, options.tolerance, crew),
      jumps(system),
      firstTerms(system, arrangement, sections, jumps, crew) {}

AdaptiveRun::AdaptiveRun(const Problem& problem, const IntegratorOptions& options)
    : problem_(ProblemAccess::share(problem)),
      options_(options),
      crew_(options.threads),
      graph_(*problem_->graph),
      time_(problem_->start),
      beginTime_(problem_->start) {
    for (const ProblemContent::Variable& variable : problem_->variables) {
        rates_.push_back(variable.rate);
        state_.push_back(variable.start);
    }
    rest_.resize(state_.size());
    beginState_ = gains_ = nextState_ = nextRest_ = readState_ = state_;
}

std::size_t AdaptiveRun::watch(const Expression& expression, Crossing which) {
    FormulaImport import(ExpressionAccess::graphOf(expression), graph_);
    watchedFormulas_.push_back(import(ExpressionAccess::rootOf(expression)));
    watches_.emplace_back(which);
    isStale_ = true;
    return watches_.size() - 1;
}

void AdaptiveRun::prepare(real end) {
    if (isStale_) {
        auto machine = std::make_unique<Machine>(graph_, rates_, watchedFormulas_, options_, crew_);
        machineBefore_ = std::exchange(machine_, std::move(machine));
        isStale_ = false;
        isFirstCurrent_ = false;
        wide_ = 0;
    }
    const real direction = end > time_ ? 1 : -1;
    // A power of two, so that no term is rounded by it.
    // At rest nothing limits a step; what is left of the run does.
    const real rest = std::fabs(end - time_);
    const real near = naturalLength_ > 0 ? std::min(naturalLength_, rest) : rest / 64;
    scale_ = direction * nearestPowerOfTwo(near);
}

void AdaptiveRun::evaluateFirst(const std::vector<real>& state, real time, bool piecesStay, std::vector<real>& first) {
    first.resize(machine_->system.size());
    machine_->firstTerms.evaluate(state, time, piecesStay, first);
}

void AdaptiveRun::expand() {
    const int order = machine_->arrangement.order;
    machine_->series.expand(first_, scale_, wide_ > 0 ? wide_ : order);
}

real AdaptiveRun::chooseLength() {
    real length = 0;
    // Sizes of terms are compared at about the length of the step: a scale far above it is taken back.
    constexpr real muchTooLarge = 0.125L;
    for (int shrunk = 0;; ++shrunk) {
        expand();
        length = machine_->size.longest(machine_->series, isFresh_);
        // Near the end of the numbers, terms of a smaller scale may still be some.
        constexpr int mostTries = 3;
        if (std::isnan(length) && shrunk < mostTries) {
            scale_ /= 256;
            wide_ = 0;
            continue;
        }
        if (!(length < muchTooLarge) || isTooShort(length)) break;
        scale_ *= std::exp2(std::floor(std::log2(length)));
        wide_ = 0;
    }
    if (wide_ > 0 && !machine_->size.doublesSuffice(machine_->series, length)) {
        // What the step before has shown does not hold any more.
        wide_ = 0;
        expand();
        length = machine_->size.longest(machine_->series, isFresh_);
    }
    return length;
}

void AdaptiveRun::placeEnd(Trial& trial, real end) const {
    const real rest = (end - time_) - timeRest_;
    const real length = trial.length * scale_;
    trial.isLast = !(std::fabs(length) < std::fabs(rest));
    if (trial.isLast) {
        trial.length = rest / scale_;
        trial.time = end;
        trial.timeRest = 0;
        return;
    }
    addExactly(time_, length + timeRest_, trial.time, trial.timeRest);
    if (trial.endsAtJump) return;
    // A step may as well end at a number: formulas with the time in them are evaluated there, not next to it. Not
    // beyond what was asked for.
    if (trial.timeRest != 0 && (trial.timeRest < 0) == (scale_ > 0)) trial.time = std::nextafter(trial.time, time_);
    trial.length = ((trial.time - time_) - timeRest_) / scale_;
    trial.timeRest = 0;
}

bool AdaptiveRun::isTooShort(real length) const {
    constexpr real places = 0x1p-61L;
    return !(std::fabs(length * scale_) > std::fabs(time_) * places) || length * scale_ == 0;
}

void AdaptiveRun::beginAnew() {
    evaluateFirst(state_, time_, false, first_);
    for (ValueIndex i = 0; i < first_.size(); ++i) {
        if (!std::isfinite(first_[i])) failAt(time_, i, first_[i]);
    }
}

AdaptiveRun::Trial AdaptiveRun::firstTrial(real end) {
    for (int jumps = 0;; ++jumps) {
        if (!isFirstCurrent_) beginAnew();
        Trial trial;
        trial.length = chooseLength();
        if (std::isnan(trial.length)) failShort(machine_->size.limiting());
        if (naturalLength_ > 0) trial.length = std::min(trial.length, naturalLength_ * growth_ / std::fabs(scale_));
        if (options_.maxStep > 0) trial.length = std::min(trial.length, options_.maxStep / std::fabs(scale_));
        if (isTooShort(trial.length)) failShort(machine_->size.limiting());
        trial.natural = trial.length;
        placeEnd(trial, end);
        if (!machine_->jumps.any()) return trial;
        const real exit = machine_->jumps.firstExit(machine_->series, trial.length);
        if (exit < trial.length) {
            trial.length = exit;
            trial.endsAtJump = true;
            placeEnd(trial, end);
        }
        if (!isTooShort(trial.length) || !trial.endsAtJump) return trial;
        // It jumps here and now: the series begin anew on the other side.
        const ValueIndex changed = machine_->jumps.change();
        if (jumps == mostJumpsAtOnce) failSwitching(changed);
        ++statistics_.jumps;
        isFirstCurrent_ = false;
    }
}

bool AdaptiveRun::isZeroByZero(ValueIndex value) const {
    const Value& law = machine_->system.values[value];
    return law.law == Law::Quotient && nextFirst_[law.a] == 0 && nextFirst_[law.b] == 0;
}

ValueIndex AdaptiveRun::tryStep(const Trial& trial) {
    machine_->series.gains(trial.length, gains_);
    crew_.divide(state_.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            addExactly(state_[i], gains_[i] + rest_[i], nextState_[i], nextRest_[i]);
            // Terms of such a number have no digits left, and it would stay for ever.
            if (std::fabs(nextState_[i]) < vanishing) nextState_[i] = nextRest_[i] = 0;
        }
    });
    evaluateFirst(nextState_, trial.time, true, nextFirst_);
    std::atomic<ValueIndex> firstBad{machine_->system.size()};
    machine_->sections.eachRange(machine_->system, crew_, [&](ValueIndex begin, ValueIndex end) {
        for (ValueIndex i = begin; i < end; ++i) {
            if (!std::isfinite(nextFirst_[i])) return lower(firstBad, i);
        }
    });
    const ValueIndex bad = firstBad;
    if (bad == nextFirst_.size()) {
        return machine_->size.firstDisagreement(machine_->series, trial.length, nextFirst_);
    }
    // 0/0 just where the run ends: the step itself has no need of it.
    return trial.isLast && isZeroByZero(bad) ? Value::none : bad;
}

bool AdaptiveRun::step(real end) {
    if (end == time_) return false;
    try {
        return tryToStep(end);
    } catch (const RunError&) {
        restoreSeries();
        throw;
    }
}

void AdaptiveRun::restoreSeries() {
    if (machineBefore_ != nullptr) {
        machine_ = std::move(machineBefore_);
        isStale_ = true;
    } else if (statistics_.steps > 0) {
        machine_->series.expand(beginFirst_, beginScale_, beginWide_);
    }
}

bool AdaptiveRun::tryToStep(real end) {
    prepare(end);
    const Crew::Turn turn(crew_);
    Trial trial = firstTrial(end);
    for (;;) {
        const ValueIndex bad = tryStep(trial);
        const bool keepsDigits =
            bad != Value::none || machine_->size.keepsDigits(machine_->series, trial.length, nextState_, nextFirst_);
        if (bad == Value::none && keepsDigits) break;
        trial.losesDigits = !keepsDigits;
        ++statistics_.repeated;
        trial.length *= keepsDigits ? 0.5L : 0.75L;
        trial.natural = trial.length;
        trial.endsAtJump = false;
        if (isTooShort(trial.length)) {
            if (bad != Value::none && !std::isfinite(nextFirst_[bad])) failAt(trial.time, bad, nextFirst_[bad]);
            failShort(bad);
        }
        placeEnd(trial, end);
    }
    accept(trial);
    return true;
}

void AdaptiveRun::accept(const Trial& trial) {
    findCrossings(trial);
    beginTime_ = time_;
    beginState_.swap(state_);
    state_.swap(nextState_);
    rest_.swap(nextRest_);
    beginFirst_.swap(first_);
    first_.swap(nextFirst_);
    beginScale_ = scale_;
    beginWide_ = machine_->series.wide();
    machineBefore_.reset();
    time_ = trial.time;
    timeRest_ = trial.timeRest;
    // Where the run was to end, values may be 0/0.
    isFirstCurrent_ = !machine_->jumps.any() && !trial.isLast;
    machine_->jumps.moveOn();
    isFresh_ = trial.endsAtJump;
    if (trial.endsAtJump) {
        machine_->jumps.change();
        ++statistics_.jumps;
    }
    const real length = std::fabs(trial.length * scale_);
    ++statistics_.steps;
    statistics_.orders += static_cast<std::uint64_t>(machine_->arrangement.order);
    statistics_.shortestStep = statistics_.steps == 1 ? length : std::min(statistics_.shortestStep, length);
    statistics_.longestStep = std::max(statistics_.longestStep, length);
    if (wide_ == 0 || statistics_.steps % 16 == 0) {
        wide_ = machine_->size.wideTermsFor(machine_->series, trial.length);
    }
    // Where digits would be lost, the step feels its way.
    growth_ = trial.losesDigits ? real{1.1L} : std::min(mostGrowth, growth_ * 2);
    naturalLength_ = std::min(trial.natural * std::fabs(scale_), longestEver);
}

void AdaptiveRun::findCrossings(const Trial& trial) {
    crossings_.clear();
    if (watches_.empty()) return;
    std::vector<real> polynomial;
    for (std::size_t i = 0; i < watches_.size(); ++i) {
        machine_->series.polynomial(machine_->system.watched[i], polynomial);
        for (const PolynomialRoot& root : watches_[i].zeros(polynomial, trial.length)) {
            const real at = root.at == trial.length ? trial.time : time_ + (root.at * scale_ + timeRest_);
            crossings_.push_back({i, at, root.rising});
        }
    }
    const bool forwards = scale_ > 0;
    std::stable_sort(crossings_.begin(), crossings_.end(), [&](const ZeroCrossing& a, const ZeroCrossing& b) {
        return forwards ? a.time < b.time : a.time > b.time;
    });
}

void AdaptiveRun::readStraight(Evaluation& evaluation, real time, real* values) {
    if (time == time_ || machine_ == nullptr) return evaluation.values(time, state_.data(), values);
    const Crew::Turn turn(crew_);
    machine_->series.gains((time - beginTime_) / machine_->series.scale(), gains_);
    for (std::size_t i = 0; i < state_.size(); ++i) readState_[i] = beginState_[i] + gains_[i];
    evaluation.values(time, readState_.data(), values);
}

void AdaptiveRun::read(Evaluation& evaluation, real time, real* values) {
    readStraight(evaluation, time, values);
    if (time_ == beginTime_) return;
    std::vector<real> others(evaluation.size());
    for (std::size_t i = 0; i < evaluation.size(); ++i) {
        if (!std::isnan(values[i])) continue;
        const auto valueAt = [&](real t) {
            readStraight(evaluation, t, others.data());
            return others[i];
        };
        values[i] = limitOf(valueAt, time, beginTime_, time_);
    }
}

}  // namespace zirk
