# SPDX-License-Identifier: MIT
"""Runs step by step."""

from __future__ import annotations

from typing import Any, List, NamedTuple, Optional, Union

import numpy

from . import _core
from ._model import Model, Settings, model_of
from ._numbers import Number, real_of
from ._solve import Expressions, Progress, max_step_of, progress_of, tolerance_of, watched_of


class StepStatistics(NamedTuple):
    """What an integrator has done so far; lengths of steps in units of t."""

    steps: int
    repeated: int
    jumps: int
    mean_order: float
    shortest_step: numpy.longdouble
    longest_step: numpy.longdouble


class Crossing(NamedTuple):
    """A zero in the last step."""

    expression: str
    t: numpy.longdouble
    rising: bool


class Integrator:
    """One run of a model, step by step, forwards or backwards.

    run["x"] is a value at run.t, and run(t, "x") at any time of the last step, from run.step_begin to run.t. Zeros of
    the expressions in `crossings` are in run.crossings after the step that has them.

    >>> import zirk
    >>> run = zirk.Integrator("x'' = -x & 1;", crossings="x")
    >>> run.integrate_to(1)
    >>> run.t, run["x"]
    (1.0, 0.54030230586813971...)
    >>> while not run.crossings:
    ...     run.step()
    True
    >>> run.crossings[0].t          # pi/2
    1.57079632679489661...
    """

    __slots__ = ("model", "_stepper", "_watched")

    def __init__(
        self,
        model: Union[str, Model],
        set: Optional[Settings] = None,
        crossings: Optional[Expressions] = None,
        tolerance: Number = 1e-18,
        start: Optional[Number] = None,
        max_step: Optional[Number] = None,
    ) -> None:
        self.model = model_of(model, set, start)
        problem = self.model._problem
        self._stepper = _core.Stepper(problem, tolerance_of(tolerance, problem), max_step_of(max_step, problem))
        self._watched: List[str] = []
        for text, which in watched_of(crossings):
            self._stepper.watch(text, which)
            self._watched.append(text)

    def step(self, end: Optional[Number] = None) -> bool:
        """One step, towards `end` and not beyond it where it is given, else forwards. False when the run is there already.

        Raises RunError when the solution cannot go on.
        """
        return self._stepper.step(None if end is None else real_of(end, self.model._problem))

    def integrate_to(self, t: Number, progress: Optional[Progress] = None) -> None:
        """Steps until t. Raises RunError when the solution cannot go on; the run stays where it came to."""
        self._stepper.integrate_to(real_of(t, self.model._problem), progress_of(progress))

    @property
    def t(self) -> numpy.longdouble:
        """Where the run is."""
        return self._stepper.time

    @property
    def step_begin(self) -> numpy.longdouble:
        """Where the last step began."""
        return self._stepper.step_begin

    @property
    def crossings(self) -> List[Crossing]:
        """Zeros in the last step, in the order of the run."""
        return [Crossing(self._watched[i], t, rising) for i, t, rising in self._stepper.crossings()]

    @property
    def statistics(self) -> StepStatistics:
        return StepStatistics(*self._stepper.statistics())

    def __getitem__(self, expression: str) -> numpy.longdouble:
        return self._stepper.value(None, expression)

    def __call__(self, t: Number, expression: str) -> numpy.longdouble:
        """A value at a time of the last step; ValueError for others."""
        return self._stepper.value(real_of(t, self.model._problem), expression)

    def __repr__(self) -> str:
        values: Any = ", ".join(f"{name} = {self[name]:.6g}" for name in self.model.names[:4])
        return f"<zirk.Integrator: t = {self.t:.6g}, {values}>"
