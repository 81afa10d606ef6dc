// SPDX-License-Identifier: MIT
// Terminals, the look of the picture, and its curves.
#include "solve/plot_script.hpp"

#include <filesystem>

#include "solve/failure.hpp"

namespace zirk::solve {

namespace {

/// Colours that people tell apart whatever colours they see (M. Okabe, K. Ito, Color universal design, 2002), without
/// the yellow that is lost on white.
constexpr const char* colours[] = {"#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#404040"};
constexpr std::size_t colourCount = sizeof colours / sizeof *colours;
/// More names than these would hide the picture.
constexpr std::size_t mostNames = 14;

/// Dark blue over green to yellow: neighbours in a long row of curves have neighbouring colours.
constexpr const char* gradient =
    "set palette defined (0 '#3b2f80', 0.35 '#21788c', 0.7 '#5cb85c', 1 '#e6c229')\nunset colorbox\n";

/// Sizes in what each format counts in; the png has twice as many pixels as the svg has points, for fine screens.
const char* terminalOf(Picture picture) {
    switch (picture) {
        case Picture::Svg:
            return "svg size 800,500 font 'DejaVu Sans,13' background rgb 'white' rounded linewidth 1";
        case Picture::Png:
            return "pngcairo size 1600,1000 font 'DejaVu Sans,20' background rgb 'white' rounded linewidth 2 "
                   "pointscale 2";
        case Picture::Pdf:
            break;
    }
    return "pdfcairo size 20cm,12.5cm font 'DejaVu Sans,13' background rgb 'white' rounded linewidth 1.3";
}

/// How curve `i` of so many looks.
std::string lookOf(std::size_t i, std::size_t curves, bool hasLines) {
    static const char* const dashes[] = {"solid", "(8,5)", "(2,4)", "(10,4,2,4)"};
    const bool isOneOfMany = curves > mostNames;
    std::string look = hasLines ? "lines linewidth " : "points pointtype 7 pointsize 0.35";
    if (hasLines) look += isOneOfMany ? "1.2" : "2";
    if (hasLines && !isOneOfMany) look += std::string(" dashtype ") + dashes[i / colourCount % 4];
    if (!isOneOfMany) return look + " linecolor rgb '" + colours[i % colourCount] + '\'';
    return look + " linecolor palette fraction " +
           std::to_string(static_cast<double>(i) / static_cast<double>(curves - 1));
}

}  // namespace

Picture pictureOf(const std::string& file) {
    const std::string ending = std::filesystem::path(file).extension();
    if (ending == ".svg") return Picture::Svg;
    if (ending == ".png") return Picture::Png;
    if (ending == ".pdf") return Picture::Pdf;
    throw UsageError("--plot takes a file that ends in .svg, .png or .pdf, not \"" + file + '"');
}

std::string gnuplotQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + '\'';
}

std::string PlotScript::text() const {
    const std::size_t curves = columns.size() - 1;
    const std::string ink = " textcolor rgb '#303030'\n";
    std::string script = std::string("set terminal ") + terminalOf(picture) + "\nset output " + gnuplotQuoted(output) +
                         "\n"
                         "set datafile missing 'nan'\n"
                         "set border 3 linewidth 1 linecolor rgb '#606060'\n"
                         "set tics nomirror out scale 0.6" +
                         ink +
                         "set grid linewidth 0.7 linetype 1 linecolor rgb '#e4e4e4'\n"
                         "set autoscale noextend\n"
                         "set key outside top center horizontal noenhanced samplen 2.5" +
                         ink + "set xlabel " + gnuplotQuoted(columns[0]) + " noenhanced" + ink;
    // Curves do not run along the frame; time begins and ends there.
    script += std::string("set offsets graph ") + (columns[0] == "t" ? "0, graph 0" : "0.03, graph 0.03") +
              ", graph 0.04, graph 0.04\n";
    if (curves == 1) script += "set ylabel " + gnuplotQuoted(columns[1]) + " noenhanced" + ink + "unset key\n";
    if (curves > mostNames) script += gradient;
    for (std::size_t i = 0; i < curves; ++i) {
        // Of a long row the ends say what lies between them.
        const bool hasName = curves <= mostNames || i == 0 || i + 1 == curves;
        script += i == 0 ? "plot " : ", \\\n     ";
        script += gnuplotQuoted(rows) + " using 1:" + std::to_string(i + 2);
        script += hasName ? " title " + gnuplotQuoted(columns[i + 1]) : " notitle";
        script += " with " + lookOf(i, curves, hasLines);
    }
    return script + "\n";
}

}  // namespace zirk::solve
