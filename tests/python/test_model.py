# SPDX-License-Identifier: MIT
"""Models, numbers on their way to 64 bits, errors of texts."""

import decimal
import fractions
import pickle

import numpy as np
import pytest

import zirk

LONG = np.longdouble


def value(number):
    """What a model makes of a number."""
    return zirk.Model("k = 1;", set={"k": number}).parameters["k"]


def test_names_and_parameters():
    model = zirk.Model("a = 2; b = a*a; x'' = -b*x & a; e = x*x; y = t;")
    assert model.names == ["a", "b", "x", "x'", "e", "y"]
    assert model.parameters == {"a": 2, "b": 4}
    assert model.start == 0 and zirk.Model("x' = 1;", start="1/3").start == LONG(1) / 3


def test_explanations_read_back():
    model = zirk.Model("k = 4; x'' = -k*x & 1;", set={"k": 9, "x'": "pi"})
    again = zirk.Model(model.explain())
    assert again.parameters == {"k": 9}
    assert (zirk.solve(again, 1)["x"] == zirk.solve(model, 1)["x"]).all()


def test_ints_are_exact():
    for number in (0, -1, 2**63 + 1, -(2**64) + 1, 2**64 - 1, np.int64(-(2**63)), np.uint64(2**64 - 1)):
        assert int(value(number)) == int(number)
    assert int(value(3 * 2**200)) == 3 * 2**200
    assert value(10**4000) == LONG("1e4000")
    assert value(True) == 1


def test_floats_are_what_they_are():
    for number in (0.1, -1 / 3, 5e-324, 1.7976931348623157e308, 2.0**-1074, -0.0, np.float32(0.1), np.float64(0.1)):
        assert value(number) == LONG(number) and float(value(number)) == number
    assert value(0.1) != LONG("0.1")


@pytest.mark.parametrize("text", ["0.1", "-1.25", "1E+30", "3.14159265358979323846", "-1e-4000", "1e4900"])
def test_decimals_give_64_bits(text):
    assert value(decimal.Decimal(text)) == value(text.lower().replace("+", "")) == LONG(text)


def test_fractions_give_64_bits():
    assert value(fractions.Fraction(1, 3)) == LONG(1) / LONG(3)
    assert value(fractions.Fraction(-7, 10)) == LONG("-0.7")
    # As integer arithmetic rounds it to nearest: p/q = m * 2^e with 2^63 <= m < 2^64.
    top, bottom = 10**40 + 7, 3**80
    shift = 63 - (top // bottom).bit_length() + 1
    scaled = fractions.Fraction(top, bottom) * fractions.Fraction(2) ** shift
    assert int(value(fractions.Fraction(top, bottom)) * LONG(2) ** shift) == round(scaled)
    assert value(fractions.Fraction(10**3000, 10**3001)) == LONG("0.1")


def test_longdoubles_keep_their_bits():
    for number in (LONG(1) / 3, np.nextafter(LONG(1), LONG(2)), np.finfo(LONG).max, np.finfo(LONG).tiny):
        assert value(number) == number
        assert value(np.array(number)) == number
    sol = zirk.solve("x' = 1;", LONG(1) / 3, at=[LONG(1) / 7, LONG(1) / 3])
    assert sol.t[0] == LONG(1) / 7 and sol.end == LONG(1) / 3


@pytest.mark.parametrize("wrong", [None, 1j, [1], {}, np.complex128(1), np.array([1.0, 2.0]), b"1", "x y"], ids=repr)
def test_others_are_no_numbers(wrong):
    with pytest.raises((TypeError, zirk.ParseError)):
        value(wrong)


@pytest.mark.parametrize("wrong", [float("nan"), float("inf"), decimal.Decimal("NaN"), decimal.Decimal("-Infinity")])
def test_what_is_not_finite_is_refused(wrong):
    with pytest.raises(ValueError):
        value(wrong)


def test_a_typing_error_is_shown_with_a_hint():
    with pytest.raises(zirk.ParseError) as caught:
        zirk.Model("omega = 2;\n\tx' = omgea*x & 1;")
    error = caught.value
    assert (error.line, error.column, error.token) == (2, 7, "omgea")
    assert error.message == 'undefined name "omgea"' and error.hint == 'did you mean "omega"?'
    assert str(error).splitlines()[1:] == ["  \tx' = omgea*x & 1;", "  \t     ^~~~~"]
    assert isinstance(error, ValueError) and isinstance(error, zirk.Error)


def test_columns_count_characters():
    with pytest.raises(zirk.ParseError) as caught:
        zirk.Model("/* äöü */ x' = y;")
    assert caught.value.column == 16


def test_errors_in_expressions_and_settings():
    sol = zirk.solve("speed' = 1;", 1)
    for question in (lambda: sol["sped"], lambda: sol(1, "sped"), lambda: zirk.solve("speed' = 1;", 1, until="sped")):
        with pytest.raises(zirk.ParseError) as caught:
            question()
        assert caught.value.hint == 'did you mean "speed"?' and caught.value.source == "sped"
    with pytest.raises(zirk.ParseError) as caught:
        zirk.Model("k = 1;", set={"kk": 2})
    assert caught.value.line == 0 and "kk" in str(caught.value)


def test_models_pickle_and_compare():
    model = zirk.Model("k = 1; x' = k & 1;", set={"k": fractions.Fraction(1, 3)}, start=2)
    again = pickle.loads(pickle.dumps(model))
    assert again == model and hash(again) == hash(model) and again.explain() == model.explain()
    assert again != model.where({"k": 2}) and again != "k"
    assert repr(model) == "zirk.Model('k = 1; x\\' = k & 1;', set={'k': '1/3'}, start=2)" or "zirk.Model(" in repr(model)


def test_settings_of_a_solve_add_to_those_of_the_model():
    model = zirk.Model("a = 1; b = 1; x' = a + 10*b;", set={"a": 2})
    assert zirk.solve(model, 1, set={"b": 3})["x"][-1] == 32
    assert zirk.solve(model, 6, start=5)["x"][-1] == 12
    assert zirk.solve(model, 1)["x"][-1] == 12


def test_solutions_pickle():
    sol = zirk.solve("x'' = -x & 1;", 10, rows=7, crossings="x", until="x' - 0.99999", set={"x": "3/2"})
    again = pickle.loads(pickle.dumps(sol))
    assert again.model == sol.model and again.ended_by == sol.ended_by and again.end == sol.end
    assert (again.t == sol.t).all() and (again["x"] == sol["x"]).all() and (again["x*t"] == sol["x*t"]).all()
    assert again.statistics == sol.statistics and repr(again.events) == repr(sol.events)
    t = np.linspace(0, sol.end, 50)
    assert (again(t) == sol(t)).all()
    bare = pickle.loads(pickle.dumps(zirk.solve("x' = 1;", 1, dense=False)))
    assert bare["x"].tolist() == [0, 1] and not bare._record.is_dense


def test_broken_pickles_are_refused():
    sol = zirk.solve("x'' = -x & 1;", 10, crossings="x")
    state = list(sol._record.state())
    rows = state[1]
    for wrong in (
        [state[0][:-1], *state[1:]],
        [state[0], (rows[0][:-1], rows[1]), *state[2:]],
        [state[0], (rows[0], rows[1][:-1]), *state[2:]],
        [*state[:3], [], *state[4:]],
        [*state[:6], LONG(11), *state[7:]],
        [*state[:3], [7] * len(sol.events), *state[4:]],
        [*state[:5], 1, *state[6:]],
    ):
        with pytest.raises(ValueError):
            zirk._core.record_from_state(sol.model._problem, tuple(wrong), len(sol._watched))


def test_errors_pickle():
    for source in ("x' = (1;", "x' = y;"):
        with pytest.raises(zirk.ParseError) as caught:
            zirk.Model(source)
        again = pickle.loads(pickle.dumps(caught.value))
        assert str(again) == str(caught.value) and again.column == caught.value.column
    with pytest.raises(zirk.RunError) as caught:
        zirk.solve("x' = x*x & 1;", 2)
    again = pickle.loads(pickle.dumps(caught.value))
    assert again.time == caught.value.time and again.solution(0.5, "x") == caught.value.solution(0.5, "x")


def test_a_file_name_in_the_place_of_a_text_is_told(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "spring.zirk").write_text("x'' = -x & 1;")
    with pytest.raises(zirk.ParseError) as caught:
        zirk.solve("spring.zirk", 1)
    assert caught.value.hint == "this is a file: its text is open('spring.zirk').read()"
    with pytest.raises(zirk.ParseError) as caught:
        zirk.solve("other.zirk", 1)
    assert "file" not in str(caught.value)
