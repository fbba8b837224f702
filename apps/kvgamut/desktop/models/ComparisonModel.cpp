// SPDX-License-Identifier: Apache-2.0
#include "ComparisonModel.h"

#include "desktop/language/ShownWords.h"
#include "desktop/models/Threads.h"
#include "model/reports/GamutWords.h"
#include "model/text/SafeText.h"

#include <QtCore/QFuture>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace {

bool isShare(int column)
{
    return column == ComparisonModel::CoversActive || column == ComparisonModel::CoveredByActive;
}

/// With one decimal each, and no sign before a zero.
QString labText(const KVGamut::LabPoint& lab, const QLocale& locale, const QString& between)
{
    const auto decimal = [&locale](float value) {
        const double rounded = std::round(static_cast<double>(value) * 10.0) / 10.0;
        return locale.toString(rounded + 0.0, 'f', 1);
    };
    return QStringList{decimal(lab.L), decimal(lab.a), decimal(lab.b)}.join(between);
}

/// A colour takes three cells in other programs.
constexpr QLatin1Char cellEnd('\t');

} // namespace

ComparisonModel::ComparisonModel(GamutListModel& gamuts, QObject* parent)
    : QAbstractTableModel(parent), m_gamuts(gamuts)
{
    m_pool.setMaxThreadCount(1);
    connect(&gamuts, &QAbstractItemModel::rowsInserted, this, &ComparisonModel::refresh);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &ComparisonModel::refresh);
    connect(&gamuts, &GamutListModel::activeRowChanged, this, &ComparisonModel::refresh);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole) ||
                    roles.contains(Qt::AccessibleTextRole)) // the title
                    refresh();
            });
}

ComparisonModel::~ComparisonModel()
{
    m_pool.clear();
    m_pool.waitForDone();
}

int ComparisonModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ComparisonModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

const GamutEntry* ComparisonModel::active() const
{
    const int row = m_gamuts.activeRow();
    return row >= 0 && row < m_gamuts.rowCount() && m_gamuts.at(row).hasGamut() ? &m_gamuts.at(row) : nullptr;
}

void ComparisonModel::refresh()
{
    beginResetModel();
    m_rows.clear();
    QHash<quint64, KVGamut::Report> reports;
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (!entry.hasGamut())
            continue;
        m_rows.append(row);
        reports.insert(entry.revision,
                       m_reports.contains(entry.revision) ? m_reports[entry.revision] : entry.gamut.report());
    }
    m_reports = reports;
    m_comparisons.removeIf([&](const auto& known) {
        return !m_reports.contains(known.key().first) || !m_reports.contains(known.key().second);
    });
    endResetModel();

    if (const GamutEntry* first = active())
        for (int row : std::as_const(m_rows))
            if (&m_gamuts.at(row) != first)
                request(*first, m_gamuts.at(row));
}

void ComparisonModel::request(const GamutEntry& first, const GamutEntry& second)
{
    const Pair pair(first.revision, second.revision);
    if (m_comparisons.contains(pair) || m_pending.contains(pair))
        return;
    m_pending.insert(pair);
    Threads::run(m_pool, [a = first.gamut, b = second.gamut] {
        return a.compareWithUncertainty(b);
    }).then(this, [this, pair](const KVGamut::ComparisonReport& comparison) {
        m_pending.remove(pair);
        if (!m_reports.contains(pair.first) || !m_reports.contains(pair.second))
            return; // one of the gamuts was removed during the comparison
        m_comparisons.insert(pair, comparison);
        if (!m_rows.isEmpty())
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    });
}

std::optional<KVGamut::ComparisonReport> ComparisonModel::comparison(const GamutEntry& entry) const
{
    const GamutEntry* first = active();
    if (!first || first == &entry)
        return {};
    const auto known = m_comparisons.constFind(Pair(first->revision, entry.revision));
    if (known == m_comparisons.cend())
        return {};
    return *known;
}

bool ComparisonModel::isComplete() const
{
    return std::all_of(m_rows.begin(), m_rows.end(), [this](int row) {
        return &m_gamuts.at(row) == active() || comparison(m_gamuts.at(row));
    });
}

std::optional<double> ComparisonModel::number(const GamutEntry& entry, int column) const
{
    const KVGamut::Report report = m_reports.value(entry.revision);
    if (column == Volume)
        return report.volume;
    if (column == Uncertainty)
        return report.volumeUncertainty;
    const auto with = comparison(entry);
    if (!with)
        return {};
    switch (column) {
    case Intersection:
        return with->values.intersection;
    case Union:
        return with->values.unionVolume;
    case CoversActive:
        return with->values.firstCovered;
    case CoveredByActive:
        return with->values.secondCovered;
    default:
        return {};
    }
}

/// Of the values of a comparison.
std::optional<double> ComparisonModel::uncertainty(const GamutEntry& entry, int column) const
{
    const auto with = comparison(entry);
    if (!with)
        return {};
    switch (column) {
    case Intersection:
        return with->uncertainty.intersection;
    case Union:
        return with->uncertainty.unionVolume;
    case CoversActive:
        return with->uncertainty.firstCovered;
    case CoveredByActive:
        return with->uncertainty.secondCovered;
    default:
        return {};
    }
}

QString ComparisonModel::toolTip(const GamutEntry& entry, int column) const
{
    if (column == Intent)
        return ShownWords::conversion(m_reports.value(entry.revision));
    const auto value = uncertainty(entry, column);
    if (!value)
        return SafeText::forToolTip(entry.input);
    const QLocale locale;
    return isShare(column) ? QStringLiteral("± %1 %").arg(locale.toString(*value * 100.0, 'f', 3))
                           : QStringLiteral("± ") + locale.toString(*value, 'f', 0);
}

QString ComparisonModel::shownText(const GamutEntry& entry, int column) const
{
    const QLocale locale;
    switch (column) {
    case Name:
        return entry.title;
    case Intent:
        return ShownWords::basis(entry.computedWith, entry.gamut.method());
    case White:
        return labText(m_reports.value(entry.revision).white, locale, QStringLiteral("  "));
    default:
        break;
    }
    const auto value = number(entry, column);
    if (!value)
        return &entry == active() || !active() ? QStringLiteral("–") : tr("computing…");
    if (isShare(column))
        return QStringLiteral("%1 %").arg(locale.toString(*value * 100.0, 'f', 2));
    return column == Uncertainty ? QStringLiteral("± ") + locale.toString(*value, 'f', 0)
                                 : locale.toString(*value, 'f', 0);
}

QString ComparisonModel::plainText(const GamutEntry& entry, int column) const
{
    if (column == White)
        return labText(m_reports.value(entry.revision).white, QLocale::c(), QString(cellEnd));
    if (column < Volume)
        return shownText(entry, column);
    const auto value = number(entry, column);
    if (!value)
        return {};
    return isShare(column) ? QString::number(*value, 'f', 6)
                           : QString::number(*value, 'f', GamutWords::volumeDecimals);
}

QVariant ComparisonModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || m_rows[index.row()] >= m_gamuts.rowCount())
        return {};
    const int row = m_rows[index.row()];
    const GamutEntry& entry = m_gamuts.at(row);
    switch (role) {
    case Qt::DisplayRole:
        return shownText(entry, index.column());
    case PlainRole:
        return plainText(entry, index.column());
    case SortRole:
        return index.column() < Volume
                   ? QVariant(index.column() == White ? QVariant(m_reports.value(entry.revision).white.L)
                                                      : QVariant(shownText(entry, index.column())))
                   : QVariant(number(entry, index.column()).value_or(-1.0));
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(m_gamuts.swatch(row)) : QVariant();
    case Qt::ToolTipRole:
        return toolTip(entry, index.column());
    case Qt::TextAlignmentRole:
        return QVariant(index.column() < White ? Qt::AlignLeft | Qt::AlignVCenter
                                               : Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QString ComparisonModel::activeTitle() const
{
    const GamutEntry* first = active();
    return first ? first->title : tr("the active gamut");
}

QVariant ComparisonModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::ToolTipRole || role == PlainRole)
        return fullTitle(section);
    return role == Qt::DisplayRole ? shortTitle(section) : QVariant();
}

/// Omits the name of the active gamut, which may be long; the panel's title shows it.
QVariant ComparisonModel::shortTitle(int column) const
{
    switch (column) {
    case Uncertainty:
        return QStringLiteral("±");
    case Intersection:
        return tr("Intersection");
    case Union:
        return tr("Union");
    case CoversActive:
        return tr("Covers");
    case CoveredByActive:
        return tr("Inside");
    default:
        return fullTitle(column);
    }
}

QVariant ComparisonModel::fullTitle(int column) const
{
    switch (column) {
    case Name:
        return tr("Gamut");
    case Intent:
        return tr("Intent");
    case White:
        return tr("White L* a* b*");
    case Volume:
        return tr("Volume ΔE³");
    case Uncertainty:
        return tr("Uncertainty");
    case Intersection:
        return tr("Intersection with %1").arg(activeTitle());
    case Union:
        return tr("Union with %1").arg(activeTitle());
    case CoversActive:
        return tr("Share of %1 that this one covers").arg(activeTitle());
    case CoveredByActive:
        return tr("Share of this one that %1 covers").arg(activeTitle());
    default:
        return {};
    }
}

QString ComparisonModel::toTsv(const QModelIndexList& cells, bool titles) const
{
    QList<int> rows;
    QList<int> columns;
    for (const QModelIndex& cell : cells) {
        if (!rows.contains(cell.row()))
            rows.append(cell.row());
        if (!columns.contains(cell.column()))
            columns.append(cell.column());
    }
    std::sort(rows.begin(), rows.end());
    std::sort(columns.begin(), columns.end());

    QStringList lines;
    QStringList words;
    if (titles) {
        for (int column : std::as_const(columns))
            words.append(column == White ? tr("White L*\tWhite a*\tWhite b*") : fullTitle(column).toString());
        lines.append(words.join(QLatin1Char('\t')));
    }
    for (int row : std::as_const(rows)) {
        words.clear();
        for (int column : std::as_const(columns)) {
            const QModelIndex cell = index(row, column);
            const QString none = column == White ? QString(2, cellEnd) : QString();
            words.append(cells.contains(cell) ? data(cell, PlainRole).toString() : none);
        }
        lines.append(words.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

QString ComparisonModel::toTsv() const
{
    QModelIndexList cells;
    for (int row = 0; row < rowCount(); ++row)
        for (int column = 0; column < ColumnCount; ++column)
            cells.append(index(row, column));
    return toTsv(cells, true);
}
