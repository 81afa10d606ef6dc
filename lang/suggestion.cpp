// SPDX-License-Identifier: MIT
// Optimal string alignment, with a limit that grows with the length of the word.
#include "lang/suggestion.hpp"

#include <algorithm>
#include <cctype>
#include <vector>

#include "expr/elementary.hpp"

namespace zirk {

namespace {

/// Longer words are compared with nobody: no typing error makes them.
constexpr std::size_t longest = 64;

bool equalButForCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](unsigned char x, unsigned char y) {
               return std::tolower(x) == std::tolower(y);
           });
}

struct Customary {
    std::string_view word;
    std::string_view instead;
};

constexpr Customary customary[] = {
    {"log", "the natural logarithm is ln(u)"},
    {"log10", "write ln(u)/ln(10)"},
    {"log2", "write ln(u)/ln(2)"},
    {"abs", "write sqrt(u*u)"},
    {"fabs", "write sqrt(u*u)"},
    {"sign", "write u/sqrt(u*u)"},
    {"sgn", "write u/sqrt(u*u)"},
    {"pow", "write u^v"},
    {"power", "write u^v"},
    {"cbrt", "write u^(1/3)"},
    {"ctg", "write cotan(u)"},
    {"cot", "write cotan(u)"},
    {"sec", "write 1/cos(u)"},
    {"csc", "write 1/sin(u)"},
    {"sech", "write 1/cosh(u)"},
    {"csch", "write 1/sinh(u)"},
    {"coth", "write cotanh(u)"},
    {"acot", "write acotan(u)"},
    {"acoth", "write argcotanh(u)"},
    {"acotanh", "write argcotanh(u)"},
    {"floor", "write trunc(u) for u above 0"},
    {"int", "write trunc(u)"},
    {"mod", "write u - v*trunc(u/v)"},
    {"fmod", "write u - v*trunc(u/v)"},
    {"atan2", "write 2*atan(y/(sqrt(x*x + y*y) + x))"},
    {"e", "write exp(1)"},
};

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b, std::size_t most) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > most) return most + 1;
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (exchanged) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return std::min(last[b.size()], most + 1);
}

Suggestion::Suggestion(std::string_view wanted)
    : wanted_(wanted),
      limit_(wanted.size() < 2 || wanted.size() > longest ? 0 : std::max<std::size_t>(wanted.size() / 3, 1)) {}

void Suggestion::consider(std::string_view candidate) {
    if (candidate.size() > longest) return;
    if (equalButForCase(wanted_, candidate)) {
        nearest_ = candidate;
        limit_ = 0;
        return;
    }
    if (limit_ == 0) return;
    const std::size_t distance = editDistance(wanted_, candidate, limit_);
    if (distance > limit_) return;
    if (!nearest_.empty() && distance == limit_) return;
    nearest_ = candidate;
    limit_ = distance;
}

void Suggestion::considerFunctions() {
    for (const ElementaryFunction& function : elementaryFunctions) {
        for (const std::string_view form : function.written) {
            if (!form.empty()) consider(form);
        }
    }
}

std::string Suggestion::text() const { return nearest_.empty() ? "" : "; did you mean \"" + nearest_ + "\"?"; }

std::string_view customaryWord(std::string_view word) {
    for (const Customary& known : customary) {
        if (equalButForCase(known.word, word)) return known.instead;
    }
    return {};
}

}  // namespace zirk
