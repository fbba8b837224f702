// SPDX-License-Identifier: Apache-2.0
#include "ColorTable.h"

#include <QtCore/QCollator>

#include <algorithm>
#include <cmath>
#include <limits>

// Which colours the table shows, and in which order.

namespace {

using Kind = ColorTable::Kind;

constexpr double notKnown = std::numeric_limits<double>::quiet_NaN();

bool isNumber(Kind kind)
{
    return kind != Kind::Name && kind != Kind::File;
}

/// Colours in the order of @p keys; NaN last in both directions.
void sortBy(std::vector<qsizetype>& colors, const std::vector<double>& keys, Qt::SortOrder order)
{
    const auto keyOf = [&keys](qsizetype color) { return keys[static_cast<std::size_t>(color)]; };
    std::stable_sort(colors.begin(), colors.end(), [&](qsizetype first, qsizetype second) {
        const double a = keyOf(first), b = keyOf(second);
        if (std::isnan(a) || std::isnan(b))
            return !std::isnan(a);
        return order == Qt::AscendingOrder ? a < b : b < a;
    });
}

} // namespace

void ColorTable::sort(int column, Qt::SortOrder order)
{
    m_isSorted = column >= 0 && column < m_columns.size();
    if (m_isSorted)
        m_sortColumn = m_columns[column];
    m_sortOrder = order;
    arrange();
}

/// The columns of the active gamut stay when another one becomes active.
bool ColorTable::isSortColumn(const Column& column) const
{
    const bool isOfActive = column.kind == Kind::Nearest || column.kind == Kind::Device;
    return column.kind == m_sortColumn.kind && (isOfActive || column.gamut == m_sortColumn.gamut);
}

int ColorTable::sortColumn() const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
                                    [this](const Column& column) { return isSortColumn(column); });
    return m_isSorted && found != m_columns.end() ? static_cast<int>(found - m_columns.begin()) : -1;
}

void ColorTable::setZone(const std::optional<Side>& zone)
{
    m_zone = zone;
    arrange();
}

void ColorTable::setSearch(const QString& words)
{
    m_search = words;
    arrange();
}

bool ColorTable::followsChecks() const
{
    return m_zone || (m_isSorted && m_sortColumn.revision != 0);
}

/// After new results, or another tolerance.
void ColorTable::update()
{
    // A long list is arranged less often, so that the window keeps answering.
    const bool isTime = !m_arranged.isValid() || m_arranged.elapsed() > 10 * m_arrangeMs;
    if (followsChecks() && (m_checks.isComplete() || isTime))
        arrange();
    if (!m_order.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void ColorTable::arrange()
{
    m_arranged.start();
    std::vector<qsizetype> order = arranged();
    m_arrangeMs = m_arranged.elapsed();
    if (order == m_order)
        return;
    beginResetModel();
    m_order = std::move(order);
    endResetModel();
}

bool ColorTable::isShown(qsizetype color) const
{
    if (m_zone) {
        const int active = m_gamuts.activeRow();
        const bool isKnown = active >= 0 && active < m_gamuts.rowCount();
        if (!isKnown || zoneOf(m_gamuts.at(active).revision, color) != m_zone)
            return false;
    }
    return m_search.isEmpty() || m_checks.point(color).name.contains(m_search, Qt::CaseInsensitive);
}

std::vector<qsizetype> ColorTable::arranged() const
{
    std::vector<qsizetype> colors;
    for (qsizetype color = 0; color < m_checks.count(); ++color)
        if (isShown(color))
            colors.push_back(color);
    if (!m_isSorted)
        return colors;
    if (m_sortColumn.kind == Kind::Nearest || m_sortColumn.kind == Kind::Device) {
        std::stable_sort(colors.begin(), colors.end(), [this](qsizetype first, qsizetype second) {
            const int order = compareLists(m_sortColumn, first, second);
            return m_sortOrder == Qt::AscendingOrder ? order < 0 : order > 0;
        });
        return colors;
    }
    sortBy(colors,
           m_sortColumn.revision == 0 && !isNumber(m_sortColumn.kind) ? ranksOfNames(colors)
                                                                      : numbersOf(colors),
           m_sortOrder);
    return colors;
}

std::vector<double> ColorTable::numbersOf(const std::vector<qsizetype>& colors) const
{
    std::vector<double> numbers(static_cast<std::size_t>(m_checks.count()), notKnown);
    for (const qsizetype color : colors)
        numbers[static_cast<std::size_t>(color)] = numberOf(m_sortColumn, color);
    return numbers;
}

/// The places of the texts in the order of the language; equal texts have equal places.
std::vector<double> ColorTable::ranksOfNames(const std::vector<qsizetype>& colors) const
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, qsizetype>> names;
    names.reserve(colors.size());
    for (const qsizetype color : colors)
        names.emplace_back(collator.sortKey(textOf(m_sortColumn, color, true)), color);
    std::sort(names.begin(), names.end(), [](const auto& p, const auto& q) { return p.first < q.first; });
    std::vector<double> ranks(static_cast<std::size_t>(m_checks.count()), notKnown);
    double rank = 0.0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0 && names[i - 1].first < names[i].first)
            ++rank;
        ranks[static_cast<std::size_t>(names[i].second)] = rank;
    }
    return ranks;
}

/// NaN if it is unknown.
double ColorTable::numberOf(const Column& column, qsizetype color) const
{
    const KVGamut::LabPoint& lab = m_checks.point(color).lab;
    const ColorChecks::Check* check = m_checks.check(column.revision, color);
    switch (column.kind) {
    case Kind::Lightness:
        return static_cast<double>(lab.L);
    case Kind::A:
        return static_cast<double>(lab.a);
    case Kind::B:
        return static_cast<double>(lab.b);
    case Kind::Zone: // from the inside to the outside
        return check ? static_cast<double>(check->distance) : notKnown;
    case Kind::De00:
        return check ? static_cast<double>(check->de00) : notKnown;
    default:
        return notKnown;
    }
}

/// By the first value that differs; unknown ones come last in ascending order.
int ColorTable::compareLists(const Column& column, qsizetype first, qsizetype second) const
{
    const auto valuesOf = [&](qsizetype color) {
        std::vector<float> values;
        if (column.kind == Kind::Device) {
            const auto device = m_checks.device(column.revision, color);
            values.assign(device.begin(), device.end());
        } else if (const ColorChecks::Check* check = m_checks.check(column.revision, color)) {
            values = {check->nearest.L, check->nearest.a, check->nearest.b};
        }
        return values;
    };
    const std::vector<float> a = valuesOf(first), b = valuesOf(second);
    if (a.empty() || b.empty())
        return static_cast<int>(a.empty()) - static_cast<int>(b.empty());
    return a < b ? -1 : b < a ? 1 : 0;
}
