// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QProcess>

namespace kvtest {

/// A window manager on the display of the test, which gives windows keyboard focus, frames and positions.
/// Runs until this object is destroyed.
class WindowManager
{
public:
    WindowManager() = default;
    ~WindowManager();
    Q_DISABLE_COPY_MOVE(WindowManager)

    /// Starts it and waits until it manages windows, because a window that is shown earlier may never be
    /// managed. False if it does not start.
    bool start();

private:
    QProcess m_process;
};

} // namespace kvtest
