// SPDX-License-Identifier: Apache-2.0
#include "TrueVolume.h"

#include "Cells.h"

namespace kvdevices {
namespace {

// Covers the rounding of the tables and of Little CMS.
constexpr double minErrorShare = 1e-5;

// An affine map to coordinates in which the solid is about equally wide in all directions and, because of the
// rotation, has no faces along the columns.
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

    double scale() const { return m_factor[0][0] * m_factor[1][1] * m_factor[2][2]; }

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

// The image of the device grid in the coordinates of a frame.
GridImage seenFrom(const Frame& frame, GridImage image)
{
    for (Point& p : image.lab)
        p = frame(p);
    return image;
}

std::size_t slicesFor(const GridImage& image, double maxTwist)
{
    const std::size_t linear = image.nodes.size() - 3, max = linear == 1 ? 16 : 4;
    std::size_t slices = 2;
    for (double twist = twistOf(image); slices < max && twist / double(slices) > maxTwist;)
        slices *= 2;
    return slices;
}

// The limit of an error that is proportional to a power of the step, from two steps with the given ratio of
// errors; a part of what is extrapolated remains as error.
TrueVolume extrapolated(const TrueVolume& coarse, const TrueVolume& fine, double ratio)
{
    const double correction = (fine.volume - coarse.volume) / (ratio - 1.0);
    return {fine.volume + correction, fine.error + 0.15 * std::abs(correction)};
}

// All measurements of a device use the same columns, so that most of their errors are the same, too.
class Measurement
{
public:
    Measurement(const GridImage& finest, std::size_t columns) : m_frame(finest.lab), m_columns(columns)
    {
        for (const Point& p : finest.lab)
            m_bounds.include(m_frame(p));
    }

    // The sum of all tetrahedra is exact; the columns only measure what is covered repeatedly.
    TrueVolume ofTetrahedra(const GridImage& image) const
    {
        ColumnUnion columns(m_bounds, m_columns);
        const double sum = insertTetrahedra(seenFrom(m_frame, image), columns).volume;
        const auto overlap = columns.overlap();
        return {m_frame.scale() * (sum - overlap.volume),
                m_frame.scale() * (overlap.error + minErrorShare * overlap.volume)};
    }

    // For four channels and more.
    TrueVolume ofCells(const GridImage& image, double maxTwist) const
    {
        const GridImage seen = seenFrom(m_frame, image);
        const std::size_t slices = slicesFor(seen, maxTwist);
        return extrapolated(ofSlices(seen, slices / 2), ofSlices(seen, slices), 2.0);
    }

private:
    TrueVolume ofSlices(const GridImage& seen, std::size_t slices) const
    {
        ColumnUnion columns(m_bounds, m_columns);
        insertCells(seen, slices, columns);
        const auto volume = columns.volume();
        return {m_frame.scale() * volume.volume, m_frame.scale() * volume.error};
    }

    Frame m_frame;
    Box m_bounds;
    std::size_t m_columns;
};

TrueVolume ofMap(const ProfileMap& map, const Effort& effort)
{
    const bool isThree = map.channels() == 3;
    const std::size_t wanted = isThree ? 32 : 8;
    const std::size_t parts = map.bends() ? (wanted + map.minSteps() - 1) / map.minSteps() : 1;
    const GridImage finest = map.gridImage(map.bends() ? 2 * parts : 1);
    const Measurement measurement(
        finest,
        isThree ? effort.columns : std::max<std::size_t>(effort.columns >> (map.channels() - 4), 10'000));
    const auto of = [&](const GridImage& image) {
        return isThree ? measurement.ofTetrahedra(image) : measurement.ofCells(image, effort.twist);
    };
    return map.bends() ? extrapolated(of(map.gridImage(parts)), of(finest), 4.0) : of(finest);
}

} // namespace

TrueVolume trueVolume(const QByteArray& profile, const Effort& effort)
{
    TrueVolume truth = ofMap(ProfileMap(profile), effort);
    truth.error += minErrorShare * truth.volume;
    return truth;
}

} // namespace kvdevices
