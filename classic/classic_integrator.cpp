// SPDX-License-Identifier: MIT
// The public face of a run.
#include "zirk/classic_integrator.hpp"

#include <algorithm>
#include <sstream>

#include "classic/classic_run.hpp"
#include "classic/remarks.hpp"

namespace zirk {

void ClassicObserver::stepHalved(real, real) {}

void ClassicObserver::stepEnlarged(real, real) {}

void ClassicObserver::stiffnessTested(const StiffnessTest&) {}

void ClassicObserver::periodUnknown(const std::string&) {}

ClassicIntegrator::ClassicIntegrator(const Model& model, const ClassicOptions& options, ClassicObserver* observer,
                                     Evaluation evaluation)
    : run_(std::make_unique<ClassicRun>(model.content_->take(options.limits), options, observer, evaluation)) {}

ClassicIntegrator::~ClassicIntegrator() = default;

ClassicIntegrator::ClassicIntegrator(ClassicIntegrator&& other) noexcept = default;

ClassicIntegrator& ClassicIntegrator::operator=(ClassicIntegrator&& other) noexcept = default;

ClassicIntegrator::Pass ClassicIntegrator::next() { return run_->next(); }

real ClassicIntegrator::time() const { return run_->calculus().time; }

real ClassicIntegrator::previousTime() const { return run_->progress().previousTime; }

real ClassicIntegrator::step() const { return run_->calculus().step; }

int ClassicIntegrator::order() const { return run_->calculus().orderUsed; }

bool ClassicIntegrator::isLastStep() const { return run_->progress().isLastStep; }

int ClassicIntegrator::pass() const { return run_->calculus().stepStamp; }

const ClassicStatistics& ClassicIntegrator::statistics() const { return run_->statistics(); }

const StiffnessTest& ClassicIntegrator::stiffness() const { return run_->stiffness(); }

std::size_t ClassicIntegrator::size() const { return run_->variables().size(); }

const std::string& ClassicIntegrator::name(std::size_t variable) const { return run_->variables()[variable]->name(); }

std::size_t ClassicIntegrator::index(const std::string& name) const {
    const std::vector<Differential*>& list = run_->variables();
    const Differential* variable = run_->equations().resolve(name);
    return static_cast<std::size_t>(std::find(list.begin(), list.end(), variable) - list.begin());
}

const real& ClassicIntegrator::value(std::size_t variable) const { return run_->variables()[variable]->result(); }

int ClassicIntegrator::highestTerm(std::size_t variable) const { return run_->taylor().highestTerm(variable); }

real ClassicIntegrator::term(std::size_t variable, int k) const { return run_->taylor().term(variable, k); }

std::vector<real> ClassicIntegrator::terms(std::size_t variable) const {
    std::vector<real> terms;
    const int highest = highestTerm(variable);
    for (int k = 0; k <= highest; ++k) terms.push_back(term(variable, k));
    return terms;
}

std::vector<std::string> ClassicIntegrator::remarks() const { return remarksOn(run_->calculus(), run_->system()); }

std::string ClassicIntegrator::equation(std::size_t variable) const {
    std::ostringstream out;
    run_->variables()[variable]->TreeDump(out);
    return out.str();
}

}  // namespace zirk
