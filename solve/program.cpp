// SPDX-License-Identifier: MIT
// What is asked for, one task after the other, and how errors are told.
#include "solve/program.hpp"

#include <unistd.h>

#include <cstdlib>
#include <new>

#include "command/output.hpp"
#include "command/process.hpp"
#include "solve/comma_list.hpp"
#include "solve/input.hpp"
#include "solve/messages.hpp"
#include "solve/options.hpp"
#include "solve/plan.hpp"
#include "solve/plot.hpp"
#include "solve/progress.hpp"
#include "solve/signals.hpp"
#include "solve/summary.hpp"

namespace zirk::solve {

namespace {

constexpr int defaultDigits = 15;

/// The command: its streams, and how it tells what it has to say.
class Program {
public:
    Program() : output_(STDOUT_FILENO, STDERR_FILENO), messages_(wantsColours()) {}

    /// Everything, to the exit status.
    int run(int argc, char** argv);

private:
    static bool wantsColours() {
        const char* refusal = std::getenv("NO_COLOR");
        return isatty(STDERR_FILENO) != 0 && (refusal == nullptr || *refusal == '\0');
    }

    Status perform(const Request& request);
    Problem readProblem(const Request& request);
    void solve(const Request& request, const Problem& problem);
    void solveWith(RowWriter& writer, const Request& request, const Problem& problem, const RunPlan& plan);
    void warn(const Request& request, const std::string& message);
    int fail(const std::string& message, Status status);

    Output output_;
    const Messages messages_;
    std::string source_;
    std::string sourceName_;
};

void Program::warn(const Request& request, const std::string& message) {
    if (!request.quiet) output_.log() << messages_.plain("warning", message);
}

Problem Program::readProblem(const Request& request) {
    const ProblemOptions options = problemOptions(request);
    if (request.file == "-" && isatty(STDIN_FILENO) != 0) {
        output_.log() << "reading equations from the terminal; end with Ctrl-D\n";
        output_.flush();
    }
    sourceName_ = inputName(request.file);
    source_ = readInput(request.file);
    // Plainer than what the language expects next.
    if (trimmed(source_).empty()) throw ParseError("there are no equations", 1, 1, "");
    return Problem::fromText(source_, options);
}

void Program::solveWith(RowWriter& writer, const Request& request, const Problem& problem, const RunPlan& plan) {
    Run run(problem, plan, writer, output_);
    Progress progress(output_, run.integrator(), plan.end, !request.quiet && isatty(STDERR_FILENO) != 0);
    const RunResult result = run.solve(progress);
    progress.hide();
    if (result.isInterrupted) return;
    if (request.verbose) output_.log() << summaryText(run.integrator().statistics(), progress.seconds());
    if (plan.untilCount > 0 && !result.isMet) {
        std::string unmet;
        for (const Watched& w : request.until) unmet += (unmet.empty() ? "" : ", ") + w.text;
        warn(request, "the end time was reached before --until was met: " + unmet);
    }
}

/// Of a run that failed, which is the error to be told.
void drawWhatThereIs(Plot& plot) {
    try {
        plot.draw();
    } catch (const Failure&) {
        // The error of the run says more.
    }
}

void Program::solve(const Request& request, const Problem& problem) {
    const RunPlan plan = makePlan(request, problem);
    const std::vector<std::string> columns = columnNames(request, problem);
    const EndingHeld held;
    if (request.plot) {
        Plot plot(*request.plot, columns, plan.rows);
        try {
            solveWith(plot.writer(), request, problem, plan);
        } catch (const RunError&) {
            drawWhatThereIs(plot);
            throw;
        }
        if (endingSignal() == 0) plot.draw();
    } else {
        const auto writer = makeRowWriter(request.format.value_or(Format::Table), output_.results(), columns,
                                          request.digits.value_or(defaultDigits));
        solveWith(*writer, request, problem, plan);
    }
}

Status Program::perform(const Request& request) {
    switch (request.task) {
        case Task::Help:
            output_.results() << helpText();
            break;
        case Task::Version:
            output_.results() << "zirk-solve " ZIRK_VERSION "\n";
            break;
        case Task::Explain:
            output_.results() << readProblem(request).explain();
            break;
        case Task::Solve:
            solve(request, readProblem(request));
            break;
    }
    output_.flush();
    return Success;
}

/// Results first, then the message.
int Program::fail(const std::string& message, Status status) {
    output_.flushQuietly();
    // Whatever ended the run may have come out of this stream and left it closed to writing.
    output_.log().clear();
    try {
        output_.log() << message;
    } catch (const ResultsLost&) {
        // Results that wait with it cannot be written; the message stands for that.
    }
    output_.flushQuietly();
    return status;
}

int Program::run(int argc, char** argv) {
    const auto error = [&](const std::string& message) { return messages_.plain("error", message); };
    int status = Success;
    try {
        status = perform(readCommandLine(argc, argv));
    } catch (const FormulaError& formula) {
        status = fail(messages_.inOption(formula), formula.status());
    } catch (const UsageError& usage) {
        status = fail(error(usage.what()) + "Try 'zirk-solve --help' for more information.\n", usage.status());
    } catch (const Failure& failure) {
        status = fail(error(failure.what()), failure.status());
    } catch (const ParseError& parse) {
        status = fail(messages_.atSource(sourceName_, source_, parse), parse.line() > 0 ? NotCompiled : Unusable);
    } catch (const Error& run) {
        status = fail(error(run.what()), RunFailed);
    } catch (const ResultsLost& lost) {
        status = fail(error(std::string("cannot write the rows: ") + lost.what()), RunFailed);
    } catch (const std::bad_alloc&) {
        status = fail(error("out of memory"), RunFailed);
    } catch (const std::length_error&) {
        status = fail(error("out of memory"), RunFailed);
    }
    if (endingSignal() != 0) endBySignal(endingSignal());
    return status;
}

}  // namespace

int runProgram(int argc, char** argv) {
    prepareProcess();
    listenForQuestions();
    return Program().run(argc, argv);
}

}  // namespace zirk::solve
