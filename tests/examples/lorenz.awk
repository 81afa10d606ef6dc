# SPDX-License-Identifier: MIT
# The motion forgets its start at e^(0.9 t), so it is compared at t = 20, computed with more accuracy: reference.cpp.
# Options: -a 1e-18 -t 20 -F 0 -s 0.01 -p 17 -w 25
# Solve: -t 20 -n 2000

function check(    row, turned) {
    near("time", value[last, "TIME"], 20, 0)
    near("x", value[last, "x"], -1.3563489845803582, 1e-9)
    near("y", value[last, "y"], -2.3873000522770338, 1e-9)
    near("z", value[last, "z"], 12.389984994085955, 1e-9)

    # What the comment of the example says: over at 0.58, then around -sqrt(72) until 16.7.
    for (row = 1; row <= rows; ++row) {
        if (!turned && value[row, "x"] < 0) turned = value[row, "TIME"]
        if (turned && value[row, "x"] > 0) break
    }
    near("first turn", turned, 0.58, 0.01)
    near("second turn", value[row, "TIME"], 16.7, 0.05)
}
