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
        case Law::Power:
            return true;
        case Law::QuotientRate:
            return value.function != ExprType::ATan && value.function != ExprType::ASinh;
        default:
            return false;
    }
}

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
    if (value < machine_->system.variables) throw RunError(nameOf(value) + " grows beyond all numbers" + where, time_);
    if (std::isnan(result) && hasDomain(machine_->system.values[value])) {
        throw RunError(nameOf(value) + " leaves its domain" + where, time_);
    }
    throw RunError(nameOf(value) + " has no finite value" + where, time_);
}

void AdaptiveRun::failShort(ValueIndex value) const {
    // The variable whose last term is the largest, where no function is to blame.
    if (value == Value::none) {
        real most = -1;
        for (ValueIndex i = 0; i < machine_->system.variables; ++i) {
            const real size = std::fabs(state_[i]);
            const real share = std::fabs(machine_->series.variableTerm(i, machine_->series.order())) / (size > 0 ? size : 1);
            if (!(share > most) && !std::isnan(share)) continue;
            most = share;
            value = i;
        }
    }
    const std::string name = value == Value::none ? "the solution" : nameOf(value);
    throw RunError(name + " cannot be followed beyond t = " + textOf(time_) + ": it has a singularity there", time_);
}

}  // namespace zirk
