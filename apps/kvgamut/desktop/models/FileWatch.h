// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FileStamp.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

/// Tells when files have another content: written again, or replaced by another file of the same name. It
/// waits until a file has not changed for a moment, so that it is not read half-written. A file that is gone
/// is no change until it comes back.
class FileWatch : public QObject
{
    Q_OBJECT
public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Watches these files, by absolute paths, and no others. New ones are watched from their present
    /// content.
    void setFiles(const QStringList& files);

Q_SIGNALS:
    void changed(const QString& file);

private:
    struct Seen
    {
        std::optional<FileStamp> told; ///< the content that was announced last
        std::optional<FileStamp> last; ///< at the last look
    };
    void lookSoon();
    void look();

    QFileSystemWatcher m_watcher;
    QHash<QString, Seen> m_files;
    QTimer m_soon;
};
