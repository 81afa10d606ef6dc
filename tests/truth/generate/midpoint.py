# SPDX-License-Identifier: MIT
"""Extrapolation of the modified midpoint rule (W. B. Gragg, SIAM J. Numer. Anal. 2 (1965) 384-403), to confirm what
Taylor series give: no recurrence is shared, every function is called as itself."""
from gmpy2 import mpfr


def step(f, t, y, H, columns):
    """One step of length H from 2, 4, ... 2*columns substeps, by the scheme of Aitken and Neville."""
    first = f(t, y)
    previous = []
    for row in range(1, columns + 1):
        substeps = 2 * row
        h = H / substeps
        twice = 2 * h
        before, now = y, [a + h * r for a, r in zip(y, first)]
        for i in range(1, substeps):
            rates = f(t + i * h, now)
            before, now = now, [b + twice * r for b, r in zip(before, rates)]
        current = [now]
        for column in range(1, row):
            ratio = mpfr(row) / (row - column)
            weight = 1 / (ratio * ratio - 1)
            current.append([a + (a - b) * weight for a, b in zip(current[-1], previous[column - 1])])
        previous = current
    return previous[-1]


class Replay:
    """Goes once more over the steps of a run, by this method. Times must be asked for in their order."""

    def __init__(self, run, columns=22, parts=1):
        self.run, self.columns, self.parts = run, columns, parts
        self.rates = run.values.rates
        self.place, self.y = 0, [run.constant(node) for node in run.system.startOf]

    def over(self, y, t, end, held):
        H = (end - t) / self.parts
        for i in range(self.parts):
            y = step(lambda s, z: self.rates(s, z, held), t + i * H, y, H, self.columns)
        return y

    def at(self, time):
        """Values of all nodes."""
        grid, time = self.run.grid, mpfr(time)
        while self.place + 1 < len(grid) - 1 and abs(time - grid[0]) > abs(grid[self.place + 1] - grid[0]):
            self.y = self.over(self.y, grid[self.place], grid[self.place + 1], self.run.heldOn[self.place])
            self.place += 1
        if not self.run.heldOn:
            return self.run.values.all(time, self.y, {})
        held = self.run.heldOn[self.place]
        y = self.over(self.y, grid[self.place], time, held) if time != grid[self.place] else self.y
        return self.run.values.all(time, y, held)
