# SPDX-License-Identifier: MIT
"""Equations of sympy as text."""

import numpy as np
import pytest

import zirk

sympy = pytest.importorskip("sympy")
LONG = np.longdouble
x, y, k, t = sympy.symbols("x y k t")
POINT = {x: sympy.Rational(7, 10), y: sympy.Rational(-13, 10)}

FORMULAS = [
    -(x**2), (-x) ** 2, x - (y - 1), x / (y / 3), x / y / 3, 1 / x, 1 / x**2, -2 / (3 * x * y), (x + y) / (x - y), x**-3,
    x ** sympy.Rational(1, 2), x ** sympy.Rational(2, 3), 1 / sympy.sqrt(x), x**y, 2**x, (x**2) ** y, x ** (y**2),
    (-y) ** x, sympy.Rational(-1, 3) * x, sympy.Rational(1, 3) ** x, sympy.pi * sympy.E, sympy.exp(-x), sympy.log(x),
    sympy.Abs(y), sympy.Abs(y) ** 3, sympy.sec(x), sympy.csc(y), sympy.cot(x), sympy.sech(y) / 2, sympy.coth(x), sympy.tan(x),
    sympy.atan(y), sympy.acot(y), sympy.asinh(y), sympy.asin(x), sympy.acos(x), sympy.atanh(x), sympy.acosh(x + 1),
    sympy.acoth(y), sympy.Float("0.1"), sympy.Float("0.1", 30), 10**25 * x, sympy.Float("1e-300", 30) * x, -(-x), x * (-y),
    sympy.sin(x) ** 2 / sympy.cos(y) ** 2, sympy.exp(x) ** y, sympy.Rational(10**30 + 1, 7) * x,
]  # fmt: skip


@pytest.mark.parametrize("formula", FORMULAS, ids=str)
def test_formulas_have_the_value_that_sympy_gives_them(formula):
    text = zirk.from_sympy({sympy.Symbol("z"): formula}, {})
    right = text[text.index("=") + 1 : text.index("&")]
    value = zirk.Model(f"x = 7/10; y = -13/10; z = {right};").parameters["z"]
    true = sympy.N(formula.subs(POINT), 30)
    assert abs(sympy.Float(str(value), 25) / true - 1) < 1e-17, text


def test_a_float_is_the_double_that_it_is():
    text = zirk.from_sympy({x: sympy.Float(0.1)}, {})
    assert zirk.solve(text, 1)["x"][-1] == LONG(0.1)


def test_functions_of_time_and_equations():
    u, w = sympy.Function("u"), sympy.Function("w")
    equations = [sympy.Eq(u(t).diff(t, 2), -u(t) + w(t).diff(t)), sympy.Eq(w(t).diff(t), t)]
    text = zirk.from_sympy(equations, {u(t): 1, u(t).diff(t): sympy.pi, w(t): 2})
    assert zirk.Model(text).names == ["u", "u'", "w"]
    # u = a cos t + b sin t + t, u(0) = 1, u'(0) = pi.
    sol = zirk.solve(text, 3)
    true = np.cos(LONG(3)) + (LONG("3.14159265358979323846") - 1) * np.sin(LONG(3)) + 3
    assert abs(sol["u"][-1] - true) < 2e-18 * 5
    again = zirk.from_sympy(equations, {"u": 1, "u'": "pi", "w": 2})
    assert zirk.Model(again).explain() == zirk.Model(text).explain()


def test_another_symbol_may_be_the_time():
    s = sympy.Symbol("s")
    text = zirk.from_sympy({x: 2 * s}, {}, time=s)
    assert abs(zirk.solve(text, 3)["x"][-1] - 9) < 1e-17
    with pytest.raises(ValueError, match="time"):
        zirk.from_sympy({x: t + s}, {}, time=s)


@pytest.mark.parametrize(
    "rhs, start",
    [
        ({x: sympy.gamma(x)}, {}), ({x: sympy.Piecewise((1, x > 0), (0, True))}, {}), ({x: sympy.oo}, {}),
        ({x: sympy.I}, {}), ({x: sympy.Symbol("a b")}, {}), ({x: 1}, {y: 1}), ({x: sympy.Function("u")(2 * t)}, {}),
        ({x: sympy.atan2(x, y)}, {}), ({sympy.Symbol("1x"): x}, {}), ({x: x > 1}, {}), ({x: sympy.floor(x)}, {}),
    ],
    ids=str,
)  # fmt: skip
def test_what_has_no_form_is_refused(rhs, start):
    with pytest.raises(ValueError):
        zirk.from_sympy(rhs, start)
