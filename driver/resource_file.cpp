// SPDX-License-Identifier: MIT
// The narrow syntax of the resource file.
#include "driver/resource_file.hpp"

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <ostream>

#include "driver/setting_table.hpp"

namespace zirk {

namespace {

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

/// Without the comment and without blanks and tabs around it.
std::string stripped(const std::string& line) {
    const std::string text = line.substr(0, line.find_first_of("#%;"));
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Upper-cased, white space dropped.
std::string keyOf(const std::string& text) {
    std::string key;
    for (const char c : text.substr(0, text.find_first_of(":="))) {
        if (!isSpace(c)) key += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return key;
}

/// Letters, digits and signs after the separator: a decimal point ends the value, on purpose.
std::string valueOf(const std::string& text) {
    const std::size_t separator = text.find_first_of(":=");
    if (separator == std::string::npos) return "";
    std::size_t begin = separator + 1;
    while (begin < text.size() && isSpace(text[begin])) ++begin;
    std::size_t end = begin;
    while (end < text.size() &&
           (std::isalnum(static_cast<unsigned char>(text[end])) != 0 || text[end] == '-' || text[end] == '+')) {
        ++end;
    }
    return text.substr(begin, end - begin);
}

}  // namespace

std::string resourceFilePath() {
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : ".") + "/.zirkrc";
}

void readResourceFile(const std::string& path, Settings& settings, std::ostream& log) {
    std::ifstream file(path);
    int number = 0;
    for (std::string line; std::getline(file, line);) applyResourceLine(line, ++number, settings, log);
}

void applyResourceLine(const std::string& line, int number, Settings& settings, std::ostream& log) {
    const std::string text = stripped(line);
    if (text.empty()) return;
    const std::string key = keyOf(text);
    const SettingRow* row = findKeyword(key);
    if (row == nullptr) {
        log << "(WARN) Invalid keyword in rc file, line " << number << ": '" << key << "'\n";
        return;
    }
    const std::string value = valueOf(text);
    if (value.empty()) {
        log << "(WARN) No value set for option '" << key << "' in rc file.\n";
        return;
    }
    if (row->apply == nullptr) {
        log << "#(WARN) Option 'GMPWordSize' not supported in 'simple number precision' version\n";
        return;
    }
    row->apply(settings, value.c_str());
    log << "#(RES_SET) " << row->echo << value << '\n';
}

}  // namespace zirk
