// SPDX-License-Identifier: MIT
// Zeros of one formula, from step to step.
#pragma once

#include <vector>

#include "adaptive/roots.hpp"
#include "zirk/integrator.hpp"

namespace zirk {

/// Sees every change of sign once, also where a step ends just there.
class ZeroWatch {
public:
    explicit ZeroWatch(Crossing which) : which_(which) {}

    /// Zeros on one step, from the polynomial of the formula; places as in roots(), 0 for one at the very begin.
    std::vector<PolynomialRoot> zeros(const std::vector<real>& coefficients, real end);

private:
    Crossing which_;
    /// Sign before the present step; 0 at first, and after zeros for ever.
    int sign_ = 0;
};

}  // namespace zirk
