# SPDX-License-Identifier: MIT
# Closed form of the period: 2 pi over the arithmetic-geometric mean of 1 and cos(3/2).
# Options: -p 17 -w 25

function check(    a, b, mean, i, row) {
    a = 1
    b = cos(3/2)
    for (i = 0; i < 8; ++i) {
        mean = (a + b)/2
        b = sqrt(a*b)
        a = mean
    }
    near("period", value[last, "TIME"], 2*pi/a, 1e-13)
    near("phi", value[last, "phi"], 3, 1e-13)
    near("omega", value[last, "omega"], 0, 1e-13)
    for (row = 1; row <= rows; ++row) near("energy", value[row, "energy"], 1 - cos(3), 1e-14)
}
