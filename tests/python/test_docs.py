# SPDX-License-Identifier: MIT
"""What the documentation of the package says is so."""

import doctest
import inspect
import pathlib

import pytest

import zirk


def test_examples_in_docstrings_show_what_comes_out():
    failed, tried = doctest.testmod(zirk, optionflags=doctest.ELLIPSIS)
    assert failed == 0 and tried > 20
    for name in ("solve", "classic", "Model", "Solution", "Integrator"):
        assert ">>>" in inspect.getdoc(getattr(zirk, name)), name


@pytest.mark.parametrize("page, least", [("docs/python.md", 10), ("docs/scipy.md", 3)])
def test_examples_of_the_pages_show_what_comes_out(page, least):
    path = pathlib.Path(__file__).resolve().parents[2] / page
    failed, tried = doctest.testfile(str(path), module_relative=False, optionflags=doctest.ELLIPSIS)
    assert failed == 0 and tried > least


def test_everything_public_is_documented():
    for name in zirk.__all__:
        thing = getattr(zirk, name)
        assert inspect.getdoc(thing), name
        for part, member in vars(thing).items() if inspect.isclass(thing) else ():
            if inspect.isfunction(member) and not part.startswith("_"):
                assert member.__annotations__.get("return", "-") != "-", f"{name}.{part} has no type"


def test_types_come_with_the_package():
    folder = pathlib.Path(zirk.__file__).parent
    assert (folder / "py.typed").exists() and (folder / "_core.pyi").exists()
    described = (folder / "_core.pyi").read_text()
    for name in vars(zirk._core):
        if not name.startswith("__"):
            assert f"class {name}" in described or f"def {name}" in described or f"{name}:" in described, name
