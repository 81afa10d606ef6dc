// SPDX-License-Identifier: MIT
// Every option once: its names, its argument, what it asks for, and what --help says about it.
#pragma once

#include <string>
#include <vector>

#include "solve/request.hpp"

namespace zirk::solve {

/// One option.
struct OptionRow {
    /// 0 where there is none.
    char letter;
    const char* name;
    /// What --help calls its argument; null for options without one.
    const char* argument;
    /// Enters it into the request; `text` is empty for options without an argument. UsageError when it is not of its
    /// kind.
    void (*apply)(Request& request, const std::string& text);
    const char* help;
};

/// All options, in the order of --help.
const std::vector<OptionRow>& optionRows();

}  // namespace zirk::solve
