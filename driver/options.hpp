// SPDX-License-Identifier: MIT
// The command line.
#pragma once

#include <functional>
#include <istream>
#include <memory>

#include "command/output.hpp"
#include "driver/settings.hpp"

namespace zirk {

/// What the command line asks for besides settings.
struct CommandLine {
    /// False when the request is answered already (the version line).
    bool solve = true;
    /// The equations: the named file or standard input.
    std::unique_ptr<std::istream> input;
    /// What is wrong with the first value that is not of its kind and was read as far as it goes; empty when all are.
    std::string badValue;
};

/// Reads options into the settings and opens the input. Error of status 1 for a bad option (its text is the usage)
/// and for an input file that cannot be opened.
CommandLine parseOptions(int argc, char** argv, Settings& settings, Output& output);

/// Applies one option by its letter; `argument` may be null for options without one.
void applyOption(int letter, const char* argument, Settings& settings, Output& output, CommandLine& commandLine);

}  // namespace zirk
