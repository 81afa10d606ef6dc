// SPDX-License-Identifier: MIT
// The reserved words of the language.
#pragma once

#include <string_view>

namespace zirk {

/// Token code of a word: that of the keyword, or IDENT. Case matters.
int keywordToken(std::string_view word);

}  // namespace zirk
