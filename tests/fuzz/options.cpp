// SPDX-License-Identifier: MIT
// Command line: every line of the input is one argument.
#include "driver/options.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <sstream>
#include <vector>

#include "driver/usage.hpp"
#include "tests/fuzz/harness.hpp"

using namespace zirk;

namespace {

std::vector<std::string> argumentsOf(const std::string& text) {
    std::vector<std::string> arguments{"zirk"};
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) arguments.push_back(line);
    // A NUL byte ends an argument wherever a program gets one.
    for (std::string& argument : arguments) argument.resize(std::strlen(argument.c_str()));
    return arguments;
}

/// The input that the option parser opens takes the standard input along when it goes.
void renewStandardInput() {
    const int empty = open("/dev/null", O_RDONLY);
    if (empty == STDIN_FILENO) return;
    dup2(empty, STDIN_FILENO);
    close(empty);
}

/// Ended by a request that is answered without solving.
struct Answered {};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    // Only files of the current directory may be opened by chance.
    if (text.find('/') != std::string::npos) return 0;
    // Messages of getopt would drown those of the fuzzer.
    opterr = 0;

    const auto configure = [&text](Settings& settings, Output& output) {
        renewStandardInput();
        std::vector<std::string> arguments = argumentsOf(text);
        std::vector<char*> argv;
        argv.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        bool solves = true;
        {
            const CommandLine commandLine =
                parseOptions(static_cast<int>(arguments.size()), argv.data(), settings, output);
            solves = commandLine.solve;
            require(!solves || commandLine.input != nullptr, "there is an input to solve");
        }
        renewStandardInput();
        usageText(settings);
        if (!solves) throw Answered();
        // More digits than any number has: the rest is filled up.
        bound(settings, {40, 17000});
    };
    try {
        solveBothWays(configure, "y'' = -y*t & 1; x = y + 1; z' = sin(y);");
    } catch (const Answered&) {
        // Nothing is solved.
    }
    return 0;
}
