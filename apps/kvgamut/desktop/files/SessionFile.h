// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Session.h"

/// Session files.
namespace SessionFile {

/// A problem names the file. Callable from any thread.
/// @param task cancels reading; may be null
[[nodiscard]] Result<Session> read(const QString& file, const KVCompletionProtocolPtr& task = {});
/// A problem names the file.
[[nodiscard]] std::optional<Problem> write(const QString& file, const Session& session);

} // namespace SessionFile
