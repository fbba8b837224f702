// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>

namespace {

KVProfilePtr wrapped(KVProfile* profile)
{
    return KVProfilePtr(profile, KVProfileRelease);
}

tl::unexpected<KVProblem> failure(const std::optional<KVProblem>& problem, KVProblemCode otherwise)
{
    return tl::unexpected(problem.value_or(KVProblem{otherwise, {}, {}}));
}

KVGamut::Settings settingsOf(const QHash<QString, QVariant>& params)
{
    KVGamut::Settings settings;
    const auto values = params.value(QStringLiteral("AdditionnalParam")).toHash();
    settings.gridPoints = values.value(QStringLiteral("Link_GridPointNumber"), settings.gridPoints).toInt();
    settings.intent = static_cast<KVVMRenderType>(
        values.value(QStringLiteral("Link_ICCRendering"), static_cast<int>(settings.intent)).toInt());
    settings.blackPointCompensation =
        values.value(QStringLiteral("Link_blackPointCompensation"), settings.blackPointCompensation).toBool();
    return settings;
}

using GamutResult = tl::expected<KVGamut::GamutObject, KVProblem>;

GamutResult restored(const QHash<QString, QVariant>& saved)
{
    KVGamut::GamutObject gamut;
    gamut.deserialize(saved);
    if (gamut.referenceLab().size() != 3)
        return failure(gamut.problem(), KVProblemCode::NotASavedGamut);
    return gamut;
}

GamutResult checked(const KVGamut::GamutObject& gamut)
{
    if (gamut.mesh().isEmpty())
        return failure(gamut.problem(), KVProblemCode::NoFaces);
    return gamut;
}

GamutResult computed(const KVProfilePtr& profile, const KVGamut::Settings& settings,
                     KVCompletionProtocolPtr* protocol)
{
    KVGamut::GamutObject gamut;
    if (!gamut.init(profile, settings, protocol))
        return failure(gamut.problem(), KVProblemCode::NoVolume);
    return gamut;
}

GamutResult gamutOf(GamutRequest request, KVCompletionProtocolPtr* protocol)
{
    if (request.computed)
        return checked(*request.computed);
    if (request.saved)
        return restored(*request.saved);
    return computed(request.profile, request.settings, protocol);
}

} // namespace

GamutRequest kvGamutRequest(const QHash<QString, QVariant>& params)
{
    GamutRequest request;
    if (params.contains(QStringLiteral("Gamut"))) {
        request.saved = params;
        return request;
    }
    request.profilePath = params.value(QStringLiteral("ProfilePath")).toString();
    request.profileData = params.value(QStringLiteral("ProfileData")).toByteArray();
    request.profile = params.value(QStringLiteral("Profile")).value<KVProfilePtr>();
    request.settings = settingsOf(params);
    return request;
}

tl::expected<GamutRequest, KVProblem> kvOpenRequest(GamutRequest request)
{
    if (request.computed || request.saved)
        return request;
    std::optional<KVProblem> problem;
    KVProfilePtr opened;
    if (!request.profilePath.isEmpty()) {
        opened = wrapped(KVProfileCreateWithPath(request.profilePath.toUtf8().constData()));
        if (!opened)
            problem = KVProfileProblem();
    }
    if (!opened) { // called even without data: the engine decides whether an empty profile is valid
        const QByteArray& data = request.profileData;
        opened = wrapped(KVProfileCreateWithData(data.constData(), static_cast<int>(data.size())));
        if (!opened && !problem && !data.isEmpty())
            problem = KVProfileProblem();
    }
    if (opened)
        request.profile = opened;
    if (!request.profile)
        return failure(problem, KVProblemCode::NoSource);
    request.profilePath.clear();
    request.profileData.clear();
    return request;
}

tl::expected<LoadedGamut, KVProblem> kvLoadGamut(GamutRequest request, KVCompletionProtocolPtr* protocol)
{
    const KVCompletionProtocolPtr handle = protocol ? *protocol : KVCompletionProtocolPtr();
    const auto cancelled = [&handle] { return handle && handle->isCancelled(); };
    const auto asCancelled = [] { return tl::unexpected(KVProblem{KVProblemCode::Cancelled, {}, {}}); };

    auto gamut = gamutOf(std::move(request), protocol);
    if (!gamut)
        return cancelled() ? asCancelled() : tl::unexpected(gamut.error());
    LoadedGamut loaded{*gamut, kvGamutMeshes(*gamut, handle)};
    if (cancelled())
        return asCancelled();
    if (handle)
        handle->setProgress(1.0f);
    return loaded;
}
