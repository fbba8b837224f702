# SPDX-License-Identifier: Apache-2.0
"""Exceptions of kvgamut."""

from __future__ import annotations

from typing import Tuple


class ProfileError(Exception):
    """An input gives no gamut: a file that cannot be read, a damaged profile, a surface that is not closed...

    Attributes:
        code: what failed, such as ``"FileNotFound"``, ``"NotAProfile"`` or ``"DamagedTag"``. Programs should
            test this, not the sentence.
        subject: the input, as the caller named it; may be empty.
        arguments: what the code is about, such as the tag that is damaged.
    """

    def __init__(self, message: str, code: str = "", subject: str = "", arguments: Tuple[str, ...] = ()):
        super().__init__(message, code, subject, arguments)
        self.code = code
        self.subject = subject
        self.arguments = arguments

    def __str__(self) -> str:
        return str(self.args[0])


class RenderError(RuntimeError):
    """A picture cannot be drawn: the program kvgamut was not found, or it ended with an error."""
