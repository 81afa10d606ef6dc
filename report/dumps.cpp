// SPDX-License-Identifier: MIT
// The two dumps; algebraic equations have no terms to show.
#include "report/dumps.hpp"

#include "text/line.hpp"

namespace zirk {

void dumpTerms(std::ostream& out, const EquationTable& equations, real time) {
    Line line(out);
    line << "#(DY) Dumping DYs (START) ###############################" << endOfLine;
    line << "#(DY) Dumping DYs (TIME)  " << time << endOfLine;
    for (const Differential& variable : equations) {
        for (int i = 0; i <= variable.highestTerm(); ++i) {
            line << "#(DY) DY_" << variable.name() << '[' << i << "](" << variable.termStamp()
                 << ") = " << variable.term(i) << endOfLine;
        }
    }
    line << "#(DY) Dumping DYs (END)   ###############################" << endOfLine;
}

void dumpDerivatives(std::ostream& out, const EquationTable& equations, const Calculus& calculus, real time) {
    Line line(out);
    line << "#(DER) Dumping Derivatives (START) ###############################" << endOfLine;
    line << "#(DER) Dumping Derivatives (TIME)  " << time << endOfLine;
    for (const Differential& variable : equations) {
        real factor = 1;
        for (int i = 1; i <= variable.highestTerm(); ++i) {
            factor = factor * static_cast<real>(i) / calculus.step;
            line << "#(DER) d" << variable.name() << "^[" << i << "](" << variable.termStamp()
                 << ") = " << factor * variable.term(i) << endOfLine;
        }
    }
    line << "#(DER) Dumping Derivatives (END) ###############################" << endOfLine;
}

}  // namespace zirk
