// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointLayer.h"

#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <vector>

/// What each gamut of the window makes of each colour of the point layer, except the pixels of pictures.
///
/// Computed in the background on all cores, in bulk, the active gamut first. The results appear in the order
/// of the colours. Work on gamuts and colours that are gone is cancelled; only the destructor waits for it.
/// Gamut list and point layer must outlive it.
class ColorChecks : public QObject
{
    Q_OBJECT
public:
    /// Gives the profile of the gamut with an id; null for a gamut without one.
    using ProfileOf = std::function<KVProfilePtr(const QString& id)>;

    ColorChecks(const GamutListModel& gamuts, const PointLayer& points, ProfileOf profileOf,
                QObject* parent = nullptr);
    ~ColorChecks() override;

    /// @name The colours, in the order of the files
    /// @{
    qsizetype count() const { return m_count; }
    const MeasuredPoint& point(qsizetype color) const;
    QString file(qsizetype color) const;
    PointLayer::Place place(qsizetype color) const;
    /// -1 if there is no such colour.
    qsizetype colorAt(const PointLayer::Place& place) const;
    /// @}

    /// A colour and a gamut.
    struct Check
    {
        float distance = 0.0f;     ///< from the surface, dE76; negative inside
        float de00 = 0.0f;         ///< CIEDE2000 to the nearest colour of the gamut; 0 inside
        KVGamut::LabPoint nearest; ///< that colour; the colour itself inside
    };
    /// Null until it is computed.
    /// @param revision of the gamut
    const Check* check(quint64 revision, qsizetype color) const;
    /// What the profile makes of the colour, in percent; empty until it is computed, and if it cannot.
    std::span<const float> device(quint64 revision, qsizetype color) const;

    bool isComplete() const { return m_jobs.empty(); }
    float progress() const; ///< of all gamuts, 0..1

Q_SIGNALS:
    void colorsChanged(); ///< other colours
    void computed();      ///< more results, or progress

private:
    struct Colors; ///< of one file
    struct Job;
    struct Results
    {
        std::vector<Check> checks; ///< of the first colours
        std::size_t channels = 0;
        std::vector<float> device;
    };

    void takeColors();
    void refresh();
    void start(const GamutEntry& entry);
    void cancelAll();
    void collect();
    void finish(quint64 revision, const std::shared_ptr<Job>& job);
    const Colors& fileOf(qsizetype color) const;

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    const ProfileOf m_profileOf;
    std::vector<Colors> m_files;
    qsizetype m_count = 0;
    std::shared_ptr<const std::vector<KVGamut::LabPoint>> m_lab; ///< of all colours
    std::map<quint64, Results> m_results;                        ///< by the revision of the gamut
    std::map<quint64, std::shared_ptr<Job>> m_jobs;
    QThreadPool m_pool;
    QTimer m_ticker;
};
