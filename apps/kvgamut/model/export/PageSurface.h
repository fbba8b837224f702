// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

#include <array>

/// The surface and the outline of a gamut in the form that the page stores: positions as 16-bit steps between
/// the bounds of the surface, colours with 8 bits for each channel, little-endian.
struct PageSurface
{
    /// L*, a* and b* of a position are low + steps * step.
    struct Grid
    {
        std::array<double, 3> low{};
        std::array<double, 3> step{};

        /// The largest distance of a position within the bounds from its steps, dE76: below 0.01 up to ranges
        /// of 750 in L*, a* and b*.
        double error() const;
    };

    Grid grid;
    QByteArray positions; ///< three numbers of 16 bits for each vertex
    QByteArray colors;    ///< sRGB of each vertex, as KVColorConversionHelper gives it, rounded
    QByteArray triangles; ///< three vertices each, in numbers of indexBytes
    int indexBytes = 2;   ///< 2, or 4 from 65536 vertices on
    QByteArray outline;   ///< both ends of each piece, as positions

    static PageSurface of(const KVGamut::GamutObject& gamut);

    /// With the bytes in base64.
    QJsonObject json() const;
};
