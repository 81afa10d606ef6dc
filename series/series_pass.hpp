// SPDX-License-Identifier: MIT
// One point: all series summed order by order, by a program made from the graph.
#pragma once

#include <atomic>
#include <mutex>
#include <vector>

#include "expr/series_sum.hpp"
#include "series/batching.hpp"
#include "series/congruence.hpp"
#include "series/highest_terms.hpp"
#include "series/needed_part.hpp"
#include "series/order_run.hpp"

namespace zirk {

/// Sums all series of a system together.
///
/// At order k the program gives every slot in use its term k, then every variable in use gets term k + 1. A variable
/// whose own sum has ended is computed only while others need it.
class SeriesPass {
public:
    SeriesPass(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads = {});
    SeriesPass(const SeriesPass&) = delete;
    SeriesPass& operator=(const SeriesPass&) = delete;

    /// Sums and hands the results to the variables. False, with no variable touched, when a term is not finite where a
    /// shortcut needs it to be.
    bool sumAll();

    /// Of a differential variable by its place in the order of names: index of the last term that the nodes would have
    /// computed in the last pass, and its terms up to there. Any number of threads may ask at the same time.
    int highestTerm(SlotIndex variable) const;
    real term(SlotIndex variable, int k) const { return run_.term(distinct_.representative[variable], k); }

private:
    bool begin();
    bool setFixed();
    bool setLeaf(SlotIndex leaf);
    /// Adds terms `first` to `last` to the sums; those that end want no more.
    void addTerms(int first, int last);
    void beginVariables(std::size_t first, std::size_t last) const;
    void adopt(std::size_t first, std::size_t last) const;
    // By all members of the crew.
    [[gnu::noinline]] void beginTogether();
    [[gnu::noinline]] void addTermsTogether(int first, int last);
    [[gnu::noinline]] void adoptTogether();
    void spreadHighest() const;

    Calculus& calculus_;
    const TermGraph all_;
    const DistinctTerms distinct_;
    Crew crew_;
    const Programs programs_;
    const Lanes constantLanes_;
    /// Numbers never change, times change at every point, definitions may.
    std::vector<SlotIndex> numbers_;
    std::vector<SlotIndex> times_;
    std::vector<SlotIndex> definitions_;

    OrderRun run_;
    /// Values of the definitions at the last point.
    std::vector<real> defined_;
    Batching batching_;
    NeededPart needed_;
    /// Per distinct variable, and those whose sum goes on.
    std::vector<SeriesSum> sums_;
    std::vector<SlotIndex> wanting_;

    // Few points are asked for their highest terms: the first who asks has them computed, unless all variables have
    // what their own sums took.
    bool isLevel_ = false;
    mutable std::mutex highestMutex_;
    mutable std::atomic<bool> knowsHighest_{false};
    mutable HighestTerms highestTerms_;
    mutable std::vector<int> highest_;
};

}  // namespace zirk
