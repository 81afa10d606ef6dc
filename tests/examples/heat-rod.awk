# SPDX-License-Identifier: MIT
# Closed form of the 200 equations: part m of the start, a[m]*sin(m pi i/201), decays at the rate
# 4*k*sin(m pi/402)^2 with k = 0.000111*201^2.
# Options: -F 200 -P ''
# Solve: --every=200 -c all

function check(    row, i, m, t, start, a, rate, u) {
    near("columns", columns, 201, 0)
    near("rows", rows, 4, 0)
    for (i = 0; i < 402; ++i) sine[i] = sin(i*pi/201)
    for (i = 1; i <= 200; ++i) start[i] = 100*exp(-(i/201 - 0.3)^2/0.01)
    for (m = 1; m <= 200; ++m)
        for (i = 1; i <= 200; ++i) a[m] += 2/201*start[i]*sine[m*i%402]
    for (row = 1; row <= rows; ++row) {
        t = value[row, "TIME"]
        for (i = 1; i <= 200; ++i) {
            u = 0
            for (m = 1; m <= 200; ++m) {
                rate = 4*0.000111*201^2*sin(m*pi/402)^2
                if (rate*t > 40) break
                u += a[m]*exp(-rate*t)*sine[m*i%402]
            }
            near("u" i " at " t, value[row, sprintf("u%03d", i)], u, 1e-9)
        }
    }
}
