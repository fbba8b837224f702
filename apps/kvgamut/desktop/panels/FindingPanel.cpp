// SPDX-License-Identifier: Apache-2.0
#include "FindingPanel.h"

#include <QtWidgets/QLabel>

FindingPanel::FindingPanel(QWidget* parent) : QScrollArea(parent), m_label(new QLabel)
{
    m_label->setObjectName(QStringLiteral("finding"));
    m_label->setAccessibleName(tr("Clicked colour"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_label->setMargin(8);
    m_label->setWordWrap(true);
    setWidget(m_label);
    setWidgetResizable(true); // many open gamuts give many lines
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSize(m_label->fontMetrics().averageCharWidth() * 38, m_label->fontMetrics().lineSpacing() * 6);
    clear();
}

QString FindingPanel::text() const
{
    return m_label->text();
}

void FindingPanel::setText(const QString& text)
{
    m_label->setText(text);
}

void FindingPanel::clear()
{
    m_label->setText(tr("Click a gamut or a point to see its colour here."));
}
