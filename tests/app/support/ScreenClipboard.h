// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>

namespace kvtest {

/// Reads what other programs copy to the clipboard of the X display. Asks the X server directly: QClipboard
/// depends on the event loop and sometimes returns an older content.
class ScreenClipboard
{
public:
    ScreenClipboard();
    ~ScreenClipboard();
    Q_DISABLE_COPY_MOVE(ScreenClipboard)

    /// Removes the owner of the clipboard, which clears it.
    void clear();
    /// The text that a program has copied since then; nullopt if there is none, or if the program does not
    /// send it within @p maxWaitMs.
    std::optional<QString> text(int maxWaitMs = 1000);

private:
    std::uint32_t m_window; ///< receives the content from other programs
};

} // namespace kvtest
