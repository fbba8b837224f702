// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

/// A progress bar on standard error, only on a terminal and only for work that takes more than half a second.
class Progress
{
public:
    /// Starts the clock. With Speech::Quiet it never shows anything.
    Progress();
    ~Progress() { clear(); }
    Q_DISABLE_COPY_MOVE(Progress)

    /// Shows the progress @p share, 0..1, of the task @p what.
    void show(float share, const QString& what);
    /// Erases the bar, so that messages can be printed.
    void clear();

private:
    const bool m_enabled;
    bool m_shown = false;
    QElapsedTimer m_clock;
};
