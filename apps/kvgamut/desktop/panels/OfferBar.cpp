// SPDX-License-Identifier: Apache-2.0
#include "OfferBar.h"

#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

OfferBar::OfferBar(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("offers"));
    setAccessibleName(tr("Questions"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    hide();
}

void OfferBar::offer(const QString& id, const QString& sentence, const QList<Answer>& answers)
{
    withdraw(id);
    auto* offer = new QFrame;
    offer->setFrameShape(QFrame::StyledPanel);
    auto* row = new QHBoxLayout(offer);
    auto* sign = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(side));
    row->addWidget(sign, 0, Qt::AlignTop);
    auto* words = new QLabel(sentence);
    words->setObjectName(QStringLiteral("sentence"));
    words->setTextFormat(Qt::PlainText); // file names may contain HTML tags
    words->setWordWrap(true);
    row->addWidget(words, 1);
    for (const Answer& answer : answers) {
        auto* button = new QPushButton(answer.text);
        button->setObjectName(answer.name);
        button->setAccessibleDescription(sentence);
        connect(button, &QPushButton::clicked, this, [this, id, act = answer.act] {
            withdraw(id);
            act();
        });
        row->addWidget(button, 0, Qt::AlignTop);
    }
    layout()->addWidget(offer);
    m_offers.insert(id, offer);
    show();
}

void OfferBar::withdraw(const QString& id)
{
    QWidget* offer = m_offers.take(id);
    if (!offer)
        return;
    offer->hide();
    layout()->removeWidget(offer);
    offer->deleteLater(); // one of its buttons may be the sender
    setVisible(!m_offers.isEmpty());
}

QString OfferBar::sentence(const QString& id) const
{
    const QWidget* offer = m_offers.value(id);
    return offer ? offer->findChild<QLabel*>(QStringLiteral("sentence"))->text() : QString();
}
