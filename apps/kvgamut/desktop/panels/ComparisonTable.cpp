// SPDX-License-Identifier: Apache-2.0
#include "ComparisonTable.h"

#include "desktop/models/ComparisonModel.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

namespace {
constexpr int maxLetters = 32; // of a name; a longer one is shortened, and its tool tip shows all of it
} // namespace

ComparisonTable::ComparisonTable(ComparisonModel& model, QWidget* parent)
    : QTableView(parent), m_model(model), m_sorted(new QSortFilterProxyModel(this))
{
    setObjectName(QStringLiteral("comparison"));
    setAccessibleName(tr("Comparison of the gamuts"));
    m_sorted->setSourceModel(&model);
    m_sorted->setSortRole(ComparisonModel::SortRole);
    m_sorted->setSortLocaleAware(true);
    setModel(m_sorted);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorShown(false);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &ComparisonTable::sortNext);
    setShowGrid(false);
    setWordWrap(false);
    setMinimumHeight(3 * fontMetrics().height()); // titles and a gamut
    setTabKeyNavigation(false);                   // Tab moves to the next control
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setMaximumSectionSize(fontMetrics().averageCharWidth() * maxLetters);
    horizontalHeader()->setHighlightSections(false);
    setTextElideMode(Qt::ElideMiddle); // names of profiles often differ only at the end
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
    if (selected.isEmpty()) {
        copyAll();
        return;
    }
    QModelIndexList cells;
    for (const QModelIndex& cell : selected)
        cells.append(m_sorted->mapToSource(cell));
    QGuiApplication::clipboard()->setText(m_model.toTsv(cells, false));
}

void ComparisonTable::copyAll()
{
    QGuiApplication::clipboard()->setText(m_model.toTsv());
}

/// Ascending, descending, then the order of the list.
void ComparisonTable::sortNext(int column)
{
    QHeaderView* header = horizontalHeader();
    const bool isSame = m_sorted->sortColumn() == column;
    if (isSame && m_sorted->sortOrder() == Qt::DescendingOrder) {
        m_sorted->sort(-1);
        header->setSortIndicatorShown(false);
        return;
    }
    const Qt::SortOrder order = isSame ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_sorted->sort(column, order);
    header->setSortIndicator(column, order);
    header->setSortIndicatorShown(true);
}

void ComparisonTable::keyPressEvent(QKeyEvent* event)
{
    // the base class copies only one cell
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        QTableView::keyPressEvent(event);
}
