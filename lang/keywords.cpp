// SPDX-License-Identifier: MIT
// Written forms of functions, pi and t. There is no short form of the inverse hyperbolic cotangent, and no log, abs or
// power.
#include "lang/keywords.hpp"

#include "lang/grammar.hpp"

namespace zirk {

namespace {

struct Keyword {
    std::string_view written;
    int token;
};

constexpr Keyword keywords[] = {
    {"sin", SIN},
    {"cos", COS},
    {"tg", TAN},
    {"tan", TAN},
    {"cotg", COTAN},
    {"cotan", COTAN},
    {"arcsin", ASIN},
    {"asin", ASIN},
    {"arccos", ACOS},
    {"acos", ACOS},
    {"arctg", ATAN},
    {"arctan", ATAN},
    {"atg", ATAN},
    {"atan", ATAN},
    {"arccotg", ACOTAN},
    {"arccotan", ACOTAN},
    {"acotg", ACOTAN},
    {"acotan", ACOTAN},
    {"sinh", SINH},
    {"cosh", COSH},
    {"tgh", TANH},
    {"tanh", TANH},
    {"cotgh", COTANH},
    {"cotanh", COTANH},
    {"argsinh", ASINH},
    {"asinh", ASINH},
    {"argcosh", ACOSH},
    {"acosh", ACOSH},
    {"argtgh", ATANH},
    {"argtanh", ATANH},
    {"atgh", ATANH},
    {"atanh", ATANH},
    {"argcotgh", ACOTANH},
    {"argcotanh", ACOTANH},
    {"exp", EXP},
    {"ln", LN},
    {"pi", PI},
    {"t", T},
    {"sqrt", SQRT},
    {"trunc", TRUNC},
};

}  // namespace

int keywordToken(std::string_view word) {
    for (const Keyword& keyword : keywords) {
        if (word == keyword.written) return keyword.token;
    }
    return IDENT;
}

}  // namespace zirk
