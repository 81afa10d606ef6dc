# SPDX-License-Identifier: MIT
# The integral s + i - ratio*ln(s) with ratio = 0.44/0.00218; from it follow the height of the epidemic and its end.
# Options: -F 0.01 -s 0.01 -t 120 -p 17 -w 25
# Solve: -t 120 --every=0.01

function check(    row, ratio, end, i) {
    ratio = 0.44/0.00218
    for (row = 1; row <= rows; row += 100) {
        near("boys", value[row, "s"] + value[row, "i"] + value[row, "r"], 763, 1e-9)
        near("integral", value[row, "s"] + value[row, "i"] - ratio*log(value[row, "s"]), 763 - ratio*log(762), 1e-9)
    }
    # At the top s = ratio.
    near("most ill boys", largest("i"), 763 - ratio + ratio*log(ratio/762), 1e-3)
    for (row = 1; value[row, "s"] > ratio; ++row) {
    }
    near("the day of the top as the comment says", value[row, "TIME"], 6.4, 0.05)
    near("most ill boys as the comment says", largest("i"), 293, 0.5)
    # At the end i = 0: s = 763 + ratio*ln(s/762), found by iteration.
    end = 1
    for (i = 0; i < 200; ++i) end = 762*exp((end - 763)/ratio)
    near("never infected", value[last, "s"], end, 1e-6)
    near("19 or so", end, 19, 0.5)
}
