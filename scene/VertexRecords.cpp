// SPDX-License-Identifier: Apache-2.0
#include <scene/GeometryData.h>
#include <scene/VertexRecords.h>
#include <scene/VertexStride.h>

#include <algorithm>
#include <span>

namespace {

/// View of a vertex list as records.
std::span<VertexStride> recordsOf(QList<float>& list)
{
    return {reinterpret_cast<VertexStride*>(list.data()),
            static_cast<std::size_t>(list.size() / kvVertexFloats)};
}

/// Shading of a colour: channel * factor + added.
struct Shade
{
    float factor = 1.0f, added = 0.0f;
};

/// Shading at lightness @p t (0..1): the unchanged colour at 0.5, white at 1, black at 0.
Shade shadeAt(float t)
{
    if (t > 0.5f)
        return {.factor = 2.0f - 2.0f * t, .added = 1.0f - (2.0f - 2.0f * t)};
    return {.factor = 2.0f * t, .added = 0.0f};
}

} // namespace

void VertexRecords::assign(const QList<float>& generated)
{
    m_generated = generated;
    m_shading.reset();
    m_pending = true;
}

void VertexRecords::setAlpha(float alpha)
{
    if (!m_pending && alpha != m_alpha)
        for (VertexStride& record : recordsOf(m_records))
            record.color[3] = alpha;
    m_alpha = alpha;
}

void VertexRecords::setClip(float clip)
{
    if (!m_pending && clip != m_clip)
        for (VertexStride& record : recordsOf(m_records))
            record.clip = clip;
    m_clip = clip;
}

void VertexRecords::shade(const Shading& shading)
{
    if (!shading.color.isValid())
        return;
    if (m_pending)
        m_shading = shading; // a later shading replaces an earlier one completely
    else
        shadeRecords(m_records, shading);
}

void VertexRecords::restoreColors()
{
    m_shading.reset();
    if (m_pending)
        return;
    for (VertexStride& record : recordsOf(m_records))
        std::copy_n(record.baseColor, 3, record.color);
}

const QList<float>& VertexRecords::list() const
{
    if (m_pending)
        expand();
    return m_records;
}

void VertexRecords::expand() const
{
    constexpr qsizetype in = GeometryData::floatsPerVertex;
    const qsizetype count = (m_generated.size() + in - 1) / in;
    m_records.resize(0);
    m_records.resize(count * kvVertexFloats);

    const float* from = m_generated.constData();
    const float* const end = from + m_generated.size();
    float* to = m_records.data();
    for (qsizetype i = 0; i < count; ++i, to += kvVertexFloats) {
        const float* const stop = std::min(from + in, end);
        std::fill(std::copy(from, stop, to), to + in, 0.0f);
        from = stop;
        std::copy(to + 6, to + 10, to + 10);
        to[9] = m_alpha;
        to[14] = m_clip;
    }
    if (m_shading)
        shadeRecords(m_records, *m_shading);

    m_pending = false;
    m_shading.reset();
    m_generated = {};
}

void VertexRecords::shadeRecords(QList<float>& list, const Shading& shading)
{
    const bool flat = shading.mode == 2;
    const float r = shading.color.redF(), g = shading.color.greenF(), b = shading.color.blueF();
    const std::span<VertexStride> records = recordsOf(list);
    // Documented behaviour: lines are grouped by three like triangles, two vertices are summed, and the sum
    // is divided by three in both cases.
    const std::size_t summed = shading.primitiveMode == KVPrimitiveLines ? 2 : 3;
    Shade shade;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (shading.surface && !flat) {
            shade = shadeAt(records[i].position[1] / 100.0f);
        } else if (shading.surface && i % 3 == 0) { // one shade for all three vertices
            float sum = 0.0f;
            for (std::size_t k = i; k < std::min(i + summed, records.size()); ++k)
                sum += records[k].position[1] / 100.0f;
            shade = shadeAt(sum / 3.0f);
        }
        float* const color = records[i].color;
        color[0] = r * shade.factor + shade.added;
        color[1] = g * shade.factor + shade.added;
        color[2] = b * shade.factor + shade.added;
    }
}
