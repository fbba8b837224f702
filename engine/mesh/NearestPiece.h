// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Ciede2000.h>

#include <array>

namespace velmora {

/// The values of L*, chroma and hue of a triangle's points. Triangles that meet the L* axis have every hue.
[[nodiscard]] LchRange lchRangeOf(const std::array<Vec3, 3>& triangle);

/// What CIEDE2000 from a colour is near a point, to first order.
struct Ciede2000Model
{
    Vec3 at;
    Vec3 residual; ///< as ciede2000Residual()
    Vec3 byL;      ///< its derivatives
    Vec3 byA;
    Vec3 byB;

    /// The residuals at the corners of a triangle.
    [[nodiscard]] std::array<Vec3, 3> residualsOf(const std::array<Vec3, 3>& triangle) const;
};

/// Searches triangles for the colour with the smallest CIEDE2000 from one colour.
class Ciede2000Search
{
public:
    /// @param start the first candidate
    Ciede2000Search(Vec3 colour, Vec3 start);

    [[nodiscard]] const Ciede2000Bound& bound() const { return m_bound; }
    [[nodiscard]] Vec3 point() const { return m_model.at; }
    [[nodiscard]] double difference() const { return m_difference; }

    /// Looks for a better point of @p triangle; @p range is that of it. Pieces are divided until the
    /// difference is smooth and nearly linear in them, but not below a tenth of a dE.
    void improveOn(const std::array<Vec3, 3>& triangle, const LchRange& range);

private:
    [[nodiscard]] bool isSmooth(const LchRange& range) const;
    [[nodiscard]] Ciede2000Model modelAt(Vec3 point, Vec3 residual) const;
    [[nodiscard]] bool isFarFromBetter(const std::array<Vec3, 3>& triangle, double squaredDistance) const;
    void descend(const std::array<Vec3, 3>& triangle);

    Vec3 m_colour;
    double m_hue;
    Ciede2000Bound m_bound;
    Ciede2000Model m_model; // at the best point
    double m_difference;
};

} // namespace velmora
