// SPDX-License-Identifier: Apache-2.0
#include "KeyList.h"

#include <QtCore/QVariant>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <array>

namespace {

constexpr int commandRole = Qt::UserRole; ///< position in the list of commands

/// The name of the key in the language of the window.
QString nameOf(const QKeySequence& key)
{
    return key.toString(QKeySequence::NativeText);
}

/// Keys that the view, lists and fields use themselves.
bool isReserved(const QKeySequence& key)
{
    constexpr std::array reserved{Qt::Key_Escape, Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Return,
                                  Qt::Key_Enter,  Qt::Key_Space,  Qt::Key_Delete,  Qt::Key_Left,
                                  Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,    Qt::Key_Plus,
                                  Qt::Key_Minus,  Qt::Key_PageUp, Qt::Key_PageDown};
    const bool isPlain = !(key[0].keyboardModifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    return (isPlain && std::find(reserved.begin(), reserved.end(), key[0].key()) != reserved.end()) ||
           key.matches(QKeySequence(QKeySequence::Copy)) == QKeySequence::ExactMatch;
}

} // namespace

KeyList::KeyList(QList<MenuCommand> commands, DefaultKeys defaultKeys, QWidget* parent)
    : QDialog(parent), m_commands(std::move(commands)), m_defaultKeys(std::move(defaultKeys)),
      m_tree(new QTreeWidget), m_key(new QKeySequenceEdit), m_set(new QPushButton(tr("&Set"))),
      m_none(new QPushButton(tr("&No key"))), m_default(new QPushButton(tr("&Default"))), m_answer(new QLabel)
{
    setWindowTitle(tr("Keys"));
    m_tree->setObjectName(QStringLiteral("keys"));
    m_tree->setAccessibleName(tr("Keys"));
    m_tree->setColumnCount(2);
    m_tree->setHeaderLabels({tr("Action"), tr("Key")});
    m_tree->setRootIsDecorated(false);
    addCommands();
    addFixedKeys();
    showKeys();
    m_tree->expandAll();
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* all = buttons->addButton(tr("&All to default"), QDialogButtonBox::ResetRole);
    all->setObjectName(QStringLiteral("allDefaultKeys"));
    connect(all, &QPushButton::clicked, this, &KeyList::setAllDefaults);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_tree);
    column->addWidget(makeEditor());
    column->addWidget(m_answer);
    column->addWidget(buttons);
    const auto& view = static_cast<const QAbstractItemView&>(*m_tree);
    constexpr int frame = 80; // space for margins and a scroll bar
    resize(view.sizeHintForColumn(0) + view.sizeHintForColumn(1) + frame, 640);

    connect(m_tree, &QTreeWidget::currentItemChanged, this, &KeyList::showCurrent);
    showCurrent();
}

QTreeWidgetItem* KeyList::addGroup(const QString& title)
{
    auto* head = new QTreeWidgetItem(m_tree, {title});
    head->setFlags(Qt::ItemIsEnabled);
    QFont bold = head->font(0);
    bold.setBold(true);
    head->setFont(0, bold);
    return head;
}

/// A group for each menu. Those of submenus stand in the group of their menu.
void KeyList::addCommands()
{
    QTreeWidgetItem* group = nullptr;
    for (qsizetype i = 0; i < m_commands.size(); ++i) {
        const QString menu = m_commands[i].path.section(MenuCommands::separator(), 0, 0);
        if (!group || group->text(0) != menu)
            group = addGroup(menu);
        auto* row = new QTreeWidgetItem(group, {m_commands[i].text});
        row->setData(0, commandRole, i);
    }
}

void KeyList::addFixedKeys()
{
    using Keys = QList<std::pair<QString, QString>>;
    const auto add = [this](const QString& title, const Keys& keys) {
        QTreeWidgetItem* group = addGroup(title);
        for (const auto& [key, what] : keys)
            new QTreeWidgetItem(group, {what, key});
    };
    add(tr("In the 3D view"), {{tr("Arrow keys, drag"), tr("Turn")},
                               {tr("+, -, wheel"), tr("Nearer, farther")},
                               {tr("Shift and drag, right drag"), tr("Move the scene")},
                               {tr("Click"), tr("Which colour is this?")},
                               {nameOf(Qt::Key_Tab), tr("On to the next control")}});
    add(tr("With the colour cursor"),
        {{tr("Arrow keys"), tr("Along a* and b*")},
         {tr("%1, %2").arg(nameOf(Qt::Key_PageUp), nameOf(Qt::Key_PageDown)), tr("Lighter, darker")},
         {tr("Shift and these keys"), tr("Ten times as far")},
         {nameOf(Qt::Key_Return), tr("Which colour is the nearest?")},
         {nameOf(Qt::Key_Escape), tr("End")}});
    add(tr("Everywhere"), {{nameOf(Qt::Key_Escape), tr("Cancel loading, then dismiss messages")}});
    add(tr("In lists and tables"), {{nameOf(Qt::Key_Space), tr("Show or hide the gamut")},
                                    {nameOf(Qt::Key_Delete), tr("Remove the gamut or the points")},
                                    {nameOf(QKeySequence::Copy), tr("Copy the selected numbers")}});
}

QWidget* KeyList::makeEditor()
{
    m_key->setObjectName(QStringLiteral("newKey"));
    m_key->setAccessibleName(tr("New key"));
    m_key->setToolTip(tr("Press the new key here"));
    m_set->setObjectName(QStringLiteral("setKey"));
    m_none->setObjectName(QStringLiteral("noKey"));
    m_default->setObjectName(QStringLiteral("defaultKey"));
    m_answer->setObjectName(QStringLiteral("keyAnswer"));
    m_answer->setWordWrap(true);
    m_answer->setTextFormat(Qt::PlainText);
    auto* editor = new QWidget;
    auto* row = new QHBoxLayout(editor);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_key, 1);
    for (QPushButton* button : {m_set, m_none, m_default}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    connect(m_set, &QPushButton::clicked, this, &KeyList::setTyped);
    connect(m_none, &QPushButton::clicked, this, [this] { set({}); });
    connect(m_default, &QPushButton::clicked, this, [this] {
        if (const MenuCommand* command = current())
            set(m_defaultKeys(*command->action));
    });
    return editor;
}

/// The command of the current row, if its key can be changed.
MenuCommand* KeyList::current()
{
    const QTreeWidgetItem* row = m_tree->currentItem();
    if (!row || !row->data(0, commandRole).isValid())
        return nullptr;
    MenuCommand& command = m_commands[row->data(0, commandRole).toLongLong()];
    return command.action && !command.action->objectName().isEmpty() ? &command : nullptr;
}

void KeyList::showCurrent()
{
    const bool isChangeable = current() != nullptr;
    for (QWidget* part : {static_cast<QWidget*>(m_key), static_cast<QWidget*>(m_set),
                          static_cast<QWidget*>(m_none), static_cast<QWidget*>(m_default)})
        part->setEnabled(isChangeable);
    m_key->clear();
    m_answer->setText(isChangeable ? QString() : tr("Choose a command of the menus to change its key."));
}

void KeyList::showKeys()
{
    for (int group = 0; group < m_tree->topLevelItemCount(); ++group) {
        for (int row = 0; row < m_tree->topLevelItem(group)->childCount(); ++row) {
            QTreeWidgetItem* item = m_tree->topLevelItem(group)->child(row);
            const QVariant number = item->data(0, commandRole);
            if (number.isValid() && m_commands[number.toLongLong()].action)
                item->setText(1, m_commands[number.toLongLong()].keys());
        }
    }
}

void KeyList::setTyped()
{
    const QKeySequence typed = m_key->keySequence();
    const QKeySequence key = typed.isEmpty() ? typed : QKeySequence(typed[0]);
    m_key->clear();
    if (key.isEmpty())
        m_answer->setText(tr("Press a key in the field first."));
    else if (isReserved(key))
        m_answer->setText(tr("%1 has a meaning in the view or in lists.").arg(nameOf(key)));
    else
        set({key});
}

/// Refuses keys of other commands.
void KeyList::set(const QList<QKeySequence>& keys)
{
    const MenuCommand* command = current();
    if (!command)
        return;
    for (const MenuCommand& other : std::as_const(m_commands)) {
        if (!other.action || other.action == command->action)
            continue;
        for (const QKeySequence& key : keys) {
            const auto collides = [&key](const QKeySequence& used) {
                return used.matches(key) != QKeySequence::NoMatch ||
                       key.matches(used) != QKeySequence::NoMatch;
            };
            const QList<QKeySequence> used = other.action->shortcuts();
            if (std::any_of(used.begin(), used.end(), collides)) {
                m_answer->setText(tr("%1 is the key of \"%2\".").arg(nameOf(key), other.text));
                return;
            }
        }
    }
    command->action->setShortcuts(keys);
    m_answer->setText(keys.isEmpty() ? tr("\"%1\" has no key now.").arg(command->text)
                                     : tr("\"%1\" has the key %2 now.").arg(command->text, command->keys()));
    showKeys();
    Q_EMIT keysChanged();
}

void KeyList::setAllDefaults()
{
    for (const MenuCommand& command : std::as_const(m_commands))
        if (command.action && !command.action->objectName().isEmpty())
            command.action->setShortcuts(m_defaultKeys(*command.action));
    m_answer->setText(tr("All commands have their default keys."));
    showKeys();
    Q_EMIT keysChanged();
}
