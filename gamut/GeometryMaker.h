// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/KVBackgroundTask.h>
#include <scene/CancelPacer.h>
#include <scene/GeometryData.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Makes the geometry of a gamut in the background, one at a time.
///
/// Used on the thread of the GUI, which needs an event loop.
class GeometryMaker
{
public:
    /// Called on a worker thread. What it returns after its argument became true is not used.
    using MakeFunction = std::function<GeometryData(const KVCancelCheck&)>;
    /// Receives the geometry; without vertices if there was not enough memory.
    using MadeFunction = std::function<void(const GeometryData&)>;

    explicit GeometryMaker(QString taskName); ///< @p taskName names the task for KVCompletionProtocol
    ~GeometryMaker();                         ///< as cancel()
    Q_DISABLE_COPY_MOVE(GeometryMaker)

    /// @param make and what it captures are copied, and used by the worker until cancel() returns
    /// @param onMade called once from the event loop, unless the work is cancelled before
    void start(MakeFunction make, MadeFunction onMade);
    /// Cancels the work and waits until its function has noticed it or ended.
    void cancel();
    bool isBusy() const { return m_work != nullptr; }

private:
    class Functor;
    struct Work;

    const QString m_taskName;
    std::shared_ptr<Work> m_work; ///< null: nothing to do
    QSharedPointer<KVBackgroundTask<void*>> m_task;
};
