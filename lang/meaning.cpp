// SPDX-License-Identifier: MIT
// Names are looked up when they are met; constants are folded by the graph itself.
#include "lang/meaning.hpp"

#include <cmath>
#include <string>

#include "formula/text.hpp"
#include "lang/suggestion.hpp"

namespace zirk {

namespace {

constexpr const char* onlyConstants = "; only constants can stand here";

const char* ending(real value) { return std::isnan(value) ? " is not a number" : " is not finite"; }

}  // namespace

void undefinedName(const ProblemContent& content, const Statements& text, const Place& place, const std::string& name) {
    const std::string message = "undefined name " + quoted(name);
    Suggestion suggestion(name);
    for (const ProblemContent::Equation& equation : content.equations) suggestion.consider(equation.name);
    if (suggestion.text().empty()) {
        const std::string_view instead = customaryWord(name);
        if (!instead.empty()) text.fail(place, message + "; " + std::string(instead));
    }
    suggestion.considerFunctions();
    suggestion.consider("pi");
    suggestion.consider("t");
    text.fail(place, message + suggestion.text());
}

Meaning meaningOf(const ProblemContent& content, const Statements& text, const FormulaItem& item) {
    const std::string& name = text.names[item.index];
    const auto found = content.equationOf.find(name);
    if (found == content.equationOf.end()) {
        undefinedName(content, text, {item.place.offset, static_cast<std::uint32_t>(name.size())}, name);
    }
    const ProblemContent::Equation& equation = content.equations[found->second];
    if (item.primes < equation.order) return {true, equation.variable + item.primes};
    if (item.primes == equation.order) return {false, found->second};
    if (equation.order == 0) {
        text.fail(item.place, quoted(name) + " is a definition, and derivatives are known of variables only");
    }
    text.fail(item.place, quoted(text.written(item.index, item.primes)) + " is not known: the equation of " +
                              quoted(name) + " ends at " + quoted(text.written(item.index, equation.order)));
}

void notConstant(const Statements& text, const FormulaItem& item) {
    if (item.operation == Operation::Time) text.fail(item.place, std::string("\"t\" is the time") + onlyConstants);
    text.fail(item.place, quoted(text.written(item.index, item.primes)) + " is a variable" + onlyConstants);
}

void requireConstant(const FormulaGraph& graph, NodeIndex node, const Statements& text, const FormulaItem& item) {
    if (graph.isNumber(node)) return;
    text.fail(item.place, quoted(text.written(item.index, item.primes)) + " changes with time" + onlyConstants);
}

NodeIndex NodeStack::pop() {
    const NodeIndex node = nodes_.back();
    nodes_.pop_back();
    return node;
}

NodeIndex NodeStack::made(const FormulaItem& item, NodeIndex a, NodeIndex b) {
    return graph_.like({item.operation, item.function, a, b, 0}, a, b);
}

void NodeStack::apply(const Statements& text, const FormulaItem& item) {
    if (item.operation == Operation::Number) return push(graph_.number(text.numbers[item.index]));
    if (item.operation == Operation::Time) return push(graph_.time());
    const bool isUnary = item.operation == Operation::Negate || item.operation == Operation::Function;
    const NodeIndex b = isUnary ? FormulaGraph::none : pop();
    const NodeIndex a = pop();
    if (item.operation == Operation::Divide && graph_.isNumber(b, 0)) text.fail(item.place, "division by 0");
    const NodeIndex node = made(item, a, b);
    if (graph_.isNumber(node) && !std::isfinite(graph_[node].number)) {
        text.fail(item.place, "constant " + operationText(graph_, item.operation, item.function, a, b) +
                                  ending(graph_[node].number));
    }
    push(node);
}

real constantValue(const ProblemContent& content, const FormulaGraph& graph, const Statements& text,
                   const FormulaRange& formula) {
    FormulaGraph scratch;
    NodeStack stack(scratch);
    for (std::size_t i = formula.begin; i < formula.end; ++i) {
        const FormulaItem& item = text.items[i];
        if (item.operation == Operation::Time) notConstant(text, item);
        if (item.operation != Operation::Variable) {
            stack.apply(text, item);
            continue;
        }
        const Meaning meaning = meaningOf(content, text, item);
        if (meaning.isVariable) notConstant(text, item);
        const NodeIndex node = content.equations[meaning.index].formula;
        requireConstant(graph, node, text, item);
        stack.push(scratch.number(graph[node].number));
    }
    return scratch[stack.pop()].number;
}

}  // namespace zirk
