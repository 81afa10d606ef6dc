// SPDX-License-Identifier: MIT
// The reserved words of the language.
#pragma once

#include <string_view>

#include "expr/expr.hpp"

namespace zirk {

/// Token code of a word: that of the keyword, or IDENT. Case matters.
int keywordToken(std::string_view word);

/// Function kind that a token stands for; Nothing for all other tokens.
ExprType functionKind(int token);

}  // namespace zirk
