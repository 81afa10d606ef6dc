# SPDX-License-Identifier: MIT
# The landing, the top and the state at 1, 2 and 3 with 40 digits: Taylor series and the secant method, by mpmath.
# Solve: --crossings="y':down"

function check(    row) {
    near("time of landing", value[last, "t"], 3.97817222536575190, 1e-14)
    near("place of landing", value[last, "x"], 68.6133245435122102, 1e-13)
    near("speed at landing", value[last, "v"], 23.0498626705304584, 1e-13)
    for (row = 1; row <= rows; ++row) {
        if (value[row, "t"] == 1) near("x at 1", value[row, "x"], 19.86176405578060716, 1e-13)
        if (value[row, "t"] == 1) near("y at 1", value[row, "y"], 15.156563821973029841, 1e-13)
        if (value[row, "t"] == 3) near("x at 3", value[row, "x"], 54.046309875331259316, 1e-13)
        if (value[row, "t"] == 3) near("y at 3", value[row, "y"], 13.93108959201573937, 1e-13)
    }
    near("time of the top", topTime(), 1.922477428756715005, 1e-14)
    near("height of the top", largest("y"), 19.45098627198378344, 1e-13)
    near("without drag, as the comment says", 900/9.80665, 91.77, 0.005)
}

function topTime(    row, best) {
    for (best = row = 1; row <= rows; ++row) if (value[row, "y"] > value[best, "y"]) best = row
    return value[best, "t"]
}
