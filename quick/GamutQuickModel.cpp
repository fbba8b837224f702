// SPDX-License-Identifier: Apache-2.0
#include "GamutQuickModelPrivate.h"

#include <algorithm>
#include <optional>

namespace {

/// @p look with the value of one role; nullopt if there is no such role or the value has another type.
std::optional<KVGamutLook> changed(KVGamutLook look, const QVariant& value, int role)
{
    switch (role) {
    case KVGamutQuickModel::VisibleRole:
        look.visible = value.toBool();
        break;
    case KVGamutQuickModel::ColorRole:
        look.color = value.value<QColor>();
        break;
    case KVGamutQuickModel::OpacityRole:
        if (!value.canConvert<float>())
            return {};
        look.opacity = std::clamp(value.toFloat(), 0.0f, 1.0f);
        break;
    case KVGamutQuickModel::ModeRole:
        look.mode = static_cast<KVGamut3DViewer::DisplayMode>(
            std::clamp<int>(value.toInt(), KVGamut3DViewer::Solid, KVGamut3DViewer::Wireframe));
        break;
    default:
        return {};
    }
    return look;
}

QVariant partOf(const KVGamutLook& look, int role)
{
    switch (role) {
    case KVGamutQuickModel::VisibleRole:
        return look.visible;
    case KVGamutQuickModel::ColorRole:
        return look.color;
    case KVGamutQuickModel::OpacityRole:
        return look.opacity;
    case KVGamutQuickModel::ModeRole:
        return static_cast<int>(look.mode);
    default:
        return {};
    }
}

} // namespace

int KVGamutQuickModel::Private::rowOf(const QString& id) const
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& row) { return row.id == id; });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

KVGamutQuickModel::Private::Row& KVGamutQuickModel::Private::findOrAdd(const QString& id)
{
    if (const int row = rowOf(id); row >= 0)
        return m_rows[row];
    const int end = static_cast<int>(m_rows.size());
    m_model.beginInsertRows({}, end, end);
    m_rows.append({id, {}, {}});
    m_model.endInsertRows();
    Q_EMIT m_model.countChanged();
    return m_rows[rowOf(id)];
}

void KVGamutQuickModel::Private::notify(const QString& id, const QList<int>& roles)
{
    const QModelIndex index = m_model.index(rowOf(id));
    if (index.isValid())
        Q_EMIT m_model.dataChanged(index, index, roles);
}

void KVGamutQuickModel::Private::begin(const QString& id, const QString& source)
{
    Row& row = findOrAdd(id);
    row.source = source;
    row.error.clear();
    notify(id, {});
}

void KVGamutQuickModel::Private::succeed(const QString& id)
{
    Row& row = findOrAdd(id); // C++ code may have loaded it
    row.error.clear();
    row.isLoaded = true;
    notify(id, {});
}

void KVGamutQuickModel::Private::fail(const QString& id, const QString& text)
{
    findOrAdd(id).error = text;
    notify(id, {});
}

void KVGamutQuickModel::Private::remove(const QString& id)
{
    const int row = rowOf(id);
    if (row < 0)
        return;
    m_model.beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    m_model.endRemoveRows();
    Q_EMIT m_model.countChanged();
}

KVGamutQuickModel::KVGamutQuickModel(KVGamutView* view, QObject* parent)
    : QAbstractListModel(parent), d(std::make_unique<Private>(*this, *view))
{
    connect(view, &KVGamutView::loaded, this, [this](const QString& id) { d->succeed(id); });
    connect(view, &KVGamutView::failed, this,
            [this](const QString& id, const KVProblem& problem) { d->fail(id, problem.text()); });
    connect(view, &KVGamutView::progressChanged, this, [this](const QString& id) {
        d->notify(id, {ProgressRole, LoadingRole});
    });
}

KVGamutQuickModel::~KVGamutQuickModel() = default;

int KVGamutQuickModel::count() const
{
    return static_cast<int>(d->rows().size());
}

int KVGamutQuickModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int KVGamutQuickModel::rowOf(const QString& gamutId) const
{
    return d->rowOf(gamutId);
}

QString KVGamutQuickModel::errorOf(const QString& gamutId) const
{
    const int row = d->rowOf(gamutId);
    return row < 0 ? QString() : d->rows()[row].error;
}

QVariant KVGamutQuickModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Private::Row& row = d->rows()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case IdRole:
        return row.id;
    case SourceRole:
        return row.source;
    case LoadedRole:
        return row.isLoaded;
    case LoadingRole:
        return d->view().isLoading(row.id);
    case ProgressRole:
        return d->view().progress(row.id);
    case ErrorRole:
        return row.error;
    case VolumeRole:
        return row.isLoaded ? d->view().gamut(row.id).report().volume : 0.0;
    case UncertaintyRole:
        return row.isLoaded ? d->view().gamut(row.id).report().volumeUncertainty : 0.0;
    default:
        return partOf(d->view().look(row.id), role);
    }
}

bool KVGamutQuickModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    const QString id = d->rows()[index.row()].id;
    const std::optional<KVGamutLook> look = changed(d->view().look(id), value, role);
    if (!look)
        return false;
    d->view().setLook(id, *look);
    d->notify(id, {role});
    return true;
}

Qt::ItemFlags KVGamutQuickModel::flags(const QModelIndex& index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsEditable;
}

QHash<int, QByteArray> KVGamutQuickModel::roleNames() const
{
    return {{IdRole, "gamutId"},       {SourceRole, "source"},           {LoadedRole, "loaded"},
            {LoadingRole, "loading"},  {ProgressRole, "progress"},       {ErrorRole, "errorText"},
            {VolumeRole, "volume"},    {UncertaintyRole, "uncertainty"}, {VisibleRole, "gamutVisible"},
            {ColorRole, "gamutColor"}, {OpacityRole, "gamutOpacity"},    {ModeRole, "displayMode"}};
}
