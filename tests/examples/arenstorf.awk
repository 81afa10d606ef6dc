# SPDX-License-Identifier: MIT
# Start and period: Hairer, Norsett, Wanner, Solving Ordinary Differential Equations I, II.0. Jacobi's integral.
# Options: -P '' -p 17 -w 25
# Solve: -c t,x,y,jacobi,a,b

function check(    row, start) {
    near("time", value[last, "TIME"], 17.065216560157963, 1e-13)
    # The start has the sixteen digits of a double, and the passages near the Moon cost some of them.
    near("x", value[last, "x"], 0.994, 1e-10)
    near("y", value[last, "y"], 0, 1e-10)
    for (row = 1; row <= rows; ++row) {
        near("jacobi", value[row, "jacobi"], value[1, "jacobi"], 1e-11)
        near("Earth", value[row, "a"]^2*distance(row, -0.012277471)^3, 1, 1e-11)
        near("Moon", value[row, "b"]^2*distance(row, 1 - 0.012277471)^3, 1, 1e-11)
    }
    start = 0.994^2 - 2.00158510637908252^2
    start += 2*0.987722529/(0.994 + 0.012277471) + 2*0.012277471/(0.994 - 0.987722529)
    near("jacobi at the start", value[1, "jacobi"], start, 1e-12)
}

# Square of the distance to the body at x = place.
function distance(row, place) {
    return (value[row, "x"] - place)^2 + value[row, "y"]^2
}
