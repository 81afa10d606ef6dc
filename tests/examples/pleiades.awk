# SPDX-License-Identifier: MIT
# Places at t = 3: F. Mazzia, C. Magherini, Test Set for Initial Value Problem Solvers (2008), problem Pleiades. Energy,
# momentum and angular momentum.
# Options: -P '' -p 17 -w 25
# Solve: -c all

function check(    row, i) {
    near("time", value[last, "TIME"], 3, 0)
    near("x1", value[last, "x1"], 0.3706139143970502, 1e-13)
    near("x2", value[last, "x2"], 3.237284092057233, 1e-13)
    near("x3", value[last, "x3"], -3.222559032418324, 1e-13)
    near("x4", value[last, "x4"], 0.6597091455775310, 1e-13)
    near("x5", value[last, "x5"], 0.3425581707156584, 1e-13)
    near("x6", value[last, "x6"], 1.562172101400631, 1e-13)
    near("x7", value[last, "x7"], -0.7003092922212495, 1e-13)
    near("y1", value[last, "y1"], -3.943437585517392, 1e-13)
    near("y2", value[last, "y2"], -3.271380973972550, 1e-13)
    near("y3", value[last, "y3"], 5.225081843456543, 1e-13)
    near("y4", value[last, "y4"], -2.590612434977470, 1e-13)
    near("y5", value[last, "y5"], 1.198213693392275, 1e-13)
    near("y6", value[last, "y6"], -0.2429682344935824, 1e-13)
    near("y7", value[last, "y7"], 1.091449240428980, 1e-13)
    near("energy at the start", value[1, "energy"], start(), 1e-12)
    for (row = 1; row <= rows; ++row) {
        near("energy", value[row, "energy"], value[1, "energy"], 1e-12)
        near("momentum along x", sum(row, "u"), 6*7/4 - 7*3/2, 1e-13)
        near("momentum along y", sum(row, "v"), -4*5/4 + 5, 1e-13)
        near("angular momentum", turn(row), turn(1), 1e-12)
    }
}

function sum(row, name,    i, total) {
    for (i = 1; i <= 7; ++i) total += i*value[row, name i]
    return total
}

function turn(row,    i, total) {
    for (i = 1; i <= 7; ++i)
        total += i*(value[row, "x" i]*value[row, "v" i] - value[row, "y" i]*value[row, "u" i])
    return total
}

# Kinetic energy of the stars that move, and the attractions, from the places of the source.
function start(    x, y, i, j, energy) {
    split("3 3 -1 -3 2 -2 2", x)
    split("3 -3 2 0 0 -4 4", y)
    energy = (4*1.25^2 + 5 + 6*1.75^2 + 7*1.5^2)/2
    for (i = 1; i < 7; ++i)
        for (j = i + 1; j <= 7; ++j) energy -= i*j/sqrt((x[i] - x[j])^2 + (y[i] - y[j])^2)
    return energy
}
