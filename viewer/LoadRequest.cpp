// SPDX-License-Identifier: Apache-2.0
#include <viewer/LoadRequest.h>

namespace {

/// A key of @p params that is not among @p known; null if there is none.
QString unknownKey(const QVariantHash& params, const QStringList& known)
{
    QStringList keys = params.keys();
    keys.sort(); // the same key is named each time
    for (const QString& key : std::as_const(keys)) {
        if (!known.contains(key))
            return key;
    }
    return {};
}

QString unknownKeyOf(const QVariantHash& params)
{
    const QString settings = QStringLiteral("AdditionnalParam");
    QString key = unknownKey(params, {QStringLiteral("ProfilePath"), QStringLiteral("ProfileData"),
                                      QStringLiteral("Profile"), settings});
    if (!key.isNull())
        return key;
    return unknownKey(params.value(settings).toHash(),
                      {QStringLiteral("Link_ICCRendering"), QStringLiteral("Link_blackPointCompensation"),
                       QStringLiteral("Link_GridPointNumber"), QStringLiteral("Link_adaptation")});
}

/// The key of the adaptation is newer than the others. It is left out for the default, which hosts compare.
QVariantHash paramsOf(const KVGamut::Settings& settings)
{
    QVariantHash params{
        {QStringLiteral("Link_ICCRendering"), static_cast<int>(settings.intent)},
        {QStringLiteral("Link_blackPointCompensation"), settings.blackPointCompensation},
        {QStringLiteral("Link_GridPointNumber"), settings.gridPoints},
    };
    if (settings.adaptation != KVGamut::Adaptation::Full)
        params.insert(QStringLiteral("Link_adaptation"), static_cast<int>(settings.adaptation));
    return params;
}

} // namespace

KVLoadRequest KVLoadRequest::fromFile(const QString& path, const KVGamut::Settings& settings)
{
    KVLoadRequest request;
    request.profilePath = path;
    request.settings = settings;
    return request;
}

KVLoadRequest KVLoadRequest::fromData(const QByteArray& bytes, const KVGamut::Settings& settings)
{
    KVLoadRequest request;
    request.profileData = bytes;
    request.settings = settings;
    return request;
}

KVLoadRequest KVLoadRequest::fromProfile(const KVProfilePtr& profile, const KVGamut::Settings& settings)
{
    KVLoadRequest request;
    request.profile = profile;
    request.settings = settings;
    return request;
}

KVLoadRequest KVLoadRequest::fromSaved(const QVariantHash& saved)
{
    KVLoadRequest request;
    request.savedGamut = saved;
    return request;
}

std::optional<KVLoadRequest> KVLoadRequest::fromParams(const QVariantHash& params, KVProblem* problem)
{
    if (params.contains(QStringLiteral("Gamut")))
        return fromSaved(params);
    const QString unknown = unknownKeyOf(params);
    if (!unknown.isNull()) {
        if (problem)
            *problem = KVProblem{KVProblemCode::UnknownSetting, {unknown}, {}};
        return {};
    }
    const GamutRequest read = kvGamutRequest(params);
    KVLoadRequest request;
    request.profilePath = read.profilePath;
    request.profileData = read.profileData;
    request.profile = read.profile;
    request.settings = read.settings;
    return request;
}

GamutRequest kvGamutRequest(const KVLoadRequest& request)
{
    GamutRequest result;
    if (!request.savedGamut.isEmpty())
        result.saved = request.savedGamut;
    result.profilePath = request.profilePath;
    result.profileData = request.profileData;
    result.profile = request.profile;
    result.settings = request.settings;
    return result;
}

QHash<QString, QVariant> kvParamsOf(const KVLoadRequest& request)
{
    if (!request.savedGamut.isEmpty())
        return request.savedGamut;
    QHash<QString, QVariant> params;
    if (!request.profilePath.isEmpty())
        params.insert(QStringLiteral("ProfilePath"), request.profilePath);
    if (!request.profileData.isEmpty())
        params.insert(QStringLiteral("ProfileData"), request.profileData);
    if (request.profile)
        params.insert(QStringLiteral("Profile"), QVariant::fromValue(request.profile));
    params.insert(QStringLiteral("AdditionnalParam"), paramsOf(request.settings));
    return params;
}
