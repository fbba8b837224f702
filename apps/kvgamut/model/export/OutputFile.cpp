// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include "model/problems/SystemReason.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <cstdio>

namespace {

Problem failed(const QString& name, const QFileDevice& file)
{
    return Problem(ProblemCode::CannotWrite).about(name).because(SystemReason::ofFile(file));
}

// Unbuffered: when a buffer is written only in part, QFile loses the reason.
constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;

/// Continues after a partial write: only the next write fails with the reason.
bool writeAll(QFileDevice& file, const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const qint64 more = file.write(bytes.constData() + written, bytes.size() - written);
        if (more <= 0)
            return false;
        written += more;
    }
    return file.flush();
}

/// Writes to a pipe or a device, which cannot be replaced by a new file.
std::optional<Problem> writeInto(QFile& file, const QString& name, const QByteArray& bytes)
{
    if (writeAll(file, bytes))
        return std::nullopt;
    return failed(name, file);
}

} // namespace

std::optional<Problem> writeOutput(const QString& name, const QByteArray& bytes)
{
    if (name == QLatin1String("-")) {
        QFile standardOutput;
        if (!standardOutput.open(stdout, mode))
            return failed(QStringLiteral("standard output"), standardOutput);
        return writeInto(standardOutput, QStringLiteral("standard output"), bytes);
    }

    const QFileInfo present(name);
    if (present.exists() && !present.isFile() && !present.isDir()) {
        QFile device(name);
        if (!device.open(mode))
            return failed(name, device);
        return writeInto(device, name, bytes);
    }

    QSaveFile file(name);
    if (!file.open(mode) || !writeAll(file, bytes) || !file.commit())
        return failed(name, file);
    return std::nullopt;
}
