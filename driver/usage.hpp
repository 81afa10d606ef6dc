// SPDX-License-Identifier: MIT
// The usage text.
#pragma once

#include <string>

#include "driver/settings.hpp"

namespace zirk {

/// The text of -h, with the settings as they are now in place of the defaults.
std::string usageText(const Settings& settings);

}  // namespace zirk
