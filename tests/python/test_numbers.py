# SPDX-License-Identifier: Apache-2.0
"""Volumes, arrays, questions about colours, sections and comparisons."""

import json
import os
import pickle
import subprocess

import kvgamut
import numpy as np
import pytest
from conftest import box, random_points


def enclosed(gamut):
    """The volume of a mesh, from its triangles."""
    a, b, c = (gamut.vertices[gamut.triangles[:, i]] for i in range(3))
    return float(np.einsum("ij,ij->i", a, np.cross(b, c)).sum()) / 6


def area(ring):
    x, y = ring[:, 0], ring[:, 1]
    return float(np.dot(x, np.roll(y, -1)) - np.dot(y, np.roll(x, -1))) / 2


def ciede2000(one, two):
    """ISO/CIE 11664-6, for arrays of L*, a*, b*."""
    (l1, a1, b1), (l2, a2, b2) = np.moveaxis(np.asarray(one, float), -1, 0), np.moveaxis(np.asarray(two, float), -1, 0)
    mean = ((np.hypot(a1, b1) + np.hypot(a2, b2)) / 2) ** 7
    g = 0.5 * (1 - np.sqrt(mean / (mean + 25.0**7)))
    a1, a2 = a1 * (1 + g), a2 * (1 + g)
    c1, c2 = np.hypot(a1, b1), np.hypot(a2, b2)
    h1, h2 = np.degrees(np.arctan2(b1, a1)) % 360, np.degrees(np.arctan2(b2, a2)) % 360
    turn = (h2 - h1 + 180) % 360 - 180
    dh = 2 * np.sqrt(c1 * c2) * np.sin(np.radians(turn) / 2)
    l, c, h = (l1 + l2) / 2, (c1 + c2) / 2, (h1 + turn / 2) % 360
    t = sum(k * np.cos(np.radians(n * h + p)) for k, n, p in ((-0.17, 1, -30), (0.24, 2, 0), (0.32, 3, 6), (-0.2, 4, -63))) + 1
    sl, sc, sh = 1 + 0.015 * (l - 50) ** 2 / np.sqrt(20 + (l - 50) ** 2), 1 + 0.045 * c, 1 + 0.015 * c * t
    rt = -2 * np.sqrt(c**7 / (c**7 + 25.0**7)) * np.sin(np.radians(60 * np.exp(-(((h - 275) / 25) ** 2))))
    x, y, z = (l2 - l1) / sl, (c2 - c1) / sc, dh / sh
    return np.sqrt(x**2 + y**2 + z**2 + rt * y * z)


def test_numbers_are_those_of_the_program(srgb):
    command = [os.environ["KVGAMUT_PROGRAM"], "volume", "sRGB", "--intent", "relative", "--grid", "17", "--format", "json"]
    row = json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)[0]
    assert srgb.volume == pytest.approx(row["volume"], abs=0.06)
    assert srgb.uncertainty == pytest.approx(row["uncertainty"], abs=0.06)
    report = srgb.report
    for key in ("faces", "method", "intent", "bpc", "grid", "channels", "table", "kind", "program", "adapted_by"):
        assert report[key] == row[key], key
    assert (report["volume"], report["uncertainty"]) == (srgb.volume, srgb.uncertainty)
    assert report["white"] == pytest.approx((100, 0, 0), abs=0.01)


def test_arrays_are_the_surface(srgb):
    assert srgb.vertices.dtype == np.float64 and srgb.vertices.shape[1] == 3
    assert srgb.triangles.dtype == np.int32 and srgb.triangles.shape == (srgb.report["faces"], 3)
    assert srgb.device.shape == (len(srgb.vertices), 3) and srgb.device.min() == 0 and srgb.device.max() == 1
    assert enclosed(srgb) == pytest.approx(srgb.report["surface_volume"], rel=1e-6)
    white = np.flatnonzero((srgb.device == 1).all(axis=1))
    assert srgb.vertices[white[0]] == pytest.approx((100, 0, 0), abs=0.01)


@pytest.mark.parametrize("name", ["vertices", "triangles", "device"])
def test_arrays_are_views_that_keep_their_memory(name):
    gamut = kvgamut.Gamut.from_profile("sRGB", grid=9)
    view = getattr(gamut, name)
    assert view.ctypes.data == getattr(gamut, name).ctypes.data
    with pytest.raises(ValueError):
        view[0, 0] = 1
    with pytest.raises(ValueError):
        view.setflags(write=True)
    copy = view.copy()
    part = view[::2]
    del gamut, view
    others = [kvgamut.Gamut.from_profile("AdobeRGB", grid=9) for _ in range(3)]
    assert (part == copy[::2]).all() and others


def test_a_given_surface_has_no_device_values(cube):
    assert cube.device is None
    assert cube.volume == pytest.approx(60**3)
    assert cube.report["table"] is None


def test_inside_and_distance_of_a_cube(cube):
    points = random_points(3000)
    offset = np.abs(points - (50, 0, 0)) - 30
    outside = np.hypot.reduce(np.maximum(offset, 0), axis=1)
    expected = np.where(outside > 0, outside, offset.max(axis=1))
    inside = cube.inside(points)
    assert inside.dtype == bool and inside.shape == (3000,)
    assert (inside == (expected < 0)).all()
    assert cube.distance(points) == pytest.approx(expected, abs=1e-3)
    nearest = cube.nearest(points[~inside])
    assert nearest == pytest.approx(np.clip(points[~inside], (20, -30, -30), (80, 30, 30)), abs=1e-3)


def test_distance_by_ciede2000(cube):
    points = random_points(40)
    steps = np.linspace(-30, 30, 61)
    u, v = (grid.ravel() for grid in np.meshgrid(steps, steps))
    faces = [np.insert(np.stack([u, v], 1), axis, side, axis=1) for axis in range(3) for side in (-30, 30)]
    surface = np.concatenate(faces) + (50, 0, 0)
    distance, nearest = cube.distance(points, "de00"), cube.nearest(points, metric="de00")
    assert ((distance < 0) == cube.inside(points)).all()
    assert ciede2000(points, nearest) == pytest.approx(np.abs(distance), abs=1e-3)
    sampled = np.array([ciede2000(np.broadcast_to(p, surface.shape), surface).min() for p in points])
    assert (np.abs(distance) <= sampled + 0.005).all()


def test_one_colour_has_one_answer(cube):
    assert bool(cube.inside((50, 0, 0))) is True
    assert float(cube.distance([50, 0, 40])) == pytest.approx(10)
    assert cube.nearest(np.array([50, 0, 40])).tolist() == pytest.approx([50, 0, 30])


def test_arrays_of_any_layout_have_the_same_answers(srgb):
    points = random_points(500)
    expected = srgb.distance(points)
    wide = np.zeros((500, 6))
    wide[:, ::2] = points
    layouts = [np.asfortranarray(points), wide[:, ::2], points.astype(np.float32), points.tolist(), points[::-1][::-1], np.array(points, ">f8")]
    for layout in layouts:
        assert srgb.distance(layout) == pytest.approx(expected, abs=1e-4)
    whole = np.rint(points).astype(np.int16)
    assert (srgb.inside(whole) == srgb.inside(whole.astype(float))).all()


@pytest.mark.parametrize("empty", [[], np.zeros((0, 3)), np.zeros((0, 3), np.float32)])
def test_no_colours_have_no_answers(srgb, empty):
    assert srgb.inside(empty).shape == (0,) and srgb.inside(empty).dtype == bool
    assert srgb.distance(empty, "de00").shape == (0,)
    assert srgb.nearest(empty).shape == (0, 3)


@pytest.mark.parametrize(
    "points",
    [
        [1, 2],
        [[1, 2]],
        [[1, 2, 3, 4]],
        [[[1, 2, 3]]],
        [[1, 2], [1, 2, 3]],
        "L a b",
        [["1", "2", "3"]],
        None,
        5,
        [[1, 2, float("nan")]],
        [[1, float("inf"), 0]],
        [[1e300, 0, 0]],
        [[1j, 0, 0]],
        [[10**400, 0, 0]],
        [[True, False, True]],
        np.ma.masked_equal([[1, 2, 3]], 2),
        np.zeros((2, 0)),
    ],
)
def test_wrong_points_are_refused(srgb, points):
    for ask in (srgb.inside, srgb.distance, srgb.nearest):
        with pytest.raises(ValueError, match=r"^the points .*"):
            ask(points)
    assert srgb.inside([[50, 0, 0]])[0]


def test_too_many_points_raise_memory_error(srgb):
    with pytest.raises(MemoryError):
        srgb.inside(np.broadcast_to(np.float32(1), (10**13, 3)))
    assert srgb.inside([[50, 0, 0]])[0]


def test_a_wrong_metric_is_refused(srgb):
    for metric in ("de94", "", None):
        with pytest.raises(ValueError, match="metric"):
            srgb.distance([[1, 2, 3]], metric)


def test_slices_of_a_cube(cube):
    (ring,) = cube.slice(lightness=50)
    assert area(ring) == pytest.approx(3600) and np.abs(ring).max() == pytest.approx(30)
    (half,) = cube.slice(hue=0)
    assert abs(area(half)) == pytest.approx(30 * 60, rel=1e-4)
    assert half[:, 0].min() == pytest.approx(0, abs=1e-6) and half[:, 1].max() == pytest.approx(80)
    assert cube.slice(lightness=95) == []


@pytest.mark.parametrize("arguments", [{}, {"lightness": 1, "hue": 2}, {"lightness": float("nan")}, {"hue": "red"}, {"hue": 1e9}])
def test_wrong_slices_are_refused(cube, arguments):
    with pytest.raises(ValueError):
        cube.slice(**arguments)


def test_outline_of_a_cube(cube):
    (loop,) = cube.outline()
    assert loop.shape[1] == 3 and abs(area(loop[:, 1:])) == pytest.approx(3600)


def test_rings_enclose_the_volume(cube):
    rings = cube.rings()
    assert rings.lightness == [10, 20, 30, 40, 50, 60, 70, 80, 90, 100]
    assert area(rings.rings[-1]) == pytest.approx(60**3, rel=2e-3)
    assert area(rings.rings[4]) == pytest.approx(60**3 / 2, rel=2e-3)
    assert len(cube.rings(step=50, hues=12).rings[0]) == 12
    for wrong in ({"step": 0}, {"hues": 7}, {"hues": 0}, {"hues": 1e6}, {"step": "x"}):
        with pytest.raises(ValueError):
            cube.rings(**wrong)


def test_comparison_of_two_boxes(cube):
    other = box((50, 0, -30), (110, 60, 30), name="other")
    found = cube.compare(other)
    assert found.volume_first == pytest.approx(60**3) and found.volume_second == pytest.approx(60**3)
    assert found.intersection == pytest.approx(30 * 30 * 60, rel=1e-4)
    assert found.union == pytest.approx(2 * 60**3 - 30 * 30 * 60, rel=1e-4)
    assert found.first_covered == pytest.approx(0.25, rel=1e-4) == found.second_covered
    assert found.intersection_uncertainty >= 0 and found._fields[5] == "intersection_uncertainty"


def test_comparison_names_the_parts_in_order(srgb, p3):
    pair, turned = p3.compare(srgb), srgb.compare(p3)
    assert pair.volume_first == p3.volume and pair.volume_second_uncertainty == srgb.uncertainty
    assert pair.second_covered > 0.999 > pair.first_covered > 0.5
    assert turned.first_covered == pytest.approx(pair.second_covered, abs=1e-4)
    with pytest.raises(ValueError, match="Gamut"):
        p3.compare("sRGB")


def test_a_pickled_gamut_is_the_same(srgb, cube):
    for gamut in (srgb, cube):
        for protocol in range(2, pickle.HIGHEST_PROTOCOL + 1):
            again = pickle.loads(pickle.dumps(gamut, protocol))
            assert (again.vertices == gamut.vertices).all() and (again.triangles == gamut.triangles).all()
            assert again.report == gamut.report and again.name == gamut.name
            assert again.uncertainty == gamut.uncertainty
    assert (pickle.loads(pickle.dumps(srgb)).device == srgb.device).all()


def test_a_gamut_is_made_by_its_functions_only():
    with pytest.raises(TypeError, match="from_profile"):
        kvgamut.Gamut()
    with pytest.raises(AttributeError):
        kvgamut.Gamut.from_profile("sRGB", grid=3).volume = 1
