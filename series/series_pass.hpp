// SPDX-License-Identifier: MIT
// One point: all series summed order by order, by a program made from the graph.
#pragma once

#include <vector>

#include "expr/series_sum.hpp"
#include "series/highest_terms.hpp"
#include "series/order_run.hpp"

namespace zirk {

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

    /// Of the i-th differential variable in the order of names: index of the last term that the nodes would have computed
    /// in the last pass, and its terms up to there.
    int highestTerm(int i);
    real term(int i, int k) const { return run_.term(standIn_[at(i)], k); }

private:
    static std::size_t at(int i) { return static_cast<std::size_t>(i); }

    bool begin();
    bool setLeaves(int k);
    bool runConstants(int k);
    /// The last order that can run at once with order k.
    int lastAtOnce(int k) const;
    /// Adds terms `first` to `last` to the sums; those that end want no more.
    void addTerms(int first, int last);
    void useAll();
    void useNeeded();
    void handOver() const;

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

    OrderRun run_;
    /// Per variable of the program.
    std::vector<SeriesSum> sums_;
    /// Per variable of the graph, once somebody asked for it.
    std::vector<int> highest_;
    bool hasHighest_ = false;

    // Variables whose sum goes on, their number per component, and the part of the program that they need.
    std::vector<int> wanting_;
    std::vector<int> wantingIn_;
    std::vector<char> needed_;
    const Program* active_ = nullptr;
    Program part_;
    std::size_t marked_ = 0;
    bool stale_ = false;

    /// Orders after which all sums of some component had ended: at the point before and, so far, at this one. There is
    /// no use in looking for ends much earlier.
    std::vector<int> endsBefore_;
    std::vector<int> ends_;
};

}  // namespace zirk
