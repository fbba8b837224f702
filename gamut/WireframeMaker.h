// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/KVBackgroundTask.h>
#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>

#include <functional>
#include <memory>

/// Makes the wireframe of a gamut in the background, one at a time.
///
/// Used on the thread of the GUI, which needs an event loop.
class WireframeMaker
{
public:
    /// Receives the geometry; without vertices if there was not enough memory.
    using MadeFunction = std::function<void(const GeometryData&)>;

    WireframeMaker();
    ~WireframeMaker(); ///< as cancel()
    Q_DISABLE_COPY_MOVE(WireframeMaker)

    /// @param style see kvGamutWireframe()
    /// @param onMade called once from the event loop, unless the work is cancelled before
    void start(const KVGamut::GamutObject& gamut, const VertexStyle& style, MadeFunction onMade);
    /// Cancels the work and waits for its end, which takes a few milliseconds at most.
    void cancel();
    bool isBusy() const { return m_work != nullptr; }

private:
    class Functor;
    struct Work;

    std::shared_ptr<Work> m_work; ///< null: nothing to do
    QSharedPointer<KVBackgroundTask<void*>> m_task;
};
