// SPDX-License-Identifier: MIT
// Formulas evaluated at one time.
#pragma once

#include <vector>

#include "formula/graph.hpp"

namespace zirk {

/// Values of some formulas of one graph from the values of the variables, each shared part once.
class Evaluation {
public:
    /// Takes what it needs from the graph.
    Evaluation(const FormulaGraph& graph, const std::vector<NodeIndex>& roots);

    std::size_t size() const { return places_.size(); }

    /// Variables that the formulas depend on are read from `variables`; one value per root goes to `out`.
    void values(real time, const real* variables, real* out);

private:
    std::vector<FormulaGraph::Node> nodes_;
    /// For exp(u) - 1 and 1 - exp(u), which lose their digits near u = 0: 1 or -1 times expm1(u), else 0.
    std::vector<int> exponentialLessOne_;
    int lessOne(const FormulaGraph::Node& node) const;

    std::vector<std::uint32_t> places_;
    std::vector<real> results_;
};

}  // namespace zirk
