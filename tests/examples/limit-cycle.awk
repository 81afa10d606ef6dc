# SPDX-License-Identifier: MIT
# The period is found by the run itself; by another method it is 18.436293960008077: reference.cpp.
# Options: -p 17 -w 25

function check() {
    near("one row, the last point", rows, 1, 0)
    # A step is 0.01; the rate at the end may be twice the accuracy 1e-4 instead of 0.
    near("end of the run", value[1, "TIME"], 18.436293960008077, 0.011)
    near("lynxes are back", value[1, "lynxes"], 0.36782293352508234, 1e-4)
    if (solver == "zirk-solve") {
        near("end of the run", value[1, "t"], 18.436293960008077, 1e-13)
        near("rate of change", lynxRate(), 0, 1e-15)
    } else {
        holds("the rate of change lies where the comment says", lynxRate() >= 0 && lynxRate() <= 2e-4)
    }
}

function lynxRate() {
    return value[1, "lynxes"]*(value[1, "hares"]/(1 + value[1, "hares"]) - 1/2)
}
