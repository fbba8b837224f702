# SPDX-License-Identifier: Apache-2.0
"""What callers pass as arrays, checked and made into what the compiled part takes."""

from __future__ import annotations

from typing import Any, Tuple

import numpy as np


def numbers(values: Any, what: str) -> np.ndarray:
    """An array of real numbers; ValueError for everything else."""
    try:
        array = np.asarray(values)
    except (ValueError, TypeError):
        raise ValueError(f"{what} must be an array of numbers, with rows of equal length") from None
    if isinstance(values, np.ma.MaskedArray) and np.ma.is_masked(values):
        raise ValueError(f"{what} have masked values; remove these rows first")
    if array.dtype.kind not in "fiu":
        raise ValueError(f"{what} must be real numbers, not {array.dtype}")
    return array


def single(array: np.ndarray) -> np.ndarray:
    """The array in single precision and contiguous. Too large values become infinite, which is refused later."""
    with np.errstate(over="ignore", invalid="ignore"):
        return np.ascontiguousarray(array, dtype=np.float32)


def lab_rows(values: Any, what: str = "the points") -> np.ndarray:
    """An array of n x 3 Lab values; an empty list counts as 0 x 3."""
    array = numbers(values, what)
    if array.shape == (0,):
        array = array.reshape(0, 3)
    if array.ndim != 2 or array.shape[1] != 3:
        raise ValueError(f"{what} must have the shape (n, 3): L*, a*, b*; this is {array.shape}")
    return single(array)


def points(values: Any) -> Tuple[np.ndarray, bool]:
    """An array of n x 3 Lab values, and whether it was a single triple."""
    array = numbers(values, "the points")
    if array.shape == (3,):
        return single(array.reshape(1, 3)), True
    return lab_rows(array), False


def device_rows(values: Any, rows: int) -> np.ndarray:
    """An array of n x 3 or n x 4 device values, 0..1."""
    array = numbers(values, "the device values")
    if array.ndim != 2 or array.shape[1] not in (3, 4) or array.shape[0] != rows:
        raise ValueError(
            f"the device values must have the shape ({rows}, 3) for RGB or ({rows}, 4) for CMYK; this is {array.shape}"
        )
    if not bool(np.all((array >= 0) & (array <= 1))):  # also false for NaN
        raise ValueError("the device values must be from 0 to 1")
    return single(array)


def triangle_rows(values: Any) -> np.ndarray:
    """An array of m x 3 indices of vertices."""
    array = numbers(values, "the triangles")
    if array.dtype.kind == "f" or array.ndim != 2 or array.shape[1] != 3:
        raise ValueError("the triangles must be whole numbers of the shape (m, 3)")
    limit = np.iinfo(np.int32)
    if array.size and (int(array.min()) < limit.min or int(array.max()) > limit.max):
        raise ValueError("the triangles have a number that is no index of a vertex")
    return np.ascontiguousarray(array, dtype=np.int32)
