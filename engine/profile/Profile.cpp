// SPDX-License-Identifier: Apache-2.0
#include "Profile.h"

#include "CmsContext.h"
#include "IccTables.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <memory>

namespace {

constexpr qint64 largestProfile = qint64(256) << 20;

QString& lastError()
{
    static thread_local QString error;
    return error;
}

KVProfile* refuse(const QString& reason)
{
    lastError() = reason;
    return nullptr;
}

KVProfile* open(QByteArray bytes)
{
    const QString problem = velmora::iccTableProblem(bytes);
    if (!problem.isEmpty())
        return refuse(problem);
    const velmora::CmsContext context;
    const velmora::CmsProfile opened(cmsOpenProfileFromMemTHR(context.get(), bytes.constData(),
                                                              static_cast<cmsUInt32Number>(bytes.size())));
    if (!opened)
        return refuse(context.error().isEmpty()
                          ? QStringLiteral("this is no ICC profile")
                          : QStringLiteral("this is no usable ICC profile: %1").arg(context.error()));
    lastError().clear();
    return new KVProfile{std::move(bytes)};
}

} // namespace

KVProfile* KVProfileCreateWithPath(const char* path)
{
    if (!path || !*path)
        return refuse(QStringLiteral("no file was named"));
    const QString name = QString::fromUtf8(path);
    // Anything but a regular file may never come to its end.
    const QFileInfo info(name);
    if (!info.exists())
        return refuse(QStringLiteral("there is no file '%1'").arg(name));
    if (!info.isFile())
        return refuse(QStringLiteral("'%1' is not a file").arg(name));
    if (info.size() > largestProfile)
        return refuse(QStringLiteral("'%1' is too large for a profile").arg(name));
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(QStringLiteral("'%1' cannot be read: %2").arg(name, file.errorString()));
    QByteArray bytes = file.read(largestProfile);
    if (file.error() != QFileDevice::NoError)
        return refuse(QStringLiteral("'%1' cannot be read: %2").arg(name, file.errorString()));
    KVProfile* profile = open(std::move(bytes));
    if (!profile)
        lastError() = QStringLiteral("'%1': %2").arg(name, lastError());
    return profile;
}

KVProfile* KVProfileCreateWithData(const void* data, int size)
{
    if (!data || size <= 0)
        return refuse(QStringLiteral("the profile has no bytes"));
    if (size > largestProfile)
        return refuse(QStringLiteral("too large for a profile"));
    return open(QByteArray(static_cast<const char*>(data), size));
}

void KVProfileRelease(KVProfile* profile)
{
    delete profile;
}

QString KVProfileError()
{
    return lastError();
}

std::optional<KVProblem> KVProfileProblem()
{
    if (lastError().isEmpty())
        return {};
    return KVProblem{KVProblemCode::UnusableProfile, {lastError()}, {}};
}
