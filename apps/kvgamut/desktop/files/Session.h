// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutEntry.h"
#include "desktop/models/SectionKind.h"
#include "model/problems/Result.h"

#include <KVGamutView.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QStringList>

/// Everything that a window shows, as a value: the content of a session file.
struct Session
{
    struct Gamut
    {
        QString input; ///< a built-in name, or a file by its absolute path
        KVGamut::Settings settings;
        KVGamutLook look;
        bool automaticOpacity = false; ///< see GamutEntry

        bool operator==(const Gamut&) const = default;
    };

    QList<Gamut> gamuts;
    int active = 0;
    KVViewState view;             ///< without looks and settings, which `gamuts` has
    float lightness = 50.0f;      ///< L* of the section, whether or not it cuts
    std::optional<float> section; ///< L* of the section that is shown without cutting
    std::optional<float> hueLeaf; ///< hue angle of the section that is shown without cutting
    SectionKind sectionKind = SectionKind::Lightness; ///< what the section panel draws
    float sectionHue = 0.0f;                          ///< hue angle of the section panel, degrees
    bool sectionFixed = false;                        ///< whether all sections have the same scale
    bool sectionColors = false;                       ///< whether the section panel is filled with colours
    QStringList points;     ///< files of points and pictures, by their absolute paths
    float tolerance = 1.0f; ///< see PointLayer::tolerance()

    /// Indented JSON. Files in @p folder or below are named relative to it, so that the folder can be moved
    /// together with the session.
    QByteArray toJson(const QDir& folder) const;
    /// Reads what toJson() wrote to a file in @p folder. Missing values have their defaults; a value of the
    /// wrong type or out of range is a problem. Colours become opaque, with 8 bits for each channel. The
    /// result of reading is written and read again without change.
    static Result<Session> fromJson(const QByteArray& json, const QDir& folder);

    bool operator==(const Session&) const = default;
};
