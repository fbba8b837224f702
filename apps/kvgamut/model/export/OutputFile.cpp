// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include "model/inputs/FileName.h"
#include "model/inputs/InputName.h"
#include "model/problems/SystemReason.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <cstdio>
#include <sys/stat.h>

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

/// What the system knows about a regular file; nullopt if @p name is none.
std::optional<struct stat> factsOf(const QString& name)
{
    struct stat facts = {};
    if (::stat(FileName::encoded(name).constData(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return std::nullopt;
    return facts;
}

/// The file of an input with settings.
QString fileOf(const QString& input)
{
    const Result<InputName> name = InputName::of(input);
    return name ? name->file : input;
}

} // namespace

std::optional<Problem> overwritesInput(const QString& output, const QStringList& inputs)
{
    const auto written = factsOf(output);
    for (const QString& input : inputs) {
        const auto read = factsOf(fileOf(input));
        if (written && read && written->st_dev == read->st_dev && written->st_ino == read->st_ino)
            return Problem(ProblemCode::OutputIsInput).about(input);
    }
    return std::nullopt;
}

std::optional<Problem> writeOutput(const QString& name, const QByteArray& bytes)
{
    if (name == QLatin1String("-")) {
        QFile standardOutput;
        if (!standardOutput.open(stdout, mode))
            return failed(QStringLiteral("standard output"), standardOutput);
        return writeInto(standardOutput, QStringLiteral("standard output"), bytes);
    }

    if (!FileName::isUtf8(name)) // Qt would write a file with another name
        return Problem(ProblemCode::CannotWrite).about(name).because(Problem(ProblemCode::NameNotUtf8));
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
