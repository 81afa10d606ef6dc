# SPDX-License-Identifier: MIT
"""One model, many values of its parameters."""

from __future__ import annotations

import concurrent.futures
import itertools
import os
import sys
import threading
from typing import Any, Callable, Dict, Iterable, List, Mapping, Optional, Sequence, Set, Tuple, Union

import numpy

from ._errors import Error, ParseError
from ._model import Model, model_of
from ._numbers import Number, Reals, real_of
from ._store import Store, key_of
from ._tables import html_table, text_table
from ._workers import SweepResult, executor_of, results_of

ParameterSet = Mapping[str, Number]
ParameterSets = Union[Mapping[str, Union[Number, Iterable[Number]]], Iterable[ParameterSet]]


class _Shown(Dict[str, Any]):
    """Columns as tables are made of."""

    def __init__(self, t: Reals, columns: Dict[str, Any]) -> None:
        super().__init__(columns)
        self.t = t


class Sweep(Sequence[SweepResult]):
    """Results of a sweep in the order of the sets: a sequence of SweepResult.

    sweep["k"] are the values of a constant that was set, sweep["x"] and sweep["t"] those of any other name and the time at
    the end of each run, or at all rows where rows were asked for: numpy.longdouble of shape (sets,) or (sets, rows), not a
    number where a set failed.
    """

    def __init__(
        self, results: List[SweepResult], constants: Iterable[str], shape: Tuple[int, ...], last_only: bool
    ) -> None:
        self._results = results
        self._constants = frozenset(constants)
        self._last_only = last_only
        self.shape = shape
        """How many values of each parameter there are, for reshape; (sets,) for a list of sets."""

    @property
    def parameters(self) -> List[Dict[str, Number]]:
        return [result.parameters for result in self._results]

    @property
    def errors(self) -> List[SweepResult]:
        """The sets that failed."""
        return [result for result in self._results if result.error is not None]

    def __len__(self) -> int:
        return len(self._results)

    def __getitem__(self, key: Any) -> Any:
        if not isinstance(key, str):
            return self._results[key]
        return self._parameter(key) if key in self._constants else self._values(key)

    def _parameter(self, name: str) -> Reals:
        values = numpy.full(len(self), numpy.nan, numpy.longdouble)
        # For texts and fractions, which have 64 bits.
        problem = Model("zero = 0;")._problem
        for i, result in enumerate(self._results):
            if name in result.parameters:
                values[i] = real_of(result.parameters[name], problem)
        return values

    def _values(self, name: str) -> Reals:
        good = [(i, result.solution[name]) for i, result in enumerate(self._results) if result.error is None and result.solution is not None]
        width = 1 if self._last_only else max((len(values) for _, values in good), default=0)
        table = numpy.full((len(self), width), numpy.nan, numpy.longdouble)
        for i, values in good:
            table[i, : min(len(values), width)] = values[-width:]
        return table[:, 0] if self._last_only else table

    def to_pandas(self, *names: str) -> Any:
        """A pandas.DataFrame, a row for each set: its parameters, names of the model at the end, and the error or ""."""
        import pandas

        return pandas.DataFrame(self._columns(names))

    def _columns(self, names: Sequence[str] = ()) -> Dict[str, Any]:
        shown = names or next((tuple(r.solution.names) for r in self._results if r.solution is not None), ())
        known = dict.fromkeys(name for result in self._results for name in result.parameters)
        columns: Dict[str, Any] = {
            name if name in self._constants else f"{name}(start)": self._parameter(name) for name in known
        }
        for name in shown:
            if name not in columns:
                values = self._values(name)
                columns[name] = values if values.ndim == 1 else values[:, -1]
        columns["error"] = ["" if result.error is None else str(result.error) for result in self._results]
        return columns

    def _shown(self) -> Tuple[List[str], Any]:
        columns = self._columns()
        if not self.errors:
            del columns["error"]
        return list(columns), _Shown(self["t"], columns)

    def _head(self) -> str:
        return f"{len(self)} sets, {len(self.errors)} failed"

    def __repr__(self) -> str:
        return f"<zirk.Sweep: {self._head()}>" + (f"\n{text_table(*self._shown())}" if len(self) else "")

    def _repr_html_(self) -> str:
        return html_table(*self._shown(), self._head())


def _values_of(values: Any) -> List[Number]:
    """A number or a formula alone is one value."""
    return [values] if isinstance(values, str) or not hasattr(values, "__iter__") else list(values)


def sets_of(parameters: ParameterSets) -> Tuple[List[Dict[str, Number]], Tuple[int, ...]]:
    """All sets, and how many values each parameter has; the last one changes fastest."""
    if isinstance(parameters, Mapping):
        lists = {name: _values_of(values) for name, values in parameters.items()}
        sets = [dict(zip(lists, values)) for values in itertools.product(*lists.values())]
        return sets, tuple(len(values) for values in lists.values())
    sets = [dict(one) for one in parameters]
    return sets, (len(sets),)


def _constants_of(model: Model, sets: List[Dict[str, Number]]) -> Set[str]:
    """The names in the sets that stand for constants; ParseError for one that the model does not have."""
    constants = set(model.parameters)
    for one in {frozenset(one): one for one in sets}.values():
        try:
            constants |= model.where(one).parameters.keys()
        except ParseError:
            raise
        except (ValueError, TypeError):
            # This set fails, for a value that is none; it is told with the others.
            pass
    return constants & {name for one in sets for name in one}


def _show_progress(done: int, count: int, failed: int) -> None:
    words = f"\r{done / count:4.0%}, {done} of {count} sets" + (f", {failed} failed " if failed else " ")
    print(words, end="\n" if done == count else "", file=sys.stderr, flush=True)


def sweep(
    model: Union[str, Model],
    parameters: ParameterSets,
    end: Optional[Number] = None,
    *,
    executor: Any = None,
    store: Union[None, str, "os.PathLike[str]"] = None,
    on_result: Optional[Callable[[SweepResult], Any]] = None,
    progress: Union[None, bool, Callable[[int, int, int], Any]] = None,
    **options: Any,
) -> Sweep:
    """Solves a model for many sets of values: all combinations of {"k": values, ...}, or a list of {"k": value, ...}.

    executor  : any of concurrent.futures, or a client of Dask for many machines; without one, a thread for each core. Runs
                hold no lock, so threads are enough on one machine
    store     : a directory for the results. A sweep that was stopped, and is called again in the same way, solves only what
                is not there yet; so does one with more values
    on_result : called with each SweepResult as soon as it is there, in the thread of the caller; those of the store first
    progress  : True, or called with (sets done, sets altogether, sets failed)
    options   : of zirk.solve. Without at, every or rows only the ends are kept; without dense=True no polynomials

    A set that fails is reported with its parameters and does not lose the others. A name that the model does not have is
    a ParseError at once. Ctrl-C ends a sweep by threads within a tenth of a second or two.

    >>> import zirk
    >>> found = zirk.sweep("k = 1;  x'' = -k*x & 1;", {"k": [1, 4, 9]}, "pi")
    >>> found["k"].tolist(), [round(float(x), 15) for x in found["x"]]
    ([1.0, 4.0, 9.0], [-1.0, 1.0, -1.0])
    """
    sets, shape = sets_of(parameters)
    model = model_of(model, None, None)
    constants = _constants_of(model, sets)
    last_only = not any(options.get(key) is not None for key in ("at", "every", "rows"))
    if last_only:
        if end is None:
            raise TypeError("sweep needs an end, or times in at")
        options["at"] = [end]
    elif options.get("at") is not None:
        # Whatever gives times once has to give them to every set.
        options["at"] = list(options["at"])
    options.setdefault("dense", False)
    shown = _show_progress if progress is True else progress or None
    results: List[Optional[SweepResult]] = [None] * len(sets)
    done = failed = 0

    def take(some: Sequence[SweepResult]) -> None:
        nonlocal done, failed
        for result in some:
            results[result.index] = result
            done += 1
            failed += result.error is not None
            if on_result is not None:
                on_result(result)
        if shown is not None and some:
            shown(done, len(sets), failed)

    kept = None if store is None else Store(store, model, end, options)
    if kept is not None:
        found = kept.read()
        known = ((i, one, found.get(key_of(one))) for i, one in enumerate(sets))
        take([r._replace(index=i, parameters=one) for i, one, r in known if r is not None])
    todo = [(i, one) for i, one in enumerate(sets) if results[i] is None]

    stop = threading.Event() if executor is None else None
    if executor is None:
        pool, workers = concurrent.futures.ThreadPoolExecutor(_cores()), _cores()
    else:
        pool, workers = executor_of(executor)
    arriving = results_of(pool, workers, model, todo, end, options, stop)
    try:
        for some in arriving:
            if kept is not None:
                kept.add(some)
            take(some)
    finally:
        arriving.close()
        if executor is None:
            pool.shutdown()
        if kept is not None:
            kept.flush()
    complete = [result for result in results if result is not None]
    # What every set is refused for lies in the options.
    if complete and all(result.error is not None and not isinstance(result.error, Error) for result in complete):
        raise complete[0].error  # type: ignore[misc]
    return Sweep(complete, constants, shape, last_only)


def _cores() -> int:
    """Those that this process may use."""
    return len(os.sched_getaffinity(0))
