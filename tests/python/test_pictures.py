# SPDX-License-Identifier: Apache-2.0
"""Pictures, pages, and what a notebook shows."""

import os
import signal
import struct
import subprocess
import threading
import zlib

import kvgamut
import numpy as np
import pytest
from kvgamut import Gamut, RenderError, render


def pixels(png):
    """The pixels of a PNG of 8 bits, without interlacing."""
    assert png.startswith(b"\x89PNG\r\n\x1a\n")
    place, data = 8, b""
    while place < len(png):
        (length,), kind = struct.unpack(">I", png[place : place + 4]), png[place + 4 : place + 8]
        body = png[place + 8 : place + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour = struct.unpack(">IIBB", body[:10])
            assert depth == 8
        elif kind == b"IDAT":
            data += body
        place += 12 + length
    channels = {2: 3, 6: 4}[colour]
    rows = np.frombuffer(zlib.decompress(data), np.uint8).reshape(height, 1 + width * channels)
    result = np.zeros((height, width * channels), np.uint8)
    for y in range(height):
        above = result[y - 1].astype(int) if y else np.zeros(width * channels, int)
        line = rows[y, 1:].astype(int)
        if rows[y, 0] == 2:
            line = line + above
        elif rows[y, 0] != 0:
            for x in range(width * channels):
                left = line[x - channels] if x >= channels else 0
                corner = above[x - channels] if x >= channels else 0
                up = above[x]
                guess = left + up - corner
                near = min((abs(guess - left), 0, left), (abs(guess - up), 1, up), (abs(guess - corner), 2, corner))[2]
                line[x] = (line[x] + {1: left, 3: (left + up) // 2, 4: near}[rows[y, 0]]) & 255
        result[y] = line & 255
    return result.reshape(height, width, channels)


def test_a_picture_has_its_size_and_shows_the_gamut(srgb):
    picture = pixels(render(srgb, (120, 90), annotate="none", background="white", grid=False, axes=False))
    assert picture.shape[:2] == (90, 120)
    middle, corner = picture[45, 60, :3].astype(int), picture[1, 1, :3]
    assert corner.tolist() == [255, 255, 255]
    assert np.ptp(middle) > 10 or middle.max() < 250


def test_a_picture_of_a_program_is_equal(srgb, tmp_path):
    srgb.save(tmp_path / "sRGB", format="kvgamut")
    program = os.environ["KVGAMUT_PROGRAM"]
    command = [program, "render", "./sRGB", "--size", "160x120", "--style", "paper", "-o", "-"]
    expected = subprocess.run(command, stdout=subprocess.PIPE, check=True, cwd=tmp_path).stdout
    assert (pixels(render([srgb], (160, 120), "paper")) == pixels(expected)).all()


def test_equal_calls_give_equal_bytes_without_names_of_folders(srgb, p3):
    one, two = (render([srgb, p3], (100, 80)) for _ in range(2))
    assert one == two
    assert b"/tmp" not in one and b"kvgamut-" not in one


def test_options_change_the_picture(srgb, p3):
    variants = [
        {},
        {"view": "top"},
        {"mode": ["wireframe"]},
        {"clip": 50, "plane": True},
        {"camera": (50, 200, 100), "look_at": [50, 0, 0]},
        {"color": ["red"], "mode": "flat"},
        {"grid": False},
        {"loss": p3.__class__.open("sRGB", grid=5)},
        {"points": [[50, 90, 0], [20, 0, -120]]},
        {"style": "dark"},
        {"caption": "--help"},
        {"transparent": True},
    ]
    pictures = [render([p3], (100, 80), **options) for options in variants]
    assert len(set(pictures)) == len(pictures)
    assert pixels(pictures[-1]).shape[2] == 4


def test_other_formats(srgb):
    assert render(srgb, (64, 48), format="jpg").startswith(b"\xff\xd8")
    assert b"<svg" in render(srgb, (64, 48), format="svg")


@pytest.mark.parametrize("name", ["a/b", "", "..", "-x", "sRGB@absolute", "a" * 5000, "ä\n\x1b[31m", "\udce9", "a\0b"])
def test_any_name_is_drawn(srgb, name):
    gamut = Gamut.from_surface(srgb.vertices, srgb.triangles, name=name)
    assert pixels(render(gamut, (64, 48))).shape[:2] == (48, 64)
    assert "</html>" in kvgamut.page(gamut)


@pytest.mark.parametrize(
    "options",
    [
        {"size": (8, 8)},
        {"size": (9000, 20)},
        {"size": 100},
        {"size": (100.5, 100)},
        {"size": ("a", "b")},
        {"style": "blue"},
        {"style": 3},
        {"mode": "round"},
        {"alpha": 2},
        {"alpha": [float("nan")]},
        {"clip": "half"},
        {"clip": float("inf")},
        {"camera": (1, 2)},
        {"camera": (50, 0, 0)},
        {"points": [[1, 2]]},
        {"loss": "sRGB"},
        {"format": "exe"},
        {"caption": "a\0b"},
    ],
)
def test_wrong_options_are_refused(srgb, options):
    with pytest.raises(ValueError):
        render(srgb, **{"size": (64, 48), **options})


def test_wrong_gamuts_are_refused():
    for gamuts in ([], None, ["sRGB"], 5):
        for draw in (render, kvgamut.page):
            with pytest.raises(ValueError, match="gamuts"):
                draw(gamuts)
    with pytest.raises(TypeError, match="colour"):
        render(Gamut.open("sRGB", grid=3), colour="red")


def test_a_missing_program_is_reported(srgb, monkeypatch, tmp_path):
    monkeypatch.setenv("KVGAMUT_PROGRAM", str(tmp_path / "none"))
    with pytest.raises(RenderError, match="cannot be started"):
        render(srgb)
    monkeypatch.delenv("KVGAMUT_PROGRAM")
    monkeypatch.setenv("PATH", str(tmp_path))
    with pytest.raises(RenderError, match="KVGAMUT_PROGRAM"):
        render(srgb)
    assert srgb._repr_png_() is None


def test_a_program_may_be_named_relative_to_the_folder(srgb, monkeypatch):
    folder, name = os.path.split(os.environ["KVGAMUT_PROGRAM"])
    monkeypatch.chdir(folder)
    monkeypatch.setenv("KVGAMUT_PROGRAM", os.path.join(".", name))
    assert render(srgb, (64, 48)).startswith(b"\x89PNG")


def test_a_failing_program_is_reported(srgb, monkeypatch, tmp_path):
    failing = tmp_path / "failing"
    failing.write_text("#!/bin/sh\necho 'kvgamut: no OpenGL here' >&2\nexit 3\n")
    failing.chmod(0o755)
    monkeypatch.setenv("KVGAMUT_PROGRAM", str(failing))
    with pytest.raises(RenderError, match="^no OpenGL here$"):
        render(srgb)


def test_ctrl_c_ends_the_program(srgb, monkeypatch, tmp_path):
    waiting = tmp_path / "waiting"
    number = tmp_path / "number"
    waiting.write_text(f"#!/bin/sh\necho $$ > {number}.part\nmv {number}.part {number}\nexec sleep 1000\n")
    waiting.chmod(0o755)
    monkeypatch.setenv("KVGAMUT_PROGRAM", str(waiting))

    def interrupt():
        while not number.exists():
            ended.wait(0.01)
        os.kill(os.getpid(), signal.SIGINT)

    ended = threading.Event()
    threading.Thread(target=interrupt).start()
    with pytest.raises(KeyboardInterrupt):
        render(srgb)
    with pytest.raises(ProcessLookupError):
        os.kill(int(number.read_text()), 0)


def test_a_page_has_the_gamuts_and_their_numbers(srgb, p3):
    page = kvgamut.page([srgb, p3])
    assert page.startswith("<!DOCTYPE html>") and "sRGB" in page and "DisplayP3" in page
    assert f"{srgb.volume:.1f}" in page and f"{p3.volume:.1f}" in page
    assert not [word for word in ('src="http', 'href="http', "url(http", "@import") if word in page]


def test_a_notebook_shows_picture_numbers_and_page(srgb):
    assert pixels(srgb._repr_png_()).shape[:2] == (600, 800)
    html = srgb._repr_html_()
    assert "<iframe srcdoc=" in html and f"{srgb.volume:,.0f}" in html and "<script" not in html
    evil = Gamut.from_surface(srgb.vertices, srgb.triangles, name="<script>alert(1)</script>")
    assert "<script" not in evil._repr_html_()
