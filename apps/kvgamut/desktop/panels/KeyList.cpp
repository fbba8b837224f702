// SPDX-License-Identifier: Apache-2.0
#include "KeyList.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

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
    constexpr int frame = 80; // the margins and a scroll bar
    resize(view.sizeHintForColumn(0) + view.sizeHintForColumn(1) + frame, 640);
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
            shortcuts.append(sequence.toString(QKeySequence::NativeText));
        if (!action->isSeparator() && !shortcuts.isEmpty())
            keys.append({shortcuts.join(tr(" or ")), action->text().remove(QLatin1Char('&'))});
    }
    return keys;
}
