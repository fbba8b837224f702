// SPDX-License-Identifier: Apache-2.0
#include "ComparisonTable.h"

#include "desktop/models/ComparisonModel.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

ComparisonTable::ComparisonTable(ComparisonModel& model, QWidget* parent) : QTableView(parent), m_model(model)
{
    setObjectName(QStringLiteral("comparison"));
    setAccessibleName(tr("Comparison of the gamuts"));
    setModel(&model);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false); // Tab moves to the next control
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setHighlightSections(false);
}

QSize ComparisonTable::sizeHint() const
{
    constexpr int shownRows = 4;
    const int row = fontMetrics().height() + 8;
    return {600, horizontalHeader()->sizeHint().height() + shownRows * row};
}

void ComparisonTable::copy()
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (selected.isEmpty())
        copyAll();
    else
        QGuiApplication::clipboard()->setText(m_model.toTsv(selected, false));
}

void ComparisonTable::copyAll()
{
    QGuiApplication::clipboard()->setText(m_model.toTsv());
}

void ComparisonTable::keyPressEvent(QKeyEvent* event)
{
    // the base class copies only one cell
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        QTableView::keyPressEvent(event);
}
