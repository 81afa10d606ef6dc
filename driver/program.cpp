// SPDX-License-Identifier: MIT
// Start-up, and how a run ends.
#include "driver/program.hpp"

#include <unistd.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>

#include "command/process.hpp"
#include "driver/options.hpp"
#include "driver/resource_file.hpp"
#include "driver/run.hpp"
#include "driver/run_context.hpp"

namespace zirk {

namespace {

Model::Source sourceOf(std::istream& input) {
    return [&input](char* buffer, std::size_t size) {
        input.read(buffer, static_cast<std::streamsize>(size));
        if (input.bad()) throw Error("input in flex scanner failed\n", 2);
        return static_cast<std::size_t>(input.gcount());
    };
}

Model readModel(std::istream& input, const SeriesLimits& limits, std::ostream& log) {
    try {
        Model model = Model::read(sourceOf(input), limits);
        log << model.messages();
        return model;
    } catch (const ParseError& error) {
        throw Error(error.text() + "#(ERR) Compile error occured...\n", error.status());
    }
}

int runSteps(int argc, char** argv, Output& output, Evaluation evaluation) {
    Settings& settings = *runContext().settings;
    std::ostream& log = output.log();
    settings.reset();
    readResourceFile(resourceFilePath(), settings, log);
    const CommandLine commandLine = parseOptions(argc, argv, settings, output);
    if (!commandLine.solve) return 0;
    log << "#(INFO) Parsing input\n";
    const Model model = readModel(*commandLine.input, settings.classic.limits, log);
    log << "#(INFO) Initializing values\n";
    // Several threads only where somebody has said so: scripts may run many of these at the same time.
    settings.classic.threads.most = std::max(threadsOfEnvironment(), 1U);
    // Never freed: taking a large system apart takes longer than a short run. The context knows it.
    Run& run = *new Run(settings, output, model, evaluation);
    if (settings.dumpTree) run.dumpTree();
    if (isatty(STDERR_FILENO) != 0) run.writeHints(commandLine.badValue);
    run.solve();
    return 0;
}

/// Results first, then the message.
int fail(Output& output, const std::string& message, int status) {
    output.flushQuietly();
    // Whatever ended the run may have come out of this stream and left it closed to writing.
    output.log().clear();
    try {
        output.log() << message;
    } catch (const ResultsLost&) {
        // Results that wait with it cannot be written; the message stands for that.
    }
    output.flushQuietly();
    return status;
}

/// Turns what ends a run early into its message and status.
int runGuarded(int argc, char** argv, Output& output, Evaluation evaluation) {
    try {
        const int status = runSteps(argc, argv, output, evaluation);
        output.flush();
        return status;
    } catch (const Error& error) {
        return fail(output, error.text(), error.status());
    } catch (const ResultsLost& lost) {
        return fail(output, std::string("#(ERR) Error by writing results: ") + lost.what() + "\n", 1);
    } catch (const std::bad_alloc&) {
        return fail(output, "#(ERR) Out of memory\n", 1);
    } catch (const std::length_error&) {
        return fail(output, "#(ERR) Out of memory\n", 1);
    }
}

}  // namespace

int runProgram(int argc, char** argv, Evaluation evaluation) {
    prepareProcess();
    Output output(STDOUT_FILENO, STDERR_FILENO);
    runContext().output = &output;
    const int status = runGuarded(argc, argv, output, evaluation);
    runContext().output = nullptr;
    return status;
}

}  // namespace zirk
