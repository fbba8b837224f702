// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Session.h"

/// Session files.
namespace SessionFile {

/// @param problem set when nothing is returned
std::optional<Session> read(const QString& file, QString& problem);
/// @return the problem; empty when the file is written
QString write(const QString& file, const Session& session);

} // namespace SessionFile
