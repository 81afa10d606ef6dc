// SPDX-License-Identifier: MIT
// How far the nodes would have computed the terms of every variable.
#pragma once

#include <vector>

#include "series/term_graph.hpp"

namespace zirk {

/// Raises the highest term of each variable to what the others ask of it.
///
/// A variable asks every variable that its right-hand side is made from for one term less than it has itself.
class HighestTerms {
public:
    explicit HighestTerms(const TermGraph& graph) : graph_(graph) {}

    /// `highest[i]`: index of the last term of variable i; in: of its own sum, out: as the nodes have it.
    void spread(std::vector<int>& highest);

private:
    void raise(int root, int highest);

    const TermGraph& graph_;
    std::vector<int> reached_;
    std::vector<int> pending_;
    std::vector<std::vector<int>> levels_;
};

}  // namespace zirk
