// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/GamutMeshes.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// A gamut with everything that shows it, as one value that crosses threads.
struct LoadedGamut
{
    bool profileFound = false; ///< a profile could be opened, or a saved gamut was given
    bool ok = false;           ///< gamut and meshes are there
    KVGamut::GamutObject gamut;
    GamutMeshSet meshes;
};

/// From the parameter hash to gamut and meshes; runs on any thread and touches no object.
///
/// Keys, case-sensitive; the first source that yields a profile wins:
///  - "Gamut": the hash is a saved gamut as a whole, and no profile key is read;
///  - "ProfilePath": QString, path of an ICC profile;
///  - "ProfileData": QByteArray, the bytes of one;
///  - "Profile": KVProfilePtr, one already open;
///  - "AdditionnalParam": QHash<QString, QVariant> with "Link_GridPointNumber" (int, default -1),
///    "Link_ICCRendering" (int, default 3: absolute colorimetric) and
///    "Link_blackPointCompensation" (bool, default false).
///
/// @param protocol progress and cancellation; points to a null handle when nobody watches
LoadedGamut kvLoadGamut(const QHash<QString, QVariant>& params, KVCompletionProtocolPtr* protocol);
