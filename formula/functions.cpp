// SPDX-License-Identifier: MIT
// Values from the C library where it has them, and by its best neighbours elsewhere.
#include "formula/functions.hpp"

#include <cmath>

namespace zirk {

real exactValue(ExprType function, real x) {
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
            return std::atan(x);
        case ExprType::ACotan:
            return x == 0 ? std::atan2(real{1}, real{0}) : std::atan(1 / x);
        case ExprType::Sinh:
            return std::sinh(x);
        case ExprType::Cosh:
            return std::cosh(x);
        case ExprType::Tanh:
            return std::tanh(x);
        case ExprType::Cotanh:
            return 1 / std::tanh(x);
        case ExprType::ASinh:
            return std::asinh(x);
        case ExprType::ACosh:
            return std::acosh(x);
        case ExprType::ATanh:
            return std::atanh(x);
        case ExprType::ACotanh:
            return std::atanh(1 / x);
        case ExprType::Sqrt:
            return std::sqrt(x);
        case ExprType::Exp:
            return std::exp(x);
        case ExprType::Ln:
            return std::log(x);
        case ExprType::Trunc:
            return std::trunc(x);
        default:
            return std::nan("");
    }
}

real exactPower(real a, real b) {
    constexpr real most = 1048576;
    // Where a few products round less than a logarithm costs.
    constexpr real mostHalves = 32;
    const bool isWhole = b == std::trunc(b);
    const bool isHalf = 2 * b == std::trunc(2 * b) && std::fabs(b) <= mostHalves;
    if (!(isWhole || isHalf) || std::fabs(b) > most) return std::pow(a, b);
    auto n = static_cast<unsigned>(std::fabs(b));
    real power = isWhole ? 1 : std::sqrt(a);
    for (real square = a; n != 0; n >>= 1U, square *= square) {
        if ((n & 1U) != 0) power *= square;
    }
    return b < 0 ? 1 / power : power;
}

real applyOperation(Operation operation, real a, real b) {
    switch (operation) {
        case Operation::Add:
            return a + b;
        case Operation::Subtract:
            return a - b;
        case Operation::Multiply:
            return a * b;
        case Operation::Divide:
            return a / b;
        case Operation::Negate:
            return -a;
        default:
            return exactPower(a, b);
    }
}

}  // namespace zirk
