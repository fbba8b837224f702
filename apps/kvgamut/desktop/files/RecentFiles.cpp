// SPDX-License-Identifier: Apache-2.0
#include "RecentFiles.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSettings>

namespace {

constexpr int maxCount = 9; // each has a shortcut with a digit

/// The program's settings file.
struct Settings : QSettings
{
    Settings()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("kvgamut"),
                    QStringLiteral("kvgamut"))
    {
    }
};

QString key()
{
    return QStringLiteral("recentFiles");
}

} // namespace

QStringList RecentFiles::list()
{
    QStringList files = Settings().value(key()).toStringList();
    files.removeIf([](const QString& file) { return !QFileInfo::exists(file); });
    return files;
}

void RecentFiles::add(const QString& file)
{
    QStringList files = list();
    files.removeAll(file);
    files.prepend(file);
    Settings().setValue(key(), files.mid(0, maxCount));
}

void RecentFiles::clear()
{
    Settings().remove(key());
}
