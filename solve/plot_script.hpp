// SPDX-License-Identifier: MIT
// What gnuplot is told.
#pragma once

#include <string>
#include <vector>

namespace zirk::solve {

enum class Picture { Svg, Png, Pdf };

/// By the ending of the name: .svg, .png or .pdf. UsageError for any other.
Picture pictureOf(const std::string& file);

/// A picture of rows in a file; the first column is the x axis, each further one a curve.
struct PlotScript {
    Picture picture;
    std::string output;
    std::string rows;
    std::vector<std::string> columns;
    /// Lines between rows, or a point for each.
    bool hasLines = true;

    std::string text() const;
};

/// As gnuplot reads a text in which nothing is special.
std::string gnuplotQuoted(const std::string& text);

}  // namespace zirk::solve
