// SPDX-License-Identifier: MIT
// Which of several names was meant.
#pragma once

#include <string>
#include <vector>

namespace zirk::solve {

/// The name that the fewest insertions, deletions, replacements and swaps of neighbours make of `name`; empty when that
/// takes more than two of them, or more than half as many as it has letters.
std::string similarName(const std::string& name, const std::vector<std::string>& names);

}  // namespace zirk::solve
