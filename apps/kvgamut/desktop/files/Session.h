// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutEntry.h"
#include "desktop/view/ViewState.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <optional>

/// Everything that a window shows, as a value: what a session file keeps.
struct Session
{
    struct Gamut
    {
        QString input; ///< a built-in name, or a file by its absolute path
        GamutSettings settings;
        KVGamutLook look;

        bool operator==(const Gamut&) const = default;
    };

    QList<Gamut> gamuts;
    int active = 0;
    ViewState view;
    QStringList points;     ///< files of points and pictures, by their absolute paths
    float tolerance = 1.0f; ///< dE76 to either side of the surface that count as its edge

    /// JSON, for people to read. Files that lie in @p folder or below are named as seen from there:
    /// the folder can move with its session.
    QByteArray toJson(const QDir& folder) const;
    /// Reads what toJson() wrote to a file in @p folder. What is missing takes its default; what is
    /// there must be right.
    /// @param problem what is wrong, for people; set when nothing is returned
    static std::optional<Session> fromJson(const QByteArray& json, const QDir& folder, QString& problem);

    bool operator==(const Session&) const = default;
};
