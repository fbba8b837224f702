#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A million colours against the gamut of sRGB, in Python and in C++, and how long Ctrl+C takes.

Run it in the folder of the tree:
    PYTHONPATH=build/dev/python python3 benchmarks/bench_python.py build/dev/bin/bench_point_queries
"""

import signal
import subprocess
import sys
import tempfile
import threading
import time

import kvgamut
import numpy as np

COLOURS = 1_000_000
REPEATS = 5


def shortest(work):
    """The shortest time, and processor time, which other programs disturb less."""
    times, processor = [], []
    for _ in range(REPEATS):
        start, begin = time.perf_counter(), time.process_time()
        work()
        times.append(time.perf_counter() - start)
        processor.append(time.process_time() - begin)
    return min(times), min(processor)


def interrupted(work):
    """Seconds from the signal to the exception."""
    sent = []

    def send():
        time.sleep(0.5)
        sent.append(time.perf_counter())
        signal.raise_signal(signal.SIGINT)

    threading.Thread(target=send).start()
    try:
        work()
    except KeyboardInterrupt:
        return time.perf_counter() - sent[0]
    return float("nan")  # it was done before


def main():
    colours = np.random.default_rng(1).uniform([-10, -128, -128], [110, 128, 128], (COLOURS, 3)).astype(np.float32)
    gamut = kvgamut.Gamut.from_profile("sRGB")
    with tempfile.NamedTemporaryFile() as file:
        colours.tofile(file)
        file.flush()
        lines = subprocess.run([sys.argv[1], file.name], stdout=subprocess.PIPE, check=True, text=True).stdout.split()
    for name, *native in zip(lines[::3], map(float, lines[1::3]), map(float, lines[2::3])):
        here = shortest(lambda: getattr(gamut, name)(colours))
        for what, there, mine in zip(("time", "processor time"), native, here):
            more = 100 * (mine / there - 1)
            print(f"{name}: {COLOURS} colours, {what} C++ {there:.3f} s, Python {mine:.3f} s, {more:+.1f} %")
    cmyk = "/usr/share/color/icc/ghostscript/default_cmyk.icc"
    for name, work in (
        ("distance, de00", lambda: gamut.distance(colours, "de00")),
        ("a CMYK profile, grid 129", lambda: kvgamut.Gamut.from_profile(cmyk, grid=129)),
    ):
        times = [interrupted(work) for _ in range(REPEATS)]
        print(f"Ctrl+C during {name}: at most {1000 * max(times):.0f} ms")


if __name__ == "__main__":
    main()
