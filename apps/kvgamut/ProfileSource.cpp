#include "ProfileSource.h"

#include "BuiltInProfiles.h"

ProfileSource ProfileSource::open(const QString& name)
{
    ProfileSource source;
    source.m_name = name;
    source.m_bytes = BuiltInProfiles::profile(name);
    KVProfile* profile =
        source.m_bytes.isEmpty()
            ? KVProfileCreateWithPath(name.toUtf8().constData())
            : KVProfileCreateWithData(source.m_bytes.constData(), static_cast<int>(source.m_bytes.size()));
    source.m_profile = KVProfilePtr(profile, KVProfileRelease);
    if (profile)
        return source;

    source.m_problem = KVProfileError();
    if (!source.m_problem.contains(name))
        source.m_problem = QStringLiteral("'%1': %2").arg(name, source.m_problem);
    return source;
}

QHash<QString, QVariant> ProfileSource::loadParams(const ProfileOptions& options) const
{
    const QHash<QString, QVariant> how{
        {QStringLiteral("Link_ICCRendering"), static_cast<int>(options.intent)},
        {QStringLiteral("Link_blackPointCompensation"), options.blackPointCompensation},
        {QStringLiteral("Link_GridPointNumber"), options.gridPoints},
    };
    QHash<QString, QVariant> params{{QStringLiteral("AdditionnalParam"), how}};
    if (m_bytes.isEmpty()) // the opened file, not its path: what was looked at is what is drawn
        params.insert(QStringLiteral("Profile"), QVariant::fromValue(m_profile));
    else
        params.insert(QStringLiteral("ProfileData"), m_bytes);
    return params;
}

QString ProfileSource::loadProblem(const ProfileOptions& options) const
{
    constexpr bool withDecoration = false;
    constexpr float anyEdge = 1000.0f;
    KVGamut::GamutObject gamut;
    gamut.init(m_profile, options.intent, options.blackPointCompensation, withDecoration, anyEdge,
               options.gridPoints, 0, nullptr);
    const QString reason = gamut.reason();
    return QStringLiteral("'%1': %2")
        .arg(m_name, reason.isEmpty() ? QStringLiteral("no gamut could be computed") : reason);
}
