# SPDX-License-Identifier: MIT
# Closed form, piece by piece: 400 - (400 - drug)*exp(-t/4) while it flows, drug*exp(-t/4) while it does not.

function check(    row, n, i, d, p) {
    near("rows", rows, 97, 0)
    for (row = 1; row <= rows; ++row) {
        n = int(value[row, "t"]/8)
        d = 0
        for (i = 0; i < n; ++i) d = flow(d, 1)*exp(-7/4)
        p = value[row, "t"] - 8*n
        near("drug at " value[row, "t"], value[row, "drug"], p < 1 ? flow(d, p) : flow(d, 1)*exp(-(p - 1)/4), 1e-13)
        near("on at " value[row, "t"], value[row, "on"], p < 1, 0)
    }
    # Where it stays: d = flow(d, 1)*exp(-7/4).
    d = 400*(1 - exp(-1/4))/(1 - exp(-2))
    near("peaks as the comment says", d, 102.3, 0.05)
    near("troughs as the comment says", d*exp(-7/4), 17.8, 0.05)
}

function flow(d, t) { return 400 - (400 - d)*exp(-t/4) }
