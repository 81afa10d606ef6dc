# SPDX-License-Identifier: MIT
"""Initial-value problems of ordinary differential equations, solved by Taylor series to 18 digits.

>>> import zirk
>>> sol = zirk.solve("x'' = -x & 1;", 10, every=1)
>>> sol["x"][-1]                    # cos(10)
-0.839071529076452452...

solve       text in, solution out: rows, zeros, the solution at any time
Model       equations with names, parameters and explain()
Integrator  step by step
sweep       many sets of parameters, on all cores
from_sympy  the text of equations that sympy has
classic     rows of the command zirk, to the same bits
ParseError, RunError   what can go wrong

Numbers are numpy.longdouble, with 64 bits of mantissa. Write constants that have to be exact as text or as fractions:
0.1 is the double next to a tenth, "0.1" is a tenth to 64 bits.
"""

from . import _core
from ._classic import ClassicTable, classic
from ._errors import Error, ParseError, RunError
from ._integrator import Crossing, Integrator, StepStatistics
from ._model import Model
from ._solution import Event, Events, Solution, Statistics
from ._solve import solve
from ._sweep import Sweep, sweep
from ._sympy import from_sympy
from ._workers import SweepResult

__version__: str = _core.version

__all__ = [
    "ClassicTable",
    "Crossing",
    "Error",
    "Event",
    "Events",
    "Integrator",
    "Model",
    "ParseError",
    "RunError",
    "Solution",
    "Statistics",
    "StepStatistics",
    "Sweep",
    "SweepResult",
    "classic",
    "from_sympy",
    "solve",
    "sweep",
]

# Messages and pickles call them by the names that users know.
for _name in __all__:
    globals()[_name].__module__ = "zirk"
del _name
