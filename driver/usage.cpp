// SPDX-License-Identifier: MIT
// The usage text, line by line.
#include "driver/usage.hpp"

#include <algorithm>
#include <sstream>

#include "driver/setting_table.hpp"

namespace zirk {

namespace {

constexpr std::size_t textWidth = 69;

/// A line filled up with blanks to the width of the text.
std::string padded(std::string line) {
    line.resize(std::max(line.size(), textWidth), ' ');
    return line + '\n';
}

void writeOptions(std::ostream& out, const Settings& settings) {
    for (const SettingRow& row : settingRows()) {
        if (row.usage == nullptr) continue;
        out << row.usage;
        row.show(out, settings);
        out << row.end << '\n';
    }
}

}  // namespace

std::string usageText(const Settings& settings) {
    std::ostringstream out;
    out << "ZIRK/C  1.0  (" << __DATE__ << ")" << std::string(39, ' ') << '\n'
        << std::string(textWidth, '-') << '\n'
        << " zirk [-3 number] [-A {1|0}] [-a number] [-d {1|0}] [-D {1|0}]       \n"
        << "      [-f {1|0}]  [-F {0|1|2|3}] [-G filename] [-g {x11|fig|png|gif|...}]\n"
        << "      [-i {1|0}]  [-L {1|0}]  [-o number] [-p number] [-s number] \n"
        << "      [-S number] [-t number] [-U {1|0}] [-v] [-w number] [-x number] [-z number]        \n"
        << "      [-O {1|0}] [-P {eqName:}+] [-N {eqName:}+] [-T {1|0}] [file]  \n"
        << '\n'
        << padded("Options:");
    writeOptions(out, settings);
    for (const char* line : {"", "Example of an input:", "  y1'= t  & 0;", "  y2'= y1 & 1;", "", "Execution:",
                             " zirk -g png -P y2: in.zirk > output.sh &&. output.sh", "", "'t' is reserved for time",
                             "", "It is possible to setup several parameters in ~/.zirkrc file!", ""}) {
        out << padded(line);
    }
    return out.str();
}

}  // namespace zirk
