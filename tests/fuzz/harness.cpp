// SPDX-License-Identifier: MIT
// Properties, bounds, and the comparison of both ways to sum series.
#include "tests/fuzz/harness.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "classic/classic_run.hpp"
#include "driver/run.hpp"
#include "lang/compiler.hpp"
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

Model::Source sourceOf(std::string_view text) {
    return [text, at = std::size_t{0}](char* buffer, std::size_t size) mutable {
        const std::size_t count = text.copy(buffer, size, at);
        at += count;
        return count;
    };
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
    SeriesLimits& limits = settings.classic.limits;
    limits.maxOrder = std::min(limits.maxOrder, bounds.terms);
    settings.numbers.printPrecision = std::min(settings.numbers.printPrecision, bounds.digits);
    settings.numbers.printWidth = std::min(settings.numbers.printWidth, bounds.digits);
}

namespace {

constexpr std::size_t mostVariables = 200;
constexpr int mostPasses = 10;

const std::string goesOn = "goes on";
const std::string ended = "has ended";

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

/// What an integrator shows of its last pass.
void appendView(std::string& text, const ClassicIntegrator& run) {
    for (const real x : {run.time(), run.previousTime(), run.step()}) appendReal(text, x);
    for (const int count : {run.order(), run.pass(), int{run.isLastStep()}}) appendBytes(text, count);
    for (const long long count : {run.statistics().points, run.statistics().rejected}) appendBytes(text, count);
    const StiffnessTest& test = run.stiffness();
    for (const int number : {int{test.isStiff}, test.largestExponent, test.smallestExponent, test.difference}) {
        appendBytes(text, number);
    }
    text.append(test.largestName).append(test.smallestName);
    for (std::size_t i = 0; i < run.size(); ++i) {
        appendReal(text, run.value(i));
        appendBytes(text, run.highestTerm(i));
        for (const real& term : run.terms(i)) appendReal(text, term);
    }
}

/// What the variables hold besides that: where the next step begins, and what the rules ask them for.
void appendVariables(std::string& text, const EquationTable& equations) {
    for (const Differential& variable : equations) {
        appendReal(text, variable.startValue());
        for (const int count :
             {variable.resultStamp(), variable.ownOrder(), int{variable.onlyZeroTerms()}, int{variable.isSteady()}}) {
            appendBytes(text, count);
        }
    }
}

void requireSame(const ClassicIntegrator& run, ClassicRun& bare) {
    bool isSame = sameValue(run.time(), bare.calculus().time) && sameValue(run.step(), bare.calculus().step) &&
                  run.order() == bare.calculus().orderUsed;
    for (std::size_t i = 0; i < run.size(); ++i) {
        isSame = isSame && sameValue(run.value(i), bare.equations().list()[i]->result());
        isSame = isSame && run.highestTerm(i) == bare.taylor().highestTerm(i);
        for (int k = 0; isSame && k <= run.highestTerm(i); ++k) {
            isSame = sameValue(run.term(i, k), bare.taylor().term(i, k));
        }
    }
    require(isSame, "two runs of one text compute the same bits");
}

/// What comes of a pass; an error by its text.
template <class Next>
std::string outcomeOf(Next next) {
    try {
        return next() ? goesOn : ended;
    } catch (const RunError& error) {
        return error.text();
    }
}

/// Equations for a run whose variables can be looked at.
std::unique_ptr<CompiledSystem> compiled(const std::string& text, const SeriesLimits& limits) {
    auto result = std::make_unique<CompiledSystem>(limits, real{0});
    const Calculus::Scope scope(result->calculus);
    Compiler(sourceOf(text), result->system).compile();
    return result;
}

/// Two runs of one text take turns: that of the command, and one without anybody around it.
void solve(const Settings& settings, Output& output, Evaluation evaluation, const std::string& text, Course& course) {
    const Model model = Model::fromText(text, settings.classic.limits);
    course.output += model.messages();
    if (model.names().size() > mostVariables) return;
    Run run(settings, output, model, evaluation);
    ClassicIntegrator& integrator = run.integrator();
    if (integrator.size() > mostVariables) return;
    ClassicRun bare(compiled(text, settings.classic.limits), settings.classic, nullptr, evaluation);
    LimitedText dump;
    try {
        for (const Differential& variable : bare.equations()) variable.TreeDump(dump);
    } catch (const LimitedText::TooMuch&) {
        // Long, but not wrong.
    }
    course.output += dump.text();

    run.begin();
    std::string outcome = goesOn;
    for (int pass = 0; outcome == goesOn && pass < mostPasses; ++pass) {
        outcome = outcomeOf([&] { return run.pass(); });
        const std::string other = outcomeOf([&] { return bare.next() != ClassicIntegrator::Pass::End; });
        require(outcome == other, "two runs of one text fare alike: " + outcome + " and " + other);
        requireSame(integrator, bare);
        appendView(course.state, integrator);
        appendVariables(course.state, bare.equations());
    }
    if (outcome == ended) return run.end();
    if (outcome != goesOn) throw RunError(outcome, integrator.previousTime());
}

Course courseOf(const std::function<void(Settings&, Output&)>& configure, const std::string& text,
                Evaluation evaluation) {
    Course course;
    const MemoryFile file;
    Output output(file.descriptor(), file.descriptor());
    try {
        Settings settings;
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
    const Course fast = courseOf(configure, text, Evaluation::Compiled);
    require(plain.ending == fast.ending, "both ways end alike: " + plain.ending + " and " + fast.ending);
    require(plain.output == fast.output, "both ways write the same:\n" + plain.output + "\nand\n" + fast.output);
    require(plain.state == fast.state, "both ways compute the same bits");
}
