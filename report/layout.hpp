// SPDX-License-Identifier: MIT
// The slice of the settings that the result table and the plot script share.
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

}  // namespace zirk
