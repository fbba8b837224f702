// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

#include <cstdint>
#include <span>
#include <vector>

/// Sorts translucent primitives back to front for blending.
///
/// The primitive whose nearest vertex is farther from the eye comes first. Ties are resolved by the larger
/// sum of the distances of all vertices, then by the input order. All distances are squared.
///
/// The implementation is a radix sort of eight-byte keys (the bit patterns of non-negative floats have the
/// order of the floats), followed by one copy of the records. Moving whole records while sorting would cost
/// several times as much. Work buffers are kept between calls, so that a steady scene does not allocate.
class BackToFront
{
public:
    /// @param vertices whole primitives of @p verticesPerPrimitive records of kvVertexFloats floats
    /// @param out receives the sorted primitives; as long as @p vertices, without overlap
    void sort(std::span<const float> vertices, int verticesPerPrimitive, const QVector3D& eye,
              std::span<float> out);

    /// Sorts the same primitives for another eye. @p previous is the unchanged output of the last sort() or
    /// resort() of this object. The result is that of sort(), but faster after a small camera move:
    /// primitives that are close in the new order are close in memory.
    void resort(std::span<const float> previous, const QVector3D& eye, std::span<float> out);

private:
    struct Key
    {
        std::uint32_t nearness; ///< inverted bits of the squared distance: ascending is back to front
        std::uint32_t slot;     ///< index of the primitive in the records to sort
    };

    void order(std::span<const float> vertices, const QVector3D& eye, std::span<float> out);
    void computeKeys(std::span<const float> vertices, const QVector3D& eye);
    void sortKeys();
    void sortTies();

    std::size_t m_count = 0;
    int m_verticesPerPrimitive = 3;
    std::vector<std::uint32_t> m_input;     ///< for each slot: its index in the input of sort()
    std::vector<std::uint32_t> m_nextInput; ///< the same for the result
    std::vector<float> m_sums;              ///< for each slot: sum of the squared distances
    std::vector<Key> m_keys, m_scratch;
    std::vector<std::uint32_t> m_digits; ///< histogram: for each digit and value, the number of keys
};
