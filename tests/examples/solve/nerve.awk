# SPDX-License-Identifier: MIT
# State at t = 50 and times between spikes by another method: reference.cpp. The spikes are where v rises through 50.
# Solve: --crossings=v-50:up --every=0.1

function check(    row, spikes) {
    near("time", value[last, "t"], 50, 0)
    near("v", value[last, "v"], -8.7714518632764790, 1e-12)
    near("m", value[last, "m"], 0.017583705673890926, 1e-14)
    near("h", value[last, "h"], 0.22903799773056157, 1e-14)
    near("n", value[last, "n"], 0.59433255256353879, 1e-14)
    for (row = 2; row <= rows; ++row)
        if (value[row, "v"] > 49.9999999999 && value[row, "v"] < 50.0000000001) spike[++spikes] = value[row, "t"]
    near("spikes", spikes, 4, 0)
    near("second spike", spike[2] - spike[1], 14.905477982199864, 1e-12)
    near("third spike", spike[3] - spike[2], 14.648376321443110, 1e-12)
    near("fourth spike", spike[4] - spike[3], 14.637109627224849, 1e-12)
    near("first spike as the comment says", largest("v"), 105, 0.5)
}
