# SPDX-License-Identifier: MIT
# Closed form of the step response below critical damping, at every row.
# Options: -p 17 -w 25

function check(    row, t, a, w, u, top) {
    a = 20/(2*0.01)
    w = sqrt(1/(0.01*1e-6) - a*a)
    holds("rows all over the time", rows > 40)
    for (row = 1; row <= rows; ++row) {
        t = value[row, "TIME"]
        near("u at " t, value[row, "u"], 1 - exp(-a*t)*(cos(w*t) + a/w*sin(w*t)), 1e-12)
        near("i at " t, value[row, "i"], exp(-a*t)*sin(w*t)/(w*0.01), 1e-14)
    }
    near("overshoot as the comment says", 1 + exp(-a*pi/w), 1.729, 5e-4)
    near("at the time that it says", pi/w, 0.000316, 5e-7)
}
