// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/GamutSettings.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QString>
#include <QtGui/QColor>

/// How a gamut is shown.
struct GamutLook
{
    bool visible = true;
    KVGamut3DViewer::DisplayMode mode = KVGamut3DViewer::Smooth;
    float opacity = 1.0f;  ///< of the surface, 0..1
    QColor color;          ///< invalid: its own colours
    float ambient = 0.55f; ///< light from everywhere, 0..1; 1 shows pure colours
    bool surface = true;
    bool projection = true;
    bool primaries = false;

    bool operator==(const GamutLook&) const = default;
};

/// A gamut of the window: what was asked for, how it is shown, and what was computed.
struct GamutEntry
{
    QString id;    ///< unique for the life of the window; its name in the viewer
    QString input; ///< as GamutSource::open() takes it
    QString title; ///< short, and no two alike
    GamutSettings settings;
    GamutLook look;

    bool loading = true;
    float progress = 0.0f; ///< of the load in progress, 0..1

    quint64 revision = 0; ///< another for every computed gamut of the window; 0: none yet
    KVGamut::GamutObject gamut;
    GamutSettings computedWith; ///< the settings of that gamut

    bool hasGamut() const { return revision != 0; }
};
