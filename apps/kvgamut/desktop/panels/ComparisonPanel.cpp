// SPDX-License-Identifier: Apache-2.0
#include "ComparisonPanel.h"

#include "ComparisonTable.h"
#include "desktop/language/ShownWords.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

/// Whether the gamut depends on the intent: it was computed from a profile.
bool hasIntent(const GamutEntry& entry)
{
    const KVGamut::Method method = entry.gamut.method();
    return method != KVGamut::Method::GivenSurface && method != KVGamut::Method::ConvexHull;
}

} // namespace

ComparisonPanel::ComparisonPanel(ComparisonTable& table, GamutListModel& gamuts, QWidget* parent)
    : QWidget(parent), m_gamuts(gamuts), m_note(new QLabel)
{
    m_note->setObjectName(QStringLiteral("intentNote"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setMargin(4);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_note);
    column->addWidget(&table, 1);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &ComparisonPanel::showNote);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole))
                    showNote();
            });
    showNote();
}

void ComparisonPanel::showNote()
{
    QStringList intents;
    for (const GamutEntry& entry : m_gamuts.entries()) {
        if (!entry.hasGamut() || !hasIntent(entry))
            continue;
        const QString intent = ShownWords::intent(entry.computedWith.intent).remove(QLatin1Char('&'));
        if (!intents.contains(intent))
            intents.append(intent);
    }
    m_note->setText(tr("The gamuts have different intents: %1. Choose one intent to compare the devices.")
                        .arg(intents.join(QStringLiteral(", "))));
    m_note->setVisible(intents.size() > 1);
}
