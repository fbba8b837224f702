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
    double radius() const { return std::cbrt(scale()); }

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

// The part of the device map that a measurement works with.
struct Scene
{
    GridImage image;
    double scale;
    Box bounds;
};

Scene sceneOf(const ProfileMap& map, std::size_t parts)
{
    Scene scene{map.gridImage(parts), 1.0, {}};
    const Frame frame(scene.image.lab);
    scene.scale = frame.scale();
    for (Point& p : scene.image.lab) {
        p = frame(p);
        scene.bounds.include(p);
    }
    return scene;
}

// The sum of all tetrahedra is exact; the columns only measure what is covered repeatedly.
TrueVolume ofThree(const ProfileMap& map, std::size_t parts, const Effort& effort)
{
    const Scene scene = sceneOf(map, parts);
    ColumnUnion columns(scene.bounds, effort.columns);
    const double sum = insertTetrahedra(scene.image, columns).volume;
    const auto overlap = columns.overlap();
    return {scene.scale * (sum - overlap.volume),
            scene.scale * (overlap.error + minErrorShare * overlap.volume)};
}

TrueVolume ofCells(const Scene& scene, std::size_t slices, std::size_t columns)
{
    ColumnUnion covered(scene.bounds, columns);
    insertCells(scene.image, slices, covered);
    const auto volume = covered.volume();
    return {scene.scale * volume.volume, scene.scale * volume.error};
}

std::size_t slicesFor(const GridImage& image, const Effort& effort)
{
    const std::size_t linear = image.nodes.size() - 3, max = linear == 1 ? 16 : 4;
    std::size_t slices = 2;
    for (double twist = twistOf(image); slices < max && twist / double(slices) > effort.twist;)
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

TrueVolume ofMore(const ProfileMap& map, std::size_t parts, const Effort& effort)
{
    const Scene scene = sceneOf(map, parts);
    const std::size_t slices = slicesFor(scene.image, effort);
    const std::size_t columns = std::max<std::size_t>(effort.columns >> (map.channels() - 4), 10'000);
    const TrueVolume fine = ofCells(scene, slices, columns);
    return extrapolated(ofCells(scene, slices / 2, columns), fine, 2.0);
}

TrueVolume ofMap(const ProfileMap& map, const Effort& effort)
{
    const bool isThree = map.channels() == 3;
    const auto of = [&](std::size_t parts) {
        return isThree ? ofThree(map, parts, effort) : ofMore(map, parts, effort);
    };
    if (!map.bends())
        return of(1);
    const std::size_t wanted = isThree ? 32 : 16;
    const std::size_t parts = (wanted + map.minSteps() - 1) / map.minSteps();
    if (isThree)
        return extrapolated(of(parts), of(2 * parts), 4.0);
    const double ratio = double((parts + 1) * (parts + 1)) / double(parts * parts);
    return extrapolated(of(parts), of(parts + 1), ratio);
}

} // namespace

TrueVolume trueVolume(const QByteArray& profile, const Effort& effort)
{
    TrueVolume truth = ofMap(ProfileMap(profile), effort);
    truth.error += minErrorShare * truth.volume;
    return truth;
}

} // namespace kvdevices
