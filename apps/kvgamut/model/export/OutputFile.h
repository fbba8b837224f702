// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

class QFileDevice;

/// Output that is written in parts: to a file, completely or not at all, or to standard output, a pipe or a
/// device as it comes.
class OutputStream
{
public:
    /// @param name of the file; "-" is standard output
    explicit OutputStream(const QString& name);
    /// Without finish() an existing file keeps its content.
    ~OutputStream();
    Q_DISABLE_COPY_MOVE(OutputStream)

    /// @return false after a failure; further calls do nothing then
    bool write(const QByteArray& bytes);
    /// @return CannotWrite, about the file, if anything has failed
    [[nodiscard]] std::optional<Problem> finish();

private:
    bool open();

    const QString m_name;
    QString m_shownName;
    std::unique_ptr<QFileDevice> m_file; ///< a QSaveFile if the file is replaced by a new one
    std::optional<Problem> m_problem;
};

/// Writes @p bytes to the file @p name, completely or not at all: on failure an existing file keeps its
/// content. "-" is standard output.
/// @return CannotWrite, about the file, if that fails
[[nodiscard]] std::optional<Problem> writeOutput(const QString& name, const QByteArray& bytes);

/// OutputIsInput, about the input, if @p output is the same regular file as one of @p inputs, by whatever
/// names; else nullopt.
[[nodiscard]] std::optional<Problem> overwritesInput(const QString& output, const QStringList& inputs);
