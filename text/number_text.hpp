// SPDX-License-Identifier: MIT
// Numbers to text, as an output stream shows them.
#pragma once

#include <string>

#include "zirk/real.hpp"

namespace zirk {

/// Appends x in scientific notation, as a stream in scientific mode with this precision does; negative means 6.
void appendScientific(std::string& text, const real& x, int precision);

/// Appends x as a fresh stream shows it: six significant digits, %g style.
void appendGeneral(std::string& text, const real& x);

/// Fills up with blanks so that what was appended since `from` is at least `width` wide, right-aligned.
void padLeft(std::string& text, std::size_t from, int width);

}  // namespace zirk
