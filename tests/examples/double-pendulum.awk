# SPDX-License-Identifier: MIT
# Energy, and the angles at t = 15 by another method: reference.cpp, which does not carry sines and cosines along.
# Options: -t 15 -P a:b:va:vb:c:s:energy: -p 17 -w 25
# Solve: -t 15 -c t,a,b,va,vb,c,s,energy

function check(    row) {
    near("time", value[last, "TIME"], 15, 0)
    near("a", value[last, "a"], -1.0804273519036930, 1e-12)
    near("b", value[last, "b"], -3.1523829561634059, 1e-12)
    near("va", value[last, "va"], 0.36555408602222182, 1e-12)
    near("vb", value[last, "vb"], -0.30550669239220225, 1e-12)
    for (row = 1; row <= rows; ++row) {
        near("energy", value[row, "energy"], -2*cos(2) - cos(1), 1e-14)
        near("cosine", value[row, "c"], cos(value[row, "a"] - value[row, "b"]), 1e-14)
        near("sine", value[row, "s"], sin(value[row, "a"] - value[row, "b"]), 1e-14)
    }
}
