# SPDX-License-Identifier: MIT
# Period 6.32591398: C. Simo, in Chenciner and Montgomery, Ann. of Math. 152 (2000) 881-901. The start has eight digits.
# Options: -F 0 -P '' -p 17 -w 25
# Solve: -n 400 -c t,x1,x2,x3,y1,y2,y3,u1,v1,u2,v2,u3,v3,energy,angular

function check(    row, third, i, d) {
    third = 6.32591398/3
    for (i = 1; i <= 3; ++i) {
        near("x" i " after one period", value[last, "x" i], value[1, "x" i], 1e-7)
        near("y" i " after one period", value[last, "y" i], value[1, "y" i], 1e-7)
    }
    # The cubic between the rows carries six digits.
    for (i = 1; i <= 3; ++i) d += passes(i, third)
    near("after a third of the period every star is in the place of another", d, 3, 0)
    for (row = 1; row <= rows; ++row) {
        near("energy", value[row, "energy"], value[1, "energy"], 1e-14)
        near("angular momentum", value[row, "angular"], 0, 1e-14)
        near("momentum", value[row, "u1"] + value[row, "u2"] + value[row, "u3"], 0, 1e-14)
    }
    # At the start, 3/4 of the square of the fast star's speed, and the attractions at the distances d, d and 2 d.
    d = sqrt(0.97000436^2 + 0.24308753^2)
    near("energy at the start", value[1, "energy"], 0.75*(0.93240737^2 + 0.86473146^2) - 2.5/d, 1e-14)
}

# 1 when star i stands at time t where another one started.
function passes(i, t,    k, dx, dy, found) {
    for (k = 1; k <= 3; ++k) {
        dx = at(t, "x" i, "u" i) - value[1, "x" k]
        dy = at(t, "y" i, "v" i) - value[1, "y" k]
        if (k != i && dx*dx + dy*dy < 1e-12) ++found
    }
    return found
}
