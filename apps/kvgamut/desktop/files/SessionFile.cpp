// SPDX-License-Identifier: Apache-2.0
#include "SessionFile.h"

#include "model/export/OutputFile.h"
#include "model/inputs/InputFile.h"

#include <QtCore/QFileInfo>

Result<Session> SessionFile::read(const QString& file)
{
    const Result<QByteArray> json = readInput(file);
    if (!json)
        return failure(json.error());
    QString problem;
    const auto session = Session::fromJson(*json, QFileInfo(file).absoluteDir(), problem);
    if (!session)
        return failure(Problem(ProblemCode::OtherReason, {problem}, file));
    return *session;
}

std::optional<Problem> SessionFile::write(const QString& file, const Session& session)
{
    return writeOutput(file, session.toJson(QFileInfo(file).absoluteDir()));
}
