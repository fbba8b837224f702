// SPDX-License-Identifier: Apache-2.0
#include "SessionFile.h"

#include "model/export/OutputFile.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QFileInfo>

Result<Session> SessionFile::read(const QString& file, const KVCompletionProtocolPtr& task)
{
    const Result<QByteArray> json = InputGate::read(file, InputKind::Session, task);
    if (!json)
        return failure(json.error());
    Result<Session> session = Session::fromJson(*json, QFileInfo(file).absoluteDir());
    if (!session)
        return failure(session.error().about(file));
    return session;
}

std::optional<Problem> SessionFile::write(const QString& file, const Session& session)
{
    return writeOutput(file, session.toJson(QFileInfo(file).absoluteDir()));
}
