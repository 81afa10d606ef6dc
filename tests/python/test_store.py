# SPDX-License-Identifier: MIT
"""Sweeps that are stopped, and go on from what they wrote."""

import concurrent.futures
import json
import os
import pathlib
import pickle
import signal
import subprocess
import sys
import time

import numpy as np
import pytest

import zirk

LONG = np.longdouble
SPRING = "k = 1;  x'' = -k*x & 1;"
LORENZ = "r = 28; x' = 10*(y - x) & 1; y' = x*(r - z) - y & 1; z' = x*y - 8/3*z & 1;"


class Enough(Exception):
    pass


def stopping_after(count):
    seen = []

    def look(result):
        seen.append(result.index)
        if len(seen) == count:
            raise Enough

    return look


class Counting(concurrent.futures.ThreadPoolExecutor):
    """Knows which sets it was given."""

    def __init__(self):
        super().__init__(2)
        self.given = []

    def submit(self, call, model, sets, *rest):
        self.given += [index for index, _ in sets]
        return super().submit(call, model, sets, *rest)


def stored(directory):
    """Indices in the files of a store, each as often as it is there."""
    return [r.index for file in pathlib.Path(directory).glob("*.results") for r in pickle.loads(file.read_bytes())]


def test_a_stopped_sweep_goes_on(tmp_path):
    values = {"k": np.arange(1, 501)}
    with pytest.raises(Enough):
        zirk.sweep(SPRING, values, 10, store=tmp_path, on_result=stopping_after(200))
    there = stored(tmp_path)
    assert len(there) == len(set(there)) and 200 <= len(there) < 500
    seen = []
    with Counting() as pool:
        found = zirk.sweep(SPRING, values, 10, store=tmp_path, executor=pool, on_result=lambda r: seen.append(r.index))
    # Tasks may have been handed out twice only for sets that the first sweep did not bring in.
    assert set(pool.given) == set(range(500)) - set(there)
    assert sorted(seen) == list(range(500)) and sorted(seen[: len(there)]) == sorted(there)
    alone = zirk.sweep(SPRING, values, 10)
    assert (found["x"] == alone["x"]).all() and (found["k"] == alone["k"]).all()
    assert sorted(stored(tmp_path)) == list(range(500))
    assert {file.suffix for file in tmp_path.iterdir()} == {".json", ".results"}
    with Counting() as pool:
        zirk.sweep(SPRING, values, 10, store=tmp_path, executor=pool)
    assert pool.given == []


def test_a_killed_sweep_loses_what_came_last(tmp_path):
    code = f"""
import zirk
zirk.sweep({LORENZ!r}, {{"r": range(20, 2000)}}, 100, store={str(tmp_path)!r}, progress=True)
"""
    with subprocess.Popen([sys.executable, "-c", code], stderr=subprocess.DEVNULL) as child:
        for _ in range(600):
            if len(list(tmp_path.glob("*.results"))) >= 2:
                break
            time.sleep(0.05)
        child.send_signal(signal.SIGKILL)
    there = set(stored(tmp_path))
    assert 0 < len(there) < 1980
    # What the end left half written does not count.
    (tmp_path / "0.results.0.part").write_bytes(b"half")
    few = sorted(there)[:3] + [1979]
    with Counting() as pool:
        found = zirk.sweep(LORENZ, {"r": [20 + i for i in few]}, 100, store=tmp_path, executor=pool)
    assert pool.given == [3]
    assert found["x"][0] == zirk.solve(LORENZ, at=[100], set={"r": 20 + few[0]}, dense=False)["x"][-1]


def test_more_values_find_what_they_have_in_common(tmp_path):
    first = zirk.sweep(SPRING, {"k": [1, 2, 3], "x": ["1/3"]}, 5, store=tmp_path)
    with Counting() as pool:
        # Another order, other types, and the same numbers.
        sets = [{"x": "1/3", "k": 3.0}, {"k": 4, "x": "1/3"}, {"k": LONG(1), "x": "1/3"}, {"k": 4, "x": 1 / 3}]
        again = zirk.sweep(SPRING, sets, 5, store=tmp_path, executor=pool)
    assert sorted(pool.given) == [1, 3]
    assert again["x"][0] == first["x"][2] and again["x"][2] == first["x"][0] and again["x"][1] != again["x"][3]


def test_failed_sets_are_kept_as_well(tmp_path):
    growing = "a = 0; x' = a*x*x & 1;"
    first = zirk.sweep(growing, {"a": [0.25, 1, float("nan")]}, 1.5, store=tmp_path)
    with Counting() as pool:
        again = zirk.sweep(growing, {"a": [0.25, 1, float("nan")]}, 1.5, store=tmp_path, executor=pool)
    assert pool.given == [] and [r.index for r in again.errors] == [r.index for r in first.errors] == [1, 2]
    assert again[1].error.time == first[1].error.time and again[1].error.solution["x"].tolist() == first[1].solution["x"].tolist()


@pytest.mark.parametrize(
    "other", [dict(end=6), dict(model=SPRING + " "), dict(tolerance=1e-15), dict(rows=3), dict(model=zirk.Model(SPRING, start=1))], ids=str
)
def test_another_sweep_is_refused(tmp_path, other):
    zirk.sweep(SPRING, {"k": [1]}, 5, store=tmp_path)
    call = {"model": SPRING, "parameters": {"k": [1]}, "end": 5, **other}
    with pytest.raises(ValueError, match="holds another sweep"):
        zirk.sweep(**call, store=tmp_path)
    assert json.loads((tmp_path / "sweep.json").read_text())["end"] == "5.0"


def test_two_processes_share_a_store(tmp_path):
    # As tasks of a cluster do: each solves its part, the last one to look gathers all.
    code = """
import sys, zirk
part = int(sys.argv[1])
zirk.sweep(sys.argv[2], {"k": range(1 + 50*part, 51 + 50*part)}, 5, store=sys.argv[3])
"""
    children = [subprocess.Popen([sys.executable, "-c", code, str(part), SPRING, str(tmp_path)]) for part in range(2)]
    assert [child.wait() for child in children] == [0, 0]
    with Counting() as pool:
        found = zirk.sweep(SPRING, {"k": range(1, 101)}, 5, store=tmp_path, executor=pool)
    assert pool.given == [] and np.abs(found["x"] - np.cos(np.sqrt(found["k"]) * 5)).max() < 1e-17


def test_a_file_that_cannot_be_read_is_named(tmp_path):
    zirk.sweep(SPRING, {"k": [1]}, 5, store=tmp_path)
    (tmp_path / "broken.results").write_bytes(b"\x80")
    with pytest.raises(ValueError, match="broken.results cannot be read"):
        zirk.sweep(SPRING, {"k": [1]}, 5, store=tmp_path)


def test_the_end_of_an_executor_loses_nothing_that_came(tmp_path):
    with pytest.raises(concurrent.futures.BrokenExecutor):
        with concurrent.futures.ProcessPoolExecutor(1) as pool:
            killed = []

            def kill(result):
                if result.index == 100 and not killed:
                    killed.append(os.kill(next(iter(pool._processes)), signal.SIGKILL))

            zirk.sweep(LORENZ, {"r": range(20, 520)}, 50, store=tmp_path, executor=pool, on_result=kill)
    assert 100 in stored(tmp_path) and len(stored(tmp_path)) < 500
    found = zirk.sweep(LORENZ, {"r": range(20, 520)}, 50, store=tmp_path)
    assert not found.errors and sorted(stored(tmp_path)) == list(range(500))


class Unreliable(concurrent.futures.ThreadPoolExecutor):
    """Fails for every task that has one of these sets."""

    def submit(self, call, model, sets, *rest):
        if any(one["k"] in (7, 100) for _, one in sets):
            return super().submit(self.fail)
        return super().submit(call, model, sets, *rest)

    @staticmethod
    def fail():
        raise OSError("the worker died")


def test_what_kills_workers_is_told_and_loses_no_other(tmp_path):
    seen = []
    with Unreliable(2) as pool:
        found = zirk.sweep(SPRING, {"k": range(1, 201)}, 1, executor=pool, store=tmp_path, on_result=lambda r: seen.append(r.index))
    assert sorted(seen) == list(range(200))
    assert [r.parameters for r in found.errors] == [{"k": 7}, {"k": 100}] and len(found) == 200
    assert str(found.errors[0].error) == "the worker died" and found.errors[0].solution is None
    # It may go better the next time.
    again = zirk.sweep(SPRING, {"k": range(1, 201)}, 1, store=tmp_path)
    assert not again.errors


def test_progress_counts_sets(capsys):
    seen = []
    zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1, 0.5]}, 1.5, progress=lambda *now: seen.append(now))
    assert seen[-1] == (3, 3, 1) and [s[0] for s in seen] == sorted(s[0] for s in seen)
    zirk.sweep(SPRING, {"k": [1]}, 1, progress=True)
    assert capsys.readouterr().err == "\r100%, 1 of 1 sets \n"


def test_only_executors_are_executors():
    with pytest.raises(TypeError, match="executor"):
        zirk.sweep(SPRING, {"k": [1]}, 1, executor="threads")
