// SPDX-License-Identifier: MIT
// Variables whose series is exactly zero and stays so: they would be rejected for ever.
#pragma once

#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// Tells which variables with only zero terms can have no other terms when the point is repeated.
///
/// A sum of zeros never has a negligible term and so uses the full order. A variable with nothing but zero terms in
/// this pass rests, and does not count, when all its terms were zero in every earlier pass of this point too (zeros
/// that come from underflow do not rest), and one of these holds:
///   - Nothing moves it: every algebraic equation and every time node that its right-hand side reaches, through other
///     differential variables but not into definitions, ended the pass with the value it started with.
///   - Nothing feeds it: it belongs to the largest set of such variables whose right-hand sides are all zero as long
///     as the members are.
class RestingVariables {
public:
    explicit RestingVariables(const EquationTable& equations) : equations_(equations) {}

    struct Count {
        /// Highest order used by the variables that count.
        int order = 0;
        /// Place in the table of the first of them beyond the limit, or `nobody`.
        std::size_t culprit = nobody;
    };
    static constexpr std::size_t nobody = static_cast<std::size_t>(-1);

    /// After a pass in which some variable was beyond `limit`.
    Count count(int limit);

    /// The next pass belongs to another point.
    void beginPoint();

private:
    struct Use {
        std::size_t user;
        bool isDivisor;
    };
    /// Any node of any right-hand side, once, with its uses.
    struct Node {
        const Expr* expr;
        std::vector<Use> uses;
        bool reachesMotion = false;
        /// Operands that may be other than zero, and whether the node itself may.
        int fedOperands = 0;
        bool isFed = false;
        /// Of a variable: all terms were zero in every pass of this point so far.
        bool wasZero = true;
    };

    void buildGraph();
    void spreadMotion();
    void spreadFeeding();
    void feed(std::size_t index);

    const EquationTable& equations_;
    std::vector<Node> nodes_;
    std::vector<std::size_t> pending_;
    bool hasHistory_ = false;
};

}  // namespace zirk
