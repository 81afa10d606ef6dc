// SPDX-License-Identifier: MIT
// The rows of the elementary functions, and before them what the rows are made from: values, start values, rates.
#include "expr/elementary.hpp"

#include <cmath>
#include <limits>
#include <string>

#include "expr/calculus.hpp"
#include "expr/function.hpp"
#include "expr/leaves.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

using Ref = Expr::Ref;
using Starts = Recipe::Starts;
using Variables = Recipe::Variables;

// Values -----------------------------------------------------------------------------------------------------------

real sine(real x) { return std::sin(x); }
real cosine(real x) { return std::cos(x); }
real tangent(real x) { return std::tan(x); }
real cotangent(real x) { return 1 / std::tan(x); }
real arcSine(real x) { return std::asin(x); }
real arcCosine(real x) { return std::acos(x); }
real arcTangent(real x) { return std::atan2(x, real{1}); }
/// Through the reciprocal: between -pi/2 and 0 for negative x.
real arcCotangent(real x) { return std::atan2(1 / x, real{1}); }
real hyperbolicSine(real x) { return std::sinh(x); }
real hyperbolicCosine(real x) { return std::cosh(x); }
real hyperbolicTangent(real x) { return std::tanh(x); }
real hyperbolicCotangent(real x) { return 1 / std::tanh(x); }
real squareRoot(real x) { return std::sqrt(static_cast<double>(x)); }
real exponential(real x) { return std::exp(x); }
real logarithm(real x) { return std::log(x); }
real truncation(real x) { return std::trunc(static_cast<double>(x)); }

// The inverse hyperbolic functions are summed here, with the simplification switch taking part.

real areaSine(real x) {
    const Calculus& calculus = Calculus::current();
    // x itself is compared and not its magnitude, on purpose: every negative argument gives zero.
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x) return 0;
    return std::log(x + squareRoot(1 + x * x));
}

real areaCosine(real x) {
    const Calculus& calculus = Calculus::current();
    if (1 > x) throw Error("\n(COMP) acosh(x): x < 1\n", 1);
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x - 1) return 0;
    return std::log(x + squareRoot(x - 1) * squareRoot(x + 1));
}

/// x + x^3/3 + x^5/5 + ...
real areaTangentSeries(real x, const Calculus& calculus) {
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

real areaTangent(real x) {
    const Calculus& calculus = Calculus::current();
    if (std::fabs(x) > 1) throw Error("\n(COMP) atanh(x): |x| > 1\n", 1);
    if (std::fabs(x) == 1) {
        constexpr real infinite = std::numeric_limits<real>::infinity();
        return 0 > x ? -infinite : infinite;
    }
    // One and not zero, and x itself and not its magnitude: both on purpose, unlike asinh.
    if (calculus.limits.simplifySmall && calculus.limits.accuracy > x) return 1;
    return areaTangentSeries(x, calculus);
}

real areaCotangent(real x) { return areaTangent(1 / x); }

// Start values of the variables beside f(u) ------------------------------------------------------------------------

real twice(real u) { return u + u; }
real minusTwice(real u) { return -(u + u); }
real onePlusSquare(real u) { return 1 + u * u; }
real oneMinusSquare(real u) { return 1 - u * u; }
real rootOfOneMinusSquare(real u) { return std::sqrt(1 - u * u); }
/// With all digits, unlike the value.
real extendedRoot(real u) { return std::sqrt(u); }

// Rates: d is u', v the variables ----------------------------------------------------------------------------------

Ref product(const Ref& a, const Ref& b) { return Ref(ExprType::Multiply, a, b); }
Ref quotient(const Ref& a, const Ref& b) { return Ref(ExprType::Divide, a, b); }
Ref negative(const Ref& a) { return Ref(ExprType::UnMinus, a); }

/// V = sin u, W = cos u: V' = W*d, W' = -V*d.
Variables trigonometric(const Ref&, const Ref& d, const Variables& v) {
    return {product(v[1], d), product(negative(v[0]), d)};
}

/// V = sinh u, W = cosh u, or the other way round: V' = W*d, W' = V*d.
Variables hyperbolic(const Ref&, const Ref& d, const Variables& v) { return {product(v[1], d), product(v[0], d)}; }

/// V = tan u: V' = d + (V*V)*d.
Variables ofTangent(const Ref&, const Ref& d, const Variables& v) {
    return {Ref(ExprType::Plus, d, product(product(v[0], v[0]), d))};
}

/// V = cotan u: V' = -(d + (V*V)*d).
Variables ofCotangent(const Ref& u, const Ref& d, const Variables& v) { return {negative(ofTangent(u, d, v)[0])}; }

/// V = tanh u or cotanh u: V' = d - (V*V)*d.
Variables ofHyperbolicTangent(const Ref&, const Ref& d, const Variables& v) {
    return {Ref(ExprType::Minus, d, product(product(v[0], v[0]), d))};
}

/// V = asin u, W = sqrt(1 - u*u): V' = d/W, W' = -u*(d/W), with one quotient for both.
Variables ofArcSine(const Ref& u, const Ref& d, const Variables& v) {
    const Ref rate = quotient(d, v[1]);
    return {rate, product(negative(u), rate)};
}

/// P = c*u, W = 1 + c/2*u*u, V: P' = d*c, W' = P*d, V' = numerator/W. W is a variable of its own so that V needs only a
/// quotient.
Variables overSquare(int c, const Ref& d, const Ref& numerator, const Variables& v) {
    return {product(d, new Number(c)), product(v[0], d), quotient(numerator, v[1])};
}
Variables ofArcTangent(const Ref&, const Ref& d, const Variables& v) { return overSquare(2, d, d, v); }
Variables ofArcCotangent(const Ref&, const Ref& d, const Variables& v) { return overSquare(2, d, negative(d), v); }
Variables ofAreaTangent(const Ref&, const Ref& d, const Variables& v) { return overSquare(-2, d, d, v); }

/// V = sqrt u: V' = (d/V)*0.5.
Variables ofSquareRoot(const Ref&, const Ref& d, const Variables& v) {
    return {product(quotient(d, v[0]), new Number(0.5))};
}

/// V = exp u: V' = d*V.
Variables ofExponential(const Ref&, const Ref& d, const Variables& v) { return {product(d, v[0])}; }

/// V' = d/V: divided by the new variable and not by u, on purpose.
Variables ofLogarithm(const Ref&, const Ref& d, const Variables& v) { return {quotient(d, v[0])}; }

// Where the variables follow another law ---------------------------------------------------------------------------

/// A sine below this at the start moves a cosine in no digit that is printed by default.
constexpr real shownNowhere = 1e-14L;

const char* lawOfCosine(real u0) { return std::fabs(std::sin(u0)) < shownNowhere ? nullptr : "write sin(u + pi/2)"; }

/// The value at the start is 1 for arguments below the accuracy, on purpose; without simplification it is right.
const char* lawOfAreaTangent(real u0) {
    const Calculus& calculus = Calculus::current();
    return calculus.limits.simplifySmall && calculus.limits.accuracy > u0 ? "use -i 0" : nullptr;
}

const char* lawOfAreaCotangent(real u0) { return lawOfAreaTangent(1 / u0); }

const char* lawOfLogarithm(real) { return "write L for it, and \"L' = u'/u & ln(...);\""; }

template <class Node>
constexpr ElementaryFunction row(const char* name, std::array<std::string_view, 4> written, real (*value)(real x),
                                 const Recipe& classic) {
    return {Node::kind, [](const Ref& operand) -> Expr* { return new Node(operand); }, name, written, value, classic};
}

// Rows -------------------------------------------------------------------------------------------------------------

/// As many variables as there are start values, which are functions of u0.
template <real (*... start)(real)>
constexpr Recipe recipe(int result, decltype(Recipe::rates) rates, decltype(Recipe::otherLaw) otherLaw = nullptr) {
    return {sizeof...(start), result, [](real u0) { return Starts{start(u0)...}; }, rates, otherLaw};
}

constexpr Recipe notImplemented(const char* name) { return {0, 0, nullptr, nullptr, nullptr, name}; }

}  // namespace

constexpr std::array<ElementaryFunction, 20> elementaryFunctions = {{
    row<Sin>("sin", {"sin"}, sine, recipe<sine, cosine>(0, trigonometric)),
    // With the rates of sin, on purpose: V(t) = cos(u(t) - 2*u(0)), the cosine of u where sin(u(0)) = 0.
    row<Cos>("cos", {"cos"}, cosine, recipe<cosine, sine>(0, trigonometric, lawOfCosine)),
    row<Tan>("tan", {"tan", "tg"}, tangent, recipe<tangent>(0, ofTangent)),
    row<Cotan>("cotan", {"cotan", "cotg"}, cotangent, recipe<cotangent>(0, ofCotangent)),
    row<ASin>("asin", {"asin", "arcsin"}, arcSine, recipe<arcSine, rootOfOneMinusSquare>(0, ofArcSine)),
    row<ACos>("acos", {"acos", "arccos"}, arcCosine, notImplemented("ACos")),
    row<ATan>("atan", {"atan", "atg", "arctan", "arctg"}, arcTangent,
              recipe<twice, onePlusSquare, arcTangent>(2, ofArcTangent)),
    row<ACotan>("acotan", {"acotan", "acotg", "arccotan", "arccotg"}, arcCotangent,
                recipe<twice, onePlusSquare, arcCotangent>(2, ofArcCotangent)),
    row<Sinh>("sinh", {"sinh"}, hyperbolicSine, recipe<hyperbolicSine, hyperbolicCosine>(0, hyperbolic)),
    row<Cosh>("cosh", {"cosh"}, hyperbolicCosine, recipe<hyperbolicCosine, hyperbolicSine>(0, hyperbolic)),
    row<Tanh>("tanh", {"tanh", "tgh"}, hyperbolicTangent, recipe<hyperbolicTangent>(0, ofHyperbolicTangent)),
    row<Cotanh>("cotanh", {"cotanh", "cotgh"}, hyperbolicCotangent,
                recipe<hyperbolicCotangent>(0, ofHyperbolicTangent)),
    row<ASinh>("asinh", {"asinh", "argsinh"}, areaSine, notImplemented("ASinh")),
    row<ACosh>("acosh", {"acosh", "argcosh"}, areaCosine, notImplemented("ACosh")),
    row<ATanh>("atanh", {"atanh", "atgh", "argtanh", "argtgh"}, areaTangent,
               recipe<minusTwice, oneMinusSquare, areaTangent>(2, ofAreaTangent, lawOfAreaTangent)),
    // There is no short form, not even the printed one.
    row<ACotanh>("acotanh", {"argcotanh", "argcotgh"}, areaCotangent,
                 recipe<minusTwice, oneMinusSquare, areaCotangent>(2, ofAreaTangent, lawOfAreaCotangent)),
    row<Sqrt>("sqrt", {"sqrt"}, squareRoot, recipe<extendedRoot>(0, ofSquareRoot)),
    row<Exp>("exp", {"exp"}, exponential, recipe<exponential>(0, ofExponential)),
    row<Ln>("ln", {"ln"}, logarithm, recipe<logarithm>(0, ofLogarithm, lawOfLogarithm)),
    row<Trunc>("trunc", {"trunc"}, truncation, notImplemented("Trunc")),
}};

const ElementaryFunction* findFunction(ExprType kind) {
    for (const ElementaryFunction& function : elementaryFunctions) {
        if (function.kind == kind) return &function;
    }
    return nullptr;
}

const ElementaryFunction& functionOf(ExprType kind) {
    const ElementaryFunction* function = findFunction(kind);
    if (function == nullptr) {
        throw Error("#(ERR) Not a function kind: " + std::to_string(static_cast<int>(kind)) + "\n", 1);
    }
    return *function;
}

}  // namespace zirk
