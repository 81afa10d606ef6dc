# SPDX-License-Identifier: MIT
# Behind examples/notebooks/bifurcations.ipynb: what the books have, and cycles that close.
assert {c: turns[c] for c in (2.5, 3.5, 4.0, 5.3)} == {2.5: 1, 3.5: 2, 4.0: 4, 5.3: 3}
assert turns[5.7] > 20 and not found.errors and len(peaks) == 526
# The cycle of one turn at c = 2.5: from a maximum of x it comes back to itself, to more digits than the picture has.
result = zirk.solve(model, 900, set={"c": 2.5}, crossings="x':down")
first, second = result.events[-2], result.events[-1]
for name in ("x", "y", "z"):
    assert abs(first[name] - second[name]) < 1e-12
