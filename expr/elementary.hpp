// SPDX-License-Identifier: MIT
// Values of the elementary functions.
#pragma once

#include "expr/expr.hpp"

namespace zirk {

/// f(x) for a function kind (Sin to Trunc), in extended precision but for square root and truncation, which go through
/// double. acosh and atanh (and acotanh through it) throw a Error of status 1 outside their domain; all others give
/// what the C library gives.
real evaluate(ExprType function, real x);

/// Written name of a function kind.
const char* functionName(ExprType function);

}  // namespace zirk
