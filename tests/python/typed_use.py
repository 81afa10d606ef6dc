# SPDX-License-Identifier: MIT
"""A program whose types are right; it is not run."""

import concurrent.futures
from decimal import Decimal
from fractions import Fraction
from typing import List, Optional

import numpy as np
import numpy.typing as npt

import zirk

sol: zirk.Solution = zirk.solve("x'' = -x & 1;", 10, every=Fraction(1, 3), set={"x": Decimal("0.1")}, until=["x:down"])
rows: npt.NDArray[np.longdouble] = sol["x"]
end: np.longdouble = sol.end
why: Optional[str] = sol.ended_by
times: List[np.longdouble] = [event.t for event in sol.events]
model = zirk.Model("k = 1; x' = k;", start="pi")
text: str = model.where({"k": 2}).explain()
run = zirk.Integrator(model, crossings="x")
while run.step(3):
    value: np.longdouble = run["x"]
with concurrent.futures.ThreadPoolExecutor(2) as pool:
    found = zirk.sweep(model, {"k": range(3)}, 1, executor=pool, store="results", on_result=lambda result: print(result.index))
for result in found:
    if result.error is None and result.solution is not None:
        print(result.solution.end, result.parameters["k"])
first: zirk.SweepResult = found[0]
column: npt.NDArray[np.longdouble] = found["x"]
try:
    zirk.classic("x' = 1;", {"t": 3})["x"]
except zirk.ParseError as error:
    line: int = error.line
except zirk.RunError as error:
    time: np.longdouble = error.time
