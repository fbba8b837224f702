// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "InputLimits.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QByteArray>

#include <functional>
#include <memory>
#include <optional>

/// The way in which the program reads every file.
///
/// - Regular files, pipes and standard input ("-") are read; folders and devices are refused without
///   reading from them. Sockets and terminals count as pipes.
/// - A file larger than the limit of its kind is refused, a pipe as soon as it has given more.
/// - With a task, the calling thread never waits longer than a few hundredths of a second after a
/// cancellation,
///   even for a pipe that gives nothing or a network file that does not answer.
///
/// Problems name the file: CannotRead with a cause, InputTooLarge, NotAFileOrPipe, Cancelled.
namespace InputGate {

/// Chooses the kind of a file by its first bytes: startSize of them, or the whole file if it is shorter.
/// nullopt if it is of no known kind; read() then fails with UnknownFormat.
using KindOf = std::function<std::optional<InputKind>(const QByteArray& start)>;
constexpr qsizetype startSize = 256;

/// The content of the file @p name.
/// @param task progress and cancellation; may be null
/// @param share the progress, 0..1, that reading the whole file is worth
Result<QByteArray> read(const QString& name, const KindOf& kindOf, const KVCompletionProtocolPtr& task = {},
                        float share = 0.0f);
Result<QByteArray> read(const QString& name, InputKind kind, const KVCompletionProtocolPtr& task = {},
                        float share = 0.0f);

/// A regular file that is read in parts, or something else that has to be read whole.
class File
{
public:
    /// Whether it is a regular file. Otherwise the other functions have no meaning.
    bool isSeekable() const { return m_isSeekable; }
    /// Its first startSize bytes, or all.
    QByteArray start() const { return m_start; }
    /// To read from, at the beginning of the file. Closed with the last copy of this object.
    int descriptor() const { return *m_descriptor; }

private:
    friend Result<File> openFile(const QString& name, InputKind kind);
    std::shared_ptr<const int> m_descriptor;
    QByteArray m_start;
    bool m_isSeekable = false;
};

/// Opens the file @p name, with the checks of read(). Reading from it cannot be cancelled.
Result<File> openFile(const QString& name, InputKind kind);

/// Whether @p content is text: it has no NUL character, unless it is in UTF-16 or UTF-32.
bool isText(const QByteArray& content);

/// Whether someone has cancelled @p task, which may be null.
inline bool isCancelled(const KVCompletionProtocolPtr& task)
{
    return task && task->isCancelled();
}

} // namespace InputGate
