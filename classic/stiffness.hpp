// SPDX-License-Identifier: MIT
// Stiffness: how far the last terms of the differential equations lie apart.
#pragma once

#include <iosfwd>
#include <string_view>

#include "text/line.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// What the test reads.
struct StiffnessSettings {
    int stiffExpDiff = 20;
    bool stiffEveryStep = false;
};

/// Advisory test: changes neither the step nor the order.
class Stiffness {
public:
    Stiffness(const StiffnessSettings& settings, const EquationTable& equations, std::ostream& log)
        : settings_(settings), equations_(equations), line_(log) {}

    /// Tests unless the system is known to be stiff; clears `recheck` when it is found to be.
    void test(bool& recheck);

    /// Binary exponents of the smallest and the largest last term; 0 before the first test.
    int smallestExponent() const { return smallest_.exponent; }
    int largestExponent() const { return largest_.exponent; }

private:
    struct Extreme {
        std::string_view name;
        int exponent = 0;
    };

    void findExtremes();
    static Extreme extreme(const Differential* variable, const real& magnitude);

    const StiffnessSettings& settings_;
    const EquationTable& equations_;
    Line line_;
    bool stiff_ = false;
    Extreme smallest_;
    Extreme largest_;
};

}  // namespace zirk
