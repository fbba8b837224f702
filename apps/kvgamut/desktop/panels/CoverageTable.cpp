// SPDX-License-Identifier: Apache-2.0
#include "CoverageTable.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {
constexpr int maxTitleLetters = 24; // of a name; its tool tip shows all of it
} // namespace

CoverageTable::CoverageTable(const GamutListModel& gamuts, QWidget* parent) : QDialog(parent), m_model(gamuts)
{
    setWindowTitle(tr("Coverage of all gamuts"));
    auto* table = new QTableView;
    table->setObjectName(QStringLiteral("coverage"));
    table->setAccessibleName(windowTitle());
    table->setModel(&m_model);
    table->setTabKeyNavigation(false); // Tab moves to the next control
    table->setTextElideMode(Qt::ElideMiddle);
    for (QHeaderView* header : {table->horizontalHeader(), table->verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::ResizeToContents);
        header->setTextElideMode(Qt::ElideMiddle);
    }
    table->horizontalHeader()->setMaximumSectionSize(fontMetrics().averageCharWidth() * maxTitleLetters);
    table->verticalHeader()->setMaximumWidth(fontMetrics().averageCharWidth() * maxTitleLetters);
    auto* note =
        new QLabel(tr("The share of the volume of each row's gamut that the column's gamut covers."));
    note->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* copyAll = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copyAll->setObjectName(QStringLiteral("copyCoverage"));
    connect(copyAll, &QPushButton::clicked, this, &CoverageTable::copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(note);
    column->addWidget(table, 1);
    column->addWidget(buttons);
    resize(560, 320);
}

void CoverageTable::copy() const
{
    QGuiApplication::clipboard()->setText(m_model.toTsv());
}
