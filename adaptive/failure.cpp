// SPDX-License-Identifier: MIT
// What a run says when the solution cannot go on.
#include <cmath>
#include <cstdio>

#include "adaptive/adaptive_run.hpp"
#include "formula/text.hpp"

namespace zirk {

namespace {

std::string textOf(real x) {
    char digits[48];
    std::snprintf(digits, sizeof digits, "%.15Lg", x);
    return digits;
}

bool hasDomain(const Value& value) {
    switch (value.law) {
        case Law::Root:
            return true;
        case Law::Power:
            return value.n != std::trunc(value.n);
        case Law::QuotientRate:
            return value.function != ExprType::ATan && value.function != ExprType::ASinh;
        default:
            return false;
    }
}

/// Numbers end soon after this one.
constexpr real nearTheEnd = 0x1p16000L;

}  // namespace

std::string AdaptiveRun::nameOf(ValueIndex value) const {
    if (value < machine_->system.variables) return problem_->variables[value].name;
    FormulaNames names;
    for (const ProblemContent::Variable& variable : problem_->variables) names.variables.push_back(variable.name);
    constexpr std::size_t mostBytes = 60;
    return formulaText(graph_, machine_->system.values[value].formula, names, mostBytes);
}

void AdaptiveRun::failAt(real time, ValueIndex value, real result) const {
    const std::string where = " at t = " + textOf(time);
    const std::string name = nameOf(value);
    if (value < machine_->system.variables) throw RunError(name + " grows beyond all numbers" + where, time_, name);
    if (std::isnan(result) && hasDomain(machine_->system.values[value])) {
        throw RunError(name + " leaves its domain" + where, time_, name);
    }
    const bool isQuotient = machine_->system.values[value].law != Law::ProductRate;
    throw RunError(name + (isQuotient ? " has no finite value" : " grows beyond all numbers") + where, time_, name);
}

ValueIndex AdaptiveRun::largestVariable() const {
    ValueIndex found = Value::none;
    real most = -1;
    for (ValueIndex i = 0; i < machine_->system.variables; ++i) {
        const real size = std::fabs(state_[i]);
        const real last = std::fabs(machine_->series.variableTerm(i, machine_->series.order()));
        const real share = last / (size > 0 ? size : 1);
        if (std::isnan(share) || share <= most) continue;
        most = share;
        found = i;
    }
    return found;
}

void AdaptiveRun::failShort(ValueIndex value) const {
    const std::string where = " at t = " + textOf(time_);
    for (ValueIndex i = 0; i < machine_->system.variables; ++i) {
        if (std::fabs(state_[i]) > nearTheEnd) {
            throw RunError(nameOf(i) + " grows beyond all numbers" + where, time_, nameOf(i));
        }
    }
    if (value == Value::none) value = largestVariable();
    if (value == Value::none) throw RunError("the solution cannot be followed any further" + where, time_);
    const std::string name = nameOf(value);
    // At the edge of the domain of a negative power is its pole.
    const Value& law = machine_->system.values[value];
    if (value >= machine_->system.variables && hasDomain(law) && !(law.law == Law::Power && law.n < 0)) {
        throw RunError(name + " comes to the edge of its domain" + where, time_, name);
    }
    throw RunError(name + " has a singularity" + where, time_, name);
}

void AdaptiveRun::failBeyondRange(ValueIndex value) const {
    const std::string name = nameOf(value);
    throw RunError(name + " cannot be followed at t = " + textOf(time_) + ": its terms leave the range of numbers",
                   time_, name);
}

void AdaptiveRun::failSwitching(ValueIndex value) const {
    const std::string name = nameOf(value);
    throw RunError(name + " jumps to and fro without end at t = " + textOf(time_), time_, name);
}

}  // namespace zirk
