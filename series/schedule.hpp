// SPDX-License-Identifier: MIT
// Decides point by point whether the series are summed by a compiled program or by the nodes.
#pragma once

#include <memory>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "series/retreat.hpp"

namespace zirk {

class SeriesPass;

/// Sums every differential variable of a prepared system, to the same bits as the nodes do by themselves.
class Schedule {
public:
    Schedule(Calculus& calculus, const EquationTable& equations);
    ~Schedule();

    /// Sums and hands the results to the variables. False, with no variable touched, when it has to be left to the
    /// nodes: at the first points, for limits that need no terms, and around terms that are not finite where a shortcut
    /// needs them to be.
    bool sumAll();

    // After a call that summed: of the i-th differential variable in the order of names.

    /// Index of the last term that the nodes would have computed.
    int highestTerm(int i);
    real term(int i, int k) const;

private:
    Calculus& calculus_;
    const EquationTable& equations_;
    std::unique_ptr<SeriesPass> pass_;
    /// Points that were left to the nodes before the program was made.
    int waited_ = 0;
    Retreat retreat_;
};

}  // namespace zirk
