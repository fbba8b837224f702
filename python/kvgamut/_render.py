# SPDX-License-Identifier: Apache-2.0
"""Pictures and pages of gamuts.

Pictures are drawn by the program kvgamut, as a child that ends with the call. A window toolkit allows one application
object in a process, on the main thread; so a picture that is drawn in this process could not be drawn beside a window
of PyQt, nor on another thread.
"""

from __future__ import annotations

import os
import shutil
import signal
import subprocess
import tempfile
from typing import Any, Dict, Iterable, List, Optional, Sequence, Tuple, Union

from . import _arrays, _core
from ._errors import RenderError
from ._gamut import Gamut, Progress, checked_progress, real, word

Lab = Sequence[float]

_flags = {
    "orthogonal": ("--orthogonal", True),
    "transparent": ("--no-background", True),
    "grid": ("--no-grid", False),
    "axes": ("--no-axes", False),
    "plane": ("--plane", True),
    "primaries": ("--primaries", True),
    "projection": ("--no-projection", False),
    "surface": ("--no-surface", False),
}
_words = ("style", "view", "light_color", "background", "annotate", "caption", "look", "body")
_numbers = ("angle", "ambient", "clip")
_colours = ("camera", "look_at", "light")
_lists = ("mode", "alpha", "color")
# How the environment of a Python process with a window of its own would change the pictures.
_foreign = ("QT_QPA_PLATFORM", "QT_QPA_PLATFORM_PLUGIN_PATH", "QT_PLUGIN_PATH", "QT_DEBUG_PLUGINS", "QT_API")


def program() -> str:
    """The program kvgamut: that of KVGAMUT_PROGRAM, the one beside this module, or the installed one."""
    named = os.environ.get("KVGAMUT_PROGRAM")
    if named:
        return os.path.abspath(named) if os.sep in named else named
    beside = os.path.join(os.path.dirname(os.path.abspath(__file__)), "lib", "kv3dviewer", "bin", "kvgamut")
    found = beside if os.path.exists(beside) else shutil.which("kvgamut")
    if found:
        return os.path.abspath(found)  # it runs in another folder
    raise RenderError("the program kvgamut was not found; install it, or name it in KVGAMUT_PROGRAM")


def _gamuts(gamuts: Union[Gamut, Iterable[Gamut]]) -> List[Gamut]:
    try:
        found = [gamuts] if isinstance(gamuts, Gamut) else list(gamuts)
    except TypeError:
        found = [None]
    if not found or not all(isinstance(gamut, Gamut) for gamut in found):
        raise ValueError("gamuts must be a Gamut, or a list of at least one")
    return found


def _size(size: Any) -> str:
    try:
        width, height = size
        if width != int(width) or height != int(height):
            raise ValueError
    except (TypeError, ValueError, OverflowError):
        raise ValueError("size must be two whole numbers, width and height in pixels") from None
    return f"{int(width)}x{int(height)}"


def _listed(name: str, value: Any) -> str:
    values = [value] if isinstance(value, (str, int, float)) else list(value)
    return ",".join(item if isinstance(item, str) else repr(real(item, name)) for item in values)


def _arguments(options: Dict[str, Any]) -> List[str]:
    """The options of the program for those of render()."""
    arguments: List[str] = []
    for name, value in options.items():
        option = "--" + name.replace("_", "-")
        if name in _flags:
            flag, meaning = _flags[name]
            if bool(value) == meaning:
                arguments.append(flag)
        elif value is None:
            continue
        elif name in _words:
            arguments.append(f"{option}={word(value, name)}")
        elif name in _numbers:
            arguments.append(f"{option}={real(value, name)!r}")
        elif name in _colours:
            triple, is_single = _arrays.points(value)
            if not is_single:
                raise ValueError(f"{name} must be three numbers: L*, a*, b*")
            arguments.append(f"{option}={','.join(repr(float(x)) for x in triple[0])}")
        elif name in _lists:
            arguments.append(f"{option}={_listed(name, value)}")
        else:
            raise TypeError(f"there is no argument {name!r}")
    if any("\0" in argument for argument in arguments):
        raise ValueError("a word contains a NUL character")
    return arguments


def _file_name(gamut: Gamut) -> str:
    """The last part of the gamut's name, which is its title in the picture, as the name of a file."""
    name = os.fsencode(gamut.name).rstrip(b"/").split(b"/")[-1].replace(b"\0", b"")[:200]
    return os.fsdecode(name) if name not in (b"", b".", b"..") else "gamut"


def _write(folder: str, number: str, gamut: Gamut) -> str:
    """Writes the gamut into a folder of its own. Returns the name relative to ``folder``."""
    os.mkdir(os.path.join(folder, number))
    name = os.path.join(number, _file_name(gamut))
    with open(os.path.join(folder, name), "wb") as file:
        file.write(_core.saved(gamut._value))
    return name


def _run(command: List[str], folder: str) -> bytes:
    environment = {name: value for name, value in os.environ.items() if name not in _foreign}
    try:
        child = subprocess.Popen(
            command,
            cwd=folder,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            start_new_session=True,  # Ctrl+C reaches this process only, which then ends the child
        )
    except OSError as error:
        raise RenderError(f"the program {command[0]!r} cannot be started: {error.strerror}") from None
    try:
        picture, messages = child.communicate()
    except BaseException:  # Ctrl+C
        os.killpg(child.pid, signal.SIGKILL)
        child.wait()
        raise
    if child.returncode == 0:
        return picture
    lines = messages.decode("utf-8", "replace").strip().splitlines() or [f"exit code {child.returncode}"]
    sentence = lines[-1].removeprefix("kvgamut: ").removesuffix(" (see kvgamut --help)")
    if child.returncode == 2:
        raise ValueError(sentence)
    raise RenderError(sentence)


def render(
    gamuts: Union[Gamut, Iterable[Gamut]],
    size: Tuple[int, int] = (800, 600),
    style: Optional[str] = None,
    *,
    loss: Optional[Gamut] = None,
    points: Any = None,
    format: str = "png",
    **options: Any,
) -> bytes:
    """Draws gamuts, and returns the file. Needs no display.

    Args:
        gamuts: one Gamut or several; the first is opaque.
        size: width and height in pixels, 16 to 8192 each.
        style: ``"screen"`` (the default), ``"paper"``, ``"slide"`` or ``"dark"``.
        loss: colours the surfaces by the distance by which they lie outside this gamut.
        points: Lab colours (n, 3) that are shown, too.
        format: ``"png"``, ``"jpg"``, ``"tif"``, ``"webp"``, ``"svg"`` or ``"pdf"``.
        options: as those of ``kvgamut render``: view, camera, look_at, light (Lab), orthogonal, transparent, grid,
            axes, plane, primaries, projection, surface (bool), mode, alpha, color (one value, or one for each gamut),
            angle, ambient, clip (numbers), light_color, background, annotate, caption, look, body (words).

    Raises:
        ValueError: an argument is wrong.
        RenderError: nothing can be drawn.
    """
    found = _gamuts(gamuts)
    chosen = {"style": style, **options}
    arguments = ["--size", _size(size), *_arguments(chosen), "--format", word(format, "format")]
    rows = None if points is None else _arrays.lab_rows(points)
    with tempfile.TemporaryDirectory(prefix="kvgamut-") as folder:
        names = [_write(folder, str(i), gamut) for i, gamut in enumerate(found)]
        if loss is not None:
            arguments += ["--loss", _write(folder, "loss", _gamuts(loss)[0])]
        if rows is not None:
            with open(os.path.join(folder, "points.csv"), "w", encoding="ascii") as file:
                file.write("Lab_L,Lab_a,Lab_b\n")
                file.writelines(f"{L:.9g},{a:.9g},{b:.9g}\n" for L, a, b in rows)
            arguments += ["--points", "points.csv"]
        return _run([program(), "render", *names, *arguments, "-o", "-"], folder)


def page(gamuts: Union[Gamut, Iterable[Gamut]], *, progress: Progress = None) -> str:
    """An HTML page that shows gamuts in 3D, to be turned, with their numbers. It loads nothing from a network.

    >>> import kvgamut
    >>> page(kvgamut.Gamut.open("sRGB", grid=9)).startswith("<!DOCTYPE html>")
    True
    """
    values = [gamut._value for gamut in _gamuts(gamuts)]
    return _core.page(values, checked_progress(progress)).decode("utf-8")
