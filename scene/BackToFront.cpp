// SPDX-License-Identifier: Apache-2.0
#include <scene/BackToFront.h>
#include <scene/VertexStride.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <numeric>

namespace {

constexpr unsigned digitBits = 11;
constexpr std::size_t digitCount = 3; // 33 bits, enough for 32
constexpr std::uint32_t digitValues = 1u << digitBits;

std::uint32_t digit(std::uint32_t nearness, std::size_t d)
{
    return (nearness >> (d * digitBits)) & (digitValues - 1);
}

/// Number of primitives by which the prefetch runs ahead of the copy. The records to copy are scattered in
/// memory, so the hardware does not predict them.
constexpr std::size_t prefetchDistance = 8;

void prefetch(const float* record, std::size_t floats)
{
#if defined(__GNUC__)
    constexpr std::size_t floatsPerLine = 16;
    for (std::size_t k = 0; k < floats; k += floatsPerLine)
        __builtin_prefetch(record + k);
#else
    Q_UNUSED(record)
    Q_UNUSED(floats)
#endif
}

} // namespace

void BackToFront::sort(std::span<const float> vertices, int verticesPerPrimitive, const QVector3D& eye,
                       std::span<float> out)
{
    m_count = vertices.size() / (static_cast<std::size_t>(verticesPerPrimitive) * kvVertexFloats);
    m_verticesPerPrimitive = verticesPerPrimitive;
    m_input.resize(m_count);
    std::iota(m_input.begin(), m_input.end(), 0u);
    order(vertices, eye, out);
}

void BackToFront::resort(std::span<const float> previous, const QVector3D& eye, std::span<float> out)
{
    order(previous, eye, out);
}

void BackToFront::order(std::span<const float> vertices, const QVector3D& eye, std::span<float> out)
{
    computeKeys(vertices, eye);
    sortKeys();
    sortTies();

    const std::size_t floats = static_cast<std::size_t>(m_verticesPerPrimitive) * kvVertexFloats;
    m_nextInput.resize(m_count);
    const float* const from = vertices.data();
    float* to = out.data();
    for (std::size_t i = 0; i < m_count; ++i) {
        if (i + prefetchDistance < m_count)
            prefetch(from + m_keys[i + prefetchDistance].slot * floats, floats);
        const std::uint32_t slot = m_keys[i].slot;
        std::memcpy(to, from + slot * floats, floats * sizeof(float));
        to += floats;
        m_nextInput[i] = m_input[slot];
    }
    m_input.swap(m_nextInput);
}

void BackToFront::computeKeys(std::span<const float> vertices, const QVector3D& eye)
{
    const float ex = eye.x(), ey = eye.y(), ez = eye.z();
    m_keys.resize(m_count);
    m_sums.resize(m_count);
    m_digits.assign(digitCount * digitValues, 0);
    const float* v = vertices.data();
    for (std::size_t i = 0; i < m_count; ++i) {
        float nearest = std::numeric_limits<float>::infinity();
        float sum = 0.0f;
        for (int k = 0; k < m_verticesPerPrimitive; ++k, v += kvVertexFloats) {
            const float dx = v[0] - ex, dy = v[1] - ey, dz = v[2] - ez;
            float squared = dx * dx + dy * dy + dz * dz;
            // NaN cannot be ordered: such primitives get the distance 0 and are drawn last.
            if (!(squared >= 0.0f))
                squared = 0.0f;
            nearest = std::min(nearest, squared);
            sum += squared;
        }
        const std::uint32_t nearness = ~std::bit_cast<std::uint32_t>(nearest);
        m_keys[i] = {nearness, static_cast<std::uint32_t>(i)};
        m_sums[i] = sum;
        for (std::size_t d = 0; d < digitCount; ++d)
            ++m_digits[d * digitValues + digit(nearness, d)];
    }
}

/// Stable counting sorts from the least significant digit to the most significant one.
void BackToFront::sortKeys()
{
    m_scratch.resize(m_count);
    for (std::size_t d = 0; d < digitCount; ++d) {
        std::uint32_t* const places = m_digits.data() + d * digitValues;
        if (m_count > 0 && places[digit(m_keys[0].nearness, d)] == m_count)
            continue; // all keys have the same digit
        std::exclusive_scan(places, places + digitValues, places, 0u);
        for (const Key& key : m_keys)
            m_scratch[places[digit(key.nearness, d)]++] = key;
        m_keys.swap(m_scratch);
    }
}

/// Neighbouring triangles of a mesh often share their nearest vertex: runs of equal keys are common but
/// short.
void BackToFront::sortTies()
{
    const auto before = [this](const Key& a, const Key& b) {
        if (m_sums[a.slot] != m_sums[b.slot])
            return m_sums[a.slot] > m_sums[b.slot];
        return m_input[a.slot] < m_input[b.slot];
    };
    for (auto run = m_keys.begin(); run != m_keys.end();) {
        const auto end = std::find_if(run + 1, m_keys.end(),
                                      [&](const Key& key) { return key.nearness != run->nearness; });
        if (end - run > 1)
            std::sort(run, end, before);
        run = end;
    }
}
