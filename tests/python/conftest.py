# SPDX-License-Identifier: Apache-2.0
"""What the tests of the Python module share. Nothing may be printed: a message of Qt or of the engine is a fault."""

import signal
import subprocess
import sys

import kvgamut
import numpy as np
import pytest

# Shells start programs in the background with this signal ignored, also in what they start.
signal.signal(signal.SIGINT, signal.default_int_handler)

CUBE_FACES = [(0, 1, 3), (0, 3, 2), (4, 7, 5), (4, 6, 7), (0, 5, 1), (0, 4, 5), (2, 3, 7), (2, 7, 6), (0, 2, 6), (0, 6, 4), (1, 7, 3), (1, 5, 7)]


@pytest.fixture(autouse=True)
def silence(capfd):
    """Fails a test during which something was printed."""
    yield
    out, err = capfd.readouterr()
    assert (out, err) == ("", "")


def box(low, high, **names):
    """The gamut of an axis-parallel box."""
    corners = [[(low, high)[i >> bit & 1][2 - bit] for bit in (2, 1, 0)] for i in range(8)]
    return kvgamut.Gamut.from_surface(corners, CUBE_FACES, **names)


@pytest.fixture(scope="session")
def cube():
    """L* 20 to 80, a* and b* -30 to 30."""
    return box((20, -30, -30), (80, 30, 30), name="cube")


@pytest.fixture(scope="session")
def srgb():
    return kvgamut.Gamut.from_profile("sRGB", grid=17)


@pytest.fixture(scope="session")
def p3():
    return kvgamut.Gamut.from_profile("DisplayP3", grid=17)


@pytest.fixture
def script(tmp_path):
    """Runs a program in a Python of its own, and returns the finished process."""

    def run(source, *arguments, **options):
        file = tmp_path / "program.py"
        file.write_text(source, encoding="utf-8")
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "text": True, "timeout": 300, **options}
        return subprocess.run([sys.executable, str(file), *arguments], **options)

    return run


def random_points(count, seed=1):
    return np.random.default_rng(seed).uniform([-10, -128, -128], [110, 128, 128], (count, 3))
