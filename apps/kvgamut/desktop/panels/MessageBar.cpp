// SPDX-License-Identifier: Apache-2.0
#include "MessageBar.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

namespace {
constexpr int maxMessages = 4;
}

MessageBar::MessageBar(QWidget* parent) : QFrame(parent), m_label(new QLabel)
{
    setObjectName(QStringLiteral("messageBar"));
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

    auto* row = new QHBoxLayout(this);
    row->addWidget(sign, 0, Qt::AlignTop);
    row->addWidget(m_label, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void MessageBar::add(const QString& message)
{
    m_messages.append(message);
    while (m_messages.size() > maxMessages)
        m_messages.removeFirst();
    m_label->setText(text());
    show();
}

void MessageBar::dismiss()
{
    m_messages.clear();
    m_label->clear();
    hide();
}
