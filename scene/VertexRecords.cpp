// SPDX-License-Identifier: Apache-2.0
#include <scene/VertexRecords.h>

#include <algorithm>
#include <cmath>
#include <utility>

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

void shadeRecords(std::span<VertexStride> records, const VertexStyle::Shading& shading)
{
    const bool flat = shading.mode == 2;
    const float r = shading.color.redF(), g = shading.color.greenF(), b = shading.color.blueF();
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

/// NaN equals NaN: otherwise such a value would be written again and again.
bool isSame(float a, float b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

bool VertexStyle::operator==(const VertexStyle& other) const
{
    return isSame(alpha, other.alpha) && isSame(clip, other.clip) && shading == other.shading;
}

std::span<VertexStride> kvAppendRecords(QList<float>& list, qsizetype count)
{
    const auto before = static_cast<std::size_t>(list.size() / kvVertexFloats);
    list.resize(list.size() + count * kvVertexFloats);
    return recordsOf(list).subspan(before);
}

void kvApplyStyle(std::span<VertexStride> records, const VertexStyle& style, const VertexStyle& present)
{
    if (!isSame(style.alpha, present.alpha))
        for (VertexStride& record : records)
            record.color[3] = style.alpha;
    if (!isSame(style.clip, present.clip))
        for (VertexStride& record : records)
            record.clip = style.clip;
    if (style.shading == present.shading)
        return;
    if (style.shading)
        shadeRecords(records, *style.shading);
    else
        for (VertexStride& record : records)
            std::copy_n(record.baseColor, 3, record.color);
}

void kvExpandVertices(std::span<const float> generated, const VertexStyle& style,
                      std::span<VertexStride> records)
{
    constexpr std::size_t in = kvGeneratedFloats;
    for (VertexStride& record : records) {
        float vertex[in] = {};
        const auto given = generated.first(std::min(in, generated.size()));
        generated = generated.subspan(given.size());
        std::copy(given.begin(), given.end(), vertex);
        std::copy_n(vertex, 3, record.position);
        std::copy_n(vertex + 3, 3, record.normal);
        std::copy_n(vertex + 6, 4, record.color);
        std::copy_n(vertex + 6, 4, record.baseColor);
        record.color[3] = style.alpha;
        record.clip = style.clip;
    }
    if (style.shading)
        shadeRecords(records, *style.shading);
}

void VertexRecords::assign(const QList<float>& generated)
{
    m_generated = generated;
    m_style.shading.reset();
    m_pending = true;
}

void VertexRecords::adopt(const QList<float>& records, const VertexStyle& style)
{
    m_records = records;
    m_generated = {};
    m_applied = style;
    m_style.shading.reset();
    m_pending = false;
}

void VertexRecords::setAlpha(float alpha)
{
    m_style.alpha = alpha;
}

void VertexRecords::setClip(float clip)
{
    m_style.clip = clip;
}

void VertexRecords::shade(const Shading& shading)
{
    if (shading.color.isValid())
        m_style.shading = shading; // replaces an earlier one completely
}

void VertexRecords::restoreColors()
{
    m_style.shading.reset();
}

const QList<float>& VertexRecords::list() const
{
    if (m_pending)
        expand();
    if (m_applied != m_style)
        kvApplyStyle(recordsOf(m_records), m_style, std::exchange(m_applied, m_style));
    return m_records;
}

void VertexRecords::expand() const
{
    constexpr qsizetype in = kvGeneratedFloats;
    const qsizetype count = (m_generated.size() + in - 1) / in;
    m_records.resize(0);
    m_records.resize(count * kvVertexFloats);
    kvExpandVertices({m_generated.constData(), static_cast<std::size_t>(m_generated.size())}, m_style,
                     recordsOf(m_records));
    m_applied = m_style;
    m_pending = false;
    m_generated = {};
}
