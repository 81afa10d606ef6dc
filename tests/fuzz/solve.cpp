// SPDX-License-Identifier: MIT
// Preparation and the first points of any system, by the nodes and by the chooser.
//
// The input is a text of equations. Where its first line is a comment, the words of that line are options:
//     // -o 12 -a 1e-15 -D 3
#include <cstring>
#include <sstream>

#include "driver/options.hpp"
#include "tests/fuzz/harness.hpp"

using namespace zirk;

namespace {

/// Options from words: a letter behind a minus, then its value as the next word. What looks otherwise is a comment.
void applyWords(const std::string& line, Settings& settings, Output& output) {
    CommandLine unused;
    std::istringstream words(line);
    for (std::string option, value; words >> option >> value;) {
        if (option.size() != 2 || option[0] != '-') continue;
        if (std::strchr("3AaDfFgGiLNoOpPrRsStTUwxXz", option[1]) == nullptr) continue;
        applyOption(option[1], value.c_str(), settings, output, unused);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t longest = 2048;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    if (size > longest || makesManyVariables(text)) return 0;
    const auto configure = [&text](Settings& settings, Output& output) {
        // As many digits as tell any two numbers apart.
        settings.numbers.printPrecision = 21;
        if (text.compare(0, 2, "//") == 0) applyWords(text.substr(2, text.find('\n') - 2), settings, output);
        bound(settings, {});
    };
    solveBothWays(configure, text);
    return 0;
}
