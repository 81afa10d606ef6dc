// SPDX-License-Identifier: MIT
// The shell script around the result table that makes a gnuplot command file and a data file.
#pragma once

#include <iosfwd>
#include <string>

#include "report/layout.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Whether a script is wanted, and the base name of its files.
struct PlotSettings {
    bool gnuplotRequested = false;
    std::string gnuplotFile = "output";
};

/// Written before the header of the result table.
void writePlotHead(std::ostream& out, const PlotSettings& plot, const Layout& layout, const Selection& selection,
                   const ClassicIntegrator& run);

/// Written after the last row.
void writePlotTail(std::ostream& out, const PlotSettings& plot);

}  // namespace zirk
