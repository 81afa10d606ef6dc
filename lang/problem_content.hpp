// SPDX-License-Identifier: MIT
// What a problem holds: its equations as formulas in one graph.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "formula/graph.hpp"
#include "formula/text.hpp"
#include "zirk/problem.hpp"

namespace zirk {

struct ProblemContent {
    /// y' = rate, from `start` on.
    struct Variable {
        /// As it is written: "x", "x'".
        std::string name;
        NodeIndex rate;
        real start;
        /// Of the graph.
        NodeIndex node = FormulaGraph::none;
    };
    struct Name {
        std::string written;
        NodeIndex formula;
    };
    /// One statement "name'' = formula".
    struct Equation {
        std::string name;
        /// Number of primes; 0 for a definition.
        std::uint32_t order;
        /// Of the name itself; those of its derivatives follow.
        std::uint32_t variable;
        /// The definition, or the highest derivative.
        NodeIndex formula = FormulaGraph::none;
    };

    std::shared_ptr<const FormulaGraph> graph;
    /// Variable i of the graph.
    std::vector<Variable> variables;
    /// In the order of the text; variables and definitions.
    std::vector<Name> names;
    /// In the order of the text; variables and definitions.
    std::vector<Equation> equations;
    /// Which equation belongs to a name.
    std::unordered_map<std::string, std::uint32_t> equationOf;
    /// The names as programs get them.
    std::vector<std::string> writtenNames;
    real start = 0;
};

/// How messages call the variables and the definitions of a problem.
FormulaNames namesOf(const ProblemContent& content);

/// For the rooms that solve.
struct ProblemAccess {
    static const ProblemContent& of(const Problem& problem) { return *problem.content_; }
    static std::shared_ptr<const ProblemContent> share(const Problem& problem) { return problem.content_; }
};
struct ExpressionAccess {
    static const FormulaGraph& graphOf(const Expression& expression) { return *expression.graph_; }
    static NodeIndex rootOf(const Expression& expression) { return expression.root_; }
};

}  // namespace zirk
