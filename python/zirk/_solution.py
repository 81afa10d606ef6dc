# SPDX-License-Identifier: MIT
"""What a run leaves behind: rows, zeros, and the solution at any time."""

from __future__ import annotations

from typing import Any, Iterator, List, NamedTuple, Optional, Sequence, Tuple, Union

import numpy

from . import _core
from ._model import Model
from ._numbers import Reals, real_of, reals_of
from ._tables import html_table, text_table


class Statistics(NamedTuple):
    """How a run went; lengths of steps in units of t."""

    steps: int
    repeated: int
    """Steps that were done again shorter after the check at their end."""
    jumps: int
    """Jumps of trunc that ended a step."""
    mean_order: float
    shortest_step: numpy.longdouble
    longest_step: numpy.longdouble
    seconds: float
    """What the run itself took."""


class Event:
    """A zero of a watched expression.

    t          : its time
    expression : as it was given, without ":up" or ":down"
    rising     : whether the expression rises there, along the run
    ended      : whether the run ended by it
    event["x"] : any name or expression at that time
    """

    __slots__ = ("t", "expression", "rising", "ended", "_events", "_index")

    def __init__(self, events: "Events", index: int) -> None:
        self._events = events
        self._index = index
        self.t: numpy.longdouble = events.t[index]
        number = events._watched[index]
        self.expression: str = events._solution._watched[number]
        self.rising: bool = events._rising[index]
        self.ended: bool = number == events._solution._record.ended_by and index == len(events) - 1

    def __getitem__(self, expression: str) -> numpy.longdouble:
        value: numpy.longdouble = self._events[expression][self._index]
        return value

    def __repr__(self) -> str:
        return f"Event(t={self.t}, expression={self.expression!r}, rising={self.rising}, ended={self.ended})"


class Events(Sequence[Event]):
    """The zeros of all watched expressions, in the order of the run: a sequence of Event.

    events.t and events["x"] are arrays of shape (len(events),); events.of("x") are the zeros of one expression alone.
    """

    __slots__ = ("_solution", "_watched", "_rising")

    def __init__(self, solution: "Solution") -> None:
        self._solution = solution
        self._watched: List[int] = solution._record.watched
        self._rising: List[bool] = solution._record.rising

    @property
    def t(self) -> Reals:
        """Times of the zeros."""
        return self._solution._record.events(None)

    def of(self, expression: str) -> List[Event]:
        return [event for event in self if event.expression == expression]

    def __len__(self) -> int:
        return len(self._watched)

    def __getitem__(self, key: Any) -> Any:
        if isinstance(key, str):
            return self._solution._record.events(key)
        if isinstance(key, slice):
            return [self[i] for i in range(*key.indices(len(self)))]
        index = range(len(self))[key]
        return Event(self, index)

    def __iter__(self) -> Iterator[Event]:
        return (Event(self, i) for i in range(len(self)))

    def __repr__(self) -> str:
        return f"<{len(self)} events>" if len(self) > 10 else f"[{', '.join(map(repr, self))}]"


class Solution:
    """The solution of a model over a range of time.

    sol.t, sol["x"], sol["x'"], sol["x*x + t"] are the rows: numpy.longdouble arrays of shape (len(sol),), read-only, that
    share the numbers of the solution. sol(t) and sol(t, "x") evaluate the polynomials of the steps at any time of the
    range, to the same accuracy.

    >>> import zirk
    >>> sol = zirk.solve("x'' = -x & 1;", 2, rows=4)
    >>> sol.t
    array([0. , 0.5, 1. , 1.5, 2. ], dtype=float128)
    >>> sol["x"][2]
    0.54030230586813971...
    >>> sol(1, "x'")
    -0.8414709848078965...
    >>> sol([0.25, 0.75]).shape   # names by times
    (2, 2)
    """

    __slots__ = ("model", "_record", "_watched", "__weakref__")

    model: Model
    """What was solved, with its settings."""

    def __init__(self, model: Model, record: _core.Record, watched: Tuple[str, ...]) -> None:
        self.model = model
        self._record = record
        self._watched = watched

    @property
    def t(self) -> Reals:
        """Times of the rows."""
        return self._record.rows(None)

    @property
    def names(self) -> List[str]:
        """The columns besides t."""
        return self.model.names

    @property
    def end(self) -> numpy.longdouble:
        """Where the run ended; sol(t) goes from model.start to there."""
        return self._record.end

    @property
    def ended_by(self) -> Optional[str]:
        """The expression of `until` whose zero ended the run, or None."""
        number = self._record.ended_by
        return None if number < 0 else self._watched[number]

    @property
    def events(self) -> Events:
        """The zeros of `until` and `crossings`, in the order of the run."""
        return Events(self)

    @property
    def statistics(self) -> Statistics:
        return Statistics(*self._record.statistics())

    def __getitem__(self, expression: str) -> Reals:
        return self._record.rows(expression)

    def __call__(self, t: Any, expression: Union[str, Sequence[str], None] = None) -> Any:
        """Values at any times of the range, of shape t.shape for one expression, (n,) + t.shape for n of them.

        Without an expression: all names. ValueError for a time outside of the range.
        """
        if isinstance(t, numpy.ndarray) and t.dtype.kind in "fiu" or isinstance(t, (int, float, numpy.number)):
            return self._record.evaluate(numpy.asarray(t, numpy.longdouble), expression)
        problem = self.model._problem
        if isinstance(t, str) or not hasattr(t, "__len__"):
            return self._record.evaluate(numpy.asarray(real_of(t, problem), numpy.longdouble), expression)
        shape = numpy.shape(t)
        flat = numpy.asarray(t, object).reshape(-1)
        return self._record.evaluate(reals_of(flat, problem).reshape(shape), expression)

    def __len__(self) -> int:
        return len(self.t)

    def plot(self, *expressions: str, x: str = "t", points: int = 1000, ax: Any = None, **style: Any) -> Any:
        """Curves of names or expressions, by default of all names, over time or along another expression; the axes.

        Needs matplotlib. `points` evenly spaced times; with dense=False the rows. `style` goes to Axes.plot.
        """
        from matplotlib import pyplot

        if ax is None:
            ax = pyplot.figure().add_subplot()
        shown = expressions or tuple(name for name in self.names if name != x)
        if self._record.is_dense:
            t = numpy.linspace(self.model.start, self.end, points)
            t[-1] = self.end
            columns = self(t, [x, *shown])
        else:
            columns = numpy.array([self[name] for name in (x, *shown)])
        # Pictures have no use for more than a double.
        across, *curves = columns.astype(float)
        for name, curve in zip(shown, curves):
            ax.plot(across, curve, **{"label": name, **style})
        ax.set_xlabel(x)
        if len(shown) == 1:
            ax.set_ylabel(shown[0])
        else:
            ax.legend()
        return ax

    def to_pandas(self, *expressions: str) -> Any:
        """A pandas.DataFrame of the rows with t as its index; by default all names. Needs pandas."""
        import pandas

        shown = expressions or tuple(self.names)
        return pandas.DataFrame({name: self[name] for name in shown}, index=pandas.Index(self.t, name="t"), copy=False)

    def _head(self) -> str:
        s = self.statistics
        why = f", where {self.ended_by} = 0" if self.ended_by is not None else ""
        return f"t = {self.model.start:.6g} to {self.end:.6g}{why}; {len(self)} rows, {s.steps} steps"

    def __repr__(self) -> str:
        return f"<zirk.Solution: {self._head()}>\n{text_table(['t', *self.names], self)}"

    def _repr_html_(self) -> str:
        return html_table(["t", *self.names], self, self._head())

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restored, (self.model, self._record.state(), self._watched)


def _restored(model: Model, state: Tuple[Any, ...], watched: Tuple[str, ...]) -> Solution:
    return Solution(model, _core.record_from_state(model._problem, state, len(watched)), watched)
