// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QAction>
#include <QtWidgets/QDialog>

/// The keys of the program, as a list in a window that does not block.
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

    /// The keys of @p actions, those of their sub-menus included.
    static QList<std::pair<QString, QString>> keysOf(const QList<QAction*>& actions);
};
