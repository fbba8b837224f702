// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>

namespace kvtest {

/// The clipboard of the X display, as what other programs put there is read. A program of Qt's reads it
/// with its event loop, and not always what came last; this asks the server.
class ScreenClipboard
{
public:
    ScreenClipboard();
    ~ScreenClipboard();
    Q_DISABLE_COPY_MOVE(ScreenClipboard)

    /// Takes it away from the program that filled it.
    void clear();
    /// The text that a program has put there since; nothing while none has, or while it does not hand it
    /// over (which it does within @p maxWaitMs).
    std::optional<QString> text(int maxWaitMs = 1000);

private:
    std::uint32_t m_window; ///< to which programs hand over what they have
};

} // namespace kvtest
