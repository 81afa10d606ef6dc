# SPDX-License-Identifier: MIT
"""Rows, evaluation, zeros."""

import gc
import subprocess

import numpy as np
import pytest

import zirk

CIRCLE = "x'' = -x & 1;"
LONG = np.longdouble
# cos and sin of numpy.longdouble are those of the C library, which rounds to about the last bit.
EPS = LONG(1e-17)


def address(array):
    return array.__array_interface__["data"][0]


def test_arrays_share_the_numbers_of_the_solution():
    sol = zirk.solve(CIRCLE, 10, rows=100)
    for name in ("x", "x'", "x*x + t"):
        first, second = sol[name], sol[name]
        assert first is not second and address(first) == address(second), name
        assert not first.flags.owndata and first.dtype == LONG and first.shape == (101,)
    assert address(sol.t) == address(sol.t) == address(sol["t"])
    assert address(sol["x"]) != address(sol["x'"])


def test_arrays_outlive_their_solution():
    sol = zirk.solve(CIRCLE, 10, rows=1000)
    x, copy = sol["x"], np.array(sol["x"])
    del sol
    gc.collect()
    others = [zirk.solve("x' = 1;", 1, rows=1000)["x"] for _ in range(50)]
    assert (x == copy).all() and len(others) == 50


def test_arrays_cannot_be_written():
    sol = zirk.solve(CIRCLE, 1)
    with pytest.raises(ValueError):
        sol["x"][0] = 2


@pytest.mark.parametrize("end", [10, -10])
def test_values_are_those_of_the_closed_form(end):
    sol = zirk.solve(CIRCLE, end)
    t = np.linspace(0, LONG(end), 333)
    assert np.abs(sol(t, "x") - np.cos(t)).max() < EPS
    assert np.abs(sol(t, "x'") + np.sin(t)).max() < EPS
    assert np.abs(sol(t, "x''") + np.cos(t)).max() < EPS
    assert np.abs(sol["x"] - np.cos(sol.t)).max() < EPS


def test_shapes_follow_those_of_the_times():
    sol = zirk.solve(CIRCLE, 10)
    assert isinstance(sol(1, "x"), LONG)
    assert sol(1).shape == (2,)
    assert sol(np.ones((3, 4)), "x").shape == (3, 4)
    assert sol(np.ones((3, 4))).shape == (2, 3, 4)
    assert sol([1, 2, 3], ["x", "t", "x'"]).shape == (3, 3)
    assert sol([[1, "pi"]], "t").tolist() == [[1, LONG("3.14159265358979323846")]]
    assert sol([], "x").shape == (0,)
    assert sol([1, 2], ["t", "x"])[0].tolist() == [1, 2]
    assert (sol([1, 2], ["t", "x"])[1] == sol([1, 2], "x")).all()


@pytest.mark.parametrize("time", [-0.001, 10.001, float("nan"), float("inf")])
def test_times_outside_are_refused(time):
    with pytest.raises(ValueError, match="outside"):
        zirk.solve(CIRCLE, 10)([1, time])


def test_rows_are_where_they_were_asked_for():
    assert zirk.solve(CIRCLE, 10, rows=4).t.tolist() == [0, 2.5, 5, 7.5, 10]
    assert zirk.solve(CIRCLE, 10, every=4).t.tolist() == [0, 4, 8, 10]
    assert zirk.solve(CIRCLE, -3, every=2).t.tolist() == [0, -2, -3]
    assert zirk.solve(CIRCLE, at=[1, 1, 2]).t.tolist() == [1, 1, 2]
    assert zirk.solve(CIRCLE, 9, at=(1, "pi/2")).t.tolist() == [1, LONG("1.57079632679489661923")]
    assert zirk.solve(CIRCLE, 3, at=[]).t.tolist() == []
    assert zirk.solve(CIRCLE, -4, at=np.array([0, -1, -4])).t.tolist() == [0, -1, -4]
    assert zirk.solve(CIRCLE, 5, start=5, rows=3).t.tolist() == [5]
    steps = zirk.solve(CIRCLE, 10)
    assert len(steps) == steps.statistics.steps + 1 and steps.t[-1] == 10
    # A tenth as text divides ten evenly, as a double it is a little more than a tenth.
    assert len(zirk.solve(CIRCLE, 10, every="0.1")) == len(zirk.solve(CIRCLE, 10, every=0.1)) == 101
    # The double is a little less than a third: what is left over is rounding, and no row.
    assert len(zirk.solve(CIRCLE, 10, every=1 / 3)) == 31


@pytest.mark.parametrize(
    "wrong",
    [
        dict(at=[1, 11]), dict(at=[2, 1]), dict(at=[-1]), dict(at=[5, 6, 5]), dict(at=[float("nan")]), dict(every=0), dict(every=-1), dict(rows=0),
        dict(rows=2.5), dict(every=1, rows=2), dict(every=1e-300), dict(tolerance=0), dict(tolerance=1),
        dict(tolerance=float("nan")), dict(max_step=0), dict(set={"x": float("inf")}),
    ],
    ids=str,
)  # fmt: skip
def test_what_makes_no_sense_is_a_value_error(wrong):
    with pytest.raises(ValueError):
        zirk.solve(CIRCLE, 10, **wrong)


def test_an_end_is_needed_and_finite():
    with pytest.raises(TypeError):
        zirk.solve(CIRCLE)
    for end in (float("inf"), float("nan")):
        with pytest.raises(ValueError):
            zirk.solve(CIRCLE, end)
    with pytest.raises(TypeError):
        zirk.solve(CIRCLE, 1j)
    with pytest.raises(TypeError):
        zirk.solve(CIRCLE, [1])


@pytest.mark.parametrize("tolerance", [None, 1e-18, 1e-15, "1e-12", 1e-7])
def test_rows_are_those_of_the_command(solve_command, tolerance):
    text = "x' = 10*(y - x) & 1; y' = x*(28 - z) - y & 1; z' = x*y - 8/3*z & 1;"
    out = subprocess.run(
        [solve_command, "-t", "3", "-n", "30", "--digits", "21", "--format", "csv", "--tolerance", str(tolerance or 1e-18)],
        input=text, capture_output=True, text=True, check=True,
    ).stdout.split()  # fmt: skip
    names = out[0].split(",")
    sol = zirk.solve(text, 3, rows=30, **({} if tolerance is None else {"tolerance": tolerance}))
    rows = np.array([[LONG(cell) for cell in line.split(",")] for line in out[1:]])
    assert names == ["t", *sol.names] and len(rows) == 31
    for i, name in enumerate(names):
        assert (sol[name] == rows[:, i]).all(), name


def test_zeros_are_found():
    sol = zirk.solve("x'' = -x & 0; x'(0) = 1;", 10, crossings=["x:down", "x'"])
    pi = LONG("3.14159265358979323846")
    assert np.abs(sol.events.t - pi * np.array([1, 2, 3, 5, 6]) / 2).max() < 2 * EPS
    assert [e.expression for e in sol.events] == ["x'", "x", "x'", "x'", "x"]
    assert [e.rising for e in sol.events] == [False, False, True, False, False]
    assert not any(e.ended for e in sol.events) and sol.ended_by is None
    assert [e.t for e in sol.events.of("x")] == [sol.events.t[1], sol.events.t[4]]
    assert np.abs(sol.events["x'"][[1, 4]] + 1).max() < EPS
    assert abs(sol.events[0]["x*x + 1"] - 2) < EPS
    assert len(sol.events[1:3]) == 2 and sol.events[-1].t == sol.events.t[4]
    with pytest.raises(IndexError):
        sol.events[5]


def test_until_ends_the_run():
    sol = zirk.solve("x'' = -x & 1;", 10, every=1, until=["x' - 2", "x"])
    half = LONG("1.57079632679489661923")
    assert sol.ended_by == "x" and abs(sol.end - half) < EPS
    assert sol.t.tolist() == [0, 1, sol.end]
    assert len(sol.events) == 1 and sol.events[0].ended and sol.events[0].t == sol.end
    with pytest.raises(ValueError):
        sol(1.6)
    assert abs(sol(sol.end, "x")) < EPS


def test_without_polynomials_names_at_rows_remain():
    sol = zirk.solve("x'' = -x & 1; e = x*x + x'*x';", 10, rows=5, dense=False)
    full = zirk.solve("x'' = -x & 1; e = x*x + x'*x';", 10, rows=5)
    for name in sol.names:
        assert (sol[name] == full[name]).all()
    for question in (lambda: sol(1), lambda: sol["x + 1"]):
        with pytest.raises(ValueError, match="dense=True"):
            question()


def test_tables_are_shown():
    sol = zirk.solve(CIRCLE, 10, rows=100)
    lines = repr(sol).splitlines()
    assert lines[0].startswith("<zirk.Solution: t = 0 to 10; 101 rows") and len(lines) == 13
    assert lines[1].split() == ["t", "x", "x'"] and lines[2].split() == ["0", "1", "0"]
    html = sol._repr_html_()
    assert html.count("<tr>") == 12 and "<th>x&#x27;</th>" in html
    assert "..." in repr(zirk.solve(" ".join(f"x{i}' = {i};" for i in range(40)), 1))


def test_pandas_gets_a_frame():
    pandas = pytest.importorskip("pandas")
    sol = zirk.solve(CIRCLE, 10, rows=10)
    frame = sol.to_pandas("x", "x*x")
    assert isinstance(frame, pandas.DataFrame) and list(frame.columns) == ["x", "x*x"]
    assert frame.index.name == "t" and (frame["x"].to_numpy() == sol["x"]).all()
    assert list(sol.to_pandas().columns) == ["x", "x'"]


def test_plots_are_drawn():
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    sol = zirk.solve(CIRCLE, 10)
    axes = sol.plot()
    assert [line.get_label() for line in axes.lines] == ["x", "x'"] and len(axes.lines[0].get_xdata()) == 1000
    axes = sol.plot("x'", x="x", points=50)
    assert axes.get_xlabel() == "x" and axes.get_ylabel() == "x'"
    x, y = axes.lines[0].get_data()
    assert np.abs(x**2 + y**2 - 1).max() < 1e-15
    assert len(zirk.solve(CIRCLE, 1, dense=False, rows=7).plot("x").lines[0].get_xdata()) == 8
