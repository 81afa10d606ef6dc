// SPDX-License-Identifier: MIT
// What the names in a formula stand for, and formulas into nodes.
#pragma once

#include <cstdint>
#include <vector>

#include "formula/graph.hpp"
#include "lang/problem_content.hpp"
#include "lang/statements.hpp"

namespace zirk {

/// A variable, or what an equation says: a definition or a highest derivative.
struct Meaning {
    bool isVariable;
    std::uint32_t index;
};

/// Throws a ParseError for what is not defined, and for derivatives that nothing is known of.
Meaning meaningOf(const ProblemContent& content, const Statements& text, const FormulaItem& item);

/// Throws a ParseError for a name that nobody defines, with the nearest name that somebody does.
[[noreturn]] void undefinedName(const ProblemContent& content, const Statements& text, const Place& place,
                                const std::string& name);

/// Throws a ParseError that says why an item cannot stand in a formula of constants.
[[noreturn]] void notConstant(const Statements& text, const FormulaItem& item);

/// Nodes on their way into larger ones.
class NodeStack {
public:
    explicit NodeStack(FormulaGraph& graph) : graph_(graph) {}

    /// Any item but a name. Throws a ParseError for a constant that is not finite.
    void apply(const Statements& text, const FormulaItem& item);
    void push(NodeIndex node) { nodes_.push_back(node); }
    NodeIndex pop();

private:
    NodeIndex made(const FormulaItem& item, NodeIndex a, NodeIndex b);

    FormulaGraph& graph_;
    std::vector<NodeIndex> nodes_;
};

/// Value of a formula of constants. What definitions stand for must be known.
real constantValue(const ProblemContent& content, const FormulaGraph& graph, const Statements& text,
                   const FormulaRange& formula);

/// Throws a ParseError unless a definition is constant.
void requireConstant(const FormulaGraph& graph, NodeIndex node, const Statements& text, const FormulaItem& item);

}  // namespace zirk
