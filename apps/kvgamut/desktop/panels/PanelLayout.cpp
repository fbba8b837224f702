// SPDX-License-Identifier: Apache-2.0
#include "PanelLayout.h"

#include <QtCore/QList>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>

namespace {

constexpr int sectionSide = 320;

void arrangeLarge(QMainWindow& window, const PanelLayout& panels)
{
    window.addDockWidget(Qt::RightDockWidgetArea, panels.colors);
    window.addDockWidget(Qt::BottomDockWidgetArea, panels.comparison);
    window.addDockWidget(Qt::BottomDockWidgetArea, panels.finding);
    window.splitDockWidget(panels.comparison, panels.finding, Qt::Horizontal);
}

/// Only panels that are shown have a size.
void sizeLarge(QMainWindow& window, const PanelLayout& panels)
{
    window.resizeDocks({panels.section}, {sectionSide}, Qt::Horizontal);
    window.resizeDocks({panels.comparison, panels.finding}, {3 * sectionSide, sectionSide / 2},
                       Qt::Horizontal);
    window.resizeDocks({panels.comparison}, {panels.comparison->widget()->sizeHint().height()}, Qt::Vertical);
    window.resizeDocks({panels.section, panels.colors}, {7 * sectionSide, 5 * sectionSide}, Qt::Vertical);
}

/// In a narrow window the view needs the width of the list of gamuts, too.
void arrangeSmall(QMainWindow& window, const PanelLayout& panels)
{
    QList<QDockWidget*> tabs{panels.colors, panels.comparison, panels.finding};
    constexpr int narrow = 960;
    if (window.width() < narrow)
        tabs.prepend(panels.gamuts);
    QDockWidget* last = panels.section;
    for (QDockWidget* panel : std::as_const(tabs)) {
        window.addDockWidget(Qt::RightDockWidgetArea, panel);
        window.tabifyDockWidget(last, panel);
        last = panel;
    }
    panels.section->raise();
}

} // namespace

bool PanelLayout::isSmall(const QSize& window)
{
    constexpr QSize least(1100, 680);
    return window.width() < least.width() || window.height() < least.height();
}

void PanelLayout::arrange(QMainWindow& window, bool small) const
{
    const auto all = {gamuts, section, colors, comparison, finding};
    for (QDockWidget* panel : all) {
        panel->setFloating(false);
        window.removeDockWidget(panel); // also from its group of tabs
    }
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    window.addDockWidget(Qt::LeftDockWidgetArea, gamuts);
    window.addDockWidget(Qt::RightDockWidgetArea, section);
    if (small)
        arrangeSmall(window, *this);
    else
        arrangeLarge(window, *this);
    for (QDockWidget* panel : all)
        panel->show();
    if (small)
        section->raise();
    else
        sizeLarge(window, *this);
}
