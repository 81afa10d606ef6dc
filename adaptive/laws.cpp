// SPDX-License-Identifier: MIT
// Values at the begin of a step.
#include "adaptive/laws.hpp"

#include <cmath>

#include "expr/real.hpp"
#include "formula/functions.hpp"

namespace zirk {

namespace {

real squareStart(SquareStart start, real a, real b) {
    switch (start) {
        case SquareStart::OnePlus:
            return 1 + a * a;
        case SquareStart::OneMinus:
            return (1 - a) * (1 + a);
        case SquareStart::MinusOne:
            return (a - 1) * (a + 1);
        case SquareStart::OverCosh: {
            const real c = 1 / std::cosh(b);
            return c * c;
        }
        case SquareStart::MinusOverSinh:
            break;
    }
    const real c = 1 / std::sinh(b);
    return -(c * c);
}

}  // namespace

real firstTerm(const Value& value, real a, real b, real side) {
    switch (value.law) {
        case Law::Constant:
            return value.n;
        case Law::Add:
            return a + b;
        case Law::Subtract:
            return a - b;
        case Law::Negate:
            return -a;
        case Law::AddNumber:
            return value.function == ExprType::Exp ? std::expm1(b) : a + value.n;
        case Law::FromNumber:
            return value.function == ExprType::Exp ? -std::expm1(b) : value.n - a;
        case Law::Scale:
            return a * value.n;
        case Law::Ratio:
            return a / value.n;
        case Law::ScaleBy:
            return a * b;
        case Law::Product:
            return value.n * (a * b);
        case Law::RatioBy:
            return a / b;
        case Law::Quotient:
            return value.n * a / b;
        case Law::Reciprocal:
            return value.n / b;
        case Law::Root:
            return std::sqrt(a);
        case Law::Power:
            return exactPower(a, value.n);
        case Law::ProductRate:
        case Law::QuotientRate:
            // Near its jump the side decides, which rounding cannot change.
            if (value.side != Value::none && std::fabs(a) < 1) return side * (pi / 2) - std::atan(a);
            return exactValue(value.function, a);
        case Law::SquareLaw:
            return squareStart(value.start, a, b);
        default:
            return std::nan("");
    }
}

Operands sameOrderOperands(const Value& value) {
    switch (value.law) {
        case Law::ProductRate:
        case Law::QuotientRate:
            return {{value.a, Value::none, value.side}};
        default:
            return {{value.a, value.b, Value::none}};
    }
}

}  // namespace zirk
