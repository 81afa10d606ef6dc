# SPDX-License-Identifier: MIT
# Period 6.32591398: C. Simo, in Chenciner and Montgomery, Ann. of Math. 152 (2000) 881-901. The start has eight digits.
# Solve: -n 30 -c all

function check(    row, third, i, d) {
    for (i = 1; i <= 3; ++i) {
        near("x" i " after one period", value[last, "x" i], value[1, "x" i], 1e-7)
        near("y" i " after one period", value[last, "y" i], value[1, "y" i], 1e-7)
    }
    # A third of the period later every star is in the place of another.
    third = 11
    near("star 1 is where 3 was", value[third, "x1"], value[1, "x3"], 1e-7)
    near("star 2 is where 1 was", value[third, "x2"], value[1, "x1"], 1e-7)
    near("star 3 is where 2 was", value[third, "x3"], value[1, "x2"], 1e-7)
    d = sqrt(0.97000436^2 + 0.24308753^2)
    for (row = 1; row <= rows; ++row) {
        near("energy", value[row, "energy"], 0.75*(0.93240737^2 + 0.86473146^2) - 2.5/d, 1e-14)
        near("momentum", value[row, "x1'"] + value[row, "x2'"] + value[row, "x3'"], 0, 1e-15)
    }
}
