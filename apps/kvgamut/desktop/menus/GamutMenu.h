// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"

#include <QtWidgets/QMenu>

/// The menu "Gamut": changes the active gamut of a list and shows its settings.
class GamutMenu : public QMenu
{
    Q_OBJECT
public:
    GamutMenu(GamutListModel& model, QWidget* parent);

    QAction* chooseColor; ///< connected by the window
    QAction* information; ///< connected by the window
    QAction* matrix;      ///< connected by the window

private:
    void addIntents();
    void addLookSwitches();
    void addSteps();
    QAction* addLookSwitch(const char* name, const QString& text, Qt::Key key, bool KVGamutLook::*member);
    void changeOpacity(float step);
    void activateNext();
    void removeActive();
    void showActive();

    GamutListModel& m_model;
    QAction* m_next;
    QAction* m_solo;
    QAction* m_remove;
    QList<QAction*> m_intents; ///< index: the number of the intent
    QAction* m_blackPoint;
    QAction* m_visible;
    QAction* m_surface;
    QAction* m_projection;
    QAction* m_primaries;
    QAction* m_ownColors;
};
