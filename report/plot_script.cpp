// SPDX-License-Identifier: MIT
// Head and tail of the script.
#include "report/plot_script.hpp"

#include <ostream>
#include <vector>

namespace zirk {

namespace {

/// Names of the curves. Unlike the columns of the table, a name is left out for a leading "%" only.
std::vector<std::string> plottedNames(const Layout& layout, const Selection& selection, const ClassicIntegrator& run) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (run.name(i).front() == '%' && !layout.printTempEquations) continue;
        if (selection.selects(run.name(i))) names.push_back(run.name(i));
    }
    return names;
}

void writeAxes2D(std::ostream& out, const Layout& layout, const std::vector<std::string>& names) {
    out << "set xlabel \"Time\"\nset ylabel \"";
    const char* separator = "";
    if (layout.printOrderColumn) out << "ORD ";
    for (const std::string& name : names) {
        out << separator << name;
        separator = " ";
    }
    out << "\"\n\n";
}

void writeAxes3D(std::ostream& out) {
    out << "set xlabel \"x\"\n"
           "set ylabel \"y\"\n"
           "set surface\n"
           "set hidden3d\n"
           "set contour\n"
           "set cntrparam cubicspline\n"
           "set cntrparam levels 16\n"
           "\n";
}

void writeCurves(std::ostream& out, const std::string& file, const Layout& layout,
                 const std::vector<std::string>& names) {
    const int timeColumn = layout.printOrderColumn ? 2 : 1;
    int column = timeColumn + 1;
    const char* separator = "";
    out << "plot ";
    if (layout.printOrderColumn) {
        out << "'" << file << ".dat' using 2:1 title 'ORD' with histeps";
        separator = ", \\\n";
    }
    for (const std::string& name : names) {
        out << separator << "     '" << file << ".dat' using " << timeColumn << ":" << column++ << " title '" << name
            << "' with lines";
        separator = ", \\\n";
    }
}

}  // namespace

void writePlotHead(std::ostream& out, const PlotSettings& plot, const Layout& layout, const Selection& selection,
                   const ClassicIntegrator& run) {
    const std::vector<std::string> names = plottedNames(layout, selection, run);
    const std::string& file = plot.gnuplotFile;
    const std::string& terminal = layout.gnuplotOutput;
    const bool flat = layout.points3D < 1;
    out << "#!/bin/bash\n"
           "# RUN THIS SCRIPT TO GET THE FILES REQUIRED FOR GNUPLOT!!!\n"
           "cat<<END_OF_CMDS > "
        << file << ".p\n"
        << "# --8<---file: " << file << ".p ----------------------------------\n"
        << "# Note: for persistent window in x11 start gnuplot:  gnuplot -persist " << file << ".p\n"
        << "#\n#\nset title \"Output from ZIRK/C\"\n";
    if (flat) {
        writeAxes2D(out, layout, names);
    } else {
        writeAxes3D(out);
    }
    out << "set term " << terminal << '\n';
    if (terminal != "x11") out << "set out \"" << file << "." << terminal << "\"\n\n";
    if (flat) {
        writeCurves(out, file, layout, names);
    } else if (!layout.all3DValues) {
        out << "splot '" << file << ".dat'  matrix with lines\n";
    }
    out << "\n\nEND_OF_CMDS\ncat <<END_OF_DATA > " << file << ".dat\n\n# --8<---file: " << file
        << ".dat ----------------\n";
}

void writePlotTail(std::ostream& out, const PlotSettings& plot) {
    out << "\nEND_OF_DATA\n\ngnuplot " << plot.gnuplotFile << ".p \n\n";
}

}  // namespace zirk
