// SPDX-License-Identifier: MIT
// Runs a program for one order.
#pragma once

#include <vector>

#include "expr/series_sum.hpp"
#include "solver/program.hpp"
#include "solver/term_arrays.hpp"

/// What a program works on.
struct OrderState {
    /// Per slot that is not a variable: the term of the present order, and term 0 of constants.
    std::vector<real> now;
    std::vector<real> constant;
    TermArrays arrays;

    /// Per variable.
    std::vector<SeriesSum> sums;

    /// Some sum has just ended; some term is not finite.
    bool anyEnded = false;
    bool anyWild = false;
};

/// Runs orders `first` to `last`, or until some sum has ended or some term is not finite; returns the order after them.
///
/// Order k gives terms k of all slots from terms k of all variables, and terms k + 1 of the variables. `row`: terms
/// `first` of the variables; a row has `rowSize` terms, and the next rows follow.
int runOrders(const Program& program, int first, int last, real* row, std::size_t rowSize, Calculus& calculus,
              OrderState& state);
