# SPDX-License-Identifier: MIT
# The balance of energy, and the state at t = 40 by another method: reference.cpp.
# Options: -t 40 -p 17 -w 25
# Solve: -t 40

function check(    row) {
    near("time", value[last, "TIME"], 40, 0)
    near("x", value[last, "x"], 0.24356216446419257, 1e-11)
    near("v", value[last, "v"], -0.49971175409073083, 1e-11)
    for (row = 1; row <= rows; ++row) near("balance", value[row, "balance"], -1/4, 1e-13)
}
