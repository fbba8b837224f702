// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <CLI/CLI.hpp>

/// The host's own data beside the gamuts: markers, points and lines from files of positions.
struct ItemOptions
{
    QString markers;
    KVGamut3DViewer::MarkerType markerType = KVGamut3DViewer::Sphere;
    float markerSize = 6.0f;    ///< diameter, Lab units
    float markerAmbient = 0.5f; ///< so that light shows their shape
    QString points;
    float pointSize = 4.0f;
    QString line; ///< its positions are joined in order
    float lineWidth = 2.0f;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// Reads the files and adds what they hold to @p viewer; says what could not be read.
    /// @return whether all of it was
    bool addTo(KVGamut3DViewer& viewer) const;
};
