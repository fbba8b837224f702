# SPDX-License-Identifier: Apache-2.0
"""Gamuts of ICC profiles and measured colours in CIE L*a*b* (D50): volumes, comparisons, sections, pictures.

>>> import kvgamut
>>> p3, srgb = (kvgamut.Gamut.open(name, grid=9) for name in ("DisplayP3", "sRGB"))
>>> p3.volume > srgb.volume
True
"""

from typing import List

from . import _core
from ._errors import ProfileError, RenderError
from ._gamut import Comparison, Gamut, Rings
from ._render import page, render

__version__: str = _core.__version__
__all__ = [
    "Comparison",
    "Gamut",
    "ProfileError",
    "RenderError",
    "Rings",
    "page",
    "reference_bodies",
    "render",
    "rgb_spaces",
    "whites",
]


def rgb_spaces() -> List[str]:
    """The RGB spaces that :meth:`Gamut.open` knows by name.

    >>> "sRGB" in rgb_spaces()
    True
    """
    return _core.rgb_spaces()


def reference_bodies() -> List[str]:
    """The reference bodies that :meth:`Gamut.open` knows by name: the optimal colours, and others."""
    return _core.reference_bodies()


def whites() -> List[str]:
    """The white points to which measured values can refer."""
    return _core.whites()
