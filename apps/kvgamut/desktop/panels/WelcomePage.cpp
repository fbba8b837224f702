// SPDX-License-Identifier: Apache-2.0
#include "WelcomePage.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

WelcomePage::WelcomePage(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("welcome"));
    auto* head = new QLabel(tr("Open a profile to see its gamut"));
    QFont large = head->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    head->setFont(large);
    head->setAlignment(Qt::AlignHCenter);
    auto* text = new QLabel(
        tr("Drop ICC profiles, pictures with a profile or saved gamuts here.\n"
           "With two gamuts open they are compared. Measurements (CGATS, CxF, CSV) show as points."));
    text->setAlignment(Qt::AlignHCenter);
    text->setWordWrap(true);
    auto* open = new QPushButton(tr("&Open a file…"));
    open->setObjectName(QStringLiteral("welcomeOpen"));
    connect(open, &QPushButton::clicked, this, &WelcomePage::openRequested);
    auto* example = new QPushButton(tr("Compare s&RGB with Display P3"));
    example->setObjectName(QStringLiteral("welcomeExample"));
    connect(example, &QPushButton::clicked, this, &WelcomePage::exampleRequested);

    auto* column = new QVBoxLayout(this);
    column->addStretch(2);
    column->addWidget(head);
    column->addSpacing(8);
    column->addWidget(text);
    column->addSpacing(20);
    column->addWidget(open, 0, Qt::AlignHCenter);
    column->addWidget(example, 0, Qt::AlignHCenter);
    column->addStretch(3);
}
