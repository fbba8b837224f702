// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <CLI/CLI.hpp>

#include <optional>

/// How gamuts are shown: camera, surface and surroundings.
struct LookOptions
{
    QSize size{1024, 768};

    std::optional<KVGamut3DViewer::View> view; ///< a preset camera instead of the oblique one
    std::optional<QVector3D> camera;           ///< eye, L*, a*, b*
    QVector3D lookAt{50.0f, 0.0f, 0.0f};       ///< what the eye looks at, L*, a*, b*
    bool orthogonal = false;
    float angle = 30.0f; ///< vertical field of view, degrees

    /// Of each gamut in order; the last one for all that follow.
    QList<KVGamut3DViewer::DisplayMode> modes{KVGamut3DViewer::Smooth};
    QList<float> alphas;   ///< opacity of each gamut in order; what is missing is chosen
    QList<QColor> colors;  ///< of each gamut in order; what is missing keeps its own colours
    float ambient = 0.55f; ///< low enough that light models the surface, high enough for its colours
    QVector3D light{300.0f, 0.0f, 0.0f}; ///< where it comes from, L*, a*, b*: from above
    QColor lightColor{Qt::white};
    QColor background{Qt::gray};
    bool grid = true;
    bool axes = true;
    bool plane = false;        ///< the coloured floor
    bool surface = true;       ///< of the gamuts; without it their outlines and primaries are left
    bool projection = true;    ///< outlines on the floor
    bool primaries = false;    ///< the colorants' ramps
    std::optional<float> clip; ///< L* above which the gamuts are cut off

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// Refuses values that do not go together; to be called when all were read.
    void check() const;

    /// Sets everything on @p viewer that does not belong to a gamut. @p aspect is the width of the
    /// picture by its height.
    void applyTo(KVGamut3DViewer& viewer) const;

    KVGamut3DViewer::DisplayMode mode(qsizetype position) const;
    /// Opacity of the gamut at @p position of the command line. Where none was given @p first, the
    /// first gamut there is to see, is solid, and the others let it shine through.
    float alpha(qsizetype position, bool first) const;
    /// Colour of the gamut at @p position; invalid: its own colours.
    QColor color(qsizetype position) const;
};
