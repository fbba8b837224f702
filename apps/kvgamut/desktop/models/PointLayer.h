// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"
#include "model/points/PointInput.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QThreadPool>

#include <array>
#include <optional>

/// Points of files in the scene, judged by the active gamut: a row for each file, with how much of it
/// lies inside, at the edge and outside.
///
/// Reads and judges in the background; nothing is waited for but in the destructor. The gamut list must
/// outlive it, the viewer must as long as an event loop runs.
class PointLayer : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column : int
    {
        File,
        Count,
        InsideShare,
        EdgeShare,
        OutsideShare,
        ColumnCount
    };

    PointLayer(GamutListModel& gamuts, KVGamut3DViewer& viewer, QObject* parent = nullptr);
    ~PointLayer() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Reads @p file and shows what it holds; a file that is there already is read again.
    void open(const QString& file);
    void remove(int row);
    void clear();
    QStringList files() const;
    const PointSet& set(int row) const { return m_layers[row].set; }

    /// dE76 to either side of the surface that count as its edge.
    float tolerance() const { return m_tolerance; }
    void setTolerance(float tolerance);

    /// Whether everything was read and judged.
    bool isComplete() const;
    /// The share of a row's points on @p side, by weight; nothing while it is not judged.
    std::optional<double> share(int row, Side side) const;

    /// Diameter at which a point is drawn.
    float diameter(const MeasuredPoint& point) const;
    /// Draws the points into @p viewer, as they are judged now.
    void addTo(KVGamut3DViewer& viewer) const;

    static QColor colorOf(Side side);

Q_SIGNALS:
    /// A file could not be read: why, naming it.
    void failed(Problem problem);
    /// What should be known of a file that was read.
    void noted(Problem note);

private:
    struct Layer
    {
        int ticket = 0; ///< of the reading in progress, or the last one
        bool reading = true;
        PointSet set;
        quint64 judgedBy = 0;      ///< revision of the gamut that the distances belong to; 0: none
        quint64 beingJudgedBy = 0; ///< the same of the judgement in progress
        QList<float> distances;    ///< of each point from that gamut's surface
    };

    void finishReading(const QString& file, int ticket, const Result<PointSet>& set);
    void judgeAll();
    void judge(Layer& layer, const GamutEntry& gamut);
    const GamutEntry* judgingGamut() const;
    int rowOf(const QString& file) const;
    void redraw();

    GamutListModel& m_gamuts;
    KVGamut3DViewer& m_viewer;
    QList<Layer> m_layers;
    float m_tolerance = 1.0f;
    int m_lastTicket = 0;
    QThreadPool m_pool;
};
