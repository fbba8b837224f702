#include <scene/BackToFront.h>
#include <scene/VertexStride.h>

#include <algorithm>
#include <cstring>
#include <limits>

void BackToFront::sort(const float* vertices, std::size_t count, int verticesPerPrimitive,
                       const QVector3D& eye, float* out)
{
    const std::size_t stride = static_cast<std::size_t>(verticesPerPrimitive) * kvVertexFloats;
    const float ex = eye.x(), ey = eye.y(), ez = eye.z();

    m_keys.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const float* v = vertices + i * stride;
        float nearest = std::numeric_limits<float>::infinity();
        float sum = 0.0f;
        for (int k = 0; k < verticesPerPrimitive; ++k, v += kvVertexFloats) {
            const float dx = v[0] - ex, dy = v[1] - ey, dz = v[2] - ez;
            float squared = dx * dx + dy * dy + dz * dz;
            // A distance that is no number has no place in an order; such primitives go to the front.
            if (!(squared >= 0.0f))
                squared = 0.0f;
            nearest = std::min(nearest, squared);
            sum += squared;
        }
        m_keys[i] = {nearest, sum, static_cast<std::uint32_t>(i)};
    }

    std::sort(m_keys.begin(), m_keys.end(), [](const Key& a, const Key& b) {
        if (a.nearest != b.nearest)
            return a.nearest > b.nearest;
        if (a.sum != b.sum)
            return a.sum > b.sum;
        return a.index < b.index;
    });

    for (const Key& key : m_keys) {
        std::memcpy(out, vertices + key.index * stride, stride * sizeof(float));
        out += stride;
    }
}
