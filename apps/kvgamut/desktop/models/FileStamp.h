// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <QtCore/QString>

#include <optional>

/// What distinguishes the present content of a file from an earlier one, without reading it.
struct FileStamp
{
    quint64 device = 0;
    quint64 file = 0; ///< its number on the device: another one if the file was replaced
    qint64 size = 0;
    qint64 changed = 0; ///< in nanoseconds

    /// Of the regular file @p name; nullopt if there is none. Waits for the file system.
    static std::optional<FileStamp> of(const QString& name);
    /// The same from a worker: nullopt as soon as @p task is cancelled, even if a drive never answers.
    static std::optional<FileStamp> of(const QString& name, const KVCompletionProtocolPtr& task);

    bool operator==(const FileStamp&) const = default;
};
