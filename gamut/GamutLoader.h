// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/GamutMeshes.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <tl/expected.hpp>

#include <optional>

/// What to show: a gamut that is computed already, a saved one, or the first of path, data and profile
/// that can be opened.
struct GamutRequest
{
    std::optional<KVGamut::GamutObject> computed;
    std::optional<QHash<QString, QVariant>> saved; ///< as GamutObject::serialize() gave it
    QString profilePath;
    QByteArray profileData;
    KVProfilePtr profile;
    KVGamut::Settings settings; ///< used with a profile only
    QList<QRgb> vertexColors;   ///< as for kvGamutMeshes()
    SurfaceValues values;       ///< as for kvGamutMeshes()
    GamutStyles styles;         ///< of the surface
};

/// The request for a parameter hash. Keys are case-sensitive, unknown ones are ignored:
///  - "Gamut": the hash is a saved gamut as a whole, and no profile key is read;
///  - "ProfilePath": QString, path of an ICC profile;
///  - "ProfileData": QByteArray, the bytes of one;
///  - "Profile": KVProfilePtr, one already open;
///  - "AdditionnalParam": QHash<QString, QVariant> with "Link_GridPointNumber" (int, default -1),
///    "Link_ICCRendering" (int, default 3: absolute colorimetric), "Link_blackPointCompensation" (bool,
///    default false) and "Link_adaptation" (int, a KVGamut::Adaptation, default 0). A value of another type
///    is converted.
GamutRequest kvGamutRequest(const QHash<QString, QVariant>& params);

/// A gamut with its drawn geometry, as one value that crosses threads.
struct LoadedGamut
{
    KVGamut::GamutObject gamut;
    GamutMeshSet meshes;
};

/// @p request with its profile open. A request for a computed or saved gamut is returned unchanged.
/// On failure, the problem of the first source that was given. Runs on any thread.
/// @param protocol if it is cancelled, the call ends with Cancelled within milliseconds, even if a file does
/// not
///   answer. May be null: then the call waits for the file.
tl::expected<GamutRequest, KVProblem> kvOpenRequest(GamutRequest request,
                                                    const KVCompletionProtocolPtr& protocol = {});

/// The gamut of a request from kvOpenRequest(). Runs on any thread.
/// @param protocol progress and cancellation; may point to a null handle
tl::expected<LoadedGamut, KVProblem> kvLoadGamut(GamutRequest request, KVCompletionProtocolPtr* protocol);
