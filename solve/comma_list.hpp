// SPDX-License-Identifier: MIT
// Lists of formulas with commas between them.
#pragma once

#include <string>
#include <vector>

namespace zirk::solve {

/// The text without blanks at both ends.
std::string trimmed(const std::string& text);

/// The parts between commas outside of brackets, trimmed; an empty text is one empty part.
std::vector<std::string> commaList(const std::string& text);

}  // namespace zirk::solve
