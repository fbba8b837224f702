// SPDX-License-Identifier: Apache-2.0
#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include <glwindow/CameraState.h>

#include <QtOpenGL/QOpenGLFunctions_1_2>

#include <algorithm>
#include <span>
#include <utility>

namespace {

/// The whole primitives of a vertex list, without an incomplete one at its end.
std::span<const float> wholePrimitives(const QList<float>& list, qsizetype floatsPerPrimitive)
{
    return {list.constData(), static_cast<std::size_t>(list.size() - list.size() % floatsPerPrimitive)};
}

/// Makes room for exactly @p size floats, without content. Much more room than that is given back.
void makeRoom(QList<float>& list, qsizetype size)
{
    if (list.capacity() > 2 * size)
        list = QList<float>(); // "= {}" keeps the memory in newer versions of Qt
    list.resize(0);
    list.reserve(size);
}

/// A view of a list that is resized to @p size floats.
std::span<float> resized(QList<float>& list, std::size_t size)
{
    if (list.capacity() < static_cast<qsizetype>(size) || list.capacity() > 2 * static_cast<qsizetype>(size))
        makeRoom(list, static_cast<qsizetype>(size));
    list.resize(static_cast<qsizetype>(size));
    return {list.data(), size};
}

/// Moves triangles away from the camera by @p steps of the depth buffer's resolution during its lifetime.
class DepthOffset
{
public:
    DepthOffset(QOpenGLFunctions_1_2& gl, int steps) : m_gl(gl), m_used(steps != 0)
    {
        if (!m_used)
            return;
        m_gl.glEnable(GL_POLYGON_OFFSET_FILL);
        m_gl.glPolygonOffset(0.0f, static_cast<float>(steps));
    }
    ~DepthOffset()
    {
        if (m_used)
            m_gl.glDisable(GL_POLYGON_OFFSET_FILL);
    }
    Q_DISABLE_COPY_MOVE(DepthOffset)

private:
    QOpenGLFunctions_1_2& m_gl;
    bool m_used;
};

} // namespace

KV3DObject::IDrawCheckFunctor::~IDrawCheckFunctor() = default;

bool KV3DObject::IDrawCheckFunctor::accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&,
                                           const CameraState&, int)
{
    return true;
}

QMatrix4x4 KV3DObject::IDrawCheckFunctor::adjustModel(const QMatrix4x4&, const QMatrix4x4&,
                                                      const QMatrix4x4& model, const CameraState&)
{
    return model;
}

// Objects named by the host have the same name and id. The id of the root is a UUID, so a set that the host
// calls "root" is not mistaken for it.
bool KV3DObject::isRoot() const
{
    return m_name == QLatin1String("root") && m_id != QLatin1String("root");
}

bool KV3DObject::isSettled() const
{
    if (((m_visible || m_changed) && !m_drawnSinceChange) || m_transition ||
        (m_visible && m_awaitingVertices))
        return false;
    return std::all_of(m_childOrder.cbegin(), m_childOrder.cend(), [this](const QString& childId) {
        const auto object = m_children.value(childId);
        return !object || object->isSettled();
    });
}

bool KV3DObject::showCoarse(bool show)
{
    if (m_coarse && show != m_showsCoarse)
        m_changed = true; // the batch has the other vertices
    m_showsCoarse = show;
    bool shown = drawsCoarse() && m_visible;
    for (const auto& object : std::as_const(m_children))
        shown = (object->showCoarse(show) && m_visible) || shown;
    return shown;
}

void KV3DObject::draw(QOpenGLFunctions_1_2* gl, const QMatrix4x4& worldToCamera,
                      const QMatrix4x4& cameraToView, const QMatrix4x4& model, const CameraState& camera,
                      const QVector3D& lightPos, const QColor& lightColor, int flags)
{
    // This must be checked before anything is drawn. An object that changes from translucent to opaque is
    // drawn in the opaque pass, which clears its changed flag, but the batch must still be rebuilt without
    // it.
    if (isRoot() && flags == KVPassOpaque)
        m_gatherNext = needsGathering();

    advanceTransition(flags);

    QMatrix4x4 ownModel = model;
    if (m_drawCheck)
        ownModel = m_drawCheck->adjustModel(worldToCamera, cameraToView, model, camera);

    const bool refused = isRefused(worldToCamera, cameraToView, ownModel, camera, flags);
    if (!m_visible || refused) {
        // The whole skipped subtree counts as drawn. Otherwise an object that was hidden before its first
        // frame would keep the viewer drawing for ever.
        markSubtreeDrawn();
        return;
    }

    const auto drawChildren = [&] {
        const QStringList order = m_childOrder;
        for (const QString& childId : order)
            if (const auto object = m_children.value(childId))
                object->draw(gl, worldToCamera, cameraToView, model, camera, lightPos, lightColor, flags);
    };

    const bool batches = isRoot() && flags == KVPassTranslucent && alpha() > 0.0f;
    if (batches)
        drawChildren(); // lines and points are drawn before the batch

    QList<float> sorted;
    const QList<float>* list = listFor(flags, camera.eye(), sorted);
    if (list && !list->isEmpty())
        drawList(gl, *list, worldToCamera, cameraToView, ownModel, lightPos, lightColor);

    if (!batches)
        drawChildren();
    m_drawnSinceChange = true;
}

bool KV3DObject::isRefused(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                           const QMatrix4x4& model, const CameraState& camera, int flags)
{
    const bool refused =
        m_visible && m_drawCheck && !m_drawCheck->accept(worldToCamera, cameraToView, model, camera, flags);
    if (flags == KVPassTranslucent && refused != m_refused) {
        m_refused = refused; // the batch must be rebuilt with or without this subtree
        m_changed = true;
    }
    return refused;
}

const QList<float>* KV3DObject::listFor(int flags, const QVector3D& eye, QList<float>& sorted)
{
    if (!(alpha() > 0.0f))
        return nullptr;
    if (flags == KVPassOpaque)
        return alpha() < 1.0f ? nullptr : &drawnVertices();
    return isRoot() && flags == KVPassTranslucent ? batchFrom(eye) : translucentList(eye, sorted);
}

void KV3DObject::advanceTransition(int flags)
{
    if (!m_transition || !m_visible)
        return;
    if (flags == KVPassTranslucent && m_transition->movedThisFrame) {
        m_transition->movedThisFrame = false;
        return;
    }
    const auto transition = m_transition; // an override of applyAlpha() may replace it
    const qint64 elapsed = transition->timer.elapsed();
    const float progress = static_cast<float>(elapsed) / static_cast<float>(transition->durationMs);
    const auto v = static_cast<float>(transition->curve.valueForProgress(progress > 1.0f   ? 1.0f
                                                                         : progress > 0.0f ? progress
                                                                                           : 0.0f));
    // The target is applied without interpolation, so that a change that starts from NaN reaches it.
    applyAlpha(v < 1.0f ? transition->from * (1.0f - v) + transition->to * v : transition->to);
    transition->movedThisFrame = flags == KVPassOpaque;
    if (transition->durationMs < elapsed && m_transition == transition)
        m_transition.reset();
}

bool KV3DObject::needsGathering() const
{
    // A running transition changes the alpha later in this frame.
    if (m_changed || (m_transition && m_visible))
        return true;
    return std::any_of(m_children.cbegin(), m_children.cend(),
                       [](const auto& object) { return object->needsGathering(); });
}

/// Of what gather() appends.
qsizetype KV3DObject::gatheredSize() const
{
    if (!m_visible || m_refused)
        return 0;
    qsizetype size = m_primitiveMode == KVPrimitiveTriangles && alpha() < 1.0f ? drawnVertices().size() : 0;
    for (const auto& object : m_children)
        size += object->gatheredSize();
    return size;
}

void KV3DObject::gather(QList<float>& batch)
{
    if (!m_visible || m_refused)
        return;
    if (m_primitiveMode == KVPrimitiveTriangles && alpha() < 1.0f) {
        batch.append(drawnVertices());
        m_changed = false;
    }
    for (const QString& childId : std::as_const(m_childOrder))
        if (const auto object = m_children.value(childId))
            object->gather(batch);
}

void KV3DObject::settleAfterGathering()
{
    m_changed = false;
    for (const auto& object : std::as_const(m_children))
        object->settleAfterGathering();
}

void KV3DObject::markSubtreeDrawn()
{
    m_drawnSinceChange = true;
    for (const auto& object : std::as_const(m_children))
        object->markSubtreeDrawn();
}

const QList<float>* KV3DObject::batchFrom(const QVector3D& eye)
{
    const bool mustGather = std::exchange(m_batchReleased, false) || m_gatherNext || needsGathering();
    if (mustGather || eye != m_lastEye) {
        constexpr qsizetype floats = qsizetype(3) * kvVertexFloats;
        if (mustGather) {
            makeRoom(m_sortSource, gatheredSize());
            gather(m_sortSource);
            const auto triangles = wholePrimitives(m_sortSource, floats);
            m_backToFront.sort(triangles, 3, eye, resized(m_sortedVertices, triangles.size()));
        } else {
            m_sortSource.swap(m_sortedVertices);
            const auto triangles = wholePrimitives(m_sortSource, floats);
            m_backToFront.resort(triangles, eye, resized(m_sortedVertices, triangles.size()));
        }
        ++m_sortCount;
        destroyBuffers();
    }
    m_gatherNext = false;
    // Objects that had nothing to draw or were skipped are up to date as well. Otherwise a steady scene would
    // be sorted in every frame.
    settleAfterGathering();
    m_lastEye = eye;
    return &m_sortedVertices;
}

const QList<float>* KV3DObject::translucentList(const QVector3D& eye, QList<float>& sorted)
{
    const QList<float>* list = nullptr;
    if (m_primitiveMode == KVPrimitivePoints) {
        list = &vertices();
    } else if (m_primitiveMode == KVPrimitiveLines) {
        list = &vertices();
        if (!m_gpu.buffer.isCreated() || eye != m_lastEye) {
            const auto segments = wholePrimitives(vertices(), qsizetype(2) * kvVertexFloats);
            m_backToFront.sort(segments, 2, eye, resized(sorted, segments.size()));
            ++m_sortCount;
            destroyBuffers();
            list = &sorted;
        }
    } else {
        return nullptr; // the root draws triangles in its batch
    }
    m_lastEye = eye;
    return list;
}

void KV3DObject::drawList(QOpenGLFunctions_1_2* gl, const QList<float>& list, const QMatrix4x4& worldToCamera,
                          const QMatrix4x4& cameraToView, const QMatrix4x4& model, const QVector3D& lightPos,
                          const QColor& lightColor)
{
    if (!gl || !linkProgram())
        return;
    gl->glLineWidth(m_lineWidth > 0.0f ? m_lineWidth : 1.0f);
    m_program->bind();
    m_program->setUniformValue(m_locations.worldToCamera, worldToCamera);
    m_program->setUniformValue(m_locations.cameraToView, m_depthBias.applied(worldToCamera, cameraToView));
    m_program->setUniformValue(m_locations.modelToWorld, model);
    m_program->setUniformValue(m_locations.lightPos, lightPos);
    m_program->setUniformValue(m_locations.lightColor, lightColor);
    m_program->setUniformValue(m_locations.ambientStrength, m_ambientStrength);
    GpuList& gpu = drawnGpuList();
    if (!gpu.buffer.isCreated())
        upload(list, gpu);
    gpu.attributes.bind();
    const DepthOffset offset(*gl, m_depthBias.resolutionSteps);
    gl->glDrawArrays(static_cast<GLenum>(m_primitiveMode), 0,
                     static_cast<GLsizei>(list.size() / kvVertexFloats));
    m_changed = false;
}
