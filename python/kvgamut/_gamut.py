# SPDX-License-Identifier: Apache-2.0
"""The class Gamut."""

from __future__ import annotations

import copy
import math
import os
from html import escape
from typing import Any, Callable, Dict, List, NamedTuple, Optional, Union

import numpy as np

from . import _arrays, _core

Progress = Optional[Callable[[float], Any]]
Input = Union[str, "os.PathLike[str]", bytes, bytearray, memoryview]


class Comparison(NamedTuple):
    """Two gamuts in numbers. Volumes are in dE76 cubed; the true value lies within value +- uncertainty.

    ``first_covered`` is the share of the first gamut's volume, 0..1, that the second one covers, and
    ``second_covered`` the share of the second's that the first one covers.
    """

    volume_first: float
    volume_first_uncertainty: float
    volume_second: float
    volume_second_uncertainty: float
    intersection: float
    intersection_uncertainty: float
    union: float
    union_uncertainty: float
    first_covered: float
    first_covered_uncertainty: float
    second_covered: float
    second_covered_uncertainty: float


class Rings(NamedTuple):
    """Gamut rings: the volume of a gamut, shown as areas in a plane.

    ``lightness[i]`` is the upper limit of the polygon ``rings[i]``, an array (hues, 2) of a*RSS and b*RSS in
    dE76 to the power of 3/2. The area of the last ring is the whole volume.
    """

    lightness: List[float]
    rings: List[np.ndarray]


def path_bytes(path: Any) -> bytes:
    """The name of a file as the program reads it: "-" is a file, not standard input."""
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError("the name of the file contains a NUL character")
    if not name:
        raise ValueError("the name of the file is empty")
    return b"./-" if name == b"-" else name


def checked_progress(progress: Progress) -> Progress:
    if progress is not None and not callable(progress):
        raise ValueError("progress must be a function of the share that is done, or None")
    return progress


def word(value: Any, what: str) -> str:
    if not isinstance(value, str):
        raise ValueError(f"{what} must be a word, not {type(value).__name__}")
    return value


def real(value: Any, what: str, low: float = -math.inf, high: float = math.inf) -> float:
    try:
        number = float(value)
    except (TypeError, ValueError, OverflowError):
        raise ValueError(f"{what} must be a number") from None
    if not math.isfinite(number) or not low <= number <= high:
        raise ValueError(f"{what} must be a number from {low:g} to {high:g}, not {value!r}")
    return number


def _grid(grid: Optional[int]) -> int:
    if grid is None:
        return -1
    if isinstance(grid, bool) or not isinstance(grid, (int, np.integer)) or not 3 <= grid <= 129:
        raise ValueError(f"grid must be a whole number from 3 to 129, or None, not {grid!r}")
    return int(grid)


def _options(expected: str, settings: Dict[str, Any]) -> Dict[str, Any]:
    """What the compiled part needs to know about how to read and compute, with the defaults."""
    known = {"intent", "bpc", "grid", "adaptation", "method", "space", "space_intent", "white", "white_y"}
    for name in settings:
        if name not in known:
            raise TypeError(f"there is no argument {name!r}")
    space = settings.get("space")
    white = settings.get("white")
    return {
        "expected": expected,
        "intent": word(settings.get("intent", "relative"), "intent"),
        "bpc": bool(settings.get("bpc", False)),
        "grid": _grid(settings.get("grid")),
        "adaptation": word(settings.get("adaptation", "full"), "adaptation"),
        "method": word(settings.get("method", "accurate"), "method"),
        "space": b"" if space is None else path_bytes(space),
        "space_intent": word(settings.get("space_intent", "absolute"), "space_intent"),
        "white": "" if white is None else word(white, "white"),
        "white_y": real(settings.get("white_y", 0.0), "white_y", 0.0, 1000.0),
    }


class Gamut:
    """The gamut of a device: a closed surface of triangles in CIE L*a*b* (D50), and its numbers.

    Made by :meth:`open`, :meth:`from_profile`, :meth:`from_measurements`, :meth:`from_colors` and
    :meth:`from_surface`. It never changes, may be used on several threads at once, and can be pickled.

    Lab values are always in the order L*, a*, b*. Distances are in dE, volumes in dE76 cubed.

    >>> import kvgamut
    >>> g = kvgamut.Gamut.from_profile("sRGB", grid=9)
    >>> g
    <kvgamut.Gamut 'sRGB' volume 8.3e+05>
    >>> bool(g.inside([50, 0, 0]))
    True

    The functions that compute take ``progress``, a function of the share that is done (0..1) which is called
    on the calling thread. An exception that it raises ends the computation, as Ctrl+C does. With tqdm::

        with tqdm(total=1.0) as bar:
            g = Gamut.open("printer.icc", progress=lambda share: bar.update(share - bar.n))
    """

    __slots__ = ("_value", "_report", "__weakref__")
    _value: Any
    _report: Optional[Dict[str, Any]]

    def __init__(self) -> None:
        raise TypeError("use Gamut.open, from_profile, from_measurements, from_colors or from_surface")

    @classmethod
    def _of(cls, value: Any) -> "Gamut":
        gamut = object.__new__(cls)
        gamut._value = value
        gamut._report = None  # that of a pickled gamut
        return gamut

    @classmethod
    def _opened(cls, source: Input, name: Optional[str], expected: str, settings: Dict[str, Any]) -> "Gamut":
        progress = checked_progress(settings.pop("progress", None))
        options = _options(expected, settings)
        if isinstance(source, (bytes, bytearray, memoryview)):
            return cls._of(_core.open_content(word(name or "bytes", "name"), bytes(source), options, progress))
        if name is not None:
            raise ValueError("name is only for bytes; a file has one")
        if not isinstance(source, (str, os.PathLike)):
            raise ValueError(f"the input must be the name of a file or bytes, not {type(source).__name__}")
        return cls._of(_core.open_file(path_bytes(source), options, progress))

    @classmethod
    def open(cls, source: Input, *, name: Optional[str] = None, **settings: Any) -> "Gamut":
        """Opens whatever the program ``kvgamut`` takes as an input.

        Args:
            source: the name of a file, or its content as bytes: an ICC profile, a picture with an embedded
                profile, a chart, a list of colours, a palette, a surface (.gam) or a saved gamut (.kvgamut);
                or one of :func:`kvgamut.rgb_spaces` and :func:`kvgamut.reference_bodies`. The content decides
                what a file is. ``"printer.icc@absolute"`` names the intent, ``"photo.tif@pixels"`` the colours
                of a photo, ``"profile.icc@boundary"`` the boundary that is stored in a profile.
            name: of bytes, for reports and pictures.
            intent: ``"relative"`` (the default), ``"absolute"``, ``"perceptual"`` or ``"saturation"``.
            bpc: black-point compensation; no effect with the absolute intent.
            grid: samples along each device axis, 3 to 129; None for 33, or 17 from five channels on.
            adaptation: of absolute colours to D50: ``"full"``, ``"none"`` or ``"none-d65"``.
            method: ``"accurate"``, ``"11-grid"`` or ``"11-grid-rising"``.
            space: the profile of RGB and CMYK values in a list, and of photos without one: a file or an RGB space.
            space_intent: from these values to Lab (``"absolute"``).
            white: of Lab and XYZ values in a list, one of :func:`kvgamut.whites`; None: as the file says, or D50.
            white_y: Y of white in XYZ values; 0: as the values show.
            progress: see the class.

        Raises:
            ProfileError: the input gives no gamut; ``code`` says why.
            ValueError: an argument is wrong.
            KeyboardInterrupt: Ctrl+C, within 50 ms.

        >>> round(Gamut.open("OptimalColors").volume, -4)
        2340000.0
        """
        return cls._opened(source, name, "any", settings)

    @classmethod
    def from_profile(
        cls,
        profile: Input,
        intent: str = "relative",
        bpc: bool = False,
        grid: Optional[int] = None,
        *,
        name: Optional[str] = None,
        **settings: Any,
    ) -> "Gamut":
        """The gamut of an ICC profile, of the profile in a picture, or of an RGB space, see :meth:`open`.

        Raises ValueError if the input is something else.

        >>> Gamut.from_profile("DisplayP3", grid=9).report["channels"]
        3
        """
        return cls._opened(profile, name, "profile", {"intent": intent, "bpc": bpc, "grid": grid, **settings})

    @classmethod
    def from_measurements(
        cls, measurements: Any, device: Any = None, *, display: bool = False, name: Optional[str] = None, **settings: Any
    ) -> "Gamut":
        """The gamut of measured patches.

        Args:
            measurements: a file or bytes (CGATS, TI3, CxF, CSV...), or Lab values (n, 3) with ``device``. A list
                without device values gives the convex hull of its colours.
            device: device values (n, 3) of RGB or (n, 4) of CMYK, 0..1.
            display: whether the patches are those of a display; otherwise of a print. Only with ``device``.
            name: of arrays and bytes.

        ``report["chart"]`` says how well the patches tell what the device reaches. For the rest see :meth:`open`.
        """
        if device is None:
            if not isinstance(measurements, (str, os.PathLike, bytes, bytearray, memoryview)):
                raise ValueError("measurements in an array need their device values; for a hull use from_colors")
            return cls._opened(measurements, name, "measurements", settings)
        lab = _arrays.lab_rows(measurements, "the measurements")
        return cls._points(lab, _arrays.device_rows(device, len(lab)), display, name or "measurements", settings)

    @classmethod
    def from_colors(cls, colors: Any, *, name: str = "colors", progress: Progress = None) -> "Gamut":
        """The convex hull of Lab colours (n, 3), at least four that are not in a plane.

        >>> round(Gamut.from_colors([[0, 0, 0], [60, 0, 0], [0, 60, 0], [0, 0, 60]]).volume)
        36000
        """
        lab = _arrays.lab_rows(colors, "the colours")
        return cls._points(lab, np.zeros(0, np.float32), False, name, {"progress": progress})

    @classmethod
    def _points(cls, lab: np.ndarray, device: np.ndarray, display: bool, name: str, settings: Dict[str, Any]) -> "Gamut":
        progress = checked_progress(settings.pop("progress", None))
        options = _options("any", settings)
        return cls._of(_core.open_points(word(name, "name"), lab, device, bool(display), options, progress))

    @classmethod
    def from_surface(
        cls, vertices: Any, triangles: Any, *, uncertainty: float = 0.0, name: str = "surface", progress: Progress = None
    ) -> "Gamut":
        """The gamut that a closed surface encloses.

        Args:
            vertices: Lab (n, 3).
            triangles: indices of vertices (m, 3). All face outwards, or all inwards.
            uncertainty: of the volume, dE76 cubed.
        """
        lab = _arrays.lab_rows(vertices, "the vertices")
        rows = _arrays.triangle_rows(triangles)
        known = real(uncertainty, "uncertainty", 0.0)
        return cls._of(_core.open_surface(word(name, "name"), lab, rows, known, checked_progress(progress)))

    # --- Numbers ---------------------------------------------------------------------------------------------

    @property
    def name(self) -> str:
        """The name of the input."""
        return self._value.name

    @property
    def volume(self) -> float:
        """Volume of all colours of the device, dE76 cubed."""
        return self._value.volume

    @property
    def uncertainty(self) -> float:
        """The device's true volume lies within ``volume`` +- this, dE76 cubed."""
        return self._value.uncertainty

    @property
    def report(self) -> Dict[str, Any]:
        """All that is known about the gamut and its computation, with the names that ``kvgamut volume`` uses.

        Colours are tuples of L*, a*, b*. What is unknown is None. ``notes`` is a list of sentences that a reader of
        the volume should know.
        """
        return self._value.report() if self._report is None else copy.deepcopy(self._report)

    # --- The surface -----------------------------------------------------------------------------------------

    @property
    def vertices(self) -> np.ndarray:
        """Lab of each vertex of the surface: float64 (n, 3), read-only, without a copy."""
        return self._value.vertices()

    @property
    def triangles(self) -> np.ndarray:
        """Vertices of each triangle, counter-clockwise seen from outside: int32 (m, 3), read-only, without a copy."""
        return self._value.triangles()

    @property
    def device(self) -> Optional[np.ndarray]:
        """Device values of each vertex, 0..1: float32 (n, channels), read-only, without a copy; None if unknown."""
        return self._value.device()

    # --- Questions about colours -----------------------------------------------------------------------------

    def inside(self, points: Any, *, progress: Progress = None) -> Any:
        """Whether Lab colours are inside: bool (n) for points (n, 3), a bool for one colour (3).

        >>> Gamut.open("sRGB", grid=9).inside([[50, 0, 0], [50, 120, 0]]).tolist()
        [True, False]
        """
        rows, is_single = _arrays.points(points)
        result = self._value.inside(rows, checked_progress(progress))
        return result[0] if is_single else result

    def distance(self, points: Any, metric: str = "de76", *, progress: Progress = None) -> Any:
        """Distance from the surface, negative inside: float64 (n) for points (n, 3), a number for one colour (3).

        ``metric`` is ``"de76"`` or ``"de00"`` (CIEDE2000, about a tenth of a millisecond for each colour).
        """
        return self._nearest(points, metric, progress)[1]

    def nearest(self, points: Any, metric: str = "de76", *, progress: Progress = None) -> np.ndarray:
        """The nearest point of the surface: Lab, float64 (n, 3) for points (n, 3), (3) for one colour."""
        return self._nearest(points, metric, progress)[0]

    def _nearest(self, points: Any, metric: str, progress: Progress) -> Any:
        rows, is_single = _arrays.points(points)
        places, distances = self._value.nearest(rows, word(metric, "metric"), checked_progress(progress))
        return (places[0], distances[0]) if is_single else (places, distances)

    # --- Sections --------------------------------------------------------------------------------------------

    def slice(self, *, lightness: Optional[float] = None, hue: Optional[float] = None) -> List[np.ndarray]:
        """The cut at a lightness, or at a hue angle in degrees: a list of closed rings, the last point not repeated.

        Each is float64 (n, 2): a*, b* at a lightness; C*, L* at a hue. Outer boundaries are counter-clockwise, holes
        clockwise. Empty if the plane misses the gamut.
        """
        if (lightness is None) == (hue is None):
            raise ValueError("slice needs a lightness or a hue, not both")
        if hue is not None:
            return self._value.slice(True, real(hue, "hue", -36000.0, 36000.0))
        return self._value.slice(False, real(lightness, "lightness", -1000.0, 1000.0))

    def outline(self) -> List[np.ndarray]:
        """The outline of the projection onto the ab plane: closed loops of L*, a*, b*, float64 (n, 3)."""
        return self._value.outline()

    def rings(self, step: float = 10.0, hues: int = 360) -> Rings:
        """Gamut rings: steps of lightness (1 to 100), at an even number of hue angles (4 to 3600)."""
        if isinstance(hues, bool) or not isinstance(hues, (int, np.integer)) or hues % 2 or not 4 <= hues <= 3600:
            raise ValueError("hues must be an even number from 4 to 3600")
        return Rings(*self._value.rings(real(step, "step", 1.0, 100.0), int(hues)))

    # --- Other gamuts, files ---------------------------------------------------------------------------------

    def compare(self, other: "Gamut", *, progress: Progress = None) -> Comparison:
        """Compares this gamut, the first, with ``other``, the second.

        >>> pair = Gamut.open("DisplayP3", grid=9).compare(Gamut.open("sRGB", grid=9))
        >>> pair.second_covered > 0.99
        True
        """
        if not isinstance(other, Gamut):
            raise ValueError("a gamut can only be compared with a Gamut")
        return Comparison(*self._value.compare(other._value, checked_progress(progress)))

    def save(self, path: Any, format: Optional[str] = None) -> None:
        """Writes a file, completely or not at all.

        The suffix is the format, unless ``format`` names it: kvgamut (which :meth:`open` reads again), ply, obj, stl,
        gltf, x3d, json, icc (a gamut boundary) or html (a page to turn the gamut).

        Raises OSError if the file cannot be written, and ValueError if it is the input.
        """
        name = path_bytes(path)
        suffix = word(format, "format") if format is not None else os.fsdecode(os.path.splitext(name)[1])[1:]
        suffix = suffix.lower()
        if suffix not in _core.formats():
            raise ValueError(f"the format must be one of {', '.join(_core.formats())}, not '{suffix}'")
        _core.save(self._value, name, suffix)

    def __reduce__(self) -> Any:
        return _restored, (_core.saved(self._value), self.name, self.report)

    def __repr__(self) -> str:
        return f"<kvgamut.Gamut {self.name!r} volume {self.volume:.2g}>"

    # --- Notebooks -------------------------------------------------------------------------------------------

    def _repr_png_(self) -> Optional[bytes]:
        from ._render import RenderError, render

        try:
            return render([self])
        except RenderError:  # the numbers are shown without it
            return None

    def _repr_html_(self) -> str:
        from ._render import page

        numbers = f"{escape(self.name)}: volume {self.volume:,.0f} ± {self.uncertainty:,.0f} dE76³"
        return (
            f"<p>{numbers}</p><iframe srcdoc=\"{escape(page([self]))}\" sandbox=\"allow-scripts\" "
            'style="width: 100%; height: 480px; border: 0"></iframe>'
        )


def _restored(content: bytes, name: str, report: Dict[str, Any]) -> Gamut:
    gamut = Gamut.open(content, name=name)
    gamut._report = report
    return gamut
