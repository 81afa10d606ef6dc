# SPDX-License-Identifier: MIT
"""What pip calls to build the package: CMake makes the files, this packs them (PEP 517, PEP 427)."""

import base64
import hashlib
import io
import os
import pathlib
import re
import subprocess
import sys
import sysconfig
import tarfile
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERSION = re.search(r"project\(zirk VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text()).group(1)
NAME = f"zirk-{VERSION}"

METADATA = f"""Metadata-Version: 2.1
Name: zirk
Version: {VERSION}
Summary: Solver for initial-value problems by Taylor series, to 18 digits
License: MIT
Requires-Python: >=3.9
Requires-Dist: numpy
Description-Content-Type: text/markdown

{(ROOT / "docs/python.md").read_text()}"""


def _tag():
    version = "cp" + sysconfig.get_config_var("py_version_nodot")
    platform = sysconfig.get_platform().replace("-", "_").replace(".", "_")
    return f"{version}-{version}-{platform}"


def _compile(build, prefix, definitions):
    configure = [
        "cmake", "-S", ROOT, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_INSTALL_PREFIX={prefix}",
        "-DZIRK_PYTHON=ON", "-DZIRK_SHARED=OFF", "-DZIRK_TESTS=OFF", "-DZIRK_PYTHON_DIR=.",
        f"-DPython_EXECUTABLE={sys.executable}", *(f"-D{definition}" for definition in definitions),
    ]  # fmt: skip
    for command in (
        configure,
        ["cmake", "--build", build, "--target", "zirk_python"],
        ["cmake", "--install", build, "--component", "python"],
    ):
        subprocess.run(list(map(str, command)), check=True, stdout=sys.stderr)


def _pack(tree, path):
    """All files of a tree, with the same bytes whenever it is packed."""
    record = []

    def add(archive, name, content, mode):
        entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
        entry.external_attr = mode << 16
        entry.compress_type = zipfile.ZIP_DEFLATED
        archive.writestr(entry, content)
        digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
        record.append(f"{name},sha256={digest},{len(content)}")

    with zipfile.ZipFile(path, "w") as archive:
        for file in sorted(p for p in tree.rglob("*") if p.is_file()):
            add(archive, file.relative_to(tree).as_posix(), file.read_bytes(), 0o100755 if file.suffix == ".so" else 0o100644)
        info = f"{NAME}.dist-info"
        wheel = f"Wheel-Version: 1.0\nGenerator: zirk\nRoot-Is-Purelib: false\nTag: {_tag()}\n"
        add(archive, f"{info}/METADATA", METADATA.encode(), 0o100644)
        add(archive, f"{info}/WHEEL", wheel.encode(), 0o100644)
        add(archive, f"{info}/LICENSE", (ROOT / "LICENSE").read_bytes(), 0o100644)
        record.append(f"{info}/RECORD,,")
        entry = zipfile.ZipInfo(f"{info}/RECORD", (1980, 1, 1, 0, 0, 0))
        entry.external_attr = 0o100644 << 16
        archive.writestr(entry, "\n".join(record) + "\n")


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    """`config_settings`: "build-dir" names a directory that is kept, for a faster next time; "define" is NAME=VALUE for
    CMake, or several of them."""
    settings = config_settings or {}
    kept, definitions = settings.get("build-dir"), settings.get("define", [])
    definitions = [definitions] if isinstance(definitions, str) else definitions
    name = f"{NAME}-{_tag()}.whl"
    with tempfile.TemporaryDirectory() as scratch:
        tree = pathlib.Path(scratch, "tree")
        _compile(kept or pathlib.Path(scratch, "build"), tree, definitions)
        _pack(tree, pathlib.Path(wheel_directory, name))
    return name


def build_sdist(sdist_directory, config_settings=None):
    name = f"{NAME}.tar.gz"

    def wanted(entry):
        parts = pathlib.PurePosixPath(entry.name).parts[1:]
        is_left_out = any(part == ".git" or part == "__pycache__" for part in parts) or (parts and parts[0].startswith("build"))
        return None if is_left_out else entry

    with tarfile.open(os.path.join(sdist_directory, name), "w:gz", format=tarfile.PAX_FORMAT) as archive:
        archive.add(ROOT, NAME, filter=wanted)
        entry = tarfile.TarInfo(f"{NAME}/PKG-INFO")
        entry.size = len(METADATA.encode())
        archive.addfile(entry, io.BytesIO(METADATA.encode()))
    return name
