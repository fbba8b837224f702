// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QColorSpace>

#include <utility>
#include <vector>

/// What the examples show: a name for each gamut, and what KVGamut3DViewer::load() needs to find it.
using Profiles = std::vector<std::pair<QString, QHash<QString, QVariant>>>;

/// The named profile files; when there are none, two profiles that Qt can write itself.
inline Profiles profilesToShow(const QStringList& files)
{
    Profiles profiles;
    for (const QString& file : files)
        profiles.push_back({QFileInfo(file).fileName(), {{QStringLiteral("ProfilePath"), file}}});
    if (profiles.empty()) {
        // newer versions of Qt write a white of their own into these profiles
        const QHash<QString, QVariant> relative{{QStringLiteral("Link_ICCRendering"), 1}};
        const auto profileData = [&relative](QColorSpace::NamedColorSpace space) {
            return QHash<QString, QVariant>{{QStringLiteral("ProfileData"), QColorSpace(space).iccProfile()},
                                            {QStringLiteral("AdditionnalParam"), relative}};
        };
        profiles.push_back({QStringLiteral("sRGB"), profileData(QColorSpace::SRgb)});
        profiles.push_back({QStringLiteral("Display P3"), profileData(QColorSpace::DisplayP3)});
    }
    return profiles;
}
