// SPDX-License-Identifier: MIT
// The public face of a run.
#include "zirk/integrator.hpp"

#include "adaptive/integrator_content.hpp"
#include "adaptive/readout.hpp"

namespace zirk {

namespace {

std::vector<std::uint32_t> variablesOf(const FormulaGraph& graph) {
    std::vector<std::uint32_t> variables;
    for (NodeIndex node = 0; node < graph.size(); ++node) {
        if (graph[node].operation == Operation::Variable) variables.push_back(graph[node].left);
    }
    return variables;
}

/// All formulas in one graph, with nothing else in it.
std::vector<NodeIndex> gathered(const std::vector<Expression>& expressions, FormulaGraph& graph) {
    std::vector<NodeIndex> roots;
    for (const Expression& expression : expressions) {
        FormulaImport import(ExpressionAccess::graphOf(expression), graph);
        roots.push_back(import(ExpressionAccess::rootOf(expression)));
    }
    return roots;
}

}  // namespace

Readout::Readout(const Problem&, const std::vector<Expression>& expressions) {
    FormulaGraph graph;
    const std::vector<NodeIndex> roots = gathered(expressions, graph);
    content_ = std::make_unique<Content>(Content{Evaluation(graph, roots), variablesOf(graph)});
}
Readout::~Readout() = default;
Readout::Readout(Readout&&) noexcept = default;
Readout& Readout::operator=(Readout&&) noexcept = default;

std::size_t Readout::size() const { return content_->evaluation.size(); }

Integrator::Integrator(const Problem& problem, const IntegratorOptions& options)
    : content_(std::make_unique<Content>(problem, options)) {}
Integrator::~Integrator() = default;
Integrator::Integrator(Integrator&&) noexcept = default;
Integrator& Integrator::operator=(Integrator&&) noexcept = default;

std::size_t Integrator::watch(const Expression& expression, Crossing which) {
    return content_->watch(expression, which);
}
bool Integrator::step(real end) { return content_->step(end); }
real Integrator::stepBegin() const { return content_->stepBegin(); }
real Integrator::time() const { return content_->time(); }
const std::vector<ZeroCrossing>& Integrator::crossings() const { return content_->crossings(); }
void Integrator::read(Readout& readout, real time, real* values) const {
    content_->read(readout.content_->evaluation, time, values);
}
const IntegratorStatistics& Integrator::statistics() const { return content_->statistics(); }

}  // namespace zirk
