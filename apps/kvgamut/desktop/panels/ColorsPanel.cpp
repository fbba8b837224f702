// SPDX-License-Identifier: Apache-2.0
#include "ColorsPanel.h"

#include "desktop/view/Accessibility.h"

#include <QtCore/QItemSelection>
#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

ColorsPanel::ColorsPanel(ColorTable& table, const ColorChecks& checks, QWidget* files, QWidget* parent)
    : QWidget(parent), m_table(table), m_checks(checks), m_view(new QTreeView), m_search(new QLineEdit),
      m_zone(new QComboBox), m_state(new QLabel)
{
    setObjectName(QStringLiteral("colorsPanel"));
    makeTable();
    makeActions();
    m_state->setObjectName(QStringLiteral("colorState"));
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // may be longer than the panel is wide

    auto* upper = new QWidget;
    auto* column = new QVBoxLayout(upper);
    column->addWidget(makeFilters());
    column->addWidget(m_view, 1);
    column->addWidget(m_state);
    column->setContentsMargins(9, 6, 9, 0);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(upper);
    parts->addWidget(files);
    parts->setStretchFactor(0, 1);
    parts->setSizes({240, 120});
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(parts);

    connect(&table, &QAbstractItemModel::modelAboutToBeReset, this, &ColorsPanel::rememberRows);
    connect(&table, &QAbstractItemModel::modelReset, this, &ColorsPanel::restoreRows);
    connect(&table, &QAbstractItemModel::dataChanged, this, &ColorsPanel::announce);
    connect(&checks, &ColorChecks::computed, this, &ColorsPanel::showState);
    connect(&checks, &ColorChecks::colorsChanged, this, [this] {
        m_selected.clear(); // the numbers now belong to other colours
        m_current.reset();
        deselect();
    });
    sizeColumns();
    showState();
}

void ColorsPanel::makeTable()
{
    m_view->setObjectName(QStringLiteral("colors"));
    m_view->setAccessibleName(tr("Colours"));
    m_view->setMinimumHeight(m_view->fontMetrics().height() * 3); // titles and a colour
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true); // no row is measured, however many there are
    m_view->setAllColumnsShowFocus(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setIconSize(QSize(22, 11));
    m_view->setModel(&m_table);
    m_view->header()->setSortIndicatorClearable(true);
    m_view->header()->setStretchLastSection(false);
    m_view->header()->setTextElideMode(Qt::ElideMiddle);
    m_view->header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_view->setSortingEnabled(true);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ColorsPanel::announce);
}

void ColorsPanel::makeActions()
{
    const auto add = [this](const char* name, const QString& text, const QKeySequence& key) {
        auto* action = new QAction(text, m_view);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut);
        m_view->addAction(action);
        return action;
    };
    connect(add("copyRows", tr("Copy rows"), QKeySequence::Copy), &QAction::triggered, this,
            &ColorsPanel::copy);
    connect(add("copyAllRows", tr("Copy all rows"), {}), &QAction::triggered, this, &ColorsPanel::copyAll);
    connect(add("saveRows", tr("Save the table as CSV…"), {}), &QAction::triggered, this,
            &ColorsPanel::saveRequested);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QWidget* ColorsPanel::makeFilters()
{
    m_search->setObjectName(QStringLiteral("colorSearch"));
    m_search->setPlaceholderText(tr("Search by name"));
    m_search->setAccessibleName(tr("Search colours by name"));
    m_search->setClearButtonEnabled(true);
    m_zone->setObjectName(QStringLiteral("colorZone"));
    m_zone->setToolTip(tr("Which colours are listed, by their place in the active gamut"));
    m_zone->addItem(tr("All"));
    m_zone->addItem(tr("Outside"), static_cast<int>(Side::Outside));
    m_zone->addItem(tr("Edge"), static_cast<int>(Side::Edge));
    m_zone->addItem(tr("Inside"), static_cast<int>(Side::Inside));
    connect(m_search, &QLineEdit::textChanged, &m_table, &ColorTable::setSearch);
    connect(m_zone, &QComboBox::currentIndexChanged, this, [this] {
        const QVariant zone = m_zone->currentData();
        m_table.setZone(zone.isValid() ? std::optional(static_cast<Side>(zone.toInt())) : std::nullopt);
    });
    auto* filters = new QWidget;
    auto* row = new QHBoxLayout(filters);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_search, 1);
    row->addWidget(m_zone);
    setUnseenLabel(*m_zone, tr("Zone of the active gamut"));
    return filters;
}

// --- Rows -----------------------------------------------------------------------------------------

QList<int> ColorsPanel::selectedRows() const
{
    QList<int> rows;
    for (const QItemSelectionRange& range : m_view->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

/// Before the order changes: a view forgets its rows then.
void ColorsPanel::rememberRows()
{
    m_selected.clear();
    for (const int row : selectedRows())
        m_selected.push_back(m_table.colorOf(row));
    const QModelIndex current = m_view->currentIndex();
    m_current = current.isValid() ? std::optional(m_table.colorOf(current.row())) : std::nullopt;
    m_scrolled = m_view->verticalScrollBar()->value();
    m_isRestoring = true;
}

void ColorsPanel::restoreRows()
{
    std::sort(m_selected.begin(), m_selected.end());
    QItemSelection selection;
    for (int row = 0; row < m_table.rowCount() && !m_selected.empty(); ++row)
        if (std::binary_search(m_selected.begin(), m_selected.end(), m_table.colorOf(row)))
            selection.select(m_table.index(row, 0), m_table.index(row, m_table.columnCount() - 1));
    const int current = m_current ? m_table.rowOf(*m_current) : -1;
    m_view->selectionModel()->setCurrentIndex(current < 0 ? QModelIndex() : m_table.index(current, 0),
                                              QItemSelectionModel::NoUpdate);
    m_view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_view->verticalScrollBar()->setValue(m_scrolled);
    m_isRestoring = false;
    sizeColumns();
    announce();
    showState();
}

/// Widths for the longest usual texts: to measure the rows would take long if there are many. Columns that
/// stay keep the width that the user gave them.
void ColorsPanel::sizeColumns()
{
    QStringList titles;
    for (int column = 0; column < m_table.columnCount(); ++column)
        titles.append(m_table.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    if (titles == m_titles)
        return;
    m_titles = titles;
    const QSignalBlocker noSorting(m_view->header()); // the rows are sorted already
    m_view->header()->setSortIndicator(m_table.sortColumn(), m_view->header()->sortIndicatorOrder());
    const auto widthOf = [this](ColorTable::Kind kind) {
        switch (kind) {
        case ColorTable::Kind::Name:
        case ColorTable::Kind::File:
            return fontMetrics().averageCharWidth() * 20;
        case ColorTable::Kind::Zone: // titles that contain the name of a gamut are shortened
        case ColorTable::Kind::De00:
            return fontMetrics().averageCharWidth() * 10 + 30;
        case ColorTable::Kind::Nearest:
            return fontMetrics().horizontalAdvance(QStringLiteral("100.0 -128.0 -128.0 ")) + 30;
        case ColorTable::Kind::Device:
            return fontMetrics().horizontalAdvance(QStringLiteral("100 100 100 100  "));
        default:
            return 0;
        }
    };
    for (int column = 0; column < m_table.columnCount(); ++column) {
        const int width = widthOf(m_table.kindOf(column));
        m_view->setColumnWidth(column, width > 0 ? width : m_view->header()->sectionSizeHint(column));
    }
}

void ColorsPanel::announce()
{
    if (m_isRestoring)
        return;
    const QModelIndex current = m_view->currentIndex();
    Q_EMIT chosen(current.isValid() ? std::optional(m_table.colorOf(current.row())) : std::nullopt);
}

void ColorsPanel::select(qsizetype color)
{
    if (m_table.rowOf(color) < 0) {
        m_search->clear();
        m_zone->setCurrentIndex(0);
    }
    const int row = m_table.rowOf(color);
    if (row >= 0)
        m_view->setCurrentIndex(m_table.index(row, 0));
}

void ColorsPanel::deselect()
{
    m_view->clearSelection();
    m_view->setCurrentIndex({});
}

void ColorsPanel::showState()
{
    const QLocale locale;
    QString text = m_table.rowCount() == m_checks.count()
                       ? tr("Colours: %1").arg(locale.toString(m_checks.count()))
                       : tr("Colours: %1 of %2")
                             .arg(locale.toString(m_table.rowCount()), locale.toString(m_checks.count()));
    if (!m_checks.isComplete())
        text = tr("%1, computing: %2 %").arg(text).arg(static_cast<int>(m_checks.progress() * 100.0f));
    m_state->setText(text);
}

// --- For other programs ---------------------------------------------------------------------------

void ColorsPanel::copy() const
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        copyAll();
    else
        QGuiApplication::clipboard()->setText(m_table.toTsv(rows));
}

void ColorsPanel::copyAll() const
{
    QList<int> rows;
    for (int row = 0; row < m_table.rowCount(); ++row)
        rows.append(row);
    QGuiApplication::clipboard()->setText(m_table.toTsv(rows));
}
