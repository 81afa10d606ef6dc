// SPDX-License-Identifier: MIT
// The text that programs show, from the text that commands write.
#include "zirk/error.hpp"

#include <cctype>
#include <utility>

namespace zirk {

namespace {

/// The last line, without "#(ERR) " and the like.
std::string bare(const std::string& text) {
    const std::size_t last = text.find_last_not_of(" \n");
    if (last == std::string::npos) return "";
    const std::size_t newline = text.rfind('\n', last);
    std::string line = text.substr(newline == std::string::npos ? 0 : newline + 1, last - newline);
    line = line.substr(0, line.find_last_not_of(" \n") + 1);
    const std::size_t tag = line.find(") ");
    const bool isTagged = (line[0] == '(' || line.compare(0, 2, "#(") == 0) && tag < 12;
    return isTagged ? line.substr(tag + 2) : line;
}

}  // namespace

Error::Error(const std::string& text, int status) : std::runtime_error(bare(text)), text_(text), status_(status) {}

ParseError::ParseError(const std::string& text, int line, int column, std::string token)
    : Error(text, 3), line_(line), column_(column), token_(std::move(token)) {}

}  // namespace zirk
