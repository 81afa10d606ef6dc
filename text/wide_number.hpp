// SPDX-License-Identifier: MIT
// Numbers of any width and precision, written piece by piece.
#pragma once

#include <iosfwd>

#include "zirk/real.hpp"

namespace zirk {

/// Beyond this width or precision a number is written by writeWide instead of being composed in memory.
constexpr int widestComposed = 1 << 16;

/// Writes the same characters as appendScientific and padLeft would leave, in constant memory.
void writeWide(std::ostream& out, real x, int precision, int width);

}  // namespace zirk
