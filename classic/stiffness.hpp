// SPDX-License-Identifier: MIT
// Stiffness: how far the last terms but one of the differential equations lie apart.
#pragma once

#include "classic/taylor_step.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Advisory test: changes neither the step nor the order.
class Stiffness {
public:
    Stiffness(const StiffnessOptions& options, const EquationTable& equations, TaylorStep& taylor)
        : options_(options), equations_(equations), taylor_(taylor) {}

    /// Whether the point is to be tested: not when the system is known to be stiff, unless `recheck` is set.
    bool isDue(bool recheck) const { return !last_.isStiff || recheck || options_.stiffEveryStep; }

    /// Tests the point; clears `recheck` when the system is found to be stiff.
    void test(bool& recheck);

    /// The last test; before the first one all exponents are 0.
    const StiffnessTest& last() const { return last_; }

private:
    const StiffnessOptions& options_;
    const EquationTable& equations_;
    TaylorStep& taylor_;
    StiffnessTest last_;
};

}  // namespace zirk
