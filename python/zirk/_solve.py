# SPDX-License-Identifier: MIT
"""From a text to its solution."""

from __future__ import annotations

import math
import sys
from typing import Any, Callable, Iterable, List, Optional, Sequence, Tuple, Union

import numpy

from . import _core
from ._errors import RunError
from ._model import Model, Settings, model_of
from ._numbers import Number, Reals, real_of, reals_of
from ._solution import Solution

Expressions = Union[str, Sequence[str]]
Progress = Union[bool, Callable[[float, numpy.longdouble, int], Any]]

_MOST_ROWS = 10**12
_DIRECTIONS = {"up": 1, "down": 2}


def watched_of(expressions: Optional[Expressions]) -> List[Tuple[str, int]]:
    """Expressions to be watched, each with its direction: "x", "x:up", "x:down"."""
    if expressions is None:
        return []
    watched = []
    for text in [expressions] if isinstance(expressions, str) else expressions:
        formula, colon, which = text.rpartition(":")
        if colon and which in _DIRECTIONS:
            watched.append((formula, _DIRECTIONS[which]))
        else:
            watched.append((text, 0))
    return watched


def tolerance_of(tolerance: Number, problem: _core.Problem) -> Any:
    # As it is written, so that 1e-15 means what it means to the command: no double is 1e-15, and none is 1e-18.
    given = numpy.longdouble(repr(tolerance)) if type(tolerance) is float else real_of(tolerance, problem)
    if not _LEAST_TOLERANCE <= given <= 0.1:
        raise ValueError(f"the tolerance must lie between 1e-18 and 0.1, not be {tolerance}")
    return given


_LEAST_TOLERANCE = numpy.longdouble("1e-18")


def max_step_of(max_step: Optional[Number], problem: _core.Problem) -> Any:
    if max_step is None:
        return 0
    length = real_of(max_step, problem)
    if not length > 0:
        raise ValueError(f"max_step must be above 0, not {max_step}")
    return length


def progress_of(progress: Optional[Progress]) -> Optional[Callable[[float, numpy.longdouble, int], Any]]:
    if not progress:
        return None
    return _show_progress if progress is True else progress


def _show_progress(share: float, t: numpy.longdouble, steps: int) -> None:
    print(f"\r{share:4.0%}, t = {t:.6g}, {steps} steps ", end="\n" if share == 1 else "", file=sys.stderr, flush=True)


def _listed(at: Iterable[Number], end: Optional[Number], problem: _core.Problem) -> Tuple[Reals, Any]:
    times = reals_of(at, problem)
    if end is None:
        if not len(times):
            raise ValueError("at is empty, and there is no end")
        end = times[-1]
    else:
        end = real_of(end, problem)
    # Whether they lie in the run, and in its order, _core knows faster.
    return times, end


def _intervals(every: Optional[Number], rows: Optional[int], end: Any, problem: _core.Problem) -> Tuple[int, Any]:
    """How many, and their length, 0 for equal ones."""
    if rows is not None:
        if not isinstance(rows, (int, numpy.integer)) or not 1 <= rows <= _MOST_ROWS:
            raise ValueError(f"rows must be a whole number from 1 to {_MOST_ROWS}, not {rows!r}")
        return int(rows), 0
    if every is None:
        return 0, 0
    spacing = real_of(every, problem)
    if not spacing > 0:
        raise ValueError(f"every must be above 0, not {every}")
    # A billionth of an interval is rounding, and nobody wants a row for it.
    count = abs(numpy.longdouble(end) - problem.start) / numpy.longdouble(spacing) - numpy.longdouble(1e-9)
    if not count <= _MOST_ROWS:
        raise ValueError(f"every = {every} would make {count:.3g} rows")
    return max(math.ceil(count), 1), spacing


def solve(
    model: Union[str, Model],
    end: Optional[Number] = None,
    at: Optional[Iterable[Number]] = None,
    every: Optional[Number] = None,
    rows: Optional[int] = None,
    set: Optional[Settings] = None,
    until: Optional[Expressions] = None,
    crossings: Optional[Expressions] = None,
    tolerance: Number = 1e-18,
    start: Optional[Number] = None,
    progress: Optional[Progress] = None,
    *,
    max_step: Optional[Number] = None,
    dense: bool = True,
) -> Solution:
    """Solves equations from `start` (0 unless given) to `end`, forwards or backwards.

    model     : text, or a Model
    end       : in units of t; may be left out when `at` says it
    at        : times of the rows, in the order of the run
    every     : a row every so much of t, and at the end
    rows      : rows at the ends of so many equal intervals; without any of these three a row at the end of every step
    set       : replaces definitions and start values: {"k": 2, "x'": "pi/4"}
    until     : an expression or several whose first zero ends the run; "x:up" and "x:down" for one direction only
    crossings : expressions whose zeros are found and kept in sol.events
    tolerance : error per step relative to the size of the solution, 1e-18 to 0.1; floats are taken as
                they are written here
    progress  : True, or called with (share of the time, t, steps) about ten times a second
    max_step  : longest step
    dense     : keeps the polynomials of all steps, for sol(t) and for expressions; some kilobytes per step

    Raises ParseError for a text that is wrong, RunError when the solution cannot go on. Other threads run meanwhile, and
    Ctrl-C ends it.

    >>> import zirk
    >>> sol = zirk.solve("x'' = -g & h;  g = 9.81;  h = 5;", 10, until="x", set={"h": 20})
    >>> sol.ended_by, float(sol.end)     # the square root of 2*20/9.81
    ('x', 2.019275109384609)
    >>> sol = zirk.solve("x'' = -x & 0; x'(0) = 1;", 10, crossings=["x:down"])
    >>> sol.events.t
    array([3.14159265, 9.42477796], dtype=float128)
    """
    if sum(choice is not None for choice in (at, every, rows)) > 1:
        raise ValueError("at, every and rows exclude each other")
    model = model_of(model, set, start)
    problem = model._problem
    times = None
    count, spacing = 0, 0
    if at is not None:
        times, last = _listed(at, end, problem)
    elif end is None:
        raise TypeError("solve needs an end, or times in at")
    else:
        last = real_of(end, problem)
    if not -math.inf < last < math.inf:
        raise ValueError("the end must be finite")
    if every is not None or rows is not None:
        count, spacing = _intervals(every, rows, last, problem)
    stops, seen = watched_of(until), watched_of(crossings)
    record, failure = _core.solve(
        problem, last, times, count, spacing, stops, seen, tolerance_of(tolerance, problem),
        max_step_of(max_step, problem), dense, progress_of(progress),
    )  # fmt: skip
    solution = Solution(model, record, tuple(text for text, _ in (*stops, *seen)))
    if failure is not None:
        raise RunError(*failure, solution)
    return solution
