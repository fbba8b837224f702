// SPDX-License-Identifier: Apache-2.0
#include "InputFile.h"

#include "model/problems/SystemReason.h"

#include <QtCore/QFile>

#include <algorithm>

namespace {

template <typename Read>
Result<QByteArray> readWith(const QString& name, Read read)
{
    QFile file(name);
    const auto failed = [&] {
        return failure(Problem(ProblemCode::CannotRead).about(name).because(SystemReason::ofFile(file)));
    };
    if (!file.open(QIODevice::ReadOnly))
        return failed();
    QByteArray bytes = read(file);
    if (file.error() != QFileDevice::NoError)
        return failed();
    return bytes;
}

} // namespace

Result<QByteArray> readInput(const QString& name)
{
    return readWith(name, [](QFile& file) { return file.readAll(); });
}

Result<QByteArray> readInput(const QString& name, qint64 maxSize)
{
    return readWith(name, [maxSize](QFile& file) { return file.read(std::min(maxSize, file.size())); });
}
