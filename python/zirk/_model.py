# SPDX-License-Identifier: MIT
"""Equations as they were written."""

from __future__ import annotations

import os
from typing import Any, Dict, List, Mapping, Optional, Tuple, Union

import numpy

from . import _core
from ._errors import ParseError
from ._numbers import Number, text_of

Settings = Mapping[str, Number]


class Model:
    """An initial-value problem, from its text: equations y'' = formula & y(0); y'(0) = ...; definitions name = formula;

    `set` replaces what the text says of a name, a definition ("k") or a start value ("x", "x'"), by a number or by a
    formula of constants; `start` is the time of the start values, in units of t. Raises ParseError.

    A model never changes, may be used by any number of threads, and can be pickled.

    >>> import zirk
    >>> model = zirk.Model("k = 4;  x'' = -k*x & 1;", set={"k": 9})
    >>> model.names
    ['k', 'x', "x'"]
    >>> model.parameters
    {'k': 9.0}
    >>> print(model.explain(), end="")
    x'' = -9*x & 1;
    x'(0) = 0;
    k = 9;
    """

    __slots__ = ("text", "settings", "_start", "_problem", "_names")

    text: str
    """As it was written."""
    settings: Dict[str, str]
    """What was set, as formulas."""

    def __init__(self, text: str, set: Optional[Settings] = None, start: Number = 0) -> None:
        if not isinstance(text, str):
            raise TypeError(f"the text of a model is a str, not {type(text).__name__}")
        self.text = text
        self.settings = {name: text_of(value) for name, value in set.items()} if set else {}
        if not isinstance(start, (int, float)):
            start = _constant(start)
        self._start = start
        try:
            self._problem = _core.Problem(text, start, list(self.settings.items()))
        except ParseError as error:
            if "=" in text or not os.path.exists(text):
                raise
            what = f"{error.message}; this is a file: its text is open({text!r}).read()"
            raise ParseError(what, *error.args[1:]) from None
        self._names: Optional[List[str]] = None

    @property
    def names(self) -> List[str]:
        """Everything that the text names, in its order: variables, those derivatives that are variables, definitions."""
        if self._names is None:
            self._names = self._problem.names
        return list(self._names)

    @property
    def parameters(self) -> Dict[str, numpy.longdouble]:
        """Definitions that stand for constants, with their values: what is worth setting besides start values."""
        return dict(self._problem.constants())

    @property
    def start(self) -> numpy.longdouble:
        """The time of the start values, in units of t."""
        return self._problem.start

    def explain(self) -> str:
        """The system as it is solved: constants folded, settings applied, all start values."""
        return self._problem.explain()

    def where(self, set: Settings) -> "Model":
        """The same with other values for some names; what was set before and is not named stays.

        >>> Model("k = 4;  x' = -k*x & 1;", set={"x": 2}).where({"k": 1}).settings
        {'x': '2', 'k': '1'}
        """
        return Model(self.text, {**self.settings, **set}, self._start)

    def __reduce__(self) -> Tuple[Any, ...]:
        return Model, (self.text, self.settings, self._start)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Model):
            return NotImplemented
        return (self.text, self.settings, self._start) == (other.text, other.settings, other._start)

    def __hash__(self) -> int:
        return hash(self.text)

    def __repr__(self) -> str:
        shown = self.text if len(self.text) <= 60 else self.text[:57] + "..."
        extra = f", set={self.settings!r}" if self.settings else ""
        return f"zirk.Model({shown!r}{extra}{f', start={self._start}' if self._start else ''})"


def _constant(value: Number) -> numpy.longdouble:
    """The start is needed before there are names."""
    from ._numbers import real_of

    return _core.real(real_of(value, _core.Problem("zero = 0;", 0, [])))


def model_of(model: Union[str, Model], set: Optional[Settings], start: Optional[Number]) -> Model:
    """A model as functions take it: its text, or itself with more settings."""
    if isinstance(model, Model):
        if start is not None and start != model._start:
            return Model(model.text, {**model.settings, **(set or {})}, start)
        return model.where(set) if set else model
    return Model(model, set, 0 if start is None else start)
