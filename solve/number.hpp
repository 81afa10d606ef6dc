// SPDX-License-Identifier: MIT
// Numbers as people read them.
#pragma once

#include <string>

#include "zirk/real.hpp"

namespace zirk::solve {

/// Most characters of a number with so many significant digits: sign, point, and an exponent of four figures.
constexpr int widestNumber(int digits) { return digits + 8; }

/// What becomes of zeros at the end. In columns, numbers that need more than half of the figures keep theirs, so that
/// figures stand below each other: 0.540302305868140, but 0.5.
enum class LastZeros { Dropped, InColumns };

/// Appends x with up to so many significant digits, as printf's "%.*Lg": plain where that is not much longer, without
/// zeros at the end unless they are wanted. 0 has no sign, and what is not a number is "nan".
void appendNumber(std::string& text, const real& x, int digits, LastZeros zeros = LastZeros::Dropped);

}  // namespace zirk::solve
