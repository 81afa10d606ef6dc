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

    /// Per variable: its sum, its term of the present and of the next order.
    std::vector<SeriesSum> sums;
    const real* row = nullptr;
    real* nextRow = nullptr;

    /// Some sum has just ended; some term is not finite.
    bool anyEnded = false;
    bool anyWild = false;
};

/// Terms k of all slots and k + 1 of all variables that the program makes.
void runOrder(const Program& program, int k, Calculus& calculus, OrderState& state);
