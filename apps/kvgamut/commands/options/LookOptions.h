// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

/// How gamuts are shown: the options for camera, surfaces and surroundings. They change the defaults of
/// KVViewState and KVGamutLook.
struct LookOptions
{
    QSize size{1024, 768};

    KVViewState state;                   ///< the view; viewState() adds the camera's position
    QString view;                        ///< the word of a named view; empty: the oblique one
    std::optional<QVector3D> camera;     ///< eye, L*, a*, b*
    QVector3D lookAt{50.0f, 0.0f, 0.0f}; ///< what the eye looks at, L*, a*, b*
    std::optional<KVCamera> wholeCamera; ///< instead of camera and lookAt
    std::optional<float> angle;          ///< vertical field of view; otherwise that of the camera

    KVGamutLook look; ///< what all gamuts have in common
    /// The mode of each gamut in order; the last mode applies to all further gamuts.
    QList<KVGamut3DViewer::DisplayMode> modes;
    QList<float> opacities; ///< of each gamut in order; for the others see lookOf()
    QList<QColor> colors;   ///< of each gamut in order; the others keep their own colours

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    /// Whether a camera was given, with its position.
    bool hasCamera() const { return camera || wholeCamera; }

    /// Throws CLI::ValidationError if options exclude each other. Call it after all options are parsed.
    void check() const;

    /// Camera and surroundings: everything except the looks of gamuts.
    KVViewState viewState() const;
    /// Applies viewState() and the preset camera to @p target.
    void applyTo(KVGamutView& target) const;

    /// The look of the gamut at @p position of the command line. Without an explicit opacity the first gamut
    /// that is shown (@p isFirst) is opaque and the others are translucent.
    KVGamutLook lookOf(qsizetype position, bool isFirst) const;

private:
    /// Whether the view is one of the viewer's own: top or bottom.
    bool isPreset() const { return view == QLatin1String("top") || view == QLatin1String("bottom"); }
    void declareCamera(CLI::App& parser);
    void declareSurfaces(CLI::App& parser);
    void declareSurroundings(CLI::App& parser);
    void takeCamera(const std::string& word);
};
