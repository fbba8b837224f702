// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QBackingStore>
#include <QtGui/QColor>
#include <QtGui/QWindow>

#include <optional>

/// The contents of a window whose whole area is covered by a child window: one colour.
///
/// On Wayland a window is shown only if it has contents of its own, and so are the windows inside it. Other
/// platforms need no such contents, and there nothing is painted.
class Backdrop
{
public:
    explicit Backdrop(QWindow& window) : m_window(window) {}

    /// Whether the platform needs it.
    static bool isNeeded();

    /// Paints the contents in the present size of the window. Call it when the window is exposed or resized.
    void paint(const QColor& color);
    /// To be called before the native window is destroyed.
    void release() { m_store.reset(); }

private:
    QWindow& m_window;
    std::optional<QBackingStore> m_store;
};
