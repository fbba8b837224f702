// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QProcess>

namespace kvtest {

/// A window manager on the display of the test, running as long as this lives: it gives windows the
/// keyboard, their frames and their places.
class WindowManager
{
public:
    WindowManager() = default;
    ~WindowManager();
    Q_DISABLE_COPY_MOVE(WindowManager)

    /// Starts it and waits until it manages windows: one that is shown earlier may be left out for ever.
    /// False when it does not come.
    bool start();

private:
    QProcess m_process;
};

} // namespace kvtest
