// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWindow;

/// Whether a window can be seen: it is exposed, it and all windows above it are visible, and the top level is
/// neither minimised nor removed from the screen by the window manager.
///
/// Qt does not tell a child window that a window above it was hidden: isVisible() and isExposed() of the
/// child stay true. So this object looks at all windows above and watches them. The host may change them at
/// any time: move a window to another parent, or delete it.
class VisibilityWatch : public QObject
{
    Q_OBJECT
public:
    /// @p window must outlive this object.
    explicit VisibilityWatch(QWindow& window);

    [[nodiscard]] bool canBeSeen();

Q_SIGNALS:
    /// The window can be seen, after something above it changed. Not emitted for an exposure of the window
    /// itself, which arrives as an event.
    void mayHaveAppeared();
    /// Emitted before mayHaveAppeared() if the window could not be seen when this was last found out.
    void appeared();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchWindowsAbove();
    void watch(QWindow& window);
    void unwatch(QWindow& window);
    void onExpose(const QWindow& window);
    void check();

    QWindow& m_window;
    QList<QPointer<QWindow>>
        m_above;             ///< the windows above that are watched, from the parent to the top level
    bool m_seen = false;     ///< when a window above last changed
    bool m_unmapped = false; ///< the window manager has removed the top level from the screen
};
