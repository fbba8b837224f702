// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

/// A progress bar on standard error: on a terminal only, and only for work that takes more than half a
/// second.
class Progress
{
public:
    /// Starts the clock. @p quiet: never shows anything.
    explicit Progress(bool quiet);
    ~Progress() { clear(); }
    Q_DISABLE_COPY_MOVE(Progress)

    /// Shows that @p share of the work, 0..1, is done, which is called @p what.
    void show(float share, const QString& what);
    /// Wipes the bar out, so that something can be said.
    void clear();

private:
    const bool m_enabled;
    bool m_shown = false;
    QElapsedTimer m_clock;
};
