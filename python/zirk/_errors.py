# SPDX-License-Identifier: MIT
"""What goes wrong with a text or with a run."""

from __future__ import annotations

from typing import Any, Optional

import numpy


class Error(Exception):
    """Whatever the library refuses to do."""


class ParseError(Error, ValueError):
    """A text is not of the language, or uses a name that has no meaning.

    message : what is wrong, without the hint
    hint    : what to do about it, or ""
    line    : from 1; 0 when a value of `set` is to blame
    column  : in characters, from 1
    token   : what the text could not go on with; "" for its end
    source  : the text itself, a model or an expression
    """

    def __init__(self, what: str, line: int, column: int, token: str, source: str = "") -> None:
        super().__init__(what, line, column, token, source)
        self.message, _, self.hint = what.partition("; ")
        self.line = line
        self.token = token
        self.source = source
        lines = source.split("\n")
        self._shown = lines[line - 1].rstrip("\r") if 0 < line <= len(lines) else ""
        # The library counts bytes.
        before = self._shown.encode()[: max(column - 1, 0)]
        self.column = len(before.decode(errors="replace")) + 1 if self._shown else column

    def __str__(self) -> str:
        what: str = self.args[0]
        if self.line <= 0:
            return what
        place = f"line {self.line}, column {self.column}: {what}"
        if not self._shown:
            return place
        begin = max(self.column - 61, 0)
        shown = self._shown[begin : self.column + 60]
        below = "".join("\t" if c == "\t" else " " for c in shown[: self.column - 1 - begin])
        width = max(min(len(self.token), len(shown) - len(below)), 1)
        return f"{place}\n  {shown}\n  {below}^{'~' * (width - 1)}"


class RunError(Error):
    """A solution cannot go on.

    time       : where it ends, a numpy.longdouble
    expression : the formula or variable that stands in the way, or ""
    solution   : what is known until then (a Solution; of zirk.classic a ClassicTable), or None
    """

    def __init__(self, message: str, time: numpy.longdouble, expression: str = "", solution: Optional[Any] = None) -> None:
        super().__init__(message, time, expression, solution)
        self.time = time
        self.expression = expression
        self.solution = solution

    def __str__(self) -> str:
        return str(self.args[0])
