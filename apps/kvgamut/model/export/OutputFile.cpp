// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <cstdio>

namespace {

QString problem(const QString& name, const QFileDevice& file)
{
    return QStringLiteral("'%1' cannot be written: %2").arg(name, file.errorString());
}

// Unbuffered: a buffer that is written in part does not tell why.
constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;

/// Goes on after a part was written: only the next attempt tells why there was no more.
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

/// To something that is no regular file (a pipe, a device): there is nothing to replace.
QString writeInto(QFile& file, const QString& name, const QByteArray& bytes)
{
    return writeAll(file, bytes) ? QString() : problem(name, file);
}

} // namespace

QString writeOutput(const QString& name, const QByteArray& bytes)
{
    if (name == QLatin1String("-")) {
        QFile standardOutput;
        if (!standardOutput.open(stdout, mode))
            return problem(QStringLiteral("standard output"), standardOutput);
        return writeInto(standardOutput, QStringLiteral("standard output"), bytes);
    }

    const QFileInfo present(name);
    if (present.exists() && !present.isFile() && !present.isDir()) {
        QFile device(name);
        if (!device.open(mode))
            return problem(name, device);
        return writeInto(device, name, bytes);
    }

    QSaveFile file(name);
    if (!file.open(mode) || !writeAll(file, bytes) || !file.commit())
        return problem(name, file);
    return {};
}
