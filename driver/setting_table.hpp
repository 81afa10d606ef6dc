// SPDX-License-Identifier: MIT
// Every setting once: its option, its keyword in the resource file, and what the usage text says about it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "driver/settings.hpp"

namespace zirk {

/// One setting.
struct SettingRow {
    /// What the option wants; flags are integers.
    enum class Value { Integer, Real, Text };

    /// Of the option; 0 where there is none.
    char letter;
    /// Of the resource file, and what is printed before the value when it is made there; null where there is none.
    const char* keyword;
    const char* echo;
    Value value;
    /// Makes the setting from text; null for the keyword that is refused.
    void (*apply)(Settings& settings, const char* text);
    /// Lines of the usage text up to the present value, the value, and what follows; null where the option is not told.
    const char* usage;
    void (*show)(std::ostream& out, const Settings& settings);
    const char* end;
};

/// All settings, in the order of the usage text; what it does not tell comes last.
const std::vector<SettingRow>& settingRows();

/// Null for a letter, or a keyword, that no setting has.
const SettingRow* findOption(char letter);
const SettingRow* findKeyword(const std::string& keyword);

}  // namespace zirk
