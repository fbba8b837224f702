// SPDX-License-Identifier: Apache-2.0
#include "ColorTable.h"

#include "ColorSymbols.h"
#include "desktop/language/ShownWords.h"
#include "model/points/Lab.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtGui/QIcon>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Kind = ColorTable::Kind;

constexpr int symbolHeight = 11;

/// With @p decimals, and no sign before a zero.
QString number(double value, int decimals, const QLocale& locale)
{
    const double scale = std::pow(10.0, decimals);
    return locale.toString(std::round(value * scale) / scale + 0.0, 'f', decimals);
}

QLocale localeFor(bool plain)
{
    QLocale locale = plain ? QLocale::c() : QLocale();
    if (plain)
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

QString labText(const KVGamut::LabPoint& lab, bool plain)
{
    const QLocale locale = localeFor(plain);
    const int decimals = plain ? 4 : 1;
    return QStringLiteral("%1 %2 %3")
        .arg(number(static_cast<double>(lab.L), decimals, locale),
             number(static_cast<double>(lab.a), decimals, locale),
             number(static_cast<double>(lab.b), decimals, locale));
}

QString deviceText(std::span<const float> device, bool plain)
{
    const QLocale locale = localeFor(plain);
    QStringList words;
    for (const float value : device)
        words.append(number(static_cast<double>(value), plain ? 2 : 0, locale));
    return words.join(QLatin1Char(' '));
}

QString zoneWord(Side side)
{
    switch (side) {
    case Side::Inside:
        return ColorTable::tr("inside");
    case Side::Edge:
        return ColorTable::tr("edge");
    case Side::Outside:
        break;
    }
    return ColorTable::tr("outside");
}

/// Views tint the pictures of selected rows unless they are given for that, too.
QIcon untinted(const QPixmap& picture)
{
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

bool isNumeric(Kind kind)
{
    return kind != Kind::Name && kind != Kind::Zone && kind != Kind::File;
}

} // namespace

ColorTable::ColorTable(const ColorChecks& checks, const GamutListModel& gamuts, const PointLayer& points,
                       QObject* parent)
    : QAbstractTableModel(parent), m_checks(checks), m_gamuts(gamuts), m_points(points),
      m_tolerance(points.tolerance())
{
    connect(&checks, &ColorChecks::colorsChanged, this, &ColorTable::makeColumns);
    connect(&checks, &ColorChecks::computed, this, &ColorTable::update);
    connect(&gamuts, &QAbstractItemModel::rowsInserted, this, &ColorTable::makeColumns);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &ColorTable::makeColumns);
    connect(&gamuts, &GamutListModel::activeRowChanged, this, &ColorTable::makeColumns);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole) ||
                    roles.contains(Qt::AccessibleTextRole)) // the title
                    makeColumns();
            });
    connect(&points, &QAbstractItemModel::dataChanged, this, [this] {
        if (m_tolerance != m_points.tolerance()) {
            m_tolerance = m_points.tolerance();
            update();
        }
    });
    makeColumns();
}

int ColorTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
}

int ColorTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

void ColorTable::makeColumns()
{
    beginResetModel();
    m_columns = {{Kind::Name, 0, {}}};
    Column active;
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (!entry.hasGamut())
            continue;
        const bool isActive = row == m_gamuts.activeRow(); // it comes first
        qsizetype at = isActive ? 1 : m_columns.size();
        for (const Kind kind : {Kind::Zone, Kind::De00})
            m_columns.insert(at++, {kind, entry.revision, entry.title});
        if (isActive)
            active = m_columns[1];
    }
    for (const Kind kind : {Kind::Nearest, Kind::Device})
        if (active.revision != 0)
            m_columns.append({kind, active.revision, active.gamut});
    for (const Kind kind : {Kind::Lightness, Kind::A, Kind::B, Kind::File})
        m_columns.append({kind, 0, {}});
    const int sorted = sortColumn();
    m_isSorted = sorted >= 0;
    if (m_isSorted)
        m_sortColumn = m_columns[sorted]; // a gamut that was computed again has another revision
    m_order = arranged();
    endResetModel();
}

int ColorTable::columnOf(Kind kind) const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
                                    [kind](const Column& column) { return column.kind == kind; });
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
}

int ColorTable::rowOf(qsizetype color) const
{
    const auto found = std::find(m_order.begin(), m_order.end(), color);
    return found == m_order.end() ? -1 : static_cast<int>(found - m_order.begin());
}

std::optional<Side> ColorTable::zoneOf(quint64 revision, qsizetype color) const
{
    const ColorChecks::Check* check = m_checks.check(revision, color);
    return check ? std::optional(sideOf(check->distance, m_tolerance)) : std::nullopt;
}

// --- Cells ----------------------------------------------------------------------------------------

QString ColorTable::unknownText(bool plain) const
{
    if (plain)
        return {};
    return m_checks.isComplete() ? QStringLiteral("–") : QStringLiteral("…");
}

QString ColorTable::textOf(const Column& column, qsizetype color, bool plain) const
{
    const MeasuredPoint& point = m_checks.point(color);
    const ColorChecks::Check* check = m_checks.check(column.revision, color);
    const auto decimal = [&](float value, int decimals) {
        return number(static_cast<double>(value), plain ? 4 : decimals, localeFor(plain));
    };
    switch (column.kind) {
    case Kind::Name:
        return SafeText::shown(point.name.isEmpty() && !plain
                                   ? tr("Colour %1").arg(m_checks.place(color).index + 1)
                                   : point.name);
    case Kind::Lightness:
        return decimal(point.lab.L, 1);
    case Kind::A:
        return decimal(point.lab.a, 1);
    case Kind::B:
        return decimal(point.lab.b, 1);
    case Kind::File:
        return SafeText::shown(QFileInfo(m_checks.file(color)).fileName());
    default:
        break;
    }
    if (!check)
        return unknownText(plain);
    switch (column.kind) {
    case Kind::Zone: {
        const Side side = sideOf(check->distance, m_tolerance);
        return plain ? plainZone(side) : zoneWord(side);
    }
    case Kind::De00:
        return decimal(check->de00, 2);
    case Kind::Nearest:
        return labText(check->nearest, plain);
    default: {
        const auto device = m_checks.device(column.revision, color);
        return device.empty() && !plain ? QStringLiteral("–") : deviceText(device, plain);
    }
    }
}

QVariant ColorTable::symbolOf(const Column& column, qsizetype color) const
{
    if (column.kind == Kind::Name)
        return untinted(ColorSymbols::swatch(m_checks.point(color).lab, symbolHeight));
    const ColorChecks::Check* check = m_checks.check(column.revision, color);
    if (!check)
        return {};
    if (column.kind == Kind::Zone)
        return untinted(ColorSymbols::zone(sideOf(check->distance, m_tolerance), symbolHeight));
    return column.kind == Kind::Nearest
               ? QVariant(untinted(ColorSymbols::swatch(check->nearest, symbolHeight)))
               : QVariant();
}

QString ColorTable::toolTipOf(const Column& column, qsizetype color) const
{
    const KVGamut::LabPoint& lab = m_checks.point(color).lab;
    if (column.kind == Kind::Name && !isScreenColor(lab))
        return tr("The screen cannot show this colour; the patch shows a similar one");
    if (column.kind == Kind::File)
        return SafeText::forToolTip(m_checks.file(color));
    const ColorChecks::Check* check = m_checks.check(column.revision, color);
    if (check && (column.kind == Kind::Zone || column.kind == Kind::De00))
        return ShownWords::distance(check->distance, column.gamut);
    return SafeText::forToolTip(textOf(column, color, false));
}

QVariant ColorTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    const Column& column = m_columns[index.column()];
    const qsizetype color = colorOf(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return textOf(column, color, false);
    case PlainRole:
        return textOf(column, color, true);
    case Qt::DecorationRole:
        return symbolOf(column, color);
    case Qt::ToolTipRole:
        return toolTipOf(column, color);
    case Qt::TextAlignmentRole:
        return QVariant(isNumeric(column.kind) ? Qt::AlignRight | Qt::AlignVCenter
                                               : Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

QString ColorTable::titleOf(const Column& column) const
{
    switch (column.kind) {
    case Kind::Name:
        return tr("Colour");
    case Kind::Lightness:
        return QStringLiteral("L*");
    case Kind::A:
        return QStringLiteral("a*");
    case Kind::B:
        return QStringLiteral("b*");
    case Kind::Zone:
        return column.gamut;
    case Kind::De00:
        return QStringLiteral("ΔE00 ") + column.gamut;
    case Kind::Nearest:
        return tr("Nearest in %1").arg(column.gamut);
    case Kind::Device:
        return tr("Device values, %1").arg(column.gamut);
    case Kind::File:
        return tr("File");
    }
    return {};
}

QVariant ColorTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    const Column& column = m_columns[section];
    if (role == Qt::ToolTipRole && column.kind == Kind::De00)
        return tr("CIEDE2000 to the nearest colour of %1; 0 inside").arg(column.gamut);
    if (role == Qt::ToolTipRole && column.kind == Kind::Device)
        return tr("What the profile of %1 makes of the colour, in percent").arg(column.gamut);
    return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(titleOf(column)) : QVariant();
}
