// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Session.h"
#include "model/problems/Result.h"

/// Session files.
namespace SessionFile {

/// The problem names the file.
Result<Session> read(const QString& file);
/// @return why the file was not written
std::optional<Problem> write(const QString& file, const Session& session);

} // namespace SessionFile
