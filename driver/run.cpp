// SPDX-License-Identifier: MIT
// Rows, and the lines between them.
#include "driver/run.hpp"

#include "driver/run_context.hpp"
#include "report/dumps.hpp"
#include "report/plot_script.hpp"

namespace zirk {

using Pass = ClassicIntegrator::Pass;

Run::Run(const Settings& settings, Output& output, const Model& model, Evaluation evaluation)
    : settings_(settings),
      output_(output),
      integrator_(model, settings.classic, this, evaluation),
      table_(output.results(), integrator_, settings.layout, settings.selection, settings.numbers,
             settings.classic.limits.useAllTerms),
      log_(output.log()) {
    runContext().run = &integrator_;
}

Run::~Run() { runContext().run = nullptr; }

void Run::dumpTree() {
    log_ << "#(TREEDUMP) Dumping tree" << endOfLine;
    for (std::size_t i = 0; i < integrator_.size(); ++i) output_.log() << integrator_.equation(i);
    log_ << "#(TREEDUMP) Tree dumped" << endOfLine;
}

void Run::writeHints(const std::string& badOption) {
    if (!badOption.empty()) log_ << "#(HINT) " << badOption << endOfLine;
    for (const std::string& remark : integrator_.remarks()) log_ << "#(HINT) " << remark << endOfLine;
}

void Run::stepHalved(real step, real time) {
    log_ << "#(COMP) Max ORDER reached! Changing step to " << step << "\tTime= " << time << endOfLine;
}

void Run::stepEnlarged(real step, real time) {
    log_ << "#(COMP) Step increased to " << step << "\tTime= " << time << endOfLine;
}

void Run::stiffnessTested(const StiffnessTest& test) {
    if (test.isStiff) log_ << "#(COMP) System is STIFF!" << endOfLine;
    log_ << "#(TST) Max(" << test.largestName << ")=" << test.largestExponent << "  Min(" << test.smallestName
         << ")=" << test.smallestExponent << "  Diff=" << test.difference << endOfLine;
}

void Run::periodUnknown(const std::string& name) {
    log_ << "#(WARN) Equation " << name << " doesn't exist. The period. detection is disabled." << endOfLine;
}

bool Run::isDue() const {
    // Once the end time has cut the step every point is shown.
    if (settings_.rows.printEvery == 0 || integrator_.isLastStep()) return true;
    return integrator_.time() > nextPrint_ || integrator_.statistics().points == 1;
}

void Run::printPoint() {
    if (!isDue()) {
        ++unprinted_;
        return;
    }
    if (unprinted_ != 0) {
        log_ << "#(INFO) " << unprinted_ << " results not printed" << endOfLine;
        unprinted_ = 0;
    }
    nextPrint_ = nextPrint_ + settings_.rows.printEvery;
    if ((settings_.dumpDY & 1) != 0) dumpTerms(output_.log(), integrator_);
    if ((settings_.dumpDY & 2) != 0) dumpDerivatives(output_.log(), integrator_);
    table_.writeRow(settings_.rows.printOnlyTmax ? RowFlag::Set : RowFlag::Clear);
}

void Run::begin() {
    log_ << "#(INFO) Starting solving\n" << endOfLine;
    if (settings_.plot.gnuplotRequested) {
        writePlotHead(output_.results(), settings_.plot, settings_.layout, settings_.selection, integrator_);
    }
    table_.writeHeader();
    // The first points may take long; whoever ends the run by then still sees what it was about.
    output_.flush();
    clock_.startClock();
}

bool Run::pass() {
    const Pass pass = integrator_.next();
    if (pass == Pass::Point) printPoint();
    output_.tick();
    return pass != Pass::End;
}

void Run::end() {
    clock_.stopClock();
    table_.writeRow(settings_.rows.printOnlyTmax ? RowFlag::Clear : RowFlag::Set);
    clock_.printTimes(output_.log());
    if (settings_.plot.gnuplotRequested) writePlotTail(output_.results(), settings_.plot);
}

void Run::solve() {
    begin();
    while (pass()) {
    }
    end();
}

}  // namespace zirk
