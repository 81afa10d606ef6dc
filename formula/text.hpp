// SPDX-License-Identifier: MIT
// Formulas and numbers as text that reads back as what they are.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "formula/graph.hpp"

namespace zirk {

/// What a formula calls its parts.
struct FormulaNames {
    /// By the number of the variable.
    std::vector<std::string> variables;
    /// Nodes that have a name of their own.
    std::unordered_map<NodeIndex, std::string> formulas;
};

/// A formula with as few brackets as its meaning needs: "sqrt(x*x + 1)", "-x^2". Parts that have a name are written by
/// it, the formula itself never. What is longer than `most` bytes is cut there and ends with "...".
std::string formulaText(const FormulaGraph& graph, NodeIndex root, const FormulaNames& names,
                        std::size_t most = std::string::npos);

/// The formula that an operation makes from its operands, which are numbers; before it is folded.
std::string operationText(const FormulaGraph& graph, Operation operation, ExprType function, NodeIndex a, NodeIndex b);

/// The fewest figures that read back as the same number, in the plain form unless that is much longer: "2", "0.1",
/// "1e-18". Finite numbers only.
std::string numberText(real x);

}  // namespace zirk
