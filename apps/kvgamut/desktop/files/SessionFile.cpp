// SPDX-License-Identifier: Apache-2.0
#include "SessionFile.h"

#include "model/export/OutputFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

std::optional<Session> SessionFile::read(const QString& file, QString& problem)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("'%1': %2").arg(file, input.errorString());
        return {};
    }
    const auto session = Session::fromJson(input.readAll(), QFileInfo(file).absoluteDir(), problem);
    if (!session)
        problem = QStringLiteral("'%1': %2").arg(file, problem);
    return session;
}

QString SessionFile::write(const QString& file, const Session& session)
{
    return writeOutput(file, session.toJson(QFileInfo(file).absoluteDir()));
}
