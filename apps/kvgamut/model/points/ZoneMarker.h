// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"

#include <KVGamut3DViewer.h>

/// How a point is drawn as a marker, by its side of a gamut's surface. The three shapes differ without
/// colours, too.
struct ZoneMarker
{
    KVGamut3DViewer::MarkerType type = KVGamut3DViewer::Sphere;
    float scale = 1.0f; ///< of the size: cubes and stars look smaller than spheres

    static constexpr float ambient = 0.5f; ///< low enough for shading to show the shape

    static constexpr ZoneMarker of(Side side)
    {
        switch (side) {
        case Side::Inside:
            return {KVGamut3DViewer::Sphere, 1.0f};
        case Side::Edge:
            return {KVGamut3DViewer::BracketedCube, 1.6f};
        case Side::Outside:
            return {KVGamut3DViewer::Star, 1.8f};
        }
        return {};
    }
};
