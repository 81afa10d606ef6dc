// SPDX-License-Identifier: MIT
// Values of operations and elementary functions as mathematics has them, with all 64 bits.
#pragma once

#include "formula/graph.hpp"

namespace zirk {

/// f(x) of an elementary function; not a number outside its domain, infinite at a pole. acotan lies between -pi/2 and
/// pi/2, with its jump at 0, where it is pi/2.
real exactValue(ExprType function, real x);

/// a^b: whole exponents up to 2^20 by products, so that they work for any base; halves up to 32 by these and a root;
/// others as exp(b ln a).
real exactPower(real a, real b);

/// Value of an operation on two operands (or one: Negate).
real applyOperation(Operation operation, real a, real b);

}  // namespace zirk
