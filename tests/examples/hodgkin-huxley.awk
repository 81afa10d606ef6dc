# SPDX-License-Identifier: MIT
# State at t = 50 and times between spikes by another method, with the rates in their original form: reference.cpp.
# Options: -F 0 -a 1e-14 -P '' -p 17 -w 25
# Solve: --every=0.05

function check(    row, m, n, i, k) {
    near("time", value[last, "TIME"], 50, 0)
    near("v", value[last, "v"], -8.7714518632764790, 1e-7)
    near("m", value[last, "m"], 0.017583705673890926, 1e-9)
    near("h", value[last, "h"], 0.22903799773056157, 1e-9)
    near("n", value[last, "n"], 0.59433255256353879, 1e-9)

    for (row = 1; row <= rows; ++row) value[row, "v'"] = current(row)
    near("second spike", rise(2, "v", "v'", 50) - rise(1, "v", "v'", 50), 14.905477982199864, 1e-4)
    near("third spike", rise(3, "v", "v'", 50) - rise(2, "v", "v'", 50), 14.648376321443110, 1e-4)
    near("fourth spike", rise(4, "v", "v'", 50) - rise(3, "v", "v'", 50), 14.637109627224849, 1e-4)

    near("first spike as the comment says", largest("v"), 105, 0.5)

    # Resting values, closed form: rate up over the sum of both rates at v = 0.
    near("n at rest", value[1, "n"], 0.1/(exp(1) - 1)/(0.1/(exp(1) - 1) + 0.125), 1e-14)
    near("m at rest", value[1, "m"], 2.5/(exp(2.5) - 1)/(2.5/(exp(2.5) - 1) + 4), 1e-14)
    near("h at rest", value[1, "h"], 0.07/(0.07 + 1/(exp(3) + 1)), 1e-14)
}

function current(row,    v) {
    v = value[row, "v"]
    return 10 - 120*value[row, "m"]^3*value[row, "h"]*(v - 115) - 36*value[row, "n"]^4*(v + 12) - 0.3*(v - 10.613)
}
