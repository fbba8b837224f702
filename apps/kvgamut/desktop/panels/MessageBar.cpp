// SPDX-License-Identifier: Apache-2.0
#include "MessageBar.h"

#include "desktop/view/Accessibility.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {
constexpr qsizetype maxShown = 4;
constexpr qsizetype maxKept = 1000;
} // namespace

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), m_label(new QLabel), m_all(new QToolButton)
{
    setObjectName(QStringLiteral("messageBar"));
    setAccessibleRole(*this, QAccessible::Notification);
    setAccessibleName(tr("Messages"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);

    auto* sign = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    m_label->setObjectName(QStringLiteral("message"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText); // file names may contain HTML tags
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* close = new QToolButton;
    close->setObjectName(QStringLiteral("dismiss"));
    close->setText(tr("Dismiss"));
    close->setToolTip(tr("Dismiss (Esc)"));
    close->setAutoRaise(true);
    connect(close, &QToolButton::clicked, this, &MessageBar::dismiss);

    m_all->setObjectName(QStringLiteral("allMessages"));
    m_all->setToolTip(tr("Shows all messages"));
    m_all->setAutoRaise(true);
    connect(m_all, &QToolButton::clicked, this, &MessageBar::showAll);

    auto* row = new QHBoxLayout(this);
    row->addWidget(sign, 0, Qt::AlignTop);
    row->addWidget(m_label, 1);
    row->addWidget(m_all, 0, Qt::AlignTop);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void MessageBar::add(const QString& message)
{
    m_messages.append(message);
    if (m_messages.size() > maxKept)
        m_messages.removeFirst();
    const qsizetype earlier = m_messages.size() - maxShown;
    m_label->setText(m_messages.mid(std::max(qsizetype(0), earlier)).join(QLatin1Char('\n')));
    m_all->setVisible(earlier > 0);
    m_all->setText(tr("%n more…", nullptr, static_cast<int>(earlier)));
    setAccessibleDescription(m_label->text()); // is read when the bar appears
    show();
}

void MessageBar::showAll()
{
    auto* dialog = new QDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Messages"));
    auto* list = new QPlainTextEdit(text());
    list->setObjectName(QStringLiteral("messageList"));
    list->setAccessibleName(tr("Messages"));
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(dialog);
    column->addWidget(list);
    column->addWidget(buttons);
    dialog->resize(640, 400);
    dialog->show();
}

void MessageBar::dismiss()
{
    m_messages.clear();
    m_label->clear();
    hide();
}
