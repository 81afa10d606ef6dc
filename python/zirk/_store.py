# SPDX-License-Identifier: MIT
"""What a sweep has found so far, in a directory: a sweep that was stopped goes on from there."""

from __future__ import annotations

import json
import os
import pathlib
import pickle
import time
import uuid
from typing import Any, Dict, Iterable, List, Mapping, Tuple, Union

import numpy

from . import _core
from ._errors import Error
from ._model import Model
from ._numbers import text_of

Key = Tuple[Tuple[str, str], ...]

# A write every second at first, then every hundredth of the time that has passed: few files, and little to lose.
_SHORTEST_WAIT = 1.0
_SHARE_OF_TIME = 0.01


def key_of(parameters: Mapping[str, Any]) -> Key:
    """The same for sets of the same values, whatever their order and their types."""
    return tuple(sorted((name, _exact(value)) for name, value in parameters.items()))


def _exact(value: Any) -> str:
    try:
        # 3 and 3.0 are the same set; 64 bits have the same shortest figures only if they are equal.
        return str(_core.real(value)) if isinstance(value, (int, float, numpy.number)) else text_of(value)
    except (TypeError, ValueError):
        # It makes its set fail, and is no other set for that.
        return repr(value)


def _described(value: Any) -> Any:
    """What JSON can hold, equal for equal numbers."""
    if value is None or isinstance(value, (bool, str)):
        return value
    if hasattr(value, "__iter__"):
        return [_described(one) for one in value]
    return _exact(value)


class Store:
    """The results of one sweep in a directory.

    sweep.json says of which one; every file NAME.results holds some results, pickled, and gets that name when it is
    whole. Results belong to the values of their set, so that a sweep with more values finds what it has in common with
    an earlier one. Several processes may write into one directory.

    Read only what you trust: a pickle can do whatever a program can.
    """

    def __init__(self, directory: Union[str, "os.PathLike[str]"], model: Model, end: Any, options: Mapping[str, Any]) -> None:
        """ValueError when the directory holds another sweep."""
        self.directory = pathlib.Path(directory)
        self._new: List[Any] = []
        self._begin = self._written = time.monotonic()
        self.directory.mkdir(parents=True, exist_ok=True)
        ours = {
            "zirk": _core.version,
            "model": model.text,
            "set": model.settings,
            "start": _described(model.start),
            "end": _described(end),
            **{name: _described(value) for name, value in sorted(options.items()) if value is not None},
        }
        description = self.directory / "sweep.json"
        if not description.exists():
            self._write(description, json.dumps(ours, indent=1).encode())
            return
        theirs = json.loads(description.read_text())
        for name in {**theirs, **ours}:
            if theirs.get(name) != ours.get(name):
                was, is_now = json.dumps(theirs.get(name)), json.dumps(ours.get(name))
                raise ValueError(f'{self.directory} holds another sweep: "{name}" is {was} there and {is_now} here')

    def read(self) -> Dict[Key, Any]:
        """All results that are there, by the values of their sets."""
        found = {}
        for file in sorted(self.directory.glob("*.results")):
            try:
                results = pickle.loads(file.read_bytes())
            except Exception as error:
                raise ValueError(f"{file} cannot be read ({error}); without it, its sets are solved again") from error
            for result in results:
                found[key_of(result.parameters)] = result
        return found

    def add(self, results: Iterable[Any]) -> None:
        """Keeps results, and writes what is kept when that is due."""
        # Other errors, lack of memory for one, may not come again.
        self._new.extend(r for r in results if r.error is None or isinstance(r.error, (Error, ValueError, TypeError)))
        now = time.monotonic()
        if now - self._written >= max(_SHORTEST_WAIT, _SHARE_OF_TIME * (now - self._begin)):
            self.flush()

    def flush(self) -> None:
        """Writes what is not written yet."""
        if self._new:
            self._write(self.directory / f"{uuid.uuid4().hex}.results", pickle.dumps(self._new))
            self._new = []
        self._written = time.monotonic()

    def _write(self, file: pathlib.Path, content: bytes) -> None:
        part = file.with_name(f"{file.name}.{uuid.uuid4().hex}.part")
        try:
            with open(part, "wb") as stream:
                stream.write(content)
                stream.flush()
                os.fsync(stream.fileno())
            os.replace(part, file)
        except BaseException:
            part.unlink(missing_ok=True)
            raise
