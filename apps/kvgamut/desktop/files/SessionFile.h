// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Session.h"

/// Session files.
namespace SessionFile {

/// A problem names the file.
[[nodiscard]] Result<Session> read(const QString& file);
[[nodiscard]] std::optional<Problem> write(const QString& file, const Session& session);

} // namespace SessionFile
