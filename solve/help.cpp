// SPDX-License-Identifier: MIT
// The text of --help, from the table of options.
#include "solve/option_table.hpp"
#include "solve/options.hpp"

namespace zirk::solve {

namespace {

constexpr std::size_t helpColumn = 26;

std::string optionText(const OptionRow& row) {
    std::string text = row.letter != 0 ? std::string("  -") + row.letter + ", --" : "      --";
    text += row.name;
    if (row.argument != nullptr) text += std::string("=") + row.argument;
    // Names that reach into the text have a line of their own.
    if (text.size() + 2 > helpColumn) text += '\n' + std::string(helpColumn, ' ');
    if (text.size() < helpColumn) text.resize(helpColumn, ' ');
    for (const char* c = row.help; *c != '\0'; ++c) {
        text += *c;
        if (*c == '\n') text.append(helpColumn, ' ');
    }
    return text + '\n';
}

}  // namespace

std::string helpText() {
    std::string text =
        "Usage: zirk-solve [OPTION]... [FILE]\n"
        "Solves initial-value problems of ordinary differential equations.\n"
        "\n"
        "Reads equations from FILE, or from standard input without FILE or when FILE is -,\n"
        "and writes their solution as rows of numbers. Numbers may be formulas: -t 2*pi.\n"
        "\n";
    for (const OptionRow& row : optionRows()) text += optionText(row);
    return text +
           "\n"
           "Example: echo \"x'' = -x & 1;\" | zirk-solve -t 2*pi\n"
           "\n"
           "Exit status: 0 success, 1 the run failed (rows so far are written), 2 wrong usage\n"
           "or unreadable input, 3 the input does not compile. See zirk-solve(1).\n";
}

}  // namespace zirk::solve
