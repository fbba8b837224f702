// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>

class QDockWidget;
class QMainWindow;

/// The panels of the window around its centre.
struct PanelLayout
{
    QDockWidget* gamuts;
    QDockWidget* section;
    QDockWidget* colors;
    QDockWidget* comparison;
    QDockWidget* finding;

    /// Whether a window of this size has no room for all panels beside each other.
    static bool isSmall(const QSize& window);
    /// Shows all panels at their first places in @p window. In a small one the view has the height of the
    /// window, and all panels but the first share one place, as tabs.
    void arrange(QMainWindow& window, bool small) const;
};
