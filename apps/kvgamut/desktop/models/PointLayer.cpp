// SPDX-License-Identifier: Apache-2.0
#include "PointLayer.h"

#include "desktop/models/Threads.h"
#include "model/points/Lab.h"
#include "model/points/ZoneMarker.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QFuture>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::array<Side, 3> sides{Side::Inside, Side::Edge, Side::Outside};

// Three diameters distinguish rare, common and very common colours of a picture. All points of a point set
// have one diameter, so each further diameter needs further sets.
constexpr std::array<int, 3> diameters{3, 5, 8};
constexpr int unweightedDiameter = 4;
constexpr std::array<double, 2> sizeSteps{0.002, 0.01}; // shares of the pixels

int diameterOf(const MeasuredPoint& point)
{
    if (point.weight >= 1.0)
        return unweightedDiameter;
    const auto step = std::upper_bound(sizeSteps.begin(), sizeSteps.end(), point.weight);
    return diameters[static_cast<std::size_t>(step - sizeSteps.begin())];
}

QString setName(const QColor& color, int diameter)
{
    return QStringLiteral("points %1 %2").arg(color.name()).arg(diameter);
}

/// Runs on a worker. The result is incomplete after a cancellation.
QList<float> distancesOf(const QList<MeasuredPoint>& points, const KVGamut::GamutObject& gamut,
                         const KVCompletionProtocolPtr& work)
{
    QList<float> distances;
    distances.reserve(points.size());
    for (const MeasuredPoint& point : points) {
        if (work->isCancelled())
            break;
        const float lab[3] = {point.lab.L, point.lab.a, point.lab.b};
        distances.append(gamut.nearest(lab).distance);
    }
    return distances;
}

} // namespace

PointLayer::PointLayer(GamutListModel& gamuts, KVGamut3DViewer& viewer, QObject* parent)
    : QAbstractTableModel(parent), m_gamuts(gamuts), m_viewer(viewer)
{
    m_pool.setMaxThreadCount(1);
    connect(&gamuts, &GamutListModel::activeRowChanged, this, &PointLayer::judgeAll);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole))
                    judgeAll();
            });
}

PointLayer::~PointLayer()
{
    for (const Layer& layer : std::as_const(m_layers))
        cancel(layer);
    m_pool.clear();
    m_pool.waitForDone();
}

QColor PointLayer::colorOf(Side side)
{
    return sideColor(side);
}

int PointLayer::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_layers.size());
}

int PointLayer::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PointLayer::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Layer& layer = m_layers[index.row()];
    if (role == Qt::ToolTipRole)
        return toolTip(index.row(), index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant(index.column() == File ? Qt::AlignLeft | Qt::AlignVCenter
                                               : Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() >= InsideShare)
        return colorOf(sides[static_cast<std::size_t>(index.column() - InsideShare)]);
    if (role != Qt::DisplayRole)
        return {};
    if (index.column() == File)
        return SafeText::shown(QFileInfo(layer.set.file).fileName());
    if (index.column() == Count)
        return layer.reading ? tr("reading…") : QLocale().toString(layer.set.points.size());
    const auto part = share(index.row(), sides[static_cast<std::size_t>(index.column() - InsideShare)]);
    return part ? QStringLiteral("%1 %").arg(QLocale().toString(*part * 100.0, 'f', 1)) : QStringLiteral("–");
}

QVariant PointLayer::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case File:
        return tr("Points");
    case Count:
        return tr("Count");
    case InsideShare:
        return tr("Inside");
    case EdgeShare:
        return tr("Edge");
    case OutsideShare:
        return tr("Outside");
    default:
        return {};
    }
}

QString PointLayer::toolTip(int row, int column) const
{
    const PhotoCheck* check = photo(row);
    if (!check || column < Count)
        return SafeText::forToolTip(m_layers[row].set.file);
    const QLocale locale;
    const auto number = [&locale](double value) { return locale.toString(value, 'f', 1); };
    return tr("Every pixel is counted: %1").arg(locale.toString(m_layers[row].set.photo->pixels)) +
           QLatin1Char('\n') +
           tr("CIEDE2000: mean %1, 95 % up to %2, largest %3")
               .arg(number(check->de00.mean), number(check->de00.p95), number(check->de00.max));
}

const PhotoCheck* PointLayer::photo(int row) const
{
    const Layer::Photo& photo = m_layers[row].photo;
    const GamutEntry* gamut = judgingGamut();
    const bool isCurrent = gamut && photo.gamut == gamut->revision && photo.tolerance == m_tolerance;
    return photo.check && isCurrent ? &*photo.check : nullptr;
}

std::optional<double> PointLayer::share(int row, Side side) const
{
    const Layer& layer = m_layers[row];
    if (layer.set.photo) {
        const PhotoCheck* check = photo(row);
        if (!check)
            return {};
        return side == Side::Inside ? check->inside : side == Side::Edge ? check->edge : check->outside;
    }
    if (layer.judgedBy == 0)
        return {};
    double all = 0.0;
    double there = 0.0;
    for (qsizetype i = 0; i < layer.set.points.size(); ++i) {
        all += layer.set.points[i].weight;
        if (sideOf(layer.distances[i], m_tolerance) == side)
            there += layer.set.points[i].weight;
    }
    return all > 0.0 ? there / all : 0.0;
}

QStringList PointLayer::files() const
{
    QStringList files;
    for (const Layer& layer : m_layers)
        files.append(layer.set.file);
    return files;
}

int PointLayer::rowOf(const QString& file) const
{
    return static_cast<int>(files().indexOf(file));
}

struct PointLayer::Reading
{
    Result<PointSet> set;
    LightnessOrder order;

    /// Runs on a worker.
    static Reading of(const QString& file, const KVCompletionProtocolPtr& work)
    {
        Result<PointSet> set = readPoints(file, work);
        LightnessOrder order = set ? LightnessOrder(set->points) : LightnessOrder();
        return {std::move(set), std::move(order)};
    }
};

void PointLayer::open(const QString& file)
{
    int row = rowOf(file);
    if (row < 0) {
        row = rowCount();
        beginInsertRows({}, row, row);
        m_layers.append(Layer());
        m_layers.last().set.file = file;
        endInsertRows();
    }
    const int ticket = ++m_lastTicket;
    Layer& layer = m_layers[row];
    cancel(layer);
    layer.ticket = ticket;
    layer.work = KVCompletionProtocol::createTask(QFileInfo(file).fileName());
    layer.reading = true;
    Threads::run(m_pool, Reading::of, file, layer.work)
        .then(this, [this, file, ticket](const Reading& reading) { finishReading(file, ticket, reading); });
}

void PointLayer::finishReading(const QString& file, int ticket, const Reading& reading)
{
    const Result<PointSet>& set = reading.set;
    const int row = rowOf(file);
    if (row < 0 || m_layers[row].ticket != ticket)
        return;
    Layer& layer = m_layers[row];
    layer.reading = false;
    if (!set) {
        if (layer.wasRead)
            judgeFormer(layer);
        else
            remove(row);
        Q_EMIT failed(set.error());
        return;
    }
    layer.wasRead = true;
    layer.set = *set;
    layer.order = reading.order;
    layer.judgedBy = 0;
    layer.beingJudgedBy = 0;
    layer.photo = {};
    redraw();
    judgeAll();
    Q_EMIT pointsChanged();
    for (const Problem& note : set->allNotes())
        Q_EMIT noted(note);
}

/// The request to read the file again has cancelled the work on its points.
void PointLayer::judgeFormer(Layer& layer)
{
    layer.beingJudgedBy = 0;
    if (!layer.photo.check)
        layer.photo = {};
    redraw();
    judgeAll();
}

void PointLayer::cancel(const Layer& layer)
{
    for (const KVCompletionProtocolPtr& work : {layer.work, layer.photo.work})
        if (work)
            work->cancel();
}

void PointLayer::remove(int row)
{
    cancel(m_layers[row]);
    beginRemoveRows({}, row, row);
    m_layers.removeAt(row);
    endRemoveRows();
    redraw();
    Q_EMIT pointsChanged();
}

void PointLayer::clear()
{
    for (const Layer& layer : std::as_const(m_layers))
        cancel(layer);
    beginResetModel();
    m_layers.clear();
    endResetModel();
    redraw();
    Q_EMIT pointsChanged();
}

void PointLayer::setTolerance(float tolerance)
{
    if (tolerance == m_tolerance)
        return;
    m_tolerance = tolerance;
    judgeAll(); // pictures
    redraw();
}

bool PointLayer::isComplete() const
{
    const GamutEntry* gamut = judgingGamut();
    for (int row = 0; row < m_layers.size(); ++row) {
        const Layer& layer = m_layers[row];
        if (layer.reading || layer.judgedBy != (gamut ? gamut->revision : 0) ||
            (gamut && layer.set.photo && !photo(row)))
            return false;
    }
    return true;
}

const GamutEntry* PointLayer::judgingGamut() const
{
    const int row = m_gamuts.activeRow();
    return row >= 0 && row < m_gamuts.rowCount() && m_gamuts.at(row).hasGamut() ? &m_gamuts.at(row) : nullptr;
}

void PointLayer::judgeAll()
{
    const GamutEntry* gamut = judgingGamut();
    for (Layer& layer : m_layers) {
        if (gamut) {
            judge(layer, *gamut);
            judgePhoto(layer, *gamut);
        } else {
            layer.judgedBy = 0;
        }
    }
    if (!gamut)
        redraw();
}

void PointLayer::judge(Layer& layer, const GamutEntry& gamut)
{
    if (layer.reading || layer.judgedBy == gamut.revision || layer.beingJudgedBy == gamut.revision)
        return;
    layer.beingJudgedBy = gamut.revision;
    Threads::run(m_pool, distancesOf, layer.set.points, gamut.gamut, layer.work)
        .then(this, [this, file = layer.set.file, ticket = layer.ticket,
                     revision = gamut.revision](const QList<float>& distances) {
            const int row = rowOf(file);
            if (row < 0 || m_layers[row].ticket != ticket || m_layers[row].beingJudgedBy != revision)
                return; // outdated: the file was closed or read again, or the gamut was replaced
            m_layers[row].judgedBy = revision;
            m_layers[row].beingJudgedBy = 0;
            m_layers[row].distances = distances;
            redraw();
        });
}

/// Checks all pixels of a picture. A check for another gamut or tolerance is cancelled.
void PointLayer::judgePhoto(Layer& layer, const GamutEntry& gamut)
{
    Layer::Photo& photo = layer.photo;
    const bool isStarted = photo.gamut == gamut.revision && photo.tolerance == m_tolerance;
    if (layer.reading || !layer.set.photo || isStarted)
        return;
    if (photo.work)
        photo.work->cancel();
    photo = {KVCompletionProtocol::createTask(QFileInfo(layer.set.file).fileName()),
             {},
             gamut.revision,
             m_tolerance};
    const auto check = [gamut = gamut.gamut, colors = layer.set.photo, tolerance = m_tolerance,
                        work = photo.work] { return checkPhoto(gamut, *colors, tolerance, nullptr, work); };
    Threads::run(m_pool, check)
        .then(this, [this, file = layer.set.file, work = photo.work](const Result<PhotoCheck>& result) {
            const int row = rowOf(file);
            if (row < 0 || m_layers[row].photo.work != work || !result)
                return; // outdated or cancelled
            m_layers[row].photo.check = *result;
            Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
        });
}

struct PointLayer::Dots
{
    std::optional<Side> side; ///< null: not classified
    int diameter = 0;
    QList<KVGamut3DViewer::ColoredPosition> dots;
};

void PointLayer::redraw()
{
    m_viewer.clearPointSet();
    for (const QString& set : m_places.keys())
        m_viewer.removeMarkerSet(set); // by name: there are markers of others
    m_places.clear();
    QHash<QString, Dots> sets;
    for (int row = 0; row < m_layers.size(); ++row)
        gather(row, sets);
    const bool shaped = hasShapes();
    for (auto set = sets.begin(); set != sets.end(); ++set) {
        if (!shaped)
            set->side.reset();
        show(set.key(), *set);
    }
    if (!m_layers.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

bool PointLayer::hasShapes() const
{
    qsizetype points = 0, cubes = 0;
    for (const Layer& layer : m_layers) {
        points += layer.set.points.size();
        if (points > maxMarkers)
            return false;
        if (layer.judgedBy != 0)
            cubes += std::count_if(layer.distances.begin(), layer.distances.end(), [this](float distance) {
                return sideOf(distance, m_tolerance) == Side::Edge;
            });
    }
    return cubes <= maxCubes;
}

/// Adds the points of a file to @p sets: a set for each side and diameter; unclassified points have a set for
/// each diameter.
void PointLayer::gather(int row, QHash<QString, Dots>& sets)
{
    const Layer& layer = m_layers[row];
    for (qsizetype i = 0; i < layer.set.points.size(); ++i) {
        const MeasuredPoint& point = layer.set.points[i];
        std::optional<Side> side;
        if (layer.judgedBy != 0)
            side = sideOf(layer.distances[i], m_tolerance);
        const int diameter = diameterOf(point);
        const QString name = setName(side ? colorOf(*side) : QColor(Qt::white), diameter);
        Dots& set = sets[name];
        set.side = side;
        set.diameter = diameter;
        set.dots.append({side ? colorOf(*side) : point.shownColor(), vectorOf(point.lab)});
        m_places[name].append({row, i});
    }
}

/// @param set without a side: as points of one shape
void PointLayer::show(const QString& name, const Dots& set)
{
    if (set.side) {
        const ZoneMarker marker = ZoneMarker::of(*set.side);
        m_viewer.addMarkerSet(name, marker.type, set.dots, marker.scale * static_cast<float>(set.diameter),
                              ZoneMarker::ambient);
        return;
    }
    m_viewer.addPointSet(name, set.dots);
    m_viewer.setPointSetSize(name, set.diameter);
}

std::optional<PointLayer::Place> PointLayer::placeOf(const QString& set, qsizetype index) const
{
    const QList<Place> places = m_places.value(set);
    if (index < 0 || index >= places.size())
        return {};
    return places[index];
}

std::vector<PointLayer::Judged> PointLayer::near(const SlicePlane& plane, double within) const
{
    std::vector<Judged> found;
    const GamutEntry* gamut = judgingGamut();
    for (const Layer& layer : m_layers) {
        if (!gamut || layer.judgedBy != gamut->revision)
            continue;
        if (plane.kind == SlicePlane::Hue) {
            for (qsizetype i = 0; i < layer.set.points.size(); ++i)
                if (viewOf(layer.set.points[i].lab, plane).distance <= within)
                    found.push_back({&layer.set.points[i], layer.distances[i] <= 0.0f});
            continue;
        }
        const auto items = layer.order.near(plane.value, within);
        found.reserve(found.size() + items.size());
        for (const LightnessOrder::Item& item : items)
            found.push_back({&layer.set.points[item.index], layer.distances[item.index] <= 0.0f});
    }
    return found;
}
