// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"
#include "model/checks/PhotoCheck.h"
#include "model/points/LightnessOrder.h"
#include "model/points/PointInput.h"
#include "model/slices/GamutSlice.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QThreadPool>

#include <array>
#include <optional>
#include <vector>

/// The points of files in the scene, classified by the active gamut: a row for each file, with the shares of
/// its points inside, at the edge and outside.
///
/// Reads and classifies in the background. Removing, closing or reading a file again cancels the work on it;
/// only the destructor waits until that work has ended. The gamut list must outlive it, and so must the
/// viewer as long as an event loop runs.
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

    /// Reads @p file and shows its points; a file that is in the list already is read again, and keeps its
    /// points if that fails.
    void open(const QString& file);
    void remove(int row);
    void clear();
    QStringList files() const;
    const PointSet& set(int row) const { return m_layers[row].set; }

    /// Points within this distance from the surface, in dE76, are at the edge.
    float tolerance() const { return m_tolerance; }
    void setTolerance(float tolerance);

    /// Whether every file is read and its points are classified.
    bool isComplete() const;
    /// The share of a row's points on @p side, by weight; of a picture the share of all its pixels. nullopt
    /// until the row is classified.
    std::optional<double> share(int row, Side side) const;

    /// How the picture in this row fits the active gamut; null until it is known, and for other files.
    const PhotoCheck* photo(int row) const;

    /// A point of a file.
    struct Place
    {
        int row = 0;
        qsizetype index = 0; ///< in set(row)
    };
    /// The point that the viewer shows as number @p index of the point set or marker set @p set; nullopt if
    /// there is none.
    std::optional<Place> placeOf(const QString& set, qsizetype index) const;

    /// A point and its side of the active gamut's surface.
    struct Judged
    {
        const MeasuredPoint* point = nullptr; ///< valid until pointsChanged()
        bool isInside = false;
    };
    /// The points that are at most @p within dE76 from @p plane, without the files that are not classified by
    /// the active gamut yet. For a lightness its time depends on their number, not on the number of all
    /// points.
    std::vector<Judged> near(const SlicePlane& plane, double within) const;

    /// Classified points are markers with the shapes of ZoneMarker if there are at most this many points, and
    /// at most maxCubes of them at the edge. Otherwise all are points of one shape, which are cheaper to
    /// draw.
    static constexpr qsizetype maxMarkers = 5000;
    static constexpr qsizetype maxCubes = 1000; ///< a cube has 18 times the vertices of a star

    static QColor colorOf(Side side);

Q_SIGNALS:
    /// A file cannot be read; the problem names it.
    void failed(const Problem& problem);
    /// A file was read, read again or removed: set() gives other points.
    void pointsChanged();
    /// A note about a file that was read, for example about points that were left out.
    void noted(const Problem& note);

private:
    struct Layer
    {
        int ticket = 0;               ///< of the latest request to read the file
        KVCompletionProtocolPtr work; ///< of that request and of the classification; null before the request
        bool reading = true;
        bool wasRead = false; ///< the set is complete, perhaps of an earlier reading
        PointSet set;
        LightnessOrder order;      ///< of the set
        quint64 judgedBy = 0;      ///< revision of the gamut that the distances belong to; 0: none
        quint64 beingJudgedBy = 0; ///< the same for the computation in progress
        QList<float> distances;    ///< of each point from that gamut's surface

        /// The check of all pixels of a picture, and what it belongs to.
        struct Photo
        {
            KVCompletionProtocolPtr work; ///< null before the first check
            std::optional<PhotoCheck> check;
            quint64 gamut = 0; ///< its revision
            float tolerance = 0.0f;
        } photo;
    };

    struct Reading; ///< what a file contains
    void finishReading(const QString& file, int ticket, const Reading& reading);
    void judgeFormer(Layer& layer);
    static void cancel(const Layer& layer);
    void judgeAll();
    void judge(Layer& layer, const GamutEntry& gamut);
    void judgePhoto(Layer& layer, const GamutEntry& gamut);
    QString toolTip(int row, int column) const;
    const GamutEntry* judgingGamut() const;
    int rowOf(const QString& file) const;
    bool hasShapes() const;
    void redraw();
    struct Dots; ///< the points of one set in the viewer
    void gather(int row, QHash<QString, Dots>& sets);
    void show(const QString& name, const Dots& set);

    GamutListModel& m_gamuts;
    KVGamut3DViewer& m_viewer;
    QList<Layer> m_layers;
    QHash<QString, QList<Place>> m_places; ///< of the points in each of its sets in the viewer
    float m_tolerance = 1.0f;
    int m_lastTicket = 0;
    QThreadPool m_pool;
};
