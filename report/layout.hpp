// SPDX-License-Identifier: MIT
// Which variables are shown, and how: what the result table and the plot script share.
#pragma once

#include <string>

namespace zirk {

/// Which columns there are, and whether the values make a table or a matrix.
struct Layout {
    bool printOrderColumn = true;
    bool printTempEquations = false;
    int points3D = 0;
    bool all3DValues = false;
    std::string gnuplotOutput = "x11";
};

/// Which variables are selected for output, by name.
struct Selection {
    std::string printList;
    std::string noPrintList;

    /// Substring search of "name:" on purpose: the key of y1 is also found inside the entry "zy1:".
    bool selects(const std::string& name) const;
};

/// How numbers look.
struct NumberFormat {
    int printWidth = 15;
    int printPrecision = 11;
};

/// Temporary and derivative variables carry a "%".
inline bool hasPercent(const std::string& name) { return name.find('%') != std::string::npos; }

}  // namespace zirk
