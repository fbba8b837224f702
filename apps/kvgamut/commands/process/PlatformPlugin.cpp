// SPDX-License-Identifier: Apache-2.0
#include "PlatformPlugin.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>

#include <algorithm>

namespace {

/// Where Qt looks for them.
QStringList folders()
{
    QStringList list;
    const QString own = qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH");
    if (!own.isEmpty())
        list.append(own);
    const QStringList paths = QCoreApplication::libraryPaths();
    for (const QString& path : paths)
        list.append(path + QStringLiteral("/platforms"));
    return list;
}

bool loads(const QString& file, const QString& platform)
{
    QPluginLoader loader(file);
    const QJsonObject description = loader.metaData().value(QLatin1String("MetaData")).toObject();
    return description.value(QLatin1String("Keys")).toArray().contains(platform) && loader.load();
}

} // namespace

bool PlatformPlugin::isUsable(const QString& platform)
{
    const QStringList all = folders();
    return std::any_of(all.cbegin(), all.cend(), [&platform](const QString& folder) {
        const QStringList files = QDir(folder).entryList({QStringLiteral("*.so")}, QDir::Files);
        return std::any_of(files.cbegin(), files.cend(),
                           [&](const QString& file) { return loads(folder + u'/' + file, platform); });
    });
}
