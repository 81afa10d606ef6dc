// SPDX-License-Identifier: MIT
// The way into this folder: decides point by point whether a compiled program or the nodes sum the series.
#pragma once

#include <memory>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "series/retreat.hpp"
#include "series/term_graph.hpp"
#include "zirk/threads.hpp"

namespace zirk {

class SeriesPass;

// How this folder works, and its words. The nodes define every bit; this is the fast way to the same ones.
//
//   TermGraph      All nodes below the differential variables as a list of slots: variables, leaves (numbers, time,
//                  algebraic variables), operations.
//   DistinctTerms  Slots that have the same terms for ever, found once, share one of them: their representative. All
//                  that follows sees representatives only; sums are handed to all variables at the end.
//   Programs       The graph as instructions that turn terms k of the variables into terms k + 1: one program for what
//                  is constant over a step, one for the rest. A chain of instructions makes one value, in an
//                  accumulator; products and quotients sum over term arrays.
//   Lanes          A program packed: chains of one shape side by side, so that one step from instruction to instruction
//                  serves four of them. What OrderRun runs.
//   OrderRun       Runs lanes for orders k = 0, 1, ... over terms stored as pairs of doubles, and as 80-bit numbers
//                  from the first run of orders with a term that two doubles cannot hold.
//   SeriesPass     One point: leaves, programs, then the sums of the variables (SeriesSum), until all have ended.
//   Batching       How many orders run before the sums are looked at again.
//   Sections       A program cut into parts that several threads run at the same time, where that pays (parallel/).
//   NeededPart     What of the program is still needed when some sums have ended.
//   HighestTerms   How far the nodes would have computed each variable, which tests and dumps show.
//   Retreat        How long to leave alone what has just failed: pairs of doubles, or the program as a whole.
//
// Slots, variables and arrays are numbered by unsigned 32-bit indices; orders are ints, as for the nodes. Why it is
// fast and why no bit moves: docs/speed.md.

/// Sums every differential variable of a prepared system, to the same bits as the nodes do by themselves.
class Chooser {
public:
    Chooser(Calculus& calculus, const EquationTable& equations, const ThreadOptions& threads = {});
    ~Chooser();

    /// Sums and hands the results to the variables. False, with no variable touched, when it has to be left to the
    /// nodes: at the first points, for limits that need no terms, and around terms that are not finite where a shortcut
    /// needs them to be.
    bool sumAll();

    // After a call that summed: of a differential variable by its place in the order of names.

    /// Index of the last term that the nodes would have computed.
    int highestTerm(SlotIndex variable) const;
    real term(SlotIndex variable, int k) const;

private:
    /// Whether the program is not worth its making yet; asked once at each point.
    bool isWaiting();

    Calculus& calculus_;
    const EquationTable& equations_;
    const ThreadOptions threads_;
    std::unique_ptr<SeriesPass> pass_;
    /// Points that were left to the nodes before the program was made, and the most terms that one variable took at
    /// each.
    int waited_ = 0;
    int termsByNodes_ = 0;
    Retreat retreat_;
};

}  // namespace zirk
