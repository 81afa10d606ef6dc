# SPDX-License-Identifier: MIT
"""What the tests of the package share."""

import pathlib

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.fixture
def examples():
    return ROOT / "examples"


def pytest_configure(config):
    config.addinivalue_line("markers", "timing: tells nothing where sanitizers slow everything down or keep memory")


def pytest_addoption(parser):
    parser.addoption("--zirk", help="the command zirk")
    parser.addoption("--zirk-solve", help="the command zirk-solve")


@pytest.fixture
def command(request):
    path = request.config.getoption("--zirk")
    if not path:
        pytest.skip("no --zirk")
    return path


@pytest.fixture
def solve_command(request):
    path = request.config.getoption("--zirk-solve")
    if not path:
        pytest.skip("no --zirk-solve")
    return path
