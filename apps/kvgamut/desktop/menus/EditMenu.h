// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>

/// The menu "Edit". The window connects its actions.
class EditMenu : public QMenu
{
    Q_OBJECT
public:
    explicit EditMenu(QWidget* parent);

    QAction* copyPicture;
    QAction* copyTable;
    QAction* copyColors;
    QAction* copyFinding; ///< disabled until the user clicks a colour
    QAction* copyCamera;
    QAction* pasteCamera;
};
