// SPDX-License-Identifier: MIT
// The elementary functions: one row per function says how it is written, what it gives and which equations it obeys.
#pragma once

#include <array>
#include <string_view>

#include "expr/expr.hpp"

namespace zirk {

/// How one function f(u) becomes one to three variables with equations of their own.
struct Recipe {
    using Starts = std::array<real, 3>;
    using Variables = std::array<Expr::Ref, 3>;

    /// Number of variables; zero for a function that has no expansion.
    int variables = 0;

    /// Which of them stands for f(u).
    int result = 0;

    /// Start values from u0, the initial value of u.
    Starts (*starts)(real u0) = nullptr;

    /// Right-hand sides from u, its time derivative d, and the variables v themselves.
    Variables (*rates)(const Expr::Ref& u, const Expr::Ref& d, const Variables& v) = nullptr;

    /// What to write instead where the variables follow another law than the function from this u0; null where they do
    /// not. Null as a whole for functions that are themselves everywhere.
    const char* (*otherLaw)(real u0) = nullptr;

    /// What the message about a function without an expansion calls it.
    const char* notImplemented = nullptr;
};

/// All there is to know about one function. Factory, printer, keywords and expansion draw from here.
struct ElementaryFunction {
    ExprType kind;

    /// A new node of the function's class.
    Expr* (*node)(const Expr::Ref& operand);

    /// How nodes show it.
    const char* name;

    /// How the language writes it, the printed form first where it can be written; empty past the last.
    std::array<std::string_view, 4> written;

    /// f(x), in extended precision but for square root and truncation, which go through double. acosh and atanh (and
    /// acotanh through it) throw an Error of status 1 outside their domain; all others give what the C library gives.
    real (*value)(real x);

    /// The equations of the classic rules.
    Recipe classic;
};

/// One row per kind from Sin to Trunc, in this order.
extern const std::array<ElementaryFunction, 20> elementaryFunctions;

/// Null for a kind that is no function.
const ElementaryFunction* findFunction(ExprType kind);

/// As findFunction; Error of status 1 for a kind that is no function.
const ElementaryFunction& functionOf(ExprType kind);

/// f(x) for a function kind.
inline real evaluate(ExprType function, real x) { return functionOf(function).value(x); }

/// Printed name of a function kind.
inline const char* functionName(ExprType function) { return functionOf(function).name; }

}  // namespace zirk
