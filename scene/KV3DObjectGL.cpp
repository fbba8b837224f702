// SPDX-License-Identifier: Apache-2.0
#include <scene/KV3DObject.h>
#include <scene/ShaderPrograms.h>
#include <scene/VertexStride.h>

#include <QtGui/QOpenGLContext>

void KV3DObject::initializeGL(QOpenGLContext* owner)
{
    // A lost context cannot be made current. The window calls this again for the new one.
    if (!QOpenGLContext::currentContext())
        return;
    m_glOwner = owner;
    m_program.reset(new QOpenGLShaderProgram);
    m_sources = ShaderPrograms::sources(m_vertexShaderPath, m_fragmentShaderPath);
    m_locations = {};
    if (m_visible && !vertices().isEmpty() && linkProgram()) // the others may never draw
        m_program->bind();
    m_drawnSinceChange = false; // without a program it could not be drawn until now

    const auto all = children();
    for (const auto& object : all)
        object->initializeGL(owner);
}

/// Whether the program can draw.
bool KV3DObject::linkProgram()
{
    if (!m_program)
        return false;
    if (m_sources) {
        ShaderPrograms::link(*m_program, *m_sources);
        m_sources.reset();
        if (m_program->isLinked())
            findLocations();
    }
    return m_program->isLinked() && m_locations.attributes[0] >= 0;
}

void KV3DObject::findLocations()
{
    for (std::size_t i = 0; i < std::size(kvVertexAttributes); ++i)
        m_locations.attributes[i] = m_program->attributeLocation(kvVertexAttributes[i].name);
    m_locations.modelToWorld = m_program->uniformLocation("modelToWorld");
    m_locations.worldToCamera = m_program->uniformLocation("worldToCamera");
    m_locations.cameraToView = m_program->uniformLocation("cameraToView");
    m_locations.lightPos = m_program->uniformLocation("lightPos");
    m_locations.lightColor = m_program->uniformLocation("lightColor");
    m_locations.ambientStrength = m_program->uniformLocation("ambientStrenght"); // spelled as in the shaders
}

void KV3DObject::releaseGL()
{
    releaseGpuObjects();
    const auto all = children();
    for (const auto& object : all)
        object->releaseGL();
    m_children.clear();
    m_childOrder.clear();
}

void KV3DObject::releaseGpuObjects()
{
    markDataChanged();
    m_program.reset();
    m_sources.reset();
    m_glOwner = nullptr;
    // The batch must not outlive the objects from which it was gathered.
    m_sortedVertices = QList<float>();
    m_sortSource = QList<float>();

    const auto all = children();
    for (const auto& object : all)
        object->releaseGpuObjects();
}

void KV3DObject::releaseBatch()
{
    destroyBuffers();
    // not "= {}", which keeps the memory in newer versions of Qt
    m_sortedVertices = QList<float>();
    m_sortSource = QList<float>();
    m_backToFront = {};
    m_batchReleased = true;
}

void KV3DObject::destroyBuffers()
{
    m_gpu.destroy();
    if (m_coarse)
        m_coarse->gpu.destroy();
}

void KV3DObject::abandonBindings()
{
    m_gpu.attributes.abandon();
    if (m_coarse)
        m_coarse->gpu.attributes.abandon();
    const auto all = children();
    for (const auto& object : all)
        object->abandonBindings();
}

void KV3DObject::GpuList::destroy()
{
    attributes.destroy();
    if (buffer.isCreated())
        buffer.destroy();
}

void KV3DObject::upload(const QList<float>& list, GpuList& to)
{
    to.buffer.create();
    to.buffer.bind();
    to.buffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
    to.buffer.allocate(list.constData(), static_cast<int>(list.size() * qsizetype(sizeof(float))));

    to.attributes.create();
    to.attributes.bind();
    for (std::size_t i = 0; i < std::size(kvVertexAttributes); ++i) {
        const KVVertexAttribute& attribute = kvVertexAttributes[i];
        m_program->enableAttributeArray(m_locations.attributes[i]);
        m_program->setAttributeBuffer(m_locations.attributes[i], GL_FLOAT, attribute.offset,
                                      attribute.components, kvVertexBytes);
    }
    to.attributes.release();
    to.buffer.release();
    ++m_uploadCount;
}
