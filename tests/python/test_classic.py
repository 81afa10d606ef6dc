# SPDX-License-Identifier: MIT
"""The rows of the command zirk."""

import subprocess

import numpy as np
import pytest

import zirk

LONG = np.longdouble
TEXT = "x'' = -x*y & 1;  y' = sin(x) & 2;  z = x + y;"


@pytest.mark.parametrize(
    "options",
    ["", "-t 3", "-t 3 -a 1e-18 -s 0.07", "-t 3 -F -7", "-t 3 -F 0.5", "-t 5 -L 1", "-o 12 -z 3 -t 2", "-t 2 -f 1 -s 0.03125",
     "-t 2 -U 1 -o 20", "-S 3 -t 4", "-t2 -i0", "-r x:2:0 -t 30 -R 9", "-t 2 -z 3 -o 12", "-X 1 -x 3"],
)  # fmt: skip
def test_bits_are_those_of_the_command(command, options, tmp_path):
    # 21 figures tell every number from its neighbours.
    shown = subprocess.run(
        [command, *options.split(), "-p", "20", "-w", "30"],
        input=TEXT, capture_output=True, text=True, check=True, env={"HOME": str(tmp_path)},
    ).stdout.splitlines()  # fmt: skip
    lines = [line.split() for line in shown if line.strip()]
    assert lines[0][:6] == ["#", "ORDER", "TIME", "x", "y", "z"]
    table = zirk.classic(TEXT, options)
    assert table.names == ["x", "y", "z"] and len(lines) - 1 == len(table) > 0
    for i, cells in enumerate(lines[1:]):
        assert [LONG(cell) for cell in cells[1:5]] == [table.t[i], table["x"][i], table["y"][i], table["z"][i]]
        assert int(cells[0]) == table.orders[i]


def test_options_by_letter_are_those_of_the_command_line():
    by_text = zirk.classic(TEXT, "-t 3 -a 1e-15 -o 20")
    by_letter = zirk.classic(TEXT, {"t": 3, "a": 1e-15, "o": 20})
    listed = zirk.classic(TEXT, ["-t", "3", "-a1e-15", "-o", "20"])
    for other in (by_letter, listed):
        assert (other["x"] == by_text["x"]).all() and (other.t == by_text.t).all()


def test_derivatives_are_there():
    table = zirk.classic("x'' = -x & 1;", "-t 1 -a 1e-18")
    assert table.names == ["x"] and abs(table["x'"][-1] + np.sin(LONG(1))) < 1e-16
    assert (table["x'"] == table["x%1"]).all() and len(table.orders) == len(table)
    with pytest.raises(KeyError):
        table["y"]


@pytest.mark.parametrize("options", ["-p 3", "-t", "-q 1", "t 1", {"o": 1.5}, {"f": 2**40}, {"t": "x"}, {"tt": 1}], ids=str)
def test_other_options_are_refused(options):
    with pytest.raises(ValueError):
        zirk.classic(TEXT, options)


def test_errors_are_told():
    with pytest.raises(zirk.ParseError) as caught:
        zirk.classic("x' = -x) & 1;")
    assert caught.value.line == 1 and caught.value.token == ")"
    with pytest.raises(zirk.Error, match="undefined"):
        zirk.classic("x' = -y & 1;")
    with pytest.raises(zirk.RunError) as caught:
        zirk.classic("x' = x*x & 1;", "-t 2")
    assert abs(caught.value.time - 1) < 0.01 and len(caught.value.solution) > 1


def test_arrays_share_the_numbers_of_the_table():
    table = zirk.classic("x'' = -x & 1;")
    assert np.shares_memory(table["x"], table["x"]) and not table["x"].flags.writeable
    assert "<table>" in table._repr_html_()
