// SPDX-License-Identifier: MIT
// One short place per function. d is u', V the variable that stands for f(u).
#include "expand/recipes.hpp"

#include <cmath>
#include <string>

#include "expr/calculus.hpp"
#include "expr/elementary.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

using Ref = Expr::Ref;
using Variables = Differential* const*;

/// A sine below this at the start moves a cosine in no digit that is printed by default.
constexpr real shownNowhere = 1e-14L;

Ref product(const Ref& a, const Ref& b) { return Ref(ExprType::Multiply, a, b); }

Ref quotient(const Ref& a, const Ref& b) { return Ref(ExprType::Divide, a, b); }

Ref negative(const Ref& a) { return Ref(ExprType::UnMinus, a); }

/// d * (1 + V^2), built as d + (V*V)*d.
Ref tangentRate(const Ref& d, const Ref& v) { return Ref(ExprType::Plus, d, product(product(v, v), d)); }

template <ExprType first, ExprType second>
void startPair(real u0, real* values) {
    values[0] = evaluate(first, u0);
    values[1] = evaluate(second, u0);
}

template <ExprType function>
void startOne(real u0, real* values) {
    values[0] = evaluate(function, u0);
}

void wireTrigonometric(const Ref&, const Ref& d, Variables v) {
    v[0]->setRightHandSide(product(v[1], d));
    v[1]->setRightHandSide(product(negative(v[0]), d));
}

void wireHyperbolic(const Ref&, const Ref& d, Variables v) {
    v[0]->setRightHandSide(product(v[1], d));
    v[1]->setRightHandSide(product(v[0], d));
}

/// Also for coth, on purpose: the form is the same, d - (V*V)*d.
void wireTanh(const Ref&, const Ref& d, Variables v) {
    v[0]->setRightHandSide(Ref(ExprType::Minus, d, product(product(v[0], v[0]), d)));
}

/// P = 2*u, W = 1 + u*u, V: W is a variable of its own so that V needs only a quotient.
template <ExprType function>
void startCircular(real u0, real* values) {
    values[0] = u0 + u0;
    values[1] = 1 + u0 * u0;
    values[2] = evaluate(function, u0);
}

/// P = -2*u, W = 1 - u*u, V.
template <ExprType function>
void startHyperbolic(real u0, real* values) {
    values[0] = -(u0 + u0);
    values[1] = 1 - u0 * u0;
    values[2] = evaluate(function, u0);
}

void wireTriple(const char* factor, const Ref& d, const Ref& numerator, Variables v) {
    v[0]->setRightHandSide(product(d, new Number(factor)));
    v[1]->setRightHandSide(product(v[0], d));
    v[2]->setRightHandSide(quotient(numerator, v[1]));
}

void wireAreaFunction(const Ref&, const Ref& d, Variables v) { wireTriple("-2", d, d, v); }

constexpr Recipe sine = {2, 0, startPair<ExprType::Sin, ExprType::Cos>, wireTrigonometric};

// Wired as the sine, on purpose: A(t) = cos(u(t) - 2*u(0)), the cosine of u where sin(u(0)) = 0.
constexpr Recipe cosine = {2, 0, startPair<ExprType::Cos, ExprType::Sin>, wireTrigonometric, [](real u0) {
                               return std::fabs(std::sin(u0)) < shownNowhere ? nullptr : "write sin(u + pi/2)";
                           }};

constexpr Recipe hyperbolicSine = {2, 0, startPair<ExprType::Sinh, ExprType::Cosh>, wireHyperbolic};

constexpr Recipe hyperbolicCosine = {2, 0, startPair<ExprType::Cosh, ExprType::Sinh>, wireHyperbolic};

constexpr Recipe tangent = {1, 0, startOne<ExprType::Tan>, [](const Ref&, const Ref& d, Variables v) {
                                v[0]->setRightHandSide(tangentRate(d, v[0]));
                            }};

constexpr Recipe cotangent = {1, 0, startOne<ExprType::Cotan>, [](const Ref&, const Ref& d, Variables v) {
                                  v[0]->setRightHandSide(negative(tangentRate(d, v[0])));
                              }};

constexpr Recipe hyperbolicTangent = {1, 0, startOne<ExprType::Tanh>, wireTanh};

constexpr Recipe hyperbolicCotangent = {1, 0, startOne<ExprType::Cotanh>, wireTanh};

constexpr Recipe arcSine = {2, 0,
                            [](real u0, real* values) {
                                values[0] = evaluate(ExprType::ASin, u0);
                                values[1] = std::sqrt(1 - u0 * u0);
                            },
                            [](const Ref& u, const Ref& d, Variables v) {
                                const Ref rate = quotient(d, v[1]);
                                v[0]->setRightHandSide(rate);
                                v[1]->setRightHandSide(product(negative(u), rate));
                            }};

constexpr Recipe arcTangent = {3, 2, startCircular<ExprType::ATan>,
                               [](const Ref&, const Ref& d, Variables v) { wireTriple("2", d, d, v); }};

constexpr Recipe arcCotangent = {3, 2, startCircular<ExprType::ACotan>,
                                 [](const Ref&, const Ref& d, Variables v) { wireTriple("2", d, negative(d), v); }};

/// The value at the start is 1 for arguments below the accuracy, on purpose; without simplification it is right.
const char* lawOfAreaTangent(real x) {
    const Calculus& calculus = Calculus::current();
    return calculus.limits.simplifySmall && calculus.limits.accuracy > x ? "use -i 0" : nullptr;
}

constexpr Recipe areaTangent = {3, 2, startHyperbolic<ExprType::ATanh>, wireAreaFunction, lawOfAreaTangent};

constexpr Recipe areaCotangent = {3, 2, startHyperbolic<ExprType::ACotanh>, wireAreaFunction,
                                  [](real u0) { return lawOfAreaTangent(1 / u0); }};

constexpr Recipe squareRoot = {1, 0, [](real u0, real* values) { values[0] = std::sqrt(u0); },
                               [](const Ref&, const Ref& d, Variables v) {
                                   v[0]->setRightHandSide(product(quotient(d, v[0]), new Number("0.5")));
                               }};

constexpr Recipe exponential = {1, 0, startOne<ExprType::Exp>, [](const Ref&, const Ref& d, Variables v) {
                                    v[0]->setRightHandSide(product(d, v[0]));
                                }};

// Divided by the new variable and not by u, on purpose.
constexpr Recipe logarithm = {1, 0, startOne<ExprType::Ln>,
                              [](const Ref&, const Ref& d, Variables v) { v[0]->setRightHandSide(quotient(d, v[0])); },
                              [](real) { return "write L for it, and \"L' = u'/u & ln(...);\""; }};

[[noreturn]] void failWithout(const char* name) {
    throw Error(std::string("#(ERR) ") + name + "::ConvertExpr() is not implemented\n", 1);
}

}  // namespace

const Recipe& recipeOf(ExprType function) {
    switch (function) {
        case ExprType::Sin:
            return sine;
        case ExprType::Cos:
            return cosine;
        case ExprType::Tan:
            return tangent;
        case ExprType::Cotan:
            return cotangent;
        case ExprType::ASin:
            return arcSine;
        case ExprType::ACos:
            failWithout("ACos");
        case ExprType::ATan:
            return arcTangent;
        case ExprType::ACotan:
            return arcCotangent;
        case ExprType::Sinh:
            return hyperbolicSine;
        case ExprType::Cosh:
            return hyperbolicCosine;
        case ExprType::Tanh:
            return hyperbolicTangent;
        case ExprType::Cotanh:
            return hyperbolicCotangent;
        case ExprType::ASinh:
            failWithout("ASinh");
        case ExprType::ACosh:
            failWithout("ACosh");
        case ExprType::ATanh:
            return areaTangent;
        case ExprType::ACotanh:
            return areaCotangent;
        case ExprType::Sqrt:
            return squareRoot;
        case ExprType::Exp:
            return exponential;
        case ExprType::Ln:
            return logarithm;
        default:
            throw Error("#(ERR) Not a function kind: " + std::to_string(static_cast<int>(function)) + "\n", 1);
    }
}

}  // namespace zirk
