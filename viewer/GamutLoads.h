// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/KV3DGamutObject.h>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <optional>

/// The loads in progress of one viewer, started by either public class. At most one for each id.
///
/// GUI thread only. The functions passed to it are called and destroyed on this thread.
class GamutLoads : public QObject
{
    Q_OBJECT
public:
    /// How a load ended.
    struct End
    {
        std::optional<KVProblem> problem; ///< nullopt: the gamut is shown
        bool thrown = false;              ///< the engine threw an exception
        bool replaced = false;            ///< by a newer load of the same id
    };
    using EndFunction = std::function<void(const End&)>;

    /// @param prepare called with the id of a gamut whose load has ended, before the end is reported
    explicit GamutLoads(std::function<void(const QString&)> prepare);
    ~GamutLoads() override;

    /// Starts a load into @p gamut; @p onEnd is called once, unless the gamut is removed or this object is
    /// destroyed before. A load of the same id that is in progress ends with Cancelled, from the event loop.
    void start(KV3DGamutObject& gamut, const GamutRequest& request, const QHash<QString, QVariant>& params,
               KV3DGamutObject::ContextGuard contextGuard, EndFunction onEnd);
    void cancel(const QString& id);
    /// Drops a load without calling its function. The caller destroys the gamut.
    void forget(const QString& id);

    bool isLoading() const { return !m_loads.isEmpty(); }
    bool isLoading(const QString& id) const { return m_loads.contains(id); }
    float progress(const QString& id) const; ///< 0..1; 1 when nothing is loading

Q_SIGNALS:
    void loaded(const QString& id);
    void failed(const QString& id, const KVProblem& problem);
    void progressChanged(const QString& id, float progress);
    void loadingChanged();

private:
    struct Load
    {
        EndFunction onEnd;
        KVCompletionProtocolPtr protocol;
        float progress = 0.0f; ///< reported last
        quint64 number = 0;
    };

    void finish(const QString& id, quint64 number, const KV3DGamutObject::LoadEnd& end);
    void reportReplaced(EndFunction onEnd);
    void reportProgress();
    void reportProgress(const QString& id, float progress);
    Load take(const QString& id);

    const std::function<void(const QString&)> m_prepare;
    QHash<QString, Load> m_loads;
    quint64 m_lastNumber = 0;
    QTimer m_progressTimer; ///< runs only while something loads
};
