// SPDX-License-Identifier: MIT
// Halving, growth and the final cut.
#include "solver/step_control.hpp"

#include <cmath>
#include <sstream>

#include "expr/failure.hpp"

namespace {

[[noreturn]] void failStuck(real time, real step, const Differential* variable) {
    std::ostringstream text;
    text << "#(ERR) No progress at time " << time << " with step " << step;
    if (variable != nullptr) text << ": variable \"" << variable->name() << "\" does not converge";
    text << '\n';
    throw Failure(text.str(), 1);
}

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
    if (calculus_.orderUsed <= limit || settings_.fixedStep) return false;
    const Differential* culprit = nullptr;
    const int order = resting_.order(limit, &culprit);
    if (order <= limit) {
        calculus_.orderUsed = order;
        return false;
    }
    const real half = calculus_.step / decrease_;
    if (sameValue(half, calculus_.step)) failStuck(progress_.previousTime, calculus_.step, culprit);
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
    if (stuck && onlyEndTimeStops && calculus_.time != settings_.tMax) {
        failStuck(calculus_.time, calculus_.step, nullptr);
    }
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
