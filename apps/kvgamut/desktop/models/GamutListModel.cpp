// SPDX-License-Identifier: Apache-2.0
#include "GamutListModel.h"

#include "model/pictures/PictureStyle.h"
#include "model/text/GamutTitles.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <algorithm>

int GamutListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant GamutListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const GamutEntry& entry = m_entries[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return entry.loading ? tr("%1 – %2 %").arg(entry.title).arg(qRound(entry.progress * 100.0f))
                             : entry.title;
    case Qt::AccessibleTextRole:
        return entry.title;
    case Qt::ToolTipRole:
        return SafeText::forToolTip(toolTip(entry));
    case Qt::DecorationRole:
        return swatch(index.row());
    case Qt::CheckStateRole:
        return entry.look.visible ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

QString GamutListModel::toolTip(const GamutEntry& entry) const
{
    return entry.loading ? tr("%1\nis being computed").arg(entry.input) : entry.input;
}

bool GamutListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    KVGamutLook look = m_entries[index.row()].look;
    look.visible = value.toInt() == Qt::Checked;
    setLook(index.row(), look);
    return true;
}

Qt::ItemFlags GamutListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsUserCheckable : flags;
}

int GamutListModel::rowOf(const QString& id) const
{
    for (int row = 0; row < m_entries.size(); ++row)
        if (m_entries[row].id == id)
            return row;
    return -1;
}

QColor GamutListModel::signColor(int row, const QColor& ground) const
{
    constexpr int dark = 96; // of 0..255
    const QColor& chosen = m_entries[row].look.color;
    const QString style = qGray(ground.rgb()) < dark ? QStringLiteral("dark") : QString();
    return chosen.isValid() ? chosen : PictureStyle::named(style).key(m_entries[row].key);
}

QColor GamutListModel::swatch(int row) const
{
    return signColor(row, QGuiApplication::palette().color(QPalette::Base));
}

/// The smallest number that no gamut has.
int GamutListModel::freeKey() const
{
    const auto isTaken = [this](int key) {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [key](const GamutEntry& entry) { return entry.key == key; });
    };
    int key = 0;
    while (isTaken(key))
        ++key;
    return key;
}

QString GamutListModel::add(const QString& input, const KVGamut::Settings& settings, const KVGamutLook& look)
{
    GamutEntry entry;
    entry.id = QStringLiteral("%1 %2").arg(++m_lastNumber).arg(input);
    entry.input = input;
    entry.title = QFileInfo(input).fileName(); // retitle() makes it unique
    entry.settings = settings;
    entry.look = look;
    entry.key = freeKey();
    insert(rowCount(), entry);
    return entry.id;
}

void GamutListModel::insert(int row, const GamutEntry& entry)
{
    beginInsertRows({}, row, row);
    m_entries.insert(row, entry);
    m_activeRow += m_activeRow >= row; // the active gamut stays active
    endInsertRows();
    retitle();
    if (m_activeRow < 0)
        setActiveRow(0);
}

void GamutListModel::restore(const QList<GamutEntry>& entries, int activeRow)
{
    const auto isWanted = [&entries](const QString& id) {
        return std::any_of(entries.begin(), entries.end(),
                           [&id](const GamutEntry& entry) { return entry.id == id; });
    };
    for (int row = rowCount() - 1; row >= 0; --row)
        if (!isWanted(m_entries[row].id))
            remove(row);
    for (int row = 0; row < entries.size(); ++row) {
        if (row < rowCount() && m_entries[row].id == entries[row].id)
            adjust(row, entries[row]);
        else
            insert(row, entries[row]);
    }
    setActiveRow(activeRow);
}

void GamutListModel::adjust(int row, const GamutEntry& entry)
{
    m_entries[row].automaticOpacity = entry.automaticOpacity;
    takeLook(row, entry.look);
    setSettings(row, entry.settings);
}

void GamutListModel::remove(int row)
{
    beginRemoveRows({}, row, row);
    m_entries.removeAt(row);
    // the active gamut stays active; when it is removed, its neighbour becomes active
    m_activeRow =
        m_activeRow > row ? m_activeRow - 1 : std::min(m_activeRow, static_cast<int>(m_entries.size()) - 1);
    endRemoveRows();
    retitle();
    Q_EMIT activeRowChanged(m_activeRow);
    if (m_solo && m_entries.isEmpty())
        setSolo(false);
    else if (m_solo)
        showAgain();
}

void GamutListModel::clear()
{
    while (!m_entries.isEmpty())
        remove(rowCount() - 1);
}

void GamutListModel::setLook(int row, const KVGamutLook& look)
{
    const KVGamutLook& old = m_entries[row].look;
    if (old.opacity != look.opacity || old.surface != look.surface)
        m_entries[row].automaticOpacity = false;
    takeLook(row, look);
}

void GamutListModel::setAutomaticOpacity(int row, float opacity)
{
    m_entries[row].automaticOpacity = true;
    KVGamutLook look = m_entries[row].look;
    look.opacity = opacity;
    takeLook(row, look);
}

void GamutListModel::takeLook(int row, const KVGamutLook& look)
{
    if (m_entries[row].look == look)
        return;
    m_entries[row].look = look;
    changed(row, {LookRole, Qt::CheckStateRole, Qt::DecorationRole});
}

void GamutListModel::setSettings(int row, const KVGamut::Settings& settings)
{
    GamutEntry& entry = m_entries[row];
    if (entry.settings == settings)
        return;
    entry.settings = settings;
    computeAgain(row);
}

void GamutListModel::computeAgain(int row)
{
    m_entries[row].loading = true;
    m_entries[row].progress = 0.0f;
    changed(row, {SettingsRole, LoadingRole, Qt::DisplayRole});
}

void GamutListModel::setActiveRow(int row)
{
    if (row == m_activeRow || row < 0 || row >= m_entries.size())
        return;
    m_formerlyActive = m_activeRow < 0 ? QString() : m_entries[m_activeRow].id;
    m_activeRow = row;
    Q_EMIT activeRowChanged(row);
    if (m_solo)
        showAgain();
}

void GamutListModel::setSolo(bool solo)
{
    if (m_solo == (solo && !m_entries.isEmpty()))
        return;
    m_solo = !m_solo;
    showAgain();
    Q_EMIT soloChanged(m_solo);
}

/// After a change of which gamuts are seen.
void GamutListModel::showAgain()
{
    for (int row = 0; row < rowCount(); ++row)
        changed(row, {LookRole});
}

void GamutListModel::changeActiveLook(const std::function<void(KVGamutLook&)>& change)
{
    if (m_activeRow < 0)
        return;
    KVGamutLook look = m_entries[m_activeRow].look;
    change(look);
    setLook(m_activeRow, look);
}

void GamutListModel::changeActiveSettings(const std::function<void(KVGamut::Settings&)>& change)
{
    if (m_activeRow < 0)
        return;
    KVGamut::Settings settings = m_entries[m_activeRow].settings;
    change(settings);
    setSettings(m_activeRow, settings);
}

void GamutListModel::setProgress(int row, float progress)
{
    if (qFuzzyCompare(m_entries[row].progress + 1.0f, progress + 1.0f))
        return;
    m_entries[row].progress = progress;
    changed(row, {LoadingRole, Qt::DisplayRole});
}

void GamutListModel::setGamut(int row, const KVGamut::GamutObject& gamut)
{
    GamutEntry& entry = m_entries[row];
    entry.gamut = gamut;
    entry.revision = ++m_lastRevision;
    entry.computedWith = entry.settings;
    entry.loading = false;
    entry.progress = 0.0f;
    changed(row, {GamutRole, LoadingRole, Qt::DisplayRole});
}

void GamutListModel::abandonLoad(int row)
{
    GamutEntry& entry = m_entries[row];
    if (!entry.hasGamut()) {
        const bool wasActive = row == m_activeRow;
        const QString former = m_formerlyActive; // views may choose another row during the removal
        remove(row);
        if (wasActive)
            setActiveRow(rowOf(former));
        return;
    }
    entry.settings = entry.computedWith;
    entry.loading = false;
    entry.progress = 0.0f;
    changed(row, {LoadingRole, Qt::DisplayRole});
}

void GamutListModel::changed(int row, const QList<int>& roles)
{
    Q_EMIT dataChanged(index(row), index(row), roles);
}

void GamutListModel::retitle()
{
    QStringList inputs;
    for (const GamutEntry& entry : std::as_const(m_entries))
        inputs.append(entry.input);
    const QStringList titles = gamutTitles(inputs);
    for (int row = 0; row < rowCount(); ++row) {
        if (m_entries[row].title == titles[row])
            continue;
        m_entries[row].title = titles[row];
        changed(row, {Qt::DisplayRole, Qt::AccessibleTextRole});
    }
}
