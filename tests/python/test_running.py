# SPDX-License-Identifier: Apache-2.0
"""Threads, progress, Ctrl+C, other processes, and the end of the interpreter."""

import signal
import subprocess
import sys
import threading
from concurrent.futures import ThreadPoolExecutor

import kvgamut
import pytest
from conftest import random_points
from kvgamut import Gamut

CMYK = "/usr/share/color/icc/ghostscript/default_cmyk.icc"

# Minutes of work, unless it is cancelled.
ENDLESS = """
import numpy, sys, threading, time, kvgamut
gamut = kvgamut.Gamut.open("sRGB", grid=9)
points = numpy.random.default_rng(1).uniform(-100, 100, (2_000_000, 3)).astype("f4")
"""


def test_progress_rises_to_one():
    shares = []
    Gamut.from_profile(CMYK, grid=33, progress=shares.append)
    assert shares[-1] == 1 and shares == sorted(set(shares))
    assert all(isinstance(share, float) and 0 <= share <= 1 for share in shares)


def test_an_exception_of_progress_ends_the_computation(srgb):
    class Enough(Exception):
        pass

    def stop(share):
        raise Enough

    for compute in (
        lambda: Gamut.from_profile(CMYK, grid=129, progress=stop),
        lambda: srgb.distance(random_points(200_000), "de00", progress=stop),
        lambda: kvgamut.page([srgb] * 30, progress=stop),
    ):
        with pytest.raises(Enough):
            compute()
    assert srgb.inside([[50, 0, 0]])[0]


def test_ctrl_c_raises_in_the_middle(srgb):
    done = []

    def interrupt(share):
        done.append(share)
        signal.raise_signal(signal.SIGINT)

    with pytest.raises(KeyboardInterrupt):
        srgb.distance(random_points(200_000), "de00", progress=interrupt)
    assert done[-1] < 1


def test_ctrl_c_ends_a_computation_without_progress(script):
    ran = script(
        ENDLESS
        + """
import os, signal
main = threading.main_thread().ident
def interrupt():
    while not any("_nearest" in str(frame) for frame in names(main)):
        time.sleep(0.001)
    os.kill(os.getpid(), signal.SIGINT)
def names(thread):
    frame = sys._current_frames().get(thread)
    while frame:
        yield frame.f_code.co_name
        frame = frame.f_back
threading.Thread(target=interrupt).start()
try:
    gamut.distance(points, "de00")
except KeyboardInterrupt:
    print("interrupted")
"""
    )
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "interrupted\n", "")


def test_other_threads_run_while_one_computes(srgb):
    """Two computations wait for each other in the middle: each must run while the other one does."""
    together = threading.Barrier(2, timeout=120)

    def compute(seed):
        met = []

        def meet(share):
            if not met:
                met.append(together.wait())

        return srgb.distance(random_points(4000, seed), "de00", progress=meet), met

    with ThreadPoolExecutor(2) as pool:
        for distances, met in pool.map(compute, range(2)):
            assert len(distances) == 4000 and len(met) == 1


def test_many_threads_share_one_gamut(srgb):
    points = random_points(500)
    expected = srgb.distance(points)
    fresh = Gamut.from_profile("sRGB", grid=17)  # its index is made by the first question
    with ThreadPoolExecutor(16) as pool:
        answers = list(pool.map(lambda _: fresh.distance(points), range(32)))
    assert all((answer == expected).all() for answer in answers)


def test_many_gamuts_in_a_thread_pool():
    names = kvgamut.rgb_spaces() * 4
    with ThreadPoolExecutor(8) as pool:
        gamuts = list(pool.map(lambda name: Gamut.open(name, grid=9), names))
    for name, gamut in zip(names, gamuts):
        assert gamut.name == name and gamut.volume == gamuts[names.index(name)].volume


def test_the_array_may_change_while_it_is_used(srgb):
    points = random_points(1000)
    expected = srgb.distance(points, "de00")
    changed = points.copy()

    def change(share):
        changed[:] = 50

    assert (srgb.distance(changed, "de00", progress=change) == expected).all()


@pytest.mark.parametrize("method", ["spawn", "forkserver", "fork"])
def test_gamuts_pass_to_other_processes(script, method):
    ran = script(
        """
import multiprocessing, sys, kvgamut
def volume(gamut):
    return gamut.volume, int(gamut.inside([[50, 0, 0]] * 5000).sum()), kvgamut.Gamut.open("sRGB", grid=9).volume
if __name__ == "__main__":
    gamuts = [kvgamut.Gamut.open(name, grid=9) for name in ("sRGB", "DisplayP3", "Rec2020")]
    with multiprocessing.get_context(sys.argv[1]).Pool(2) as pool:
        for gamut, (there, inside, srgb) in zip(gamuts, pool.map(volume, gamuts)):
            assert (there, inside, srgb) == (gamut.volume, 5000, gamuts[0].volume)
    print("done")
""",
        method,
    )
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "done\n", "")


def test_a_problem_passes_to_another_process(script):
    ran = script(
        """
import multiprocessing, kvgamut
if __name__ == "__main__":
    with multiprocessing.get_context("spawn").Pool(1) as pool:
        try:
            pool.apply(kvgamut.Gamut.open, ("missing",))
        except kvgamut.ProfileError as error:
            print(error.code)
"""
    )
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "FileNotFound\n", "")


@pytest.mark.parametrize("daemons", [1, 8])
def test_the_interpreter_ends_during_a_computation(script, daemons):
    ran = script(
        ENDLESS
        + """
begun = threading.Barrier(int(sys.argv[1]) + 1)
def compute():
    waited = []
    def wait(share):
        if not waited:
            waited.append(begun.wait())
    gamut.distance(points, "de00", progress=wait)
    print("it ended")
for _ in range(int(sys.argv[1])):
    threading.Thread(target=compute, daemon=True).start()
begun.wait()
print("leaving")
""",
        str(daemons),
    )
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "leaving\n", "")


def test_nothing_is_computed_after_the_end(script):
    ran = script(
        """
import atexit
def late():
    try:
        gamut.outline()
    except RuntimeError as error:
        print(error)
atexit.register(late)  # called after that of kvgamut
import kvgamut
gamut = kvgamut.Gamut.open("sRGB", grid=9)
"""
    )
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "the interpreter is ending\n", "")


def test_closed_standard_files_do_not_matter(script, tmp_path):
    ran = script(
        """
import os, sys
for file in (0, 1, 2):
    os.close(file)
sys.stdout = sys.stderr = None
import kvgamut
gamut = kvgamut.Gamut.open("sRGB", grid=9)
picture = kvgamut.render(gamut, (64, 48))
assert gamut.inside([[50, 0, 0]])[0] and picture.startswith(b"\\x89PNG")
with open(sys.argv[1], "w") as file:
    file.write("done")
""",
        str(tmp_path / "result"),
    )
    assert ran.returncode == 0 and (tmp_path / "result").read_text() == "done"


def test_a_window_toolkit_may_be_there_or_not(script):
    """All inputs work without an application object, and beside that of PyQt."""
    source = """
import os, sys
if sys.argv[1] != "none":
    os.environ["QT_QPA_PLATFORM"] = "offscreen"
    from PyQt6.QtGui import QGuiApplication
    application = QGuiApplication([])
import kvgamut
gamut = kvgamut.Gamut.open(sys.argv[2])
assert kvgamut.render(gamut, (64, 48)).startswith(b"\\x89PNG")
assert "</html>" in kvgamut.page(gamut)
if sys.argv[1] != "none":
    application.processEvents()
print(gamut.volume)
"""
    for name in ("Rec2020", CMYK):
        alone, beside = (script(source, toolkit, name) for toolkit in ("none", "PyQt6"))
        assert (alone.returncode, alone.stderr) == (0, "")
        assert (beside.returncode, beside.stderr) == (0, "")
        assert alone.stdout == beside.stdout


def test_importing_is_silent_and_needs_no_display():
    command = [sys.executable, "-X", "dev", "-W", "error", "-c", "import kvgamut; kvgamut.Gamut.open('sRGB', grid=3)"]
    ran = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert (ran.returncode, ran.stdout, ran.stderr) == (0, "", "")
