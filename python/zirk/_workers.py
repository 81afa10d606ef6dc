# SPDX-License-Identifier: MIT
"""Sets of parameters go out to workers, results come back: threads, processes, machines."""

from __future__ import annotations

import collections
import concurrent.futures
import os
import time
from typing import Any, Deque, Dict, Generator, List, Mapping, NamedTuple, Optional, Sequence, Tuple

from ._errors import Error
from ._model import Model
from ._numbers import Number
from ._solution import Solution
from ._solve import solve

# A task has at most so many sets, and gives back what it has not begun after so many seconds: handing sets out costs
# little, and at the end nobody waits long for the last one.
_MOST_PER_TASK = 64
_SECONDS_PER_TASK = 0.5
_TASKS_PER_WORKER = 8
# So many tasks are on their way for each worker, so that none is idle until the next one arrives.
_WAITING_PER_WORKER = 4
# When so many sets have failed by themselves and no task has been well, it is not for the sets.
_HOPELESS = 20


class SweepResult(NamedTuple):
    """One set of parameters and what came of it."""

    index: int  # type: ignore[assignment]
    parameters: Dict[str, Number]
    solution: Optional[Solution]
    """Of a failed set what is known of it, or None."""
    error: Optional[Exception]
    """None when all is well."""


IndexedSet = Tuple[int, Dict[str, Number]]


class _Stopped(Exception):
    pass


def _solve_some(
    model: Model, sets: Sequence[IndexedSet], end: Any, options: Mapping[str, Any], stop: Any
) -> List[SweepResult]:
    """What a worker does: results of the first of these sets, at least one; `stop` is an event of this process, or None."""

    def look(*_: Any) -> None:
        if stop is not None and stop.is_set():
            raise _Stopped

    results: List[SweepResult] = []
    begin = time.monotonic()
    for index, one in sets:
        if results and time.monotonic() - begin > _SECONDS_PER_TASK:
            break
        look()
        try:
            solution = solve(model, end, set=one, progress=look if stop is not None else None, **options)
            results.append(SweepResult(index, one, solution, None))
        except (Error, ValueError, TypeError, MemoryError) as error:
            results.append(SweepResult(index, one, getattr(error, "solution", None), error))
    return results


def executor_of(executor: Any) -> Tuple[Any, int]:
    """What has submit() as concurrent.futures has it, and about how many workers it has."""
    if hasattr(executor, "get_executor"):
        # A client of Dask. Tasks with equal arguments are different tasks: a set may stand there twice.
        return executor.get_executor(pure=False), sum(executor.ncores().values())
    if not hasattr(executor, "submit"):
        raise TypeError(f"an executor of concurrent.futures or a client of Dask is wanted, not {executor!r}")
    return executor, getattr(executor, "_max_workers", 0)


def results_of(
    executor: Any, workers: int, model: Model, sets: Sequence[IndexedSet], end: Any, options: Mapping[str, Any], stop: Any
) -> Generator[List[SweepResult], None, None]:
    """Results as they are ready, each set once. Whoever stops listening cancels what has not begun.

    A task that fails as a whole, as its worker died or its memory ran out, is tried again set by set; a set that fails so
    by itself is a result with that error. What ends the executor itself, or all tasks, is raised.
    """
    workers = max(workers, os.cpu_count() or 1)
    size = max(1, min(_MOST_PER_TASK, len(sets) // (_TASKS_PER_WORKER * workers)))
    queue: Deque[List[IndexedSet]] = collections.deque()
    queue.extend(list(sets[i : i + size]) for i in range(0, len(sets), size))
    waiting: Dict[Any, List[IndexedSet]] = {}
    is_well, failed = False, 0
    try:
        while queue or waiting:
            while queue and len(waiting) < _WAITING_PER_WORKER * workers:
                some = queue.popleft()
                waiting[executor.submit(_solve_some, model, some, end, options, stop)] = some
            done, _ = concurrent.futures.wait(waiting, return_when=concurrent.futures.FIRST_COMPLETED)
            for future in done:
                some = waiting.pop(future)
                try:
                    results = future.result()
                    is_well = True
                except (concurrent.futures.BrokenExecutor, concurrent.futures.CancelledError, _Stopped):
                    raise
                except Exception as error:
                    if len(some) > 1:
                        queue.extendleft([one] for one in reversed(some))
                        continue
                    failed += 1
                    if failed >= _HOPELESS and not is_well:
                        raise
                    results = [SweepResult(*some[0], None, error)]
                if len(results) < len(some):
                    queue.append(some[len(results) :])
                yield results
    finally:
        if stop is not None and waiting:
            stop.set()
        for future in waiting:
            future.cancel()
