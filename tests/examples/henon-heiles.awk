# SPDX-License-Identifier: MIT
# Energy, and the state at t = 50 by another method: reference.cpp.
# Options: -t 50 -P '' -p 17 -w 25
# Solve: -t 50 -n 50 -c t,x,y,vx,vy,energy

function check(    row) {
    near("time", value[last, "TIME"], 50, 0)
    near("x", value[last, "x"], 0.10352906526136388, 1e-12)
    near("y", value[last, "y"], 0.20843352211523425, 1e-12)
    near("vx", value[last, "vx"], 0.43147799368898463, 1e-12)
    near("vy", value[last, "vy"], -0.10598449293170311, 1e-12)
    for (row = 1; row <= rows; ++row) near("energy", value[row, "energy"], 1/8, 1e-15)
}
