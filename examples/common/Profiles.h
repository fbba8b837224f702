// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtGui/QColorSpace>

#include <utility>
#include <vector>

/// The gamuts that the examples show: an id for each, and its source.
using Profiles = std::vector<std::pair<QString, KVLoadRequest>>;

/// The named profile files; without any, two profiles that Qt can write itself.
inline Profiles profilesToShow(const QStringList& files)
{
    Profiles profiles;
    for (const QString& file : files)
        profiles.push_back({QFileInfo(file).fileName(), KVLoadRequest::fromFile(file)});
    if (profiles.empty()) {
        // the white of these profiles differs between versions of Qt, so compare relative to it
        KVGamut::Settings settings;
        settings.intent = KVVMRenderRelativeColorimetric;
        const auto request = [&settings](QColorSpace::NamedColorSpace space) {
            return KVLoadRequest::fromData(QColorSpace(space).iccProfile(), settings);
        };
        profiles.push_back({QStringLiteral("sRGB"), request(QColorSpace::SRgb)});
        profiles.push_back({QStringLiteral("Display P3"), request(QColorSpace::DisplayP3)});
    }
    return profiles;
}
