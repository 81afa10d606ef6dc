// SPDX-License-Identifier: MIT
// The derivative of each value by its operands, times what these are off.
#include "adaptive/rounding.hpp"

#include <cmath>

namespace zirk {

namespace {

/// What rounding of the operands does to a value; u and v are their roundings.
real passedOn(const Value& value, const std::vector<real>& values, real u, real v, real c) {
    const auto size = [&](ValueIndex i) { return i == Value::none ? 0 : std::fabs(values[i]); };
    const real a = size(value.a);
    const real b = size(value.b);
    const real n = std::fabs(value.n);
    switch (value.law) {
        case Law::Add:
        case Law::Subtract:
            return u + v;
        case Law::Negate:
        case Law::AddNumber:
        case Law::FromNumber:
            return u;
        case Law::Scale:
            return u * n;
        case Law::Ratio:
            return u / n;
        case Law::ScaleBy:
            return u * b + v * a;
        case Law::Product:
            return n * (u * b + v * a);
        case Law::RatioBy:
            return (u + v * c) / b;
        case Law::Quotient:
            return (n * u + v * c) / b;
        case Law::Reciprocal:
            return v * c / b;
        case Law::Root:
            return u / (2 * c);
        case Law::Power:
            return n * u * c / a;
        case Law::ProductRate:
            return n * u * b;
        case Law::QuotientRate:
            return n * u / b;
        case Law::SquareLaw:
            return 2 * u * a;
        default:
            return 0;
    }
}

}  // namespace

std::vector<real> roundingOf(const ValueSystem& system, const std::vector<real>& values) {
    std::vector<real> rounding(system.size(), 0);
    for (ValueIndex i = 0; i < system.size(); ++i) {
        const real size = std::fabs(values[i]);
        rounding[i] = size;
        if (i < system.variables) continue;
        const Value& value = system.values[i];
        const auto of = [&](ValueIndex operand) { return operand == Value::none ? 0 : rounding[operand]; };
        const real passed = passedOn(value, values, of(value.a), of(value.b), size);
        // Where a derivative is infinite, a root at its zero, this has no say.
        if (std::isfinite(passed)) rounding[i] += passed;
    }
    return rounding;
}

}  // namespace zirk
