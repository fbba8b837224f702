// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the section panel draws.
enum class SectionKind
{
    Lightness, ///< the colours of one lightness
    Hue,       ///< those of one hue angle, from the L* axis outwards
    Rings,     ///< gamut rings, see GamutRings
};
