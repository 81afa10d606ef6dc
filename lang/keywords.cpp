// SPDX-License-Identifier: MIT
// Words to tokens: pi, t and the written forms of the functions. There is no log, abs or power.
#include "lang/keywords.hpp"

#include <algorithm>
#include <iterator>

#include "expr/elementary.hpp"
#include "lang/grammar.hpp"

namespace zirk {

namespace {

/// In the order of the rows of the functions.
constexpr int functionTokens[] = {SIN,  COS,    TAN,   COTAN, ASIN,  ACOS,    ATAN, ACOTAN, SINH, COSH,
                                  TANH, COTANH, ASINH, ACOSH, ATANH, ACOTANH, SQRT, EXP,    LN,   TRUNC};
static_assert(std::size(functionTokens) == elementaryFunctions.size());

}  // namespace

int keywordToken(std::string_view word) {
    if (word == "pi") return PI;
    if (word == "t") return T;
    const int* token = functionTokens;
    for (const ElementaryFunction& function : elementaryFunctions) {
        for (const std::string_view form : function.written) {
            if (form.empty()) break;
            if (form == word) return *token;
        }
        ++token;
    }
    return IDENT;
}

ExprType functionKind(int token) {
    const auto found = std::find(std::begin(functionTokens), std::end(functionTokens), token);
    if (found == std::end(functionTokens)) return ExprType::Nothing;
    return elementaryFunctions[static_cast<std::size_t>(found - functionTokens)].kind;
}

}  // namespace zirk
