// SPDX-License-Identifier: MIT
// The command line.
#pragma once

#include <string>

#include "solve/request.hpp"

namespace zirk::solve {

/// Reads options and the name of the input, in any order. UsageError when they make no sense, alone or together.
Request readCommandLine(int argc, char** argv);

/// What --help shows.
std::string helpText();

}  // namespace zirk::solve
