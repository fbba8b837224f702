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
    QAction* copyFinding; ///< disabled until a colour was clicked
    QAction* copyCamera;
    QAction* pasteCamera;
};
