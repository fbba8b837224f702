// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Cells.h"

namespace kvdevices {

/// An affine map to coordinates in which the solid is about equally wide in all directions and, because of
/// the rotation, has no faces along the columns.
class Frame
{
public:
    explicit Frame(const std::vector<Point>& points)
    {
        for (const Point& p : points)
            m_centre = m_centre + (1.0 / double(points.size())) * p;
        std::array<Point, 3> covariance{};
        for (const Point& p : points)
            for (std::size_t i = 0; i < 3; ++i)
                covariance[i] =
                    covariance[i] + ((p[i] - m_centre[i]) / double(points.size())) * (p - m_centre);
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j <= i; ++j) {
                double rest = covariance[i][j];
                for (std::size_t k = 0; k < j; ++k)
                    rest -= m_factor[i][k] * m_factor[j][k];
                m_factor[i][j] = i == j ? std::sqrt(std::max(rest, 1e-12)) : rest / m_factor[j][j];
            }
    }

    /// The volume of a solid, divided by its volume in the new coordinates.
    double scale() const { return m_factor[0][0] * m_factor[1][1] * m_factor[2][2]; }

    GridImage seen(GridImage image) const
    {
        for (Point& p : image.lab)
            p = (*this)(p);
        return image;
    }

    Point operator()(const Point& p) const
    {
        Point even = p - m_centre;
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t k = 0; k < i; ++k)
                even[i] -= m_factor[i][k] * even[k];
            even[i] /= m_factor[i][i];
        }
        return turned(turned(turned(even, 0, 1, 0.37), 1, 2, 0.83), 2, 0, 1.21);
    }

private:
    static Point turned(Point p, std::size_t i, std::size_t j, double angle)
    {
        const double x = p[i], y = p[j];
        p[i] = std::cos(angle) * x - std::sin(angle) * y;
        p[j] = std::sin(angle) * x + std::cos(angle) * y;
        return p;
    }

    Point m_centre{};
    std::array<Point, 3> m_factor{}; // Cholesky factor of the covariance
};

/// Into how many parts insertCells() divides the intervals of an image that is seen from a frame, so that the
/// parts are close to affine. At least 2.
std::size_t slicesFor(const GridImage& seen, double maxTwist);

} // namespace kvdevices
