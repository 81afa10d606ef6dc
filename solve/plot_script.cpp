// SPDX-License-Identifier: MIT
// Terminals, the look of the picture, and its curves.
#include "solve/plot_script.hpp"

namespace zirk::solve {

namespace {

/// Colours that people tell apart whatever colours they see (M. Okabe, K. Ito, Color universal design, 2002), without
/// the yellow that is lost on white.
constexpr const char* colours[] = {"#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#404040"};
constexpr std::size_t colourCount = sizeof colours / sizeof *colours;
/// More names than these would hide the picture.
constexpr std::size_t mostNames = 14;

/// A point of the drawing is the same part of the picture in all of them; the png has twice as many pixels, for fine
/// screens.
const char* terminalOf(Picture picture) {
    switch (picture) {
        case Picture::Svg:
            return "svg size 800,500 enhanced font 'DejaVu Sans,13' background rgb 'white' rounded linewidth 1";
        case Picture::Png:
            return "pngcairo size 1600,1000 font 'DejaVu Sans,13' fontscale 1.5 background rgb 'white' rounded "
                   "linewidth 2 "
                   "pointscale 2";
        case Picture::Pdf:
            break;
    }
    return "pdfcairo size 20cm,12.5cm font 'DejaVu Sans,13' fontscale 0.85 background rgb 'white' rounded linewidth 1";
}

}  // namespace

std::string gnuplotQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + '\'';
}

std::string PlotScript::text() const {
    const std::size_t curves = columns.size() - 1;
    std::string script = std::string("set terminal ") + terminalOf(picture) + "\nset output " + gnuplotQuoted(output) +
                         "\n"
                         "set datafile missing 'nan'\n"
                         "set border 3 linewidth 1 linecolor rgb '#606060'\n"
                         "set tics nomirror out scale 0.6 textcolor rgb '#303030'\n"
                         "set grid linewidth 0.7 linetype 1 linecolor rgb '#e4e4e4'\n"
                         "set key outside top center horizontal noenhanced samplen 2.5 textcolor rgb '#303030'\n"
                         "set offsets graph 0, graph 0, graph 0.04, graph 0.04\n"
                         "set xlabel " +
                         gnuplotQuoted(columns[0]) + " noenhanced textcolor rgb '#303030'\n";
    if (curves == 1) {
        script += "set ylabel " + gnuplotQuoted(columns[1]) + " noenhanced textcolor rgb '#303030'\nunset key\n";
    } else if (curves > mostNames) {
        script += "unset key\n";
    }
    for (std::size_t i = 0; i < curves; ++i) {
        const std::string column = std::to_string(i + 2);
        script += i == 0 ? "plot " : ", \\\n     ";
        script += gnuplotQuoted(rows) + " using 1:" + column + " title " + gnuplotQuoted(columns[i + 1]);
        script += hasLines ? " with lines linewidth 2 dashtype " + std::to_string(i / colourCount % 4 + 1)
                           : std::string(" with points pointtype 7 pointsize 0.35");
        script += std::string(" linecolor rgb '") + colours[i % colourCount] + '\'';
    }
    return script + "\n";
}

}  // namespace zirk::solve
