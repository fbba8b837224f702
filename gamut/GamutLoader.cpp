// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>

namespace {

// What the surface of a shown gamut is computed with.
constexpr bool withDecoration = true; // primaries and outline are drawn too
constexpr float maxEdge = 40.0f;      // longer edges, in dE76, are refined through the profile
constexpr int refinements = 2;        // at most so often

KVProfilePtr wrapped(KVProfile* profile)
{
    return KVProfilePtr(profile, KVProfileRelease);
}

KVProfilePtr openProfile(const QHash<QString, QVariant>& params)
{
    KVProfilePtr profile;
    const QString path = params.value(QStringLiteral("ProfilePath")).toString();
    if (!path.isEmpty())
        profile = wrapped(KVProfileCreateWithPath(path.toUtf8().constData()));
    if (!profile) {
        const QByteArray data = params.value(QStringLiteral("ProfileData")).toByteArray();
        profile = wrapped(KVProfileCreateWithData(data.constData(), static_cast<int>(data.size())));
    }
    if (!profile)
        profile = params.value(QStringLiteral("Profile")).value<KVProfilePtr>();
    return profile;
}

bool compute(KVGamut::GamutObject& gamut, const KVProfilePtr& profile, const QHash<QString, QVariant>& params,
             KVCompletionProtocolPtr* protocol)
{
    const auto settings = params.value(QStringLiteral("AdditionnalParam")).toHash();
    const int gridPoints = settings.value(QStringLiteral("Link_GridPointNumber"), -1).toInt();
    const int intent = settings.value(QStringLiteral("Link_ICCRendering"), 3).toInt();
    const bool blackPoint = settings.value(QStringLiteral("Link_blackPointCompensation"), false).toBool();
    return gamut.init(profile, static_cast<KVVMRenderType>(intent), blackPoint, withDecoration, maxEdge,
                      gridPoints, refinements, protocol);
}

} // namespace

LoadedGamut kvLoadGamut(const QHash<QString, QVariant>& params, KVCompletionProtocolPtr* protocol)
{
    LoadedGamut loaded;
    if (params.contains(QStringLiteral("Gamut"))) {
        loaded.profileFound = true;
        loaded.gamut.deserialize(params);
        loaded.ok = loaded.gamut.referenceLab().size() == 3;
    } else {
        const KVProfilePtr profile = openProfile(params);
        if (!profile)
            return loaded;
        loaded.profileFound = true;
        loaded.ok = compute(loaded.gamut, profile, params, protocol);
    }
    if (!loaded.ok)
        return loaded;

    const KVCompletionProtocolPtr handle = protocol ? *protocol : KVCompletionProtocolPtr();
    loaded.meshes = kvGamutMeshes(loaded.gamut, handle);
    if (handle) {
        loaded.ok = !handle->isCancelled();
        handle->setProgress(1.0f);
    }
    return loaded;
}
