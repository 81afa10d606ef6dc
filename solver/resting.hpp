// SPDX-License-Identifier: MIT
// Variables whose series is exactly zero and stays so: they would be rejected for ever.
#pragma once

#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

/// Tells which variables with only zero terms can have no other terms when the point is repeated.
///
/// A sum of zeros never has a negligible term and so uses the full order. It counts while something that its right-hand
/// side reaches moved in the pass: an algebraic equation or a time node, through other variables as well. When all of
/// them ended the pass with the value they started with, the variable rests and does not count.
class RestingVariables {
public:
    explicit RestingVariables(const EquationTable& equations) : equations_(equations) {}

    /// Highest order used by the variables that count. `culprit` becomes a variable beyond `limit`, or null.
    int order(int limit, const Differential** culprit);

private:
    /// Any node of any right-hand side, once, with the nodes that use it.
    struct Node {
        const Expr* expr;
        std::vector<std::size_t> users;
        bool reachesMotion;
    };

    void buildGraph();
    void spreadMotion();

    const EquationTable& equations_;
    std::vector<Node> nodes_;
};
