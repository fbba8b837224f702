// SPDX-License-Identifier: Apache-2.0
#include "CoverageModel.h"

#include "desktop/models/Threads.h"

#include <QtCore/QFuture>
#include <QtCore/QLocale>

CoverageModel::CoverageModel(const GamutListModel& gamuts, QObject* parent)
    : QAbstractTableModel(parent), m_gamuts(gamuts)
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &CoverageModel::refresh);
    const auto refreshSoon = [this] { m_soon.start(0); };
    connect(&gamuts, &QAbstractItemModel::rowsInserted, this, refreshSoon);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, refreshSoon);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this, refreshSoon);
    refresh();
}

CoverageModel::~CoverageModel()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void CoverageModel::refresh()
{
    QList<Item> items;
    QList<const GamutEntry*> entries;
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (!entry.hasGamut())
            continue;
        items.append({entry.revision, entry.title, m_gamuts.swatch(row)});
        entries.append(&entry);
    }
    beginResetModel();
    m_items = items;
    endResetModel();
    for (qsizetype a = 0; a < entries.size(); ++a) {
        for (qsizetype b = a + 1; b < entries.size(); ++b) {
            const Pair pair(items[a].revision, items[b].revision);
            if (m_shares.contains(pair))
                continue;
            m_shares.insert(pair, {-1.0, 0.0}); // is being computed
            ++m_pending;
            Threads::run(m_pool, [p = entries[a]->gamut, q = entries[b]->gamut] {
                return p.compareWithUncertainty(q);
            }).then(this, [this, pair](const KVGamut::ComparisonReport& comparison) {
                --m_pending;
                m_shares.insert(pair, {comparison.values.firstCovered, comparison.uncertainty.firstCovered});
                m_shares.insert(Pair(pair.second, pair.first),
                                {comparison.values.secondCovered, comparison.uncertainty.secondCovered});
                if (!m_items.isEmpty())
                    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
            });
        }
    }
}

std::optional<CoverageModel::Share> CoverageModel::share(int row, int column) const
{
    if (row == column)
        return Share{1.0, 0.0};
    const auto known = m_shares.constFind(Pair(m_items[row].revision, m_items[column].revision));
    if (known == m_shares.cend() || known->value < 0.0)
        return {};
    return *known;
}

int CoverageModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

int CoverageModel::columnCount(const QModelIndex& parent) const
{
    return rowCount(parent);
}

QVariant CoverageModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const std::optional<Share> known = share(index.row(), index.column());
    const QLocale locale;
    switch (role) {
    case Qt::DisplayRole:
        if (index.row() == index.column())
            return QStringLiteral("–");
        return known ? QStringLiteral("%1 %").arg(locale.toString(known->value * 100.0, 'f', 2))
                     : tr("computing…");
    case Qt::ToolTipRole:
        return known && index.row() != index.column()
                   ? QVariant(
                         QStringLiteral("± %1 %").arg(locale.toString(known->uncertainty * 100.0, 'f', 3)))
                   : QVariant();
    case Qt::AccessibleDescriptionRole:
        return tr("Share of %1 that %2 covers")
            .arg(m_items[index.row()].title, m_items[index.column()].title);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant CoverageModel::headerData(int section, Qt::Orientation, int role) const
{
    if (section < 0 || section >= m_items.size())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return m_items[section].title;
    case Qt::DecorationRole:
        return m_items[section].color;
    default:
        return {};
    }
}

QString CoverageModel::toTsv() const
{
    QStringList lines;
    QStringList words{QString()};
    for (const Item& item : m_items)
        words.append(item.title);
    lines.append(words.join(QLatin1Char('\t')));
    for (int row = 0; row < rowCount(); ++row) {
        words = {m_items[row].title};
        for (int column = 0; column < columnCount(); ++column) {
            const std::optional<Share> known = share(row, column);
            words.append(known ? QString::number(known->value, 'f', 6) : QString());
        }
        lines.append(words.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}
