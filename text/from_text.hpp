// SPDX-License-Identifier: MIT
// Numbers from text, with the rules of the C library.
#pragma once

#include "zirk/real.hpp"

namespace zirk {

/// Text to number through the double conversion, then widened; text that is not a number gives 0.
real realFromText(const char* text);

/// Leading base-10 integer, saturated to the 32-bit range; text that is not a number gives 0.
int intFromText(const char* text);

/// True exactly when the integer read from the text is 1.
bool flagFromText(const char* text);

}  // namespace zirk
