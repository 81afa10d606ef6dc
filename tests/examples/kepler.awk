# SPDX-License-Identifier: MIT
# One revolution of the ellipse, with Kepler's equation for the points between: t = E - e sin(E), x = cos(E) - e,
# y = sqrt(1 - e^2) sin(E), mirrored because the start is on the right of the star. Two integrals.
# Options: -p 17 -w 25

function check(    row, E, i, t) {
    near("time", value[last, "TIME"], 2*pi, 1e-14)
    near("x at the end", value[last, "x"], 1/2, 1e-13)
    near("y at the end", value[last, "y"], 0, 1e-13)
    for (row = 1; row <= rows; ++row) {
        t = E = value[row, "TIME"]
        for (i = 0; i < 50; ++i) E -= (E - sin(E)/2 - t)/(1 - cos(E)/2)
        near("x", value[row, "x"], cos(E) - 1/2, 1e-13)
        near("y", value[row, "y"], sqrt(3)/2*sin(E), 1e-13)
        near("energy", value[row, "energy"], -1/2, 1e-14)
        near("area", value[row, "area"], sqrt(3)/2, 1e-14)
    }
}
