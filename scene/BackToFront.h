#pragma once

#include <QtGui/QVector3D>

#include <cstdint>
#include <vector>

/// Orders translucent primitives back to front, so that blending them in sequence looks right.
///
/// A primitive whose nearest vertex is farther from the eye comes first; where the nearest vertices
/// are equally far, the one with the larger sum of distances comes first; where those are equal too,
/// the input order stays. All distances are squared.
///
/// It sorts twelve-byte keys and then gathers the records once: moving whole records while sorting
/// costs several times as much. The key buffer is kept between calls, so that a steady scene does
/// not allocate.
class BackToFront
{
public:
    /// @param vertices records of kvVertexFloats floats, @p count primitives of @p verticesPerPrimitive
    /// @param out receives as many floats; must not overlap @p vertices
    void sort(const float* vertices, std::size_t count, int verticesPerPrimitive, const QVector3D& eye,
              float* out);

private:
    struct Key
    {
        float nearest;
        float sum;
        std::uint32_t index;
    };
    std::vector<Key> m_keys;
};
