// SPDX-License-Identifier: MIT
// Messages, lines and carets.
#include "solve/messages.hpp"

#include <algorithm>
#include <cstdio>

namespace zirk::solve {

namespace {

constexpr const char* program = "zirk-solve";
/// Bytes of a line that are shown on each side of the place, when it is longer.
constexpr std::size_t shownBefore = 60;
constexpr std::size_t shownAfter = 60;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80U; }

/// Bytes of the UTF-8 character at the start of the text; 0 when it is none, or one that must not reach a terminal.
std::size_t characterLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return first >= 0x20 && first != 0x7f ? 1 : 0;
    const std::size_t length = first >= 0xf0 && first < 0xf5 ? 4 : first >= 0xe0 ? 3 : first >= 0xc2 ? 2 : 0;
    if (length == 0 || first >= 0xf5 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) return 0;
    }
    // Further control characters.
    if (first == 0xc2 && static_cast<unsigned char>(text[1]) < 0xa0) return 0;
    return length;
}

/// Appends the character at the start of the text, and below it as many times `mark`; returns its bytes.
std::size_t appendCharacter(std::string_view text, char mark, std::string& shown, std::string* below) {
    if (text[0] == '\t' && below != nullptr) {
        shown += '\t';
        *below += mark == ' ' ? '\t' : mark;
        return 1;
    }
    const std::size_t length = characterLength(text);
    std::size_t width = 1;
    if (length > 0) {
        shown.append(text.substr(0, length));
    } else {
        char escape[8];
        std::snprintf(escape, sizeof escape, "<0x%02X>", static_cast<unsigned char>(text[0]));
        shown += escape;
        width = 6;
    }
    if (below != nullptr) below->append(width, mark);
    return std::max<std::size_t>(length, 1);
}

}  // namespace

std::string_view lineOf(std::string_view text, int number) {
    for (int i = 1; i < number; ++i) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return {};
        text.remove_prefix(end + 1);
    }
    std::string_view line = text.substr(0, text.find('\n'));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) text.remove_prefix(appendCharacter(text, ' ', shown, nullptr));
    return shown;
}

std::string pointedAt(std::string_view line, int column, std::size_t length) {
    // The end of a line is a place, too.
    const std::size_t place = std::min(static_cast<std::size_t>(std::max(column, 1)) - 1, line.size());
    std::size_t begin = place > shownBefore ? place - shownBefore : 0;
    std::size_t end = std::min(line.size(), place + shownAfter);
    while (begin > 0 && begin < place && isContinuation(line[begin])) ++begin;
    while (end < line.size() && end > place && isContinuation(line[end])) --end;

    std::string shown = begin > 0 ? "..." : "";
    std::string below(shown.size(), ' ');
    std::size_t i = begin;
    while (i < place) i += appendCharacter(line.substr(i), ' ', shown, &below);
    // What is wrong may reach beyond what is shown, but not beyond the line.
    const std::size_t marked = std::min(end, place + std::max<std::size_t>(length, 1));
    const std::size_t caret = below.size();
    while (i < marked) i += appendCharacter(line.substr(i), '~', shown, &below);
    while (i < end) {
        std::string unused;
        i += appendCharacter(line.substr(i), ' ', shown, &unused);
    }
    if (end < line.size()) shown += "...";
    below.resize(std::max(below.size(), caret + 1));
    below[caret] = '^';
    return shown + '\n' + below + '\n';
}

std::string Messages::headed(const std::string& where, const std::string& kind, const std::string& message) const {
    const std::string text = printable(message);
    if (!isColoured_) return where + ": " + kind + ": " + text + '\n';
    const char* colour = kind == "error" ? "\033[1;31m" : "\033[1;35m";
    return "\033[1m" + where + ": " + colour + kind + ":\033[0m " + text + '\n';
}

std::string Messages::plain(const std::string& kind, const std::string& message) const {
    return headed(program, kind, message);
}

std::string Messages::at(const Diagnostic& diagnostic) const {
    std::string text = headed(diagnostic.where, "error", diagnostic.message);
    if (diagnostic.column > 0 && !diagnostic.line.empty())
        text += pointedAt(diagnostic.line, diagnostic.column, diagnostic.length);
    return text;
}

std::string Messages::atSource(const std::string& file, std::string_view source, const ParseError& error) const {
    // No line: a value of --set is to blame.
    if (error.line() <= 0) return headed(std::string(program) + ": --set", "error", error.what());
    const std::string place = ':' + std::to_string(error.line()) + ':' + std::to_string(error.column());
    return at(
        {printable(file) + place, error.what(), lineOf(source, error.line()), error.column(), error.token().size()});
}

std::string Messages::inOption(const FormulaError& error) const {
    return at({std::string(program) + ": " + error.option(), error.what(), error.formula(), error.column(),
               error.token().size()});
}

}  // namespace zirk::solve
