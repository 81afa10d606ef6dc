# SPDX-License-Identifier: MIT
"""Numbers of Python on their way to 64 bits."""

from __future__ import annotations

import decimal
import fractions
import numbers
from typing import Any, Union, cast

import numpy
from numpy.typing import NDArray

from . import _core

Reals = NDArray[numpy.longdouble]
Number = Union[int, float, numpy.number, decimal.Decimal, fractions.Fraction, str]
"""Integers are exact, floats are what they are; all others, and formulas of constants as "2*pi", give 64 bits."""


def text_of(number: Any) -> str:
    """A formula of constants with that value: what `set` needs."""
    if isinstance(number, str):
        return number
    if isinstance(number, decimal.Decimal):
        if not number.is_finite():
            raise ValueError(f"a finite number is wanted, not {number}")
        return str(number)
    if isinstance(number, numbers.Rational) and not isinstance(number, numbers.Integral):
        top, bottom = number.numerator, number.denominator
        # A quotient of numbers that are exact is rounded once; others get far more digits than count.
        if abs(top) < 2**64 and bottom < 2**64:
            return f"{top}/{bottom}"
        with decimal.localcontext() as context:
            context.prec = 60
            context.Emax, context.Emin = decimal.MAX_EMAX, decimal.MIN_EMIN
            return str(decimal.Decimal(top) / decimal.Decimal(bottom))
    if isinstance(number, numbers.Integral) and abs(int(number)) < 2**64:
        return str(int(number))
    return _core.constant_text(cast(Any, number))


def real_of(number: Any, problem: _core.Problem) -> Any:
    """A number that _core takes; names in a text are those of the problem."""
    if isinstance(number, (float, int)):
        return number
    if isinstance(number, (str, decimal.Decimal, numbers.Rational)) and not hasattr(number, "dtype"):
        return problem.constant(text_of(number))
    return _core.real(cast(Any, number))


def reals_of(values: Any, problem: _core.Problem) -> Reals:
    """One dimension of numpy.longdouble."""
    if isinstance(values, numpy.ndarray) and values.dtype.kind in "fiu":
        return numpy.ascontiguousarray(values, numpy.longdouble).reshape(-1)
    return numpy.array([real_of(value, problem) for value in values], numpy.longdouble).reshape(-1)
