// SPDX-License-Identifier: MIT
// The text of the equations.
#pragma once

#include <string>

namespace zirk::solve {

/// All of the file, or of standard input for "-". Failure when it cannot be read or is larger than any system of
/// equations.
std::string readInput(const std::string& file);

/// How messages call it.
std::string inputName(const std::string& file);

}  // namespace zirk::solve
