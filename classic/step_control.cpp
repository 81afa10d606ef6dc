// SPDX-License-Identifier: MIT
// Halving, growth and the final cut.
#include "classic/step_control.hpp"

#include <cmath>
#include <sstream>

#include "expr/failure.hpp"
#include "expr/formula_text.hpp"
#include "classic/first_not_finite.hpp"

namespace zirk {

namespace {

constexpr int tellingPasses = 64;

}  // namespace

StepControl::StepControl(Calculus& calculus, StepSettings& settings, TaylorStep& taylor, const EquationTable& equations,
                         Progress& progress, std::ostream& log)
    : calculus_(calculus),
      settings_(settings),
      taylor_(taylor),
      progress_(progress),
      line_(log),
      resting_(equations),
      decrease_(realFromText("2.0")),
      increase_(realFromText("1.2")) {}

void StepControl::clipFirstStep() {
    if (!(settings_.tMax >= calculus_.step)) calculus_.changeStep(settings_.tMax);
}

bool StepControl::rejectPoint() {
    const int limit = saturatingSum(calculus_.maxOrder, -static_cast<std::int64_t>(calculus_.zeroTerms));
    bool isAccepted = calculus_.orderUsed <= limit || settings_.fixedStep;
    const Differential* culprit = nullptr;
    if (!isAccepted) {
        const int order = resting_.order(limit, &culprit);
        isAccepted = order <= limit;
        if (isAccepted) calculus_.orderUsed = order;
    }
    if (isAccepted) {
        resting_.beginPoint();
        isRepeating_ = false;
        return false;
    }
    noteObstacle(culprit);
    const real half = calculus_.step / decrease_;
    if (sameValue(half, calculus_.step)) failStuck(progress_.previousTime, "", reason());
    checkMotion(progress_.previousTime);
    taylor_.repeat();
    calculus_.changeStep(half);
    line_ << "#(COMP) Max ORDER reached! Changing step to " << calculus_.step << "\tTime= " << progress_.previousTime
          << endOfLine;
    progress_.recheckStiffness = true;
    calculus_.time = progress_.previousTime + calculus_.step;
    return true;
}

void StepControl::enlarge() {
    if (progress_.firstPoint || calculus_.orderUsed > calculus_.maxOrder / 12) return;
    if (!settings_.fixedStep) {
        calculus_.changeStep(calculus_.step * increase_);
        line_ << "#(COMP) Step increased to " << calculus_.step << "\tTime= " << progress_.previousTime << endOfLine;
    }
    progress_.recheckStiffness = true;
}

void StepControl::advance(bool onlyEndTimeStops) {
    const bool stuck = calculus_.step == 0 || std::isnan(calculus_.step);
    if (stuck && onlyEndTimeStops && calculus_.time != settings_.tMax) failStuck(calculus_.time, "", "");
    checkMotion(calculus_.time);
    progress_.previousTime = calculus_.time;
    calculus_.time = calculus_.time + calculus_.step;
    progress_.firstPoint = false;
    if (settings_.tMax <= calculus_.time) {
        // In this order; the time is assigned and not added up: the run ends on equality.
        calculus_.changeStep((calculus_.step - calculus_.time) + settings_.tMax);
        calculus_.time = settings_.tMax;
        settings_.printEvery = realFromText("0");
    }
    taylor_.accept();
}

void StepControl::noteObstacle(const Differential* culprit) {
    if (!isRepeating_) obstacle_ = {};
    isRepeating_ = true;
    // After so many halvings terms begin to vanish, and who is to blame shows no more.
    if (++obstacle_.passes > tellingPasses) return;
    if (culprit != obstacle_.variable) obstacle_ = {culprit, 0, obstacle_.passes};
    if (culprit == nullptr || culprit->onlyZeroTerms() || obstacle_.firstTerm != 0) return;
    int k = 0;
    while (k < culprit->highestTerm() && culprit->term(k) == 0) ++k;
    obstacle_.firstTerm = k;
}

std::string StepControl::reason() const {
    if (obstacle_.variable == nullptr) return "";
    const std::string text = ": " + describe(*obstacle_.variable) + " does not converge";
    const std::string maker = firstNotFinite(*obstacle_.variable);
    if (!maker.empty())
        return (maker.find(describe(*obstacle_.variable)) == std::string::npos ? text : "") + ": " + maker;
    const int limit = saturatingSum(calculus_.maxOrder, -static_cast<std::int64_t>(calculus_.zeroTerms));
    const bool noneSeen = obstacle_.firstTerm == 0 && obstacle_.variable->startValue() == 0;
    const int zeros = noneSeen ? calculus_.maxOrder : obstacle_.firstTerm;
    if (zeros < limit || limit < 1) return text;
    // With so late a beginning no step is small enough.
    return text + ": its first " + std::to_string(zeros) + " terms are zero; try -o " +
           std::to_string(std::int64_t{2} * zeros) + " or -f 1";
}

void StepControl::checkMotion(real acceptedTime) {
    const bool mayStand = calculus_.steadyStop != 0 && acceptedTime == settings_.tMax;
    if (mayStand) standstill_.forgive();
    if (!standstill_.lasts(acceptedTime, settings_.tMax)) return;
    const std::string why = obstacle_.variable != nullptr
                                ? ": " + describe(*obstacle_.variable) + " needs smaller and smaller steps"
                                : ": the step is too small for the time";
    failStuck(acceptedTime, " after " + std::to_string(Standstill::mostPasses) + " passes", why);
}

void StepControl::failStuck(real time, const std::string& passes, const std::string& reason) const {
    std::ostringstream text;
    text << "#(ERR) No progress at time " << time << " with step " << calculus_.step << passes << reason << '\n';
    throw Failure(text.str(), 1);
}

}  // namespace zirk
