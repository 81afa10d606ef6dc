// SPDX-License-Identifier: MIT
// Per-user defaults from ~/.zirkrc.
#pragma once

#include <iosfwd>
#include <string>

#include "driver/settings.hpp"

namespace zirk {

/// Path of the resource file; the current directory takes the place of an unset HOME.
std::string resourceFilePath();

/// Applies every line of the file and echoes it; what is wrong is warned about and skipped. A missing file is no error.
void readResourceFile(const std::string& path, Settings& settings, std::ostream& log);

/// One line, numbered from 1.
void applyResourceLine(const std::string& line, int number, Settings& settings, std::ostream& log);

}  // namespace zirk
