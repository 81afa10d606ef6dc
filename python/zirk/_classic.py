# SPDX-License-Identifier: MIT
"""Rows of the command zirk, by its rules, to the same bits."""

from __future__ import annotations

import shlex
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple, Union

import numpy

from . import _core
from ._errors import RunError
from ._numbers import Reals
from ._tables import html_table, text_table

_INTEGERS = "fiLoRSUxXz"
_NUMBERS = "aFst"
# These say how the command looks, and there is no command here.
_LOOKS = "3AdDgGOpPNTw"


class ClassicTable:
    """Rows of the command zirk: arrays of numpy.longdouble of shape (rows,), read-only.

    table.t, table["x"], table["x'"]; table.orders are the numbers of terms, table.remarks the hints of the command.
    """

    __slots__ = ("_table", "_index", "__weakref__")

    def __init__(self, table: _core.ClassicTable) -> None:
        self._table = table
        self._index: Dict[str, int] = {name: i for i, name in enumerate(table.names)}

    @property
    def names(self) -> List[str]:
        """The columns that the command shows; those of derivatives, "x'", are there besides."""
        return [name for name in self._table.names if "%" not in name]

    @property
    def t(self) -> Reals:
        return self._table.times()

    @property
    def orders(self) -> Reals:
        """Terms that the longest series of a point needed: the column ORDER."""
        return numpy.array(self._table.orders)

    @property
    def remarks(self) -> List[str]:
        """What the classic rules make of the text otherwise than its author may expect."""
        return self._table.remarks

    @property
    def points(self) -> int:
        """Points of the run, also those that are no rows."""
        return self._table.points

    def __getitem__(self, name: str) -> Reals:
        """Raises KeyError for a name that the text does not define. Derivatives: "x'" or, as in the text, "x%1"."""
        bare = name.rstrip("'")
        index = self._index.get(name if bare == name else f"{bare}%{len(name) - len(bare)}")
        if index is None:
            raise KeyError(name)
        return self._table.column(index)

    def __len__(self) -> int:
        return len(self.t)

    def to_pandas(self) -> Any:
        """A pandas.DataFrame with t as its index."""
        import pandas

        columns = {name: self[name] for name in self.names}
        return pandas.DataFrame(columns, index=pandas.Index(self.t, name="t"), copy=False)

    def __repr__(self) -> str:
        return text_table(["t", *self.names], self)

    def _repr_html_(self) -> str:
        return html_table(["t", *self.names], self, f"{len(self)} rows by the classic rules")


def _pairs(options: Union[None, str, Sequence[str], Mapping[str, Any]]) -> List[Tuple[str, Any]]:
    if not options:
        return []
    if isinstance(options, Mapping):
        return [(str(letter).lstrip("-"), value) for letter, value in options.items()]
    words = shlex.split(options) if isinstance(options, str) else list(options)
    pairs: List[Tuple[str, Any]] = []
    rest = iter(words)
    for word in rest:
        if len(word) < 2 or word[0] != "-":
            raise ValueError(f"an option is wanted, not {word!r}")
        value = word[2:] or next(rest, "")
        if not value:
            raise ValueError(f"the option {word} wants a value")
        pairs.append((word[1], value))
    return pairs


def _value(letter: str, value: Any) -> Any:
    """As _core takes it. All numbers of the command pass through doubles, as they do there."""
    if letter == "r":
        name, _, rest = str(value).partition(":")
        count, _, rate = rest.partition(":")
        return name, int(count or 0) if name else 0, float(rate or 0)
    if len(letter) == 1 and letter in _INTEGERS:
        number = int(value)
        if number != float(value) or not -(2**31) <= number < 2**31:
            raise ValueError(f"the option -{letter} takes an integer of 32 bits, not {value!r}")
        return number
    if len(letter) == 1 and letter in _NUMBERS:
        return float(value)
    if len(letter) == 1 and letter in _LOOKS:
        raise ValueError(f"the option -{letter} only changes how the command zirk looks")
    raise ValueError(f"there is no option -{letter}")


def classic(text: str, options: Union[None, str, Sequence[str], Mapping[str, Any]] = None) -> ClassicTable:
    """The rows that the command zirk would write for a text and its options, as numbers with all their bits.

    options : as on the command line, "-t 10 -a 1e-18", or by letter, {"t": 10, "a": 1e-18}. Those that only change how
              the command looks are refused. No resource file is read.

    Here the text means what it means to zirk; zirk.solve reads it as mathematics.

    >>> import zirk
    >>> table = zirk.classic("x'' = -x & 1;", "-t 1 -a 1e-18 -L 1")
    >>> table.t, table["x"]
    (array([1.], dtype=float128), array([0.54030231], dtype=float128))
    """
    table, failure = _core.classic(text, [(letter, _value(letter, value)) for letter, value in _pairs(options)])
    if failure is not None:
        raise RunError(*failure, "", ClassicTable(table))
    return ClassicTable(table)
