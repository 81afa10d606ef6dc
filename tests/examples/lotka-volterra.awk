# SPDX-License-Identifier: MIT
# The integral prey - ln prey + predators - ln predators, and the period by another method: reference.cpp.
# Options: -F 0 -s 0.02 -p 17 -w 25
# Solve: -n 1000

function check(    row, period) {
    period = 6.6084826712350566
    for (row = 1; row <= rows; ++row) {
        value[row, "prey'"] = value[row, "prey"]*(1 - value[row, "predators"])
        value[row, "predators'"] = value[row, "predators"]*(value[row, "prey"] - 1)
        near("integral", level(row), 3 - log(2), 1e-9)
    }
    near("prey after three periods", at(3*period, "prey", "prey'"), 2, 1e-7)
    near("predators after three periods", at(3*period, "predators", "predators'"), 1, 1e-7)
    # The mean over a period is the equilibrium: the integral of prey - 1 = (ln predators)' over a period is 0.
    near("mean of prey over three periods", mean("prey", 3*period), 1, 1e-4)
    near("mean of predators over three periods", mean("predators", 3*period), 1, 1e-4)
}

function level(row) {
    return value[row, "prey"] - log(value[row, "prey"]) + value[row, "predators"] - log(value[row, "predators"])
}

# By the trapezoidal rule from 0 to the row next to the end.
function mean(x, end,    row, area) {
    for (row = 2; row <= rows && value[row, "TIME"] <= end; ++row)
        area += (value[row, "TIME"] - value[row - 1, "TIME"])*(value[row, x] + value[row - 1, x])/2
    area += (end - value[row - 1, "TIME"])*value[row - 1, x]
    return area/end
}
