# SPDX-License-Identifier: MIT
# Closed form of the 127 equations: harmonic m moves as cos(2*220*128*sin(m pi/256)*t).
# Options: -s 0.0001 -F 0.001 -P '' -w 20
# Solve: -c all

function check(    row, i, m, t, u, amount, w) {
    # zirk-solve shows the velocities, too.
    near("columns", columns, solver == "zirk-solve" ? 255 : 128, 0)
    holds("rows all over the period", rows >= 8)
    for (m = 1; m <= 10; ++m) {
        amount[m] = 2*3/(pi*pi*0.16*m*m)*sin(m*pi/5)
        w[m] = 2*220*128*sin(m*pi/256)
    }
    for (row = 1; row <= rows; ++row) {
        t = value[row, "TIME"]
        for (i = 1; i <= 127; ++i) {
            u = 0
            for (m = 1; m <= 10; ++m) u += amount[m]*sin(m*pi*i/128)*cos(w[m]*t)
            # The start is written with twelve decimals.
            near("u" i " at " t, value[row, sprintf("u%03d", i)], u, 1e-10)
        }
    }
}
