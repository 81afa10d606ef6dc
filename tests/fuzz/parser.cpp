// SPDX-License-Identifier: MIT
// Scanner and parser: any bytes become tables or an error.
#include "lang/compiler.hpp"
#include "lang/model_content.hpp"
#include "tests/fuzz/harness.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

/// What the compiler makes of a text, with all that it says.
struct Reading {
    /// Status of the error; 0 for a text that is accepted.
    int status = 0;
    std::string log;
    std::size_t variables = 0;
    /// Where a text that does not compile could not be read on.
    int line = 0;
    int column = 0;
    std::string token;
};

Reading read(const std::string& text) {
    CompiledSystem compiled(SeriesLimits(), real{0.1});
    const Calculus::Scope scope(compiled.calculus);
    Compiler compiler(sourceOf(text), compiled.system);
    LimitedText dump;
    Reading reading;
    try {
        compiler.compile();
        reading.log = compiler.messages();
        for (const Differential& variable : compiled.system.equations) variable.TreeDump(dump);
    } catch (const ParseError& error) {
        reading = {error.status(), error.text(), 0, error.line(), error.column(), error.token()};
    } catch (const Error& error) {
        reading.status = error.status();
        reading.log = error.text();
    } catch (const LimitedText::TooMuch&) {
        // Long, but not wrong.
    }
    reading.log += dump.text();
    reading.variables = compiled.system.equations.size();
    return reading;
}

/// The token stands where the error says, in the part before a NUL byte.
bool pointsAtToken(const Reading& reading, const std::string& all) {
    const std::string text = all.substr(0, all.find('\0'));
    if (reading.line < 1 || reading.column < 1) return false;
    std::size_t begin = 0;
    for (int line = 1; line < reading.line; ++line) {
        const std::size_t newline = text.find('\n', begin);
        // The end of the input ends a comment in the last line as a newline would.
        if (newline == std::string::npos) return reading.token.empty() && line + 1 == reading.line;
        begin = newline + 1;
    }
    const std::size_t at = begin + static_cast<std::size_t>(reading.column) - 1;
    if (reading.token.empty()) return at == text.size();
    return at <= text.size() && text.compare(at, reading.token.size(), reading.token) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    if (makesManyVariables(text)) return 0;
    const Reading reading = read(text);
    require(reading.status == 0 || !reading.log.empty(), "a rejected text is told why");
    require(reading.status != 0 || reading.variables > 0 || text.find('(') != std::string::npos,
            "an accepted text has statements");
    require(reading.line == 0 || pointsAtToken(reading, text), "an error points at its token");

    // What comes behind a NUL byte is not read, and blanks mean nothing but columns of the first line.
    const Reading longer = read(text + '\0' + "y' = ;");
    require(longer.status == reading.status && longer.log == reading.log, "a NUL byte ends the input");
    require(longer.line == reading.line && longer.column == reading.column, "a NUL byte is where the input ends");
    const std::string blanks = " \t\v\f\r";
    const Reading shifted = read(blanks + text);
    require(shifted.status == reading.status && shifted.log == reading.log, "blanks in front change nothing");
    const int shift = reading.line == 1 ? static_cast<int>(blanks.size()) : 0;
    require(shifted.line == reading.line && shifted.column == reading.column + shift, "blanks in front are counted");
    return 0;
}
