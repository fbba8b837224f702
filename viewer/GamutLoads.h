// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/KV3DGamutObject.h>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <list>
#include <optional>

/// The loads in progress of one viewer, started by either public class. At most one for each id.
///
/// GUI thread only. The functions passed to it are called and destroyed on this thread. Nothing throws.
class GamutLoads : public QObject
{
    Q_OBJECT
public:
    /// The scene that the gamuts are loaded into.
    struct Scene
    {
        /// The gamut with an id, which is created if necessary; null if the id is of another object.
        std::function<QSharedPointer<KV3DGamutObject>(const QString&)> gamut;
        /// Called with the id of a gamut whose load has ended, before the end is reported.
        std::function<void(const QString&)> prepare;
        std::function<KV3DGamutObject::ContextGuard()> contextGuard;
    };

    /// How a load ended.
    struct End
    {
        std::optional<KVProblem> problem; ///< nullopt: the gamut is shown
        bool replaced = false;            ///< by a newer load of the same id
    };
    using EndFunction = std::function<void(const End&)>;

    explicit GamutLoads(Scene scene);
    ~GamutLoads() override;

    /// Starts a load; @p onEnd is called once, whatever fails, unless the gamut is removed or this object is
    /// destroyed before. It is called from the event loop; inside this call only if there is no memory even
    /// for that. A load of the same id that is in progress ends with Cancelled.
    void start(const QString& id, const GamutRequest& request, const GamutParams& params, EndFunction onEnd);
    /// Reports a load that could not be started for lack of memory: calls @p onEnd, then emits failed().
    template <typename OnEnd>
    void refuse(const QString& id, const OnEnd& onEnd)
    {
        const QPointer<GamutLoads> self = m_self;
        const End end{KVProblem{KVProblemCode::OutOfMemory, {}, {}}, false};
        onEnd(end);
        if (self)
            Q_EMIT failed(id, *end.problem);
    }
    void cancel(const QString& id);
    /// Drops a load without calling its function. The caller ends the load of the gamut.
    void forget(const QString& id);

    bool isLoading() const { return !m_loads.empty(); }
    bool isLoading(const QString& id) const;
    float progress(const QString& id) const; ///< 0..1; 1 when nothing is loading

Q_SIGNALS:
    void loaded(const QString& id);
    void failed(const QString& id, const KVProblem& problem);
    void progressChanged(const QString& id, float progress);
    void loadingChanged();

private:
    struct Load
    {
        QString id;
        quint64 number = 0;
        EndFunction onEnd;
        KVCompletionProtocolPtr protocol;
        float progress = 0.0f; ///< reported last
        End end;               ///< of a load in m_ended
    };
    /// A load moves from one list to another without an allocation, which could fail.
    using Loads = std::list<Load>;

    void begin(Loads& fresh, const GamutRequest& request, const GamutParams& params);
    void finish(quint64 number, const std::optional<KVProblem>& problem);
    void endLater(Loads& from, Loads::const_iterator load, End end);
    void reportEnded();
    void reportProgress();
    void reportProgress(Load& load, float progress);
    Loads take(Loads::const_iterator load);
    Loads::const_iterator find(const QString& id) const;
    Loads::iterator find(quint64 number);

    const Scene m_scene;
    Loads m_loads;
    Loads m_ended; ///< to be reported from the event loop
    bool m_reportPosted = false;
    quint64 m_lastNumber = 0;
    QTimer m_progressTimer; ///< runs only while something loads
    /// Its copies tell whether a function of the host has destroyed this object. A new QPointer could throw.
    const QPointer<GamutLoads> m_self{this};
};
