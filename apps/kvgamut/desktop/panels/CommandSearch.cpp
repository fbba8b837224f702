// SPDX-License-Identifier: Apache-2.0
#include "CommandSearch.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

constexpr int numberRole = Qt::UserRole; ///< position in the list of commands

bool matches(const MenuCommand& command, const QStringList& words)
{
    const QString text = command.text + QLatin1Char(' ') + command.path;
    return std::all_of(words.begin(), words.end(),
                       [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

} // namespace

CommandSearch::CommandSearch(QList<MenuCommand> commands, QWidget* parent)
    : QDialog(parent), m_commands(std::move(commands)), m_words(new QLineEdit), m_list(new QTreeWidget)
{
    setWindowTitle(tr("Find a command"));
    m_words->setObjectName(QStringLiteral("commandWords"));
    m_words->setAccessibleName(tr("Words of the command"));
    m_words->setPlaceholderText(tr("Words of the command"));
    m_words->setClearButtonEnabled(true);
    m_words->installEventFilter(this);
    m_list->setObjectName(QStringLiteral("commandList"));
    m_list->setAccessibleName(tr("Commands"));
    m_list->setHeaderLabels({tr("Command"), tr("Menu"), tr("Key")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_words);
    column->addWidget(m_list);
    resize(620, 420);
    showMatches();
    connect(m_words, &QLineEdit::textChanged, this, &CommandSearch::showMatches);
    connect(m_words, &QLineEdit::returnPressed, this, &CommandSearch::run);
    connect(m_list, &QTreeWidget::itemActivated, this, &CommandSearch::run);
}

void CommandSearch::showMatches()
{
    const QStringList words = m_words->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_list->clear();
    for (qsizetype i = 0; i < m_commands.size(); ++i) {
        const MenuCommand& command = m_commands[i];
        if (!command.action || !matches(command, words))
            continue;
        auto* row = new QTreeWidgetItem(m_list, {command.text, command.path, command.keys()});
        row->setData(0, numberRole, i);
        row->setDisabled(!command.action->isEnabled());
    }
    for (int row = 0; row < m_list->topLevelItemCount(); ++row)
        if (!m_list->topLevelItem(row)->isDisabled()) {
            m_list->setCurrentItem(m_list->topLevelItem(row));
            break;
        }
}

/// Closes first: the command may open a dialog of its own.
void CommandSearch::run()
{
    const QTreeWidgetItem* row = m_list->currentItem();
    if (!row || row->isDisabled())
        return;
    const QPointer<QAction> action = m_commands[row->data(0, numberRole).toLongLong()].action;
    accept();
    if (action)
        action->trigger();
}

/// Up and Down move in the list while the words have the focus.
bool CommandSearch::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_words && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QCoreApplication::sendEvent(m_list, event);
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
