// SPDX-License-Identifier: MIT
// What a problem holds: its equations as formulas in one graph.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "formula/graph.hpp"
#include "zirk/problem.hpp"

namespace zirk {

struct ProblemContent {
    /// y' = rate, from `start` on.
    struct Variable {
        /// As it is written: "x", "x'".
        std::string name;
        NodeIndex rate;
        real start;
    };
    struct Name {
        std::string written;
        NodeIndex formula;
    };

    std::shared_ptr<const FormulaGraph> graph;
    /// Variable i of the graph.
    std::vector<Variable> variables;
    /// In the order of the text; variables and definitions.
    std::vector<Name> names;
    real start = 0;
};

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
