# SPDX-License-Identifier: MIT
# Behind examples/notebooks/three-bodies.ipynb: places of 40 digits that were computed apart, and the encounter of the paper.
import decimal

compared = 0
for line in open("../../tests/truth/three-bodies.truth"):
    words = line.split()
    if len(words) != 5 or words[3] not in ("rel", "abs"):
        continue
    t, name, true, kind, least = words
    value = decimal.Decimal(str(sol(float(t), name)))
    error = abs(value - decimal.Decimal(true)) / (abs(decimal.Decimal(true)) if kind == "rel" else 1)
    # What one run may be off by, with some room: how errors grow is known, how they add up is not.
    assert error < 5 * decimal.Decimal(least), (line, value)
    compared += 1
assert compared >= 40
distance, when, pair = encounters[0]
assert pair == "r23" and round(float(when), 2) == 15.83 and round(float(distance), 4) == 0.0004
assert mine < 1e-4 and theirs > 100 * mine and drift < 1e-11
# The pair is that of the masses 4 and 5, and the third one leaves.
assert sol(70, "r23") < 1 < 10 < sol(70, "r13")
