// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QAction>
#include <QtWidgets/QDialog>

class QMenuBar;

/// The keyboard shortcuts of the program, as a list in a non-modal dialog.
class KeyList : public QDialog
{
    Q_OBJECT
public:
    struct Group
    {
        QString title;
        QList<std::pair<QString, QString>> keys; ///< key and what it does
    };

    explicit KeyList(const QList<Group>& groups, QWidget* parent = nullptr);

    /// A group for each menu of @p menuBar, then the keys of the view, the lists and the tables.
    static QList<Group> groupsOf(const QMenuBar& menuBar);

    /// The keys of @p actions, including their submenus.
    static QList<std::pair<QString, QString>> keysOf(const QList<QAction*>& actions);
};
