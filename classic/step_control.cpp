// SPDX-License-Identifier: MIT
// Halving, growth and the final cut.
#include "classic/step_control.hpp"

#include <cmath>
#include <cstdint>

#include "classic/first_not_finite.hpp"
#include "expr/formula_text.hpp"
#include "text/number_text.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

constexpr int tellingPasses = 64;

/// The nearest double to 1.2, and not 1.2 itself.
constexpr real growth = 1.2;

}  // namespace

StepControl::StepControl(Calculus& calculus, const ClassicOptions& options, TaylorStep& taylor,
                         const EquationTable& equations, Progress& progress, ClassicObserver& observer)
    : calculus_(calculus),
      options_(options),
      taylor_(taylor),
      progress_(progress),
      equations_(equations),
      observer_(observer),
      resting_(equations) {}

void StepControl::clipFirstStep() {
    if (!(options_.tMax >= calculus_.step)) calculus_.changeStep(options_.tMax);
}

bool StepControl::rejectPoint() {
    const int limit = orderLimit();
    bool isAccepted = calculus_.orderUsed <= limit || options_.fixedStep;
    RestingVariables::Count count;
    if (!isAccepted) {
        count = resting_.count(limit);
        isAccepted = count.order <= limit;
        if (isAccepted) calculus_.orderUsed = count.order;
    }
    if (isAccepted) {
        resting_.beginPoint();
        isRepeating_ = false;
        return false;
    }
    noteObstacle(count.culprit);
    const real half = calculus_.step / 2;
    if (sameValue(half, calculus_.step)) failStuck(progress_.previousTime, "", reason());
    checkMotion(progress_.previousTime);
    taylor_.repeat();
    calculus_.changeStep(half);
    observer_.stepHalved(calculus_.step, progress_.previousTime);
    progress_.recheckStiffness = true;
    calculus_.time = progress_.previousTime + calculus_.step;
    return true;
}

void StepControl::enlarge() {
    if (progress_.firstPoint || calculus_.orderUsed > calculus_.limits.maxOrder / 12) return;
    if (!options_.fixedStep) {
        calculus_.changeStep(calculus_.step * growth);
        observer_.stepEnlarged(calculus_.step, progress_.previousTime);
    }
    progress_.recheckStiffness = true;
}

void StepControl::advance(bool onlyEndTimeStops) {
    const bool stuck = calculus_.step == 0 || std::isnan(calculus_.step);
    if (stuck && onlyEndTimeStops && calculus_.time != options_.tMax) failStuck(calculus_.time, "", "");
    checkMotion(calculus_.time);
    progress_.previousTime = calculus_.time;
    calculus_.time = calculus_.time + calculus_.step;
    progress_.firstPoint = false;
    if (options_.tMax <= calculus_.time) {
        // In this order; the time is assigned and not added up: the run ends on equality.
        calculus_.changeStep((calculus_.step - calculus_.time) + options_.tMax);
        calculus_.time = options_.tMax;
        progress_.isLastStep = true;
    }
    taylor_.accept();
}

int StepControl::orderLimit() const {
    return saturatingSum(calculus_.limits.maxOrder, -static_cast<std::int64_t>(calculus_.limits.zeroTerms));
}

void StepControl::noteObstacle(std::size_t culprit) {
    if (!isRepeating_) obstacle_ = {};
    isRepeating_ = true;
    // After so many halvings terms begin to vanish, and who is to blame shows no more.
    if (++obstacle_.passes > tellingPasses) return;
    if (culprit != obstacle_.variable) obstacle_ = {culprit, 0, obstacle_.passes};
    if (culprit == RestingVariables::nobody || obstacle_.firstTerm != 0) return;
    if (equations_.list()[culprit]->onlyZeroTerms()) return;
    const int highest = taylor_.highestTerm(culprit);
    int k = 0;
    while (k < highest && taylor_.term(culprit, k) == 0) ++k;
    obstacle_.firstTerm = k;
}

std::string StepControl::reason() const {
    if (obstacle_.variable == RestingVariables::nobody) return "";
    const Differential& variable = *equations_.list()[obstacle_.variable];
    const std::string maker = firstNotFinite(variable);
    const Expr& origin = *variable.origin();
    const bool isFunction = origin.type() != ExprType::Nothing;
    if (isFunction && maker.find(formulaText(origin)) != std::string::npos) return ": " + maker;
    const std::string text = ": " + describe(variable) + " does not converge";
    if (!maker.empty()) return text + ": " + maker;
    const bool noneSeen = obstacle_.firstTerm == 0 && variable.startValue() == 0;
    const int zeros = noneSeen ? calculus_.limits.maxOrder : obstacle_.firstTerm;
    if (zeros < orderLimit() || orderLimit() < 1) return text;
    // With so late a beginning no step is small enough.
    return text + ": its first " + std::to_string(zeros) + " terms are zero; try -o " +
           std::to_string(std::int64_t{2} * zeros) + " or -f 1";
}

void StepControl::checkMotion(real acceptedTime) {
    const bool mayStand = calculus_.limits.steadyStop != 0 && acceptedTime == options_.tMax;
    if (mayStand) standstill_.forgive();
    if (!standstill_.lasts(acceptedTime, options_.tMax)) return;
    // Whoever was rejected is not to blame where the first step of the run was too small already.
    const bool isHopeless = standstill_.isFromTheStart() &&
                            options_.step * Standstill::mostPasses <= Standstill::rounding(acceptedTime, options_.tMax);
    const bool isKnown = obstacle_.variable != RestingVariables::nobody && !isHopeless;
    const std::string why =
        isKnown ? ": " + describe(*equations_.list()[obstacle_.variable]) + " needs smaller and smaller steps"
                : ": the step is too small for the time or the end time";
    failStuck(acceptedTime, " after " + std::to_string(Standstill::mostPasses) + " passes", why);
}

void StepControl::failStuck(real time, const std::string& passes, const std::string& reason) const {
    std::string text = "#(ERR) No progress at time ";
    appendGeneral(text, time);
    text += " with step ";
    appendGeneral(text, calculus_.step);
    throw RunError(text + passes + reason + '\n', time);
}

}  // namespace zirk
