// SPDX-License-Identifier: MIT
// Splitting at the outermost level.
#include "solve/comma_list.hpp"

namespace zirk::solve {

std::string trimmed(const std::string& text) {
    constexpr const char* blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string::npos) return "";
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string> commaList(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    // Below 0 where brackets are wrong: whoever reads the part says so.
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(' || text[i] == '[') ++depth;
        if (text[i] == ')' || text[i] == ']') --depth;
        if (text[i] != ',' || depth > 0) continue;
        parts.push_back(trimmed(text.substr(begin, i - begin)));
        begin = i + 1;
    }
    parts.push_back(trimmed(text.substr(begin)));
    return parts;
}

}  // namespace zirk::solve
