// SPDX-License-Identifier: Apache-2.0
#include "FindingPanel.h"

#include "desktop/models/ColorSymbols.h"
#include "model/points/Lab.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

FindingPanel::FindingPanel(QWidget* parent) : QScrollArea(parent), m_label(new QLabel), m_swatch(new QLabel)
{
    m_label->setObjectName(QStringLiteral("finding"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_label->setMargin(8);
    m_label->setWordWrap(true);
    m_swatch->setObjectName(QStringLiteral("findingSwatch"));
    m_swatch->setAccessibleName(tr("The clicked colour on this screen"));
    m_swatch->setToolTip(tr("A corner is missing if the screen cannot show the colour"));
    m_swatch->setContentsMargins(8, 10, 0, 0);
    m_swatch->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* both = new QWidget;
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_swatch);
    row->addWidget(m_label, 1);
    setWidget(both);
    setWidgetResizable(true); // many open gamuts give many lines
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSize(m_label->fontMetrics().averageCharWidth() * 38, m_label->fontMetrics().lineSpacing() * 4);
    clear();
}

void FindingPanel::show(const QVector3D& lab, const QString& text)
{
    m_swatch->setPixmap(ColorSymbols::swatch(labOf(lab), m_label->fontMetrics().ascent()));
    m_swatch->setVisible(true);
    m_label->setText(text);
}

void FindingPanel::clear()
{
    m_swatch->setVisible(false);
    m_label->setText(tr("Click a gamut or a point to see its colour here."));
}
