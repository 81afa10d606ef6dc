// SPDX-License-Identifier: MIT
// One point: all series summed order by order, by a program made from the graph.
#pragma once

#include <vector>

#include "expr/series_sum.hpp"
#include "solver/highest_terms.hpp"
#include "solver/order_run.hpp"

/// Sums all series of a system together.
///
/// Each value of the graph has a slot, values with the same terms share one. At order k the program gives every slot in
/// use its term k, then every variable in use gets term k + 1. A variable whose own sum has ended is computed only
/// while others need it.
class SeriesPass {
public:
    /// Variables must have begun the step: their start values decide which of them are congruent.
    SeriesPass(Calculus& calculus, const EquationTable& equations);

    /// Sums and hands the results to the variables. False, with no variable touched, when a term is not finite where a
    /// shortcut needs it to be.
    bool sumAll();

private:
    static std::size_t at(int i) { return static_cast<std::size_t>(i); }

    void begin();
    void setLeaves(int k);
    bool runConstants(int k);
    /// Room for the orders from k on; returns the last one that can run at once.
    int makeRoom(int k);
    void dropEnded();
    void useAll();
    void useNeeded();
    void handOver();

    Calculus& calculus_;
    TermGraph graph_;
    std::vector<int> first_;
    Programs programs_;
    HighestTerms highestTerms_;

    // Of the slots that stand for themselves: all, users before what they are made from; leaves; constants.
    std::vector<int> usersFirst_;
    std::vector<int> leaves_;
    std::vector<int> constants_;
    std::vector<int> component_;
    /// Per variable of the graph: the variable of the program that stands for it.
    std::vector<int> standIn_;

    OrderState state_;
    // Terms of all variables, one row per order.
    std::vector<real> rows_;
    std::size_t rowSize_ = 0;
    std::vector<int> highest_;

    // Variables whose sum goes on, their number per component, and the part of the program that they need.
    std::vector<int> wanting_;
    std::vector<int> wantingIn_;
    std::vector<char> needed_;
    const Program* active_ = nullptr;
    Program part_;
    std::size_t marked_ = 0;
    bool stale_ = false;
};
