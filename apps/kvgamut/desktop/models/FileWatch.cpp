// SPDX-License-Identifier: Apache-2.0
#include "FileWatch.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <utility>

namespace {
constexpr int pauseMs = 400;
}

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(pauseMs);
    connect(&m_soon, &QTimer::timeout, this, &FileWatch::look);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileWatch::lookSoon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatch::lookSoon);
}

void FileWatch::setFiles(const QStringList& files)
{
    QHash<QString, Seen> wanted;
    QSet<QString> paths;
    for (const QString& file : files) {
        const auto known = m_files.constFind(file);
        const auto stamp = known == m_files.cend() ? FileStamp::of(file) : std::nullopt;
        wanted.insert(file, known == m_files.cend() ? Seen{stamp, stamp} : *known);
        // a program that saves a new file under the old name changes the folder only
        paths |= {file, QFileInfo(file).absolutePath()};
    }
    m_files = wanted;
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    const QSet<QString> before(watched.begin(), watched.end());
    if (const QStringList old = (before - paths).values(); !old.isEmpty())
        m_watcher.removePaths(old);
    for (const QString& path : QSet<QString>(paths - before))
        if (QFileInfo::exists(path))
            m_watcher.addPath(path);
}

/// Does not wait longer while further changes come: a folder may change all the time.
void FileWatch::lookSoon()
{
    if (!m_soon.isActive())
        m_soon.start();
}

void FileWatch::look()
{
    QStringList changes;
    for (auto file = m_files.begin(); file != m_files.end(); ++file) {
        const auto stamp = FileStamp::of(file.key());
        const bool isAtRest = std::exchange(file->last, stamp) == stamp;
        if (!stamp || stamp == file->told)
            continue;
        if (!isAtRest) {
            lookSoon();
            continue;
        }
        file->told = stamp;
        changes.append(file.key());
        if (!m_watcher.files().contains(file.key())) // the watcher forgets files that are replaced
            m_watcher.addPath(file.key());
    }
    for (const QString& file : std::as_const(changes))
        Q_EMIT changed(file);
}
