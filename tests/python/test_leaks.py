# SPDX-License-Identifier: MIT
"""What a hundred thousand solves leave behind."""

import os
import pickle

import numpy as np
import pytest

import zirk


def resident():
    with open("/proc/self/statm") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def test_nothing_is_left_behind():
    times = np.linspace(0, 3, 20)
    model = zirk.Model("x' = -x & 1;")
    failing = zirk.Model("x' = x*x & 1;")

    def some(count):
        """As many solves, every tenth of which is looked at from all sides, and every tenth of which fails."""
        for i in range(count // 10):
            for _ in range(8):
                zirk.solve(model, 1)["x"]
            sol = zirk.solve("x'' = -x & 1;", 3, rows=5, crossings="x", set={"x": 2})
            sol["x"], sol["x*x"], sol(times), sol(2, "x"), sol.events["x"], sol.statistics
            for wrong, error in ((failing, zirk.RunError), ("x' = (;", zirk.ParseError)):
                with pytest.raises(error):
                    zirk.solve(wrong, 2, at=[1.5])
            if i % 100 == 0:
                zirk.sweep(model, {"x": [1, 2]}, 1)
                pickle.loads(pickle.dumps(sol))(1)

    some(5000)
    before = resident()
    some(100_000)
    # Twenty bytes lost per solve would be 2 MB.
    assert resident() - before < 1.5e6
