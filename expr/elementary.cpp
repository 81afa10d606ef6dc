// SPDX-License-Identifier: MIT
// Elementary functions; the inverse hyperbolic ones are summed here, with the simplification switch taking part.
#include "expr/elementary.hpp"

#include <cmath>
#include <string>

#include "expr/calculus.hpp"
#include "text/from_text.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

real squareRoot(real x) { return std::sqrt(static_cast<double>(x)); }

real arsinh(real x) {
    const Calculus& calculus = Calculus::current();
    // x itself is compared and not its magnitude, on purpose: every negative argument gives zero.
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x) return 0;
    return std::log(x + squareRoot(1 + x * x));
}

real arcosh(real x) {
    const Calculus& calculus = Calculus::current();
    if (1 > x) throw Error("\n(COMP) acosh(x): x < 1\n", 1);
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x - 1) return 0;
    return std::log(x + squareRoot(x - 1) * squareRoot(x + 1));
}

/// x + x^3/3 + x^5/5 + ...
real artanhSeries(real x, const Calculus& calculus) {
    real result = x;
    real power = x;
    const real square = x * x;
    real divisor = 3;
    for (;;) {
        power = power * square;
        const real term = power / divisor;
        divisor = divisor + 2;
        const real before = result;
        result = result + term;
        if (calculus.limits.simplifySmall && calculus.limits.accuracy > std::fabs(term)) return result;
        // With the switch on this ends only what no accuracy can end: terms that are zero or not a number.
        const bool settled = calculus.limits.simplifySmall ? term == 0 : result == before;
        if (settled || std::isnan(result)) return result;
    }
}

real artanh(real x) {
    const Calculus& calculus = Calculus::current();
    if (std::fabs(x) > 1) throw Error("\n(COMP) atanh(x): |x| > 1\n", 1);
    if (std::fabs(x) == 1) {
        const real infinite = realFromText("1e999999");
        return 0 > x ? -infinite : infinite;
    }
    // One and not zero, and x itself and not its magnitude: both on purpose, unlike asinh.
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x) return 1;
    return artanhSeries(x, calculus);
}

}  // namespace

real evaluate(ExprType function, real x) {
    switch (function) {
        case ExprType::Sin:
            return std::sin(x);
        case ExprType::Cos:
            return std::cos(x);
        case ExprType::Tan:
            return std::tan(x);
        case ExprType::Cotan:
            return 1 / std::tan(x);
        case ExprType::ASin:
            return std::asin(x);
        case ExprType::ACos:
            return std::acos(x);
        case ExprType::ATan:
            return std::atan2(x, real{1});
        // Through the reciprocal: between -pi/2 and 0 for negative x.
        case ExprType::ACotan:
            return std::atan2(1 / x, real{1});
        case ExprType::Sinh:
            return std::sinh(x);
        case ExprType::Cosh:
            return std::cosh(x);
        case ExprType::Tanh:
            return std::tanh(x);
        case ExprType::Cotanh:
            return 1 / std::tanh(x);
        case ExprType::ASinh:
            return arsinh(x);
        case ExprType::ACosh:
            return arcosh(x);
        case ExprType::ATanh:
            return artanh(x);
        case ExprType::ACotanh:
            return artanh(1 / x);
        case ExprType::Sqrt:
            return squareRoot(x);
        case ExprType::Exp:
            return std::exp(x);
        case ExprType::Ln:
            return std::log(x);
        case ExprType::Trunc:
            return std::trunc(static_cast<double>(x));
        default:
            throw Error("#(ERR) Not a function kind: " + std::to_string(static_cast<int>(function)) + "\n", 1);
    }
}

const char* functionName(ExprType function) {
    static constexpr const char* names[] = {"sin",    "cos",     "tan",  "cotan", "asin",   "acos",  "atan",
                                            "acotan", "sinh",    "cosh", "tanh",  "cotanh", "asinh", "acosh",
                                            "atanh",  "acotanh", "sqrt", "exp",   "ln",     "trunc"};
    return names[static_cast<int>(function) - static_cast<int>(ExprType::Sin)];
}

}  // namespace zirk
