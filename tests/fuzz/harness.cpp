// SPDX-License-Identifier: MIT
// Properties, bounds, and the comparison of both ways to sum series.
#include "tests/fuzz/harness.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "driver/run.hpp"
#include "expand/expansion.hpp"
#include "lang/compiler.hpp"
#include "text/line.hpp"
#include "zirk/error.hpp"

using namespace zirk;

void require(bool holds, const std::string& property) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n", property.c_str());
    std::abort();
}

MemoryFile::MemoryFile() : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    require(descriptor_ >= 0, "a file in memory can be made");
}

MemoryFile::~MemoryFile() { close(descriptor_); }

std::string MemoryFile::path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

void MemoryFile::write(const std::string& text) const {
    const auto written = pwrite(descriptor_, text.data(), text.size(), 0);
    require(written == static_cast<ssize_t>(text.size()), "a file in memory can be written");
}

std::string MemoryFile::contents() const {
    std::string text(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    const auto count = pread(descriptor_, text.data(), text.size(), 0);
    require(count == static_cast<ssize_t>(text.size()), "a file in memory can be read");
    return text;
}

std::streamsize LimitedText::xsputn(const char* bytes, std::streamsize count) {
    constexpr std::size_t limit = 1 << 16;
    text_.append(bytes, static_cast<std::size_t>(count));
    if (text_.size() > limit) throw TooMuch();
    return count;
}

std::streambuf::int_type LimitedText::overflow(std::streambuf::int_type character) {
    const char byte = std::streambuf::traits_type::to_char_type(character);
    xsputn(&byte, 1);
    return character;
}

bool makesManyVariables(const std::string& text) {
    constexpr long limit = 1000000;
    constexpr long affordable = 1000;
    long sum = 0;
    for (std::size_t at = text.find('\''); at != std::string::npos; at = text.find('\'', at + 1)) {
        const long order = std::strtol(text.c_str() + at + 1, nullptr, 10);
        if (order > 0 && order <= limit) sum += order;
    }
    return sum > affordable;
}

void bound(Settings& settings, const Bounds& bounds) {
    settings.setMaxOrder(std::min(settings.maxOrder, bounds.terms));
    settings.printPrecision = std::min(settings.printPrecision, bounds.digits);
    settings.printWidth = std::min(settings.printWidth, bounds.digits);
}

namespace {

constexpr std::size_t mostVariables = 200;
constexpr int mostPasses = 10;

/// All that a run shows, and what its variables hold after every pass.
struct Course {
    std::string output;
    std::string ending;
    std::string state;
};

template <class Number>
void appendBytes(std::string& text, const Number& number, std::size_t count = sizeof(Number)) {
    text.append(reinterpret_cast<const char*>(&number), count);
}

/// Ten bytes hold an extended number; the rest is padding.
void appendReal(std::string& text, real x) { appendBytes(text, x, 10); }

void appendState(std::string& text, const Settings& settings) {
    appendReal(text, settings.time);
    appendReal(text, settings.step);
    appendBytes(text, settings.orderUsed);
    for (const Differential& variable : settings.equations) {
        for (const int count : {variable.termStamp(), variable.resultStamp(), variable.highestTerm(),
                                variable.ownOrder(), int{variable.onlyZeroTerms()}, int{variable.isSteady()}}) {
            appendBytes(text, count);
        }
        appendReal(text, variable.startValue());
        appendReal(text, variable.result());
        for (int k = 0; k <= variable.highestTerm(); ++k) appendReal(text, variable.term(k));
    }
}

void solve(Settings& settings, Output& output, Evaluation evaluation, const std::string& text, Course& course) {
    std::istringstream input(text);
    LimitedText log;
    const int result = Compiler(input, log, settings, settings, settings).compile();
    course.output += log.text();
    if (result != 0) return;
    if (settings.equations.size() > mostVariables) return;
    Expansion(settings, settings, settings).prepare();
    if (settings.equations.size() > mostVariables) return;
    LimitedText dump;
    try {
        for (const Differential& variable : settings.equations) variable.TreeDump(dump);
    } catch (const LimitedText::TooMuch&) {
        // Long, but not wrong.
    }
    course.output += dump.text();

    Run run(settings, output, evaluation);
    run.begin();
    bool goesOn = true;
    for (int pass = 0; goesOn && pass < mostPasses; ++pass) {
        goesOn = run.pass();
        appendState(course.state, settings);
    }
    if (!goesOn) run.end();
}

Course courseOf(const std::function<void(Settings&, Output&)>& configure, const std::string& text,
                Evaluation evaluation) {
    Course course;
    const MemoryFile file;
    Output output(file.descriptor(), file.descriptor());
    if (evaluation == Evaluation::NodeByNode) {
        insertPieceByPiece(output.results());
        insertPieceByPiece(output.log());
    }
    try {
        Settings settings;
        const Calculus::Scope scope(settings);
        settings.reset();
        configure(settings, output);
        solve(settings, output, evaluation, text, course);
    } catch (const Error& error) {
        const std::string line = error.text();
        require(!line.empty() && line.back() == '\n', "a failure is told by whole lines");
        course.ending = std::to_string(error.status()) + " " + line;
    }
    output.flush();
    course.output += file.contents();
    // The processor times are the only thing that may differ.
    const std::size_t times = course.output.rfind("#(INFO) utime=");
    if (times != std::string::npos) course.output.erase(times, course.output.find('\n', times) - times);
    return course;
}

}  // namespace

void solveBothWays(const std::function<void(Settings&, Output&)>& configure, const std::string& text) {
    const Course plain = courseOf(configure, text, Evaluation::NodeByNode);
    const Course fast = courseOf(configure, text, Evaluation::Scheduled);
    require(plain.ending == fast.ending, "both ways end alike: " + plain.ending + " and " + fast.ending);
    require(plain.output == fast.output, "both ways write the same:\n" + plain.output + "\nand\n" + fast.output);
    require(plain.state == fast.state, "both ways compute the same bits");
}
