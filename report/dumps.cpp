// SPDX-License-Identifier: MIT
// The two dumps; algebraic equations have no terms to show.
#include "report/dumps.hpp"

#include "text/line.hpp"

namespace zirk {

void dumpTerms(std::ostream& out, const ClassicIntegrator& run) {
    Line line(out);
    line << "#(DY) Dumping DYs (START) ###############################" << endOfLine;
    line << "#(DY) Dumping DYs (TIME)  " << run.previousTime() << endOfLine;
    for (std::size_t variable = 0; variable < run.size(); ++variable) {
        for (int i = 0; i <= run.highestTerm(variable); ++i) {
            line << "#(DY) DY_" << run.name(variable) << '[' << i << "](" << run.pass()
                 << ") = " << run.term(variable, i) << endOfLine;
        }
    }
    line << "#(DY) Dumping DYs (END)   ###############################" << endOfLine;
}

void dumpDerivatives(std::ostream& out, const ClassicIntegrator& run) {
    Line line(out);
    line << "#(DER) Dumping Derivatives (START) ###############################" << endOfLine;
    line << "#(DER) Dumping Derivatives (TIME)  " << run.previousTime() << endOfLine;
    for (std::size_t variable = 0; variable < run.size(); ++variable) {
        real factor = 1;
        for (int i = 1; i <= run.highestTerm(variable); ++i) {
            factor = factor * static_cast<real>(i) / run.step();
            line << "#(DER) d" << run.name(variable) << "^[" << i << "](" << run.pass()
                 << ") = " << factor * run.term(variable, i) << endOfLine;
        }
    }
    line << "#(DER) Dumping Derivatives (END) ###############################" << endOfLine;
}

}  // namespace zirk
