// SPDX-License-Identifier: MIT
// Scanner and parser: any bytes become tables or an error.
#include <sstream>

#include "lang/compiler.hpp"
#include "tests/fuzz/harness.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

/// Result of the compiler, with all that it wrote.
struct Reading {
    int result = 0;
    std::string log;
    std::size_t variables = 0;
};

Reading read(const std::string& text) {
    Settings settings;
    const Calculus::Scope scope(settings);
    std::istringstream input(text);
    LimitedText log;
    Reading reading;
    try {
        reading.result = Compiler(input, log, settings, settings, settings).compile();
        for (const Differential& variable : settings.equations) variable.TreeDump(log);
    } catch (const Error& error) {
        reading.result = error.status();
        reading.log = error.text();
    } catch (const LimitedText::TooMuch&) {
        // Long, but not wrong.
    }
    reading.log += log.text();
    reading.variables = settings.equations.size();
    return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    if (makesManyVariables(text)) return 0;
    const Reading reading = read(text);
    require(reading.result == 0 || !reading.log.empty(), "a rejected text is told why");
    require(reading.result != 0 || reading.variables > 0 || text.find('(') != std::string::npos,
            "an accepted text has statements");

    // What comes behind a NUL byte is not read, and blanks mean nothing.
    const Reading longer = read(text + '\0' + "y' = ;");
    require(longer.result == reading.result && longer.log == reading.log, "a NUL byte ends the input");
    const Reading shifted = read(" \t\v\f\r" + text);
    require(shifted.result == reading.result && shifted.log == reading.log, "blanks in front change nothing");
    return 0;
}
