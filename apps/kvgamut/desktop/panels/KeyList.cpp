// SPDX-License-Identifier: Apache-2.0
#include "KeyList.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

namespace {

/// The name of the key in the language of the window.
QString nameOf(const QKeySequence& key)
{
    return key.toString(QKeySequence::NativeText);
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

} // namespace

KeyList::KeyList(const QList<Group>& groups, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Keys"));
    auto* tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("keys"));
    tree->setAccessibleName(tr("Keys"));
    tree->setColumnCount(2);
    tree->setHeaderLabels({tr("Action"), tr("Key")});
    tree->setRootIsDecorated(false);
    tree->setSelectionMode(QAbstractItemView::NoSelection);
    for (const Group& group : groups) {
        auto* head = new QTreeWidgetItem(tree, {group.title});
        QFont bold = head->font(0);
        bold.setBold(true);
        head->setFont(0, bold);
        for (const auto& [key, what] : group.keys)
            new QTreeWidgetItem(head, {what, key});
    }
    tree->expandAll();
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tree);
    column->addWidget(buttons);
    const auto& view = static_cast<const QAbstractItemView&>(*tree);
    constexpr int frame = 80; // space for margins and a scroll bar
    resize(view.sizeHintForColumn(0) + view.sizeHintForColumn(1) + frame, 640);
}

QList<KeyList::Group> KeyList::groupsOf(const QMenuBar& menuBar)
{
    QList<Group> groups;
    const QList<QAction*> menus = menuBar.actions();
    for (const QAction* menu : menus)
        groups.append({withoutMnemonic(menu->text()), keysOf(menu->menu()->actions())});
    groups.append({tr("In the 3D view"),
                   {{tr("Arrow keys, drag"), tr("Turn")},
                    {tr("+, -, wheel"), tr("Nearer, farther")},
                    {tr("Shift and drag, right drag"), tr("Move the scene")},
                    {tr("Click"), tr("Which colour is this?")},
                    {nameOf(Qt::Key_Tab), tr("On to the next control")}}});
    groups.append(
        {tr("Everywhere"), {{nameOf(Qt::Key_Escape), tr("Cancel loading, then dismiss messages")}}});
    groups.append({tr("In lists and tables"),
                   {{nameOf(Qt::Key_Space), tr("Show or hide the gamut")},
                    {nameOf(Qt::Key_Delete), tr("Remove the gamut or the points")},
                    {nameOf(QKeySequence::Copy), tr("Copy the selected numbers")}}});
    return groups;
}

QList<std::pair<QString, QString>> KeyList::keysOf(const QList<QAction*>& actions)
{
    QList<std::pair<QString, QString>> keys;
    for (const QAction* action : actions) {
        if (const QMenu* menu = action->menu()) {
            keys.append(keysOf(menu->actions()));
            continue;
        }
        QStringList shortcuts;
        const QList<QKeySequence> sequences = action->shortcuts();
        for (const QKeySequence& sequence : sequences)
            shortcuts.append(nameOf(sequence));
        if (!action->isSeparator() && !shortcuts.isEmpty())
            keys.append({shortcuts.join(tr(" or ")), withoutMnemonic(action->text())});
    }
    return keys;
}
