# SPDX-License-Identifier: Apache-2.0
"""Every input that the program knows, and what is refused."""

import os
import pickle
import struct
import zlib
from pathlib import Path

import kvgamut
import numpy as np
import pytest
from kvgamut import Gamut, ProfileError

DATA = Path(os.environ["KVGAMUT_SOURCE"]) / "docs" / "data"
CMYK = "/usr/share/color/icc/ghostscript/default_cmyk.icc"
CORNERS = np.array([[i & 1, i >> 1 & 1, i >> 2] for i in range(8)], float)


def lab_of(device):
    """A made-up device: a parallelepiped in Lab."""
    r, g, b = device.T
    return np.stack([100 * (r + g + b) / 3, 60 * (r - g), 60 * (g - b)], axis=1)


def test_spaces_and_bodies_have_names():
    assert kvgamut.rgb_spaces() == ["sRGB", "AdobeRGB", "DisplayP3", "Rec2020", "ProPhoto"]
    assert kvgamut.reference_bodies() == ["OptimalColors", "SurfaceColors", "SpectralLimit"]
    assert "D65" in kvgamut.whites()
    for name in kvgamut.rgb_spaces():
        assert Gamut.from_profile(name, grid=5).name == name
    assert Gamut.open("SurfaceColors").report["intent"] == "none"


def test_a_profile_opens_by_path_and_from_bytes():
    content = Path(CMYK).read_bytes()
    file = Gamut.from_profile(Path(CMYK), grid=5)
    assert file.report["channels"] == 4 and file.name == CMYK and len(file.report["sha256"]) == 64
    for data in (content, bytearray(content), memoryview(content)):
        same = Gamut.from_profile(data, grid=5, name="press")
        assert same.volume == file.volume and same.report["sha256"] == file.report["sha256"]
        assert same.name == "press"


def test_settings_have_an_effect():
    absolute = Gamut.from_profile(CMYK, "absolute", grid=5)
    assert absolute.report["intent"] == "absolute" and absolute.report["white"][0] < 99
    assert Gamut.from_profile(CMYK, grid=5).report["intent"] == "relative"
    assert Gamut.open(CMYK + "@perceptual", grid=5).report["intent"] == "perceptual"
    assert Gamut.from_profile(CMYK, bpc=True, grid=5).report["bpc"] is True
    assert Gamut.from_profile("sRGB", method="11-grid").report["faces"] == 1200
    assert Gamut.from_profile("sRGB", "absolute", adaptation="none-d65", grid=5).report["adaptation"] == "none-d65"


def test_a_measured_chart_gives_its_device():
    gamut = Gamut.from_measurements(DATA / "display.ti3", grid=9)
    assert gamut.report["chart"]["display"] is True and gamut.report["notes"]
    assert gamut.report["kind"].startswith("display chart of")
    assert Gamut.from_measurements((DATA / "display.ti3").read_bytes(), grid=9).volume == gamut.volume


def test_measurements_in_arrays_give_their_device():
    gamut = Gamut.from_measurements(lab_of(CORNERS), CORNERS, intent="absolute", name="made up", grid=9)
    assert gamut.report["chart"]["patches"] == 8 and gamut.name == "made up"
    assert gamut.report["kind"] == "print chart of 8 patches"
    # of the parallelepiped that the three channels span
    volume = abs(np.linalg.det(lab_of(np.eye(3)) - lab_of(np.zeros((1, 3)))))
    assert gamut.volume == pytest.approx(volume, rel=2e-3)
    display = Gamut.from_measurements(lab_of(CORNERS), CORNERS, display=True, grid=9)
    assert display.report["kind"] == "display chart of 8 patches"


@pytest.mark.parametrize(
    "device", [CORNERS[:4], CORNERS * 255, CORNERS - 0.5, CORNERS * np.nan, CORNERS[:, :2], "rgb", CORNERS[0]]
)
def test_wrong_device_values_are_refused(device):
    with pytest.raises(ValueError, match="device values"):
        Gamut.from_measurements(lab_of(CORNERS), device)


def test_too_few_patches_are_a_problem_of_the_input():
    with pytest.raises(ProfileError) as failed:
        Gamut.from_measurements(lab_of(CORNERS[:2]), CORNERS[:2])
    assert failed.value.code == "ChartTooSmall"


def test_lists_of_colours_give_hulls(tmp_path):
    colours = [[0, 0, 0], [60, 0, 0], [0, 60, 0], [0, 0, 60]]
    assert Gamut.from_colors(colours).volume == pytest.approx(36000)
    csv = tmp_path / "list.csv"
    csv.write_text("Lab_L,Lab_a,Lab_b\n" + "".join("%g,%g,%g\n" % tuple(row) for row in colours))
    for gamut in (Gamut.open(csv), Gamut.from_measurements(csv.read_bytes())):
        assert gamut.volume == pytest.approx(36000) and gamut.report["kind"] == "hull of 4 colours"
    rgb = b"R,G,B\n" + b"".join(b"%d,%d,%d\n" % tuple(255 * row) for row in CORNERS.astype(int))
    assert Gamut.open(rgb, space="sRGB").report["channels"] == 0
    with pytest.raises(ProfileError) as failed:
        Gamut.from_colors([[1, 0, 0]] * 5)
    assert failed.value.code == "ColorsWithoutVolume"


def picture(width, height, colour):
    """A PNG with a pattern of pixels."""

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = b"".join(b"\0" + b"".join(bytes(colour(x, y)) for x in range(width)) for y in range(height))
    head = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def test_the_colours_of_a_photo_give_a_hull(tmp_path):
    photo = tmp_path / "photo.png"
    photo.write_bytes(picture(16, 16, lambda x, y: (17 * x, 17 * y, 17 * ((x + y) % 16))))
    gamut = Gamut.open(f"{photo}@pixels")
    assert "pixels of a photo" in gamut.report["kind"] and gamut.volume > 1e5
    with pytest.raises(ProfileError) as failed:
        Gamut.open(photo)
    assert failed.value.code == "PictureWithoutProfile" and failed.value.arguments == ("PNG",)


def test_surfaces_of_other_programs_open(cube, tmp_path):
    table = "\n".join(f"{i} {L} {a} {b}" for i, (L, a, b) in enumerate(cube.vertices))
    faces = "\n".join(f"{a} {b} {c}" for a, b, c in cube.triangles)
    gam = f"""GAMUT

KEYWORD "COLOR_REP"
COLOR_REP "LAB"
NUMBER_OF_FIELDS 4
BEGIN_DATA_FORMAT
VERTEX_NO LAB_L LAB_A LAB_B
END_DATA_FORMAT
NUMBER_OF_SETS {len(cube.vertices)}
BEGIN_DATA
{table}
END_DATA

GAMUT

NUMBER_OF_FIELDS 3
BEGIN_DATA_FORMAT
VERTEX_0 VERTEX_1 VERTEX_2
END_DATA_FORMAT
NUMBER_OF_SETS {len(cube.triangles)}
BEGIN_DATA
{faces}
END_DATA
"""
    (tmp_path / "cube.gam").write_text(gam)
    assert Gamut.open(tmp_path / "cube.gam").volume == pytest.approx(60**3)


def test_saved_gamuts_and_boundaries_open_again(srgb, tmp_path):
    srgb.save(tmp_path / "a.kvgamut")
    again = Gamut.open(tmp_path / "a.kvgamut")
    assert again.volume == srgb.volume and (again.vertices == srgb.vertices).all()
    assert again.report["kind"] == "saved gamut"
    srgb.save(tmp_path / "a.icc")
    boundary = Gamut.open(str(tmp_path / "a.icc") + "@boundary")
    assert boundary.volume == pytest.approx(srgb.report["surface_volume"], rel=1e-4)


def test_every_format_is_written(srgb, tmp_path):
    starts = {"ply": b"ply", "obj": b"#", "gltf": b"{", "x3d": b"<?xml", "json": b"[", "html": b"<!DOCTYPE html>"}
    for suffix, start in starts.items():
        srgb.save(tmp_path / f"a.{suffix.upper()}")
        assert (tmp_path / f"a.{suffix.upper()}").read_bytes().startswith(start)
    srgb.save(tmp_path / "no suffix", format="ply")
    assert (tmp_path / "no suffix").read_bytes() == (tmp_path / "a.PLY").read_bytes()


def test_files_that_cannot_be_written_raise(srgb, tmp_path):
    with pytest.raises(OSError, match="nowhere"):
        srgb.save(tmp_path / "nowhere" / "a.ply")
    with pytest.raises(ValueError, match="format"):
        srgb.save(tmp_path / "a.png")
    copy = tmp_path / "own.icc"
    copy.write_bytes(Path(CMYK).read_bytes())
    gamut = Gamut.from_profile(copy, grid=5)
    with pytest.raises(ValueError, match="overwrite"):
        gamut.save(copy)
    assert copy.read_bytes() == Path(CMYK).read_bytes()


@pytest.mark.parametrize(
    "arguments",
    [
        {"intent": "relativ"},
        {"intent": 1},
        {"grid": 2},
        {"grid": 130},
        {"grid": 33.5},
        {"grid": True},
        {"adaptation": "d65"},
        {"method": "fast"},
        {"white": "D51"},
        {"white_y": float("nan")},
        {"space_intent": "none"},
        {"progress": 1},
        {"name": "only for bytes"},
    ],
)
def test_wrong_words_are_refused(arguments):
    with pytest.raises(ValueError, match=next(iter(arguments))):
        Gamut.open("sRGB", **arguments)


def test_unknown_arguments_are_refused():
    with pytest.raises(TypeError, match="gird"):
        Gamut.open("sRGB", gird=3)


def test_other_things_are_no_inputs():
    for thing in (None, 3, ["sRGB"], "", "a\0b"):
        with pytest.raises(ValueError):
            Gamut.open(thing)
    with pytest.raises(ValueError, match="Gamut.open"):
        Gamut.from_profile("OptimalColors")
    with pytest.raises(ValueError, match="Gamut.open"):
        Gamut.from_measurements("sRGB")
    with pytest.raises(ValueError, match="from_colors"):
        Gamut.from_measurements([[1, 2, 3]])


@pytest.mark.parametrize(
    "name, code",
    [("missing.icc", "FileNotFound"), ("/", "NotAFile"), ("/dev/zero", "NotAFileOrPipe"), ("sRGB@fine", "InputSettingUnknown"), ("-", "FileNotFound")],
)
def test_problems_have_the_code_of_the_engine(name, code):
    with pytest.raises(ProfileError) as failed:
        Gamut.open(name)
    assert failed.value.code == code
    again = pickle.loads(pickle.dumps(failed.value))
    assert (again.code, again.subject, str(again)) == (code, failed.value.subject, str(failed.value))


def test_damaged_content_is_refused():
    content = Path(CMYK).read_bytes()
    codes = set()
    for damaged in (content[:1000], b"", b"\1" * 500, content[:36] + b"acsp" + b"\xff" * 200):
        with pytest.raises(ProfileError) as failed:
            Gamut.open(damaged)
        codes.add(failed.value.code)
    assert {"NotAProfile", "UnknownFormat"} <= codes


def test_names_that_are_not_utf8_are_kept(tmp_path):
    name = os.path.join(os.fsencode(tmp_path), b"\xe9.icc")
    with open(name, "wb") as file:
        file.write(Path(CMYK).read_bytes())
    gamut = Gamut.from_profile(os.fsdecode(name), grid=5)
    assert os.fsencode(gamut.name) == name
    assert pickle.loads(pickle.dumps(gamut)).name == gamut.name


@pytest.mark.parametrize("triangles", [[[0, 1]], [[0.5, 1, 2]], [[0, 1, 2**40]], "x", [[0, 1, -1]], [[0, 1, 99]], [[0, 1, 2]], []])
def test_wrong_surfaces_are_refused(cube, triangles):
    with pytest.raises((ValueError, ProfileError)):
        Gamut.from_surface(cube.vertices, triangles)
