// SPDX-License-Identifier: MIT
// Start-up, the loop over points, and the end of a run.
#include "driver/run.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <new>
#include <stdexcept>

#include "driver/hints.hpp"
#include "driver/memory_bound.hpp"
#include "driver/options.hpp"
#include "driver/resource_file.hpp"
#include "driver/signals.hpp"
#include "expand/expansion.hpp"
#include "expr/failure.hpp"
#include "lang/compiler.hpp"
#include "report/dumps.hpp"

namespace zirk {

Run::Run(Settings& settings, Output& output, Evaluation evaluation)
    : settings_(settings),
      output_(output),
      taylor_(settings, settings.equations, evaluation),
      control_(settings, settings, taylor_, settings.equations, progress_, output.log()),
      stiffness_(settings, settings.equations, output.log()),
      table_(output.results(), settings, settings, settings, settings.equations, stiffness_),
      nextPrint_(realFromText("0")) {}

void Run::openPeriod() {
    if (settings_.periodicCount <= 0) return;
    Differential* watched = settings_.equations.find(settings_.periodicName);
    if (watched != nullptr) {
        period_ = std::make_unique<Period>(settings_, settings_, *watched);
        return;
    }
    output_.log() << "#(WARN) Equation " << settings_.periodicName
                  << " doesn't exist. The period. detection is disabled.\n";
    settings_.periodicCount = 0;
}

bool Run::computePoint() {
    taylor_.evaluate();
    steady_.count(taylor_.steadyCount(), settings_.equations.size());
    return !control_.rejectPoint();
}

void Run::printPoint() {
    const bool due = settings_.printEvery == 0 || settings_.time > nextPrint_ || progress_.firstPoint;
    if (!due) {
        ++unprinted_;
        return;
    }
    std::ostream& log = output_.log();
    if (unprinted_ != 0) {
        log << "#(INFO) " << unprinted_ << " results not printed\n";
        unprinted_ = 0;
    }
    nextPrint_ = nextPrint_ + settings_.printEvery;
    if ((settings_.dumpDY & 1) != 0) dumpTerms(log, settings_.equations, progress_.previousTime);
    if ((settings_.dumpDY & 2) != 0) dumpDerivatives(log, settings_.equations, settings_, progress_.previousTime);
    table_.writeRow(settings_.printOnlyTmax ? RowFlag::Set : RowFlag::Clear);
}

bool Run::isFinished() {
    // With the steady-state test on, nothing else ends the run: at the end time the step is 0 from then on.
    if (settings_.steadyStop != 0) return steady_.run() == settings_.steadyStop;
    if (period_ && period_->found()) return true;
    return settings_.time == settings_.tMax;
}

void Run::begin() {
    output_.log() << "#(INFO) Starting solving\n\n";
    if (settings_.gnuplotRequested) writePlotHead(output_.results(), settings_, settings_, settings_.equations);
    table_.writeHeader();
    // The first points may take long; whoever ends the run by then still sees what it was about.
    output_.flush();
    clock_.startClock();
    openPeriod();
    control_.clipFirstStep();
}

bool Run::pass() {
    if (!computePoint()) {
        output_.tick();
        return true;
    }
    printPoint();
    output_.tick();
    if (isFinished()) return false;
    stiffness_.test(progress_.recheckStiffness);
    control_.enlarge();
    control_.advance(settings_.steadyStop == 0 && !period_);
    return true;
}

void Run::end() {
    clock_.stopClock();
    table_.writeRow(settings_.printOnlyTmax ? RowFlag::Clear : RowFlag::Set);
    clock_.printTimes(output_.log());
    if (settings_.gnuplotRequested) writePlotTail(output_.results(), settings_);
}

void Run::solve() {
    begin();
    while (pass()) {
    }
    end();
}

namespace {

/// A missing standard descriptor must not be taken by the next file that is opened; using it still fails.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) >= 0) continue;
        // The lowest free descriptor is this one.
        (void)!open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

int runSteps(int argc, char** argv, Output& output, Evaluation evaluation) {
    Settings& s = settings();
    std::ostream& log = output.log();
    s.reset();
    readResourceFile(resourceFilePath(), s, log);
    const CommandLine commandLine = parseOptions(argc, argv, s, output);
    if (!commandLine.solve) return 0;
    log << "#(INFO) Parsing input\n";
    if (Compiler(*commandLine.input, log, s, s, s).compile() != 0) {
        log << "#(ERR) Compile error occured...\n";
        return 3;
    }
    log << "#(INFO) Initializing values\n";
    Expansion(s, s, s).prepare();
    if (s.dumpTree) {
        log << "#(TREEDUMP) Dumping tree\n";
        for (const Differential& variable : s.equations) variable.TreeDump(log);
        log << "#(TREEDUMP) Tree dumped\n";
    }
    if (isatty(STDERR_FILENO) != 0) writeHints(log, s, s, commandLine.badNumber);
    Run(s, output, evaluation).solve();
    return 0;
}

/// Results first, then the message.
int fail(Output& output, const std::string& message, int status) {
    output.flushQuietly();
    // Whatever ended the run may have come out of this stream and left it closed to writing.
    output.log().clear();
    try {
        output.log() << message;
    } catch (const Failure&) {
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
    } catch (const Failure& failure) {
        return fail(output, failure.what(), failure.status());
    } catch (const std::bad_alloc&) {
        return fail(output, "#(ERR) Out of memory\n", 1);
    } catch (const std::length_error&) {
        return fail(output, "#(ERR) Out of memory\n", 1);
    }
}

}  // namespace

int runProgram(int argc, char** argv, Evaluation evaluation) {
    boundMemory();
    // A file that must not grow further is a write error like any other.
    std::signal(SIGXFSZ, SIG_IGN);
    occupyStandardDescriptors();
    const Delivery delivery = evaluation == Evaluation::NodeByNode ? Delivery::Immediate : Delivery::Collected;
    Output output(STDOUT_FILENO, STDERR_FILENO, delivery);
    setInterruptOutput(&output);
    const int status = runGuarded(argc, argv, output, evaluation);
    setInterruptOutput(nullptr);
    return status;
}

}  // namespace zirk
