// SPDX-License-Identifier: MIT
// Words to tokens: pi, t and the written forms of the functions. There is no log, abs or power.
#include "lang/keywords.hpp"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "expr/elementary.hpp"
#include "lang/grammar.hpp"

namespace zirk {

namespace {

/// In the order of the rows of the functions.
constexpr int functionTokens[] = {SIN,  COS,    TAN,   COTAN, ASIN,  ACOS,    ATAN, ACOTAN, SINH, COSH,
                                  TANH, COTANH, ASINH, ACOSH, ATANH, ACOTANH, SQRT, EXP,    LN,   TRUNC};
static_assert(std::size(functionTokens) == elementaryFunctions.size());

std::unordered_map<std::string_view, int> allTokens() {
    std::unordered_map<std::string_view, int> tokens = {{"pi", PI}, {"t", T}};
    const int* token = functionTokens;
    for (const ElementaryFunction& function : elementaryFunctions) {
        for (const std::string_view form : function.written) tokens[form] = *token;
        ++token;
    }
    // The rows fill up with empty forms.
    tokens.erase("");
    return tokens;
}

}  // namespace

int keywordToken(std::string_view word) {
    static const std::unordered_map<std::string_view, int> tokens = allTokens();
    const auto found = tokens.find(word);
    return found == tokens.end() ? IDENT : found->second;
}

ExprType functionKind(int token) {
    if (token == IDENT) return ExprType::Nothing;
    const auto found = std::find(std::begin(functionTokens), std::end(functionTokens), token);
    if (found == std::end(functionTokens)) return ExprType::Nothing;
    return elementaryFunctions[static_cast<std::size_t>(found - functionTokens)].kind;
}

}  // namespace zirk
