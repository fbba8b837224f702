// SPDX-License-Identifier: Apache-2.0
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
/// It sorts eight-byte keys by their digits (a radix sort: the bits of floats that are not negative
/// order as the floats do) and then gathers the records once: moving whole records while sorting costs
/// several times as much. The work buffers are kept between calls, so that a steady scene does not
/// allocate.
class BackToFront
{
public:
    /// @param vertices records of kvVertexFloats floats, @p count primitives of @p verticesPerPrimitive
    /// @param out receives as many floats; must not overlap @p vertices
    void sort(const float* vertices, std::size_t count, int verticesPerPrimitive, const QVector3D& eye,
              float* out);

    /// Orders the same primitives for another eye. @p previous is what the last sort() or resort() of
    /// this object wrote, unchanged. The result is that of sort(), but comes sooner when the eye moved a
    /// little: what is near in the new order is near in memory.
    void resort(const float* previous, const QVector3D& eye, float* out);

private:
    struct Key
    {
        std::uint32_t nearness; ///< small is far
        std::uint32_t slot;     ///< of the primitive in the records that are being ordered
    };

    void order(const float* vertices, const QVector3D& eye, float* out);
    void computeKeys(const float* vertices, const QVector3D& eye);
    void sortKeys();
    void sortTies();

    std::size_t m_count = 0;
    int m_verticesPerPrimitive = 3;
    std::vector<std::uint32_t> m_input;     ///< for each slot: its place in what sort() was given
    std::vector<std::uint32_t> m_nextInput; ///< the same of the result
    std::vector<float> m_sums;              ///< for each slot
    std::vector<Key> m_keys, m_scratch;
    std::vector<std::uint32_t> m_digits; ///< for each digit and value: how often it occurs
};
