// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <KVGamutView.h>

#include <QtCore/QString>

/// A gamut of the window: its input, settings and look, and the computed result.
struct GamutEntry
{
    QString id;    ///< unique for the life of the window; its name in the viewer
    QString input; ///< as GamutSource::open() takes it
    QString title; ///< short and unique
    KVGamut::Settings settings;
    KVGamutLook look;
    bool automaticOpacity = false; ///< the opacity follows which gamut is inside which
    int key = 0;                   ///< number of its key colour; gamuts that are removed free theirs

    bool loading = true;
    float progress = 0.0f; ///< of the load in progress, 0..1

    quint64 revision = 0; ///< unique for each computed gamut of the window; 0: none yet
    KVGamut::GamutObject gamut;
    KVGamut::Settings computedWith; ///< settings of the computed gamut

    bool hasGamut() const { return revision != 0; }
};
