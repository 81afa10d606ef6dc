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

/// Terms k of all slots, from terms k of all variables in `row`; terms k + 1 of the variables into `nextRow`.
void runOrder(const Program& program, int k, const real* row, real* nextRow, Calculus& calculus, OrderState& state);
