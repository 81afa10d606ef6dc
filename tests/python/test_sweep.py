# SPDX-License-Identifier: MIT
"""Many sets of parameters."""

import concurrent.futures
import fractions
import os
import threading
import time

import numpy as np
import pytest

import zirk
from test_runs import interrupted

LONG = np.longdouble
SPRING = "k = 1;  x'' = -k*x & 1;"
FOREVER = "r = 28; x' = 10*(y - x) & 1; y' = x*(r - z) - y & 1; z' = x*y - 8/3*z & 1;"


def test_every_set_has_the_bits_of_its_own_solve():
    values = np.linspace(1, 20, 300)
    found = zirk.sweep(SPRING, {"k": values}, 10)
    assert len(found) == 300 and found.shape == (300,) and not found.errors
    assert (found["k"] == values).all() and (found["t"] == 10).all()
    for i in (0, 7, 299):
        assert found["x"][i] == zirk.solve(SPRING, 10, set={"k": values[i]})["x"][-1]
    assert np.abs(found["x"] - np.cos(np.sqrt(values.astype(LONG)) * 10)).max() < 1e-16


def test_combinations_have_a_shape():
    found = zirk.sweep(SPRING, {"k": [1, 4], "x": [1, 2, 3]}, "pi")
    assert found.shape == (2, 3)
    table = found["x"].reshape(found.shape)
    assert np.abs(table - np.array([[-1, -2, -3], [1, 2, 3]])).max() < 1e-17
    # The name of a start value means the solution.
    assert found.parameters[4] == {"k": 4, "x": 2}


def test_lists_of_sets_and_rows():
    sets = [{"k": 1}, {"k": fractions.Fraction(1, 4)}, {"x'": "2"}]
    found = zirk.sweep(SPRING, sets, 2, rows=4)
    assert found["k"].tolist()[:2] == [1, LONG("0.25")] and np.isnan(found["k"][2])
    t = np.linspace(0, LONG(2), 5)
    values = np.array([result.solution["x"] for result in found])
    assert np.abs(values - [np.cos(t), np.cos(t / 2), np.cos(t) + 2 * np.sin(t)]).max() < 1e-17
    assert zirk.sweep(SPRING, [], 1)["x"].shape == (0,)


def test_rows_come_as_a_table():
    found = zirk.sweep(SPRING, {"k": [1, 4, 9]}, 2, rows=4)
    assert found["x"].shape == (3, 5) and (found["t"] == np.linspace(0, 2, 5)).all()
    met = zirk.sweep(SPRING, {"k": [1, 4]}, 9, until="x")
    assert np.abs(met["t"] * [1, 2] - LONG("1.57079632679489661923")).max() < 1e-17


def test_a_failed_set_is_told_and_loses_no_other():
    found = zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1, -1, float("nan"), 0.5]}, 1.5)
    failed = {result.index: result for result in found.errors}
    assert list(failed) == [1, 3]
    assert failed[1].parameters == {"a": 1} and isinstance(failed[1].error, zirk.RunError)
    assert failed[1].solution is failed[1].error.solution and isinstance(failed[3].error, ValueError)
    assert np.isnan(found["x"][[1, 3]]).all()
    assert np.abs(found["x"][[0, 2, 4]] * [LONG(0.625), 2.5, 0.25] - 1).max() < 1e-17


def test_what_concerns_all_sets_is_told_at_once():
    with pytest.raises(zirk.ParseError, match="kk"):
        zirk.sweep(SPRING, {"kk": [1, 2]}, 1)
    with pytest.raises(ValueError, match="tolerance"):
        zirk.sweep(SPRING, {"k": [1, 2]}, 1, tolerance=2)
    with pytest.raises(TypeError):
        zirk.sweep(SPRING, {"k": [1, 2]})


def test_results_arrive_as_they_are_ready():
    seen = []
    found = zirk.sweep(SPRING, {"k": range(1, 101)}, 1, on_result=lambda r: seen.append((r.index, threading.get_ident())))
    assert sorted(i for i, _ in seen) == list(range(100)) and {who for _, who in seen} == {threading.get_ident()}
    assert [result.index for result in found] == list(range(100))


def test_executors_give_the_same_bits():
    values = {"k": range(1, 41), "x": [1, "1/3"]}
    alone = zirk.sweep(SPRING, values, 5)
    with concurrent.futures.ProcessPoolExecutor(2) as processes:
        others = zirk.sweep(SPRING, values, 5, executor=processes)
        failing = zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1]}, 1.5, executor=processes)
    assert (alone["x'"] == others["x'"]).all() and others.parameters == alone.parameters
    assert [result.index for result in failing.errors] == [1]
    assert isinstance(failing[1].error, zirk.RunError) and abs(failing[1].error.time - 1) < 1e-15


def test_tables_for_pandas():
    pytest.importorskip("pandas")
    frame = zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1]}, 1.5).to_pandas("x")
    assert list(frame.columns) == ["a", "x", "error"]
    assert frame["error"][0] == "" and "singularity" in frame["error"][1]


@pytest.mark.timing
def test_control_c_ends_a_sweep():
    code = f"""
import time, zirk
print("ready", flush=True)
try:
    zirk.sweep({FOREVER!r}, {{"r": range(20, 40)}}, 1e7)
except KeyboardInterrupt:
    print(time.time(), flush=True)
"""
    # Workers look ten times a second; others may use this machine as well. One run takes many minutes.
    assert interrupted(code) < 1


@pytest.mark.timing
@pytest.mark.skipif(os.cpu_count() < 2, reason="one core")
def test_threads_work_at_the_same_time():
    """Processor time beyond what one thread can have in that time."""
    wall, cpu = time.perf_counter(), time.process_time()
    zirk.sweep(FOREVER, {"r": range(20, 40)}, 300)
    wall, cpu = time.perf_counter() - wall, time.process_time() - cpu
    idle = os.getloadavg()[0] < os.cpu_count() / 2
    assert cpu > 1.5 * wall or not idle


def test_tasks_give_back_what_they_have_no_time_for(monkeypatch):
    monkeypatch.setattr(zirk._workers, "_SECONDS_PER_TASK", 0)
    seen = []
    found = zirk.sweep(SPRING, {"k": range(1, 401)}, 1, on_result=lambda r: seen.append(r.index))
    assert sorted(seen) == list(range(400)) and len(found) == 400
    # Each task has come back with one result, so that sets of later tasks are there before the last ones of the first.
    assert seen.index(399) < len(seen) - 1 or seen != sorted(seen)
    assert np.abs(found["x"] - np.cos(np.sqrt(found["k"]))).max() < 1e-17


def test_an_iterator_of_times_serves_all_sets():
    assert zirk.sweep(SPRING, {"k": [1, 4]}, at=iter([1, 2]))["t"].tolist() == [[1, 2], [1, 2]]


def test_one_value_is_a_list_of_one():
    found = zirk.sweep(SPRING, {"k": "9/4", "x": 2, "x'": [0, 1]}, 1)
    assert found.shape == (1, 1, 2) and found["k"].tolist() == [2.25, 2.25]
    assert found["x"][0] == zirk.solve(SPRING, at=[1], set={"k": "9/4", "x": 2}, dense=False)["x"][-1]


def test_a_first_set_may_fail_like_any_other():
    found = zirk.sweep(SPRING, {"k": [float("nan"), 1]}, 1)
    assert [result.index for result in found.errors] == [0] and found["k"][1] == 1
    with pytest.raises(zirk.ParseError, match="kk"):
        zirk.sweep(SPRING, [{"k": 1}, {"kk": 1}], 1)


def test_sweeps_show_themselves_as_tables():
    found = zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1]}, 1.5)
    lines = repr(found).splitlines()
    assert lines[0] == "<zirk.Sweep: 2 sets, 1 failed>" and lines[1].split() == ["a", "x", "error"]
    assert lines[2].split() == ["0.25", "1.6"] and lines[3].split()[:3] == ["1", "nan", "x"]
    html = found._repr_html_()
    assert html.count("<tr>") == 3 and "singularity" in html and "2 sets, 1 failed" in html
    assert repr(zirk.sweep(SPRING, [], 1)) == "<zirk.Sweep: 0 sets, 0 failed>"
    assert len(repr(zirk.sweep(SPRING, {"k": range(1, 101)}, 1, rows=3)).splitlines()) == 13


def test_names_that_are_not_there_are_told():
    found = zirk.sweep(SPRING, {"k": [1, 4]}, 1)
    with pytest.raises(zirk.ParseError, match="undefined name"):
        found["y"]
    with pytest.raises(ValueError, match="dense=True"):
        found["x*x"]
    assert zirk.sweep(SPRING, {"k": [1, 4]}, "pi", dense=True)["x*x"].astype(float).tolist() == [1, 1]
