// SPDX-License-Identifier: MIT
// How each elementary function becomes differential equations.
#pragma once

#include "expr/leaves.hpp"

namespace zirk {

/// The expansion of one function f(u) into one to three variables with their own equations.
struct Recipe {
    /// Number of variables.
    int variables;

    /// Which of them stands for f(u).
    int result;

    /// Start values from u0, the initial value of u.
    void (*start)(real u0, real* values);

    /// Right-hand sides from u, its time derivative d, and the variables v themselves.
    void (*wire)(const Expr::Ref& u, const Expr::Ref& d, Differential* const* v);

    /// What to write instead where the variables follow another law than the function from this u0; null where they do
    /// not. Null as a whole for functions that are themselves everywhere.
    const char* (*otherLaw)(real u0) = nullptr;
};

/// Error of status 1 for acos, asinh and acosh, which have no expansion.
const Recipe& recipeOf(ExprType function);

}  // namespace zirk
