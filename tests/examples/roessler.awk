# SPDX-License-Identifier: MIT
# The shortest cycle by another method: reference.cpp. Its period agrees with the published 5.88108845586
# (P. Cvitanovic et al., Chaos: Classical and Quantum, chaosbook.org) to nine digits.
# Options: -f 1 -s 0.058810884555538773 -t 60 -F 0 -p 17 -w 25
# Solve: -t 60 --every=0.058810884555538773

function check(    n) {
    near("the published period", 100*0.058810884555538773, 5.88108845586, 1e-9)
    # A hundred steps make a turn. Errors grow 2.4 times per turn: 3e-17 to 2e-13 in ten turns.
    for (n = 0; n <= 10; ++n) {
        near("time of turn " n, value[1 + 100*n, "TIME"], n*5.8810884555538773, 1e-12)
        near("x of turn " n, value[1 + 100*n, "x"], 0, 1e-11)
        near("y of turn " n, value[1 + 100*n, "y"], 6.0917683190680275, 1e-11)
        near("z of turn " n, value[1 + 100*n, "z"], 1.2997319374930054, 1e-11)
    }
    holds("no shorter period", value[26, "x"] < -1)
}
