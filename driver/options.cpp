// SPDX-License-Identifier: MIT
// The table of options and the getopt loop.
#include "driver/options.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ext/stdio_filebuf.h>
#include <string>

#include "driver/usage.hpp"
#include "expr/failure.hpp"

namespace zirk {

namespace {

constexpr const char* optionString = "3:A:a:d:D:f:F:g:G:i:N:o:O:p:P:r:R:s:S:t:T:U:w:x:X:z:L:hv";

/// All others take numbers.
constexpr const char* optionsWithText = "gGNPr";

/// Whether nothing but a number is there.
bool isNumber(const char* text) {
    char* end = nullptr;
    std::strtod(text, &end);
    return end != text && *end == '\0';
}

/// Text before the first ":", which is removed with it; without a ":" all of the text.
std::string takePart(std::string& text) {
    const std::size_t colon = text.find(':');
    std::string part = text.substr(0, colon);
    text = colon == std::string::npos ? "" : text.substr(colon + 1);
    return part;
}

void setPeriod(Settings& settings, std::string text) {
    settings.periodicName = takePart(text);
    settings.periodicCount = intFromText(takePart(text).c_str());
    settings.periodicDeriv = realFromText(text.c_str());
    if (settings.periodicName.empty()) settings.periodicCount = 0;
}

struct Option {
    int letter;
    void (*apply)(Settings& settings, const char* argument);
};

constexpr Option options[] = {
    {'3', [](Settings& s, const char* a) { s.points3D = intFromText(a); }},
    {'A', [](Settings& s, const char* a) { s.all3DValues = flagFromText(a); }},
    {'a', [](Settings& s, const char* a) { s.accuracy = realFromText(a); }},
    {'d', [](Settings& s, const char* a) { s.dumpTree = flagFromText(a); }},
    {'D', [](Settings& s, const char* a) { s.dumpDY = intFromText(a); }},
    {'f', [](Settings& s, const char* a) { s.fixedStep = flagFromText(a); }},
    {'F', [](Settings& s, const char* a) { s.printEvery = realFromText(a); }},
    {'g', [](Settings& s, const char* a) { s.setPlotTerminal(a); }},
    {'G', [](Settings& s, const char* a) { s.gnuplotFile = a; }},
    {'i', [](Settings& s, const char* a) { s.simplifySmall = flagFromText(a); }},
    {'L', [](Settings& s, const char* a) { s.printOnlyTmax = flagFromText(a); }},
    {'N', [](Settings& s, const char* a) { s.noPrintList = a; }},
    {'o', [](Settings& s, const char* a) { s.setOrder(intFromText(a)); }},
    {'O', [](Settings& s, const char* a) { s.printOrderColumn = flagFromText(a); }},
    {'p', [](Settings& s, const char* a) { s.printPrecision = intFromText(a); }},
    {'P', [](Settings& s, const char* a) { s.printList = a; }},
    {'r', [](Settings& s, const char* a) { setPeriod(s, a); }},
    {'R', [](Settings& s, const char* a) { s.periodicBuffer = intFromText(a); }},
    {'s', [](Settings& s, const char* a) { s.setStep(static_cast<double>(realFromText(a))); }},
    {'S', [](Settings& s, const char* a) { s.steadyStop = static_cast<unsigned>(intFromText(a)); }},
    {'t', [](Settings& s, const char* a) { s.tMax = realFromText(a); }},
    {'T', [](Settings& s, const char* a) { s.printTempEquations = flagFromText(a); }},
    {'U', [](Settings& s, const char* a) { s.useAllTerms = flagFromText(a); }},
    {'w', [](Settings& s, const char* a) { s.printWidth = intFromText(a); }},
    {'x', [](Settings& s, const char* a) { s.stiffExpDiff = intFromText(a); }},
    {'X', [](Settings& s, const char* a) { s.stiffEveryStep = flagFromText(a); }},
    {'z', [](Settings& s, const char* a) { s.setZeroTerms(intFromText(a)); }},
};

/// An input stream that owns its file.
class FileInput : private __gnu_cxx::stdio_filebuf<char>, public std::istream {
public:
    explicit FileInput(int descriptor) : stdio_filebuf(descriptor, std::ios::in), std::istream(this) {
        if (!is_open()) setstate(std::ios::badbit);
    }
};

std::unique_ptr<std::istream> openInput(const char* name) {
    if (name == nullptr || std::strcmp(name, "-") == 0) return std::make_unique<FileInput>(STDIN_FILENO);
    const int descriptor = open(name, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw Failure(std::string("#(WARN) Error by opening input file: ") + std::strerror(errno) + "\n", 1);
    }
    return std::make_unique<FileInput>(descriptor);
}

}  // namespace

void applyOption(int letter, const char* argument, Settings& settings, Output& output, CommandLine& commandLine) {
    for (const Option& option : options) {
        if (option.letter != letter) continue;
        if (commandLine.badNumber.empty() && std::strchr(optionsWithText, letter) == nullptr && !isNumber(argument)) {
            commandLine.badNumber = std::string("-") + static_cast<char>(letter) + ' ' + argument;
        }
        return option.apply(settings, argument);
    }
    switch (letter) {
        case 'h':
        case '?':
            throw Failure(usageText(settings), 1);
        case 'v':
            output.results() << "ZIRK/C version 1.0\n";
            commandLine.solve = false;
            return;
        case ':':
            output.log() << "#(WARN) Missing argument for some option\n";
            return;
        case 'W':
            output.log() << "#(WARN) Option -" << letter << " not supported in \"simple number precision\" version\n";
            return;
        // The letter shows as its code, on purpose.
        default:
            throw Failure("#(WARN) Wrong parameter " + std::to_string(letter) + "\n", 1);
    }
}

CommandLine parseOptions(int argc, char** argv, Settings& settings, Output& output) {
    CommandLine commandLine;
    // getopt writes its messages itself: what came before must be out.
    output.flush();
    // 0 and not 1: starts afresh however often it is called.
    optind = 0;
    for (int letter = 0; (letter = getopt(argc, argv, optionString)) != -1;) {
        applyOption(letter, optarg, settings, output, commandLine);
        if (!commandLine.solve) return commandLine;
    }
    commandLine.input = openInput(optind < argc ? argv[optind] : nullptr);
    if (optind + 1 < argc) output.log() << "#(WARN) Some unused parameters in the way...\n";
    if (settings.printEvery < 0) settings.printEvery = settings.tMax / -settings.printEvery;
    return commandLine;
}

}  // namespace zirk
