// SPDX-License-Identifier: MIT
// The two dumps; algebraic equations have no terms to show.
#include "solver/dumps.hpp"

#include <ostream>

void dumpTerms(std::ostream& out, const EquationTable& equations, real time) {
    out << "#(DY) Dumping DYs (START) ###############################\n";
    out << "#(DY) Dumping DYs (TIME)  " << time << '\n';
    for (const Differential& variable : equations) {
        for (int i = 0; i <= variable.highestTerm(); ++i) {
            out << "#(DY) DY_" << variable.name() << '[' << i << "](" << variable.termStamp()
                << ") = " << variable.term(i) << '\n';
        }
    }
    out << "#(DY) Dumping DYs (END)   ###############################\n";
}

void dumpDerivatives(std::ostream& out, const EquationTable& equations, const Calculus& calculus, real time) {
    out << "#(DER) Dumping Derivatives (START) ###############################\n";
    out << "#(DER) Dumping Derivatives (TIME)  " << time << '\n';
    for (const Differential& variable : equations) {
        real factor = 1;
        for (int i = 1; i <= variable.highestTerm(); ++i) {
            factor = factor * static_cast<real>(i) / calculus.step;
            out << "#(DER) d" << variable.name() << "^[" << i << "](" << variable.termStamp()
                << ") = " << factor * variable.term(i) << '\n';
        }
    }
    out << "#(DER) Dumping Derivatives (END) ###############################\n";
}
