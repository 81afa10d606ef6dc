# SPDX-License-Identifier: MIT
# The integral prey - ln prey + predators - ln predators, and the period by another method: reference.cpp.
# Options: -F 0 -s 0.02 -p 17 -w 25

function check(    row, period, mean, h) {
    period = 6.6084826712350566
    for (row = 1; row <= rows; ++row) {
        value[row, "prey'"] = value[row, "prey"]*(1 - value[row, "predators"])
        value[row, "predators'"] = value[row, "predators"]*(value[row, "prey"] - 1)
        near("integral", level(row), 3 - log(2), 1e-9)
    }
    near("prey after three periods", at(3*period, "prey", "prey'"), 2, 1e-7)
    near("predators after three periods", at(3*period, "predators", "predators'"), 1, 1e-7)
    near("first rise through 1 after the start", rise(1, "predators", "predators'", 1.000001),
        period + rise(2, "predators", "predators'", 1.000001) - 2*period, 1e-6)
}

function level(row) {
    return value[row, "prey"] - log(value[row, "prey"]) + value[row, "predators"] - log(value[row, "predators"])
}
