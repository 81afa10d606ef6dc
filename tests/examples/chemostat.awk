# SPDX-License-Identifier: MIT
# Closed form: total - 10 decays as exp(-t/2); in the end s/(1 + s) = 1/2.
# Options: -p 17 -w 25

function check(    row, change) {
    holds("the run ends by itself, when the comment says", value[last, "TIME"] == 41.5)
    for (row = 1; row <= rows; ++row)
        near("total", value[row, "total"], 10 + exp(-value[row, "TIME"]/2)/10, 1e-8)
    near("food", value[last, "s"], 1, 1e-9)
    near("bacteria", value[last, "x"], 9, 1e-9)
    # Five points in a row that differ by less than 1e-10: six rows.
    for (row = last - 4; row <= last; ++row) {
        near("change of s", value[row, "s"], value[row - 1, "s"], 1e-10)
        near("change of x", value[row, "x"], value[row - 1, "x"], 1e-10)
    }
    change = value[last - 5, "x"] - value[last - 6, "x"]
    holds("not before", change >= 1e-10 || change <= -1e-10)
}
