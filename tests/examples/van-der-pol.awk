# SPDX-License-Identifier: MIT
# Period 11.612230667719570 and amplitude 2.0215080615623213 by another method: reference.cpp.
# Options: -F 0 -s 0.005 -a 1e-14 -p 17 -w 25
# Solve: --every=0.005

function check(    row, k) {
    for (row = 1; row <= rows; ++row)
        value[row, "v'"] = 5*(1 - value[row, "x"]^2)*value[row, "v"] - value[row, "x"]
    for (k = 1; k <= 4; ++k)
        near("period " k, rise(k + 1, "x", "v", 0) - rise(k, "x", "v", 0), 11.612230667719570, 1e-6)
    # v rises through 0 where x is lowest.
    near("lowest x", at(rise(2, "v", "v'", 0), "x", "v"), -2.0215080615623213, 1e-8)
}
