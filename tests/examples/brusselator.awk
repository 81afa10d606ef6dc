# SPDX-License-Identifier: MIT
# Values at t = 20: Hairer, Norsett, Wanner, Solving Ordinary Differential Equations I, II.4.
# Options: -p 17 -w 25

function check() {
    near("time", value[last, "TIME"], 20, 0)
    near("x", value[last, "x"], 0.4986370712683478, 1e-14)
    near("y", value[last, "y"], 4.596780349452011, 1e-14)
}
