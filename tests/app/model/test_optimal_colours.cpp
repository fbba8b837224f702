// SPDX-License-Identifier: Apache-2.0
#include "model/points/OptimalColours.h"
#include "model/points/SpectralWeights.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <random>

namespace {

using KVGamut::LabPoint;
using Vector = std::array<double, 3>;

constexpr Vector d50{96.42, 100.0, 82.49};
constexpr std::size_t stepCount = 81; // of 5 nm, 380 to 780 nm

Vector minus(const LabPoint& p, const LabPoint& q)
{
    return {double(p.L) - double(q.L), double(p.a) - double(q.a), double(p.b) - double(q.b)};
}

Vector cross(const Vector& u, const Vector& v)
{
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

double dot(const Vector& u, const Vector& v)
{
    return u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
}

double length(const Vector& v)
{
    return std::sqrt(dot(v, v));
}

SpectralWeights weights()
{
    QList<double> wavelengths;
    for (std::size_t i = 0; i < stepCount; ++i)
        wavelengths.append(380.0 + 5.0 * double(i));
    return *SpectralWeights::of(wavelengths);
}

Vector xyzOf(const SpectralWeights& weights, const std::vector<float>& spectrum)
{
    const auto xyz = weights.xyzOf(spectrum);
    return {double(xyz[0]), double(xyz[1]), double(xyz[2])};
}

LabPoint labOf(const Vector& xyz)
{
    std::array<double, 3> f{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double t = xyz[i] / d50[i];
        f[i] = t > 216.0 / 24389.0 ? std::cbrt(t) : t * 841.0 / 108.0 + 4.0 / 29.0;
    }
    return {float(116 * f[1] - 16), float(500 * (f[0] - f[1])), float(200 * (f[1] - f[2]))};
}

Vector xyzOfLab(const LabPoint& lab)
{
    const double y = (double(lab.L) + 16.0) / 116.0;
    const std::array<double, 3> f{y + double(lab.a) / 500.0, y, y - double(lab.b) / 200.0};
    Vector xyz{};
    for (std::size_t i = 0; i < 3; ++i)
        xyz[i] = d50[i] * (f[i] > 6.0 / 29.0 ? f[i] * f[i] * f[i] : (f[i] - 4.0 / 29.0) * 108.0 / 841.0);
    return xyz;
}

/// How often the surface encloses @p point, from the solid angles of its faces.
double windingNumber(const OptimalColours& colours, const LabPoint& point)
{
    double angle = 0.0;
    for (const auto& face : colours.faces) {
        std::array<Vector, 3> v;
        for (std::size_t i = 0; i < 3; ++i)
            v[i] = minus(colours.points[static_cast<std::size_t>(face[i])], point);
        const double a = length(v[0]), b = length(v[1]), c = length(v[2]);
        angle +=
            2.0 * std::atan2(dot(v[0], cross(v[1], v[2])),
                             a * b * c + dot(v[0], v[1]) * c + dot(v[1], v[2]) * a + dot(v[2], v[0]) * b);
    }
    return angle / (4.0 * std::numbers::pi);
}

double volume(const OptimalColours& colours)
{
    const LabPoint middle{50.0F, 0.0F, 0.0F};
    double sum = 0.0;
    for (const auto& face : colours.faces) {
        std::array<Vector, 3> v;
        for (std::size_t i = 0; i < 3; ++i)
            v[i] = minus(colours.points[static_cast<std::size_t>(face[i])], middle);
        sum += dot(v[0], cross(v[1], v[2])) / 6.0;
    }
    return sum;
}

TEST(OptimalColours, makeAClosedOrientedSurface)
{
    const OptimalColours colours = OptimalColours::create();
    std::map<std::pair<int, int>, int> edges;
    for (const auto& face : colours.faces)
        for (std::size_t i = 0; i < 3; ++i)
            ++edges[{face[i], face[(i + 1) % 3]}];
    for (const auto& [edge, count] : edges) {
        EXPECT_EQ(count, 1);
        EXPECT_TRUE(edges.contains({edge.second, edge.first}));
    }
    EXPECT_EQ(colours.points.size() + colours.faces.size(), edges.size() / 2 + 2); // a sphere
    EXPECT_NEAR(colours.points.front().L, 0.0F, 1e-4F);
    EXPECT_NEAR(colours.points.back().L, 100.0F, 1e-4F);
}

TEST(OptimalColours, encloseTheColoursOfRandomReflectances)
{
    const OptimalColours colours = OptimalColours::create();
    const SpectralWeights table = weights();
    std::mt19937 random(20);
    for (int sample = 0; sample < 500; ++sample) {
        // From smooth to rough: the same value for 1 to 30 steps.
        const std::size_t run = 1 + random() % 30;
        std::vector<float> spectrum(stepCount);
        for (std::size_t i = 0; i < stepCount; ++i)
            spectrum[i] = i % run == 0 ? float(random() % 1000) / 999.0F : spectrum[i - 1];
        EXPECT_NEAR(windingNumber(colours, labOf(xyzOf(table, spectrum))), 1.0, 1e-3) << sample;
    }
}

// A point is within the solid if no plane through black or white along two of the segments has it on the
// outside: that uses neither the order of the steps nor triangles.
class ExactSolid
{
public:
    ExactSolid()
    {
        const SpectralWeights table = weights();
        std::vector<Vector> segments;
        for (std::size_t i = 0; i < stepCount; ++i) {
            std::vector<float> single(stepCount);
            single[i] = 1.0F;
            segments.push_back(xyzOf(table, single));
        }
        for (std::size_t i = 0; i < stepCount; ++i)
            for (std::size_t j = 0; j < i; ++j)
                addPlanes(segments, cross(segments[i], segments[j]));
    }

    bool contains(const Vector& xyz) const
    {
        return std::all_of(m_planes.begin(), m_planes.end(), [&](const Plane& plane) {
            const double distance = dot(plane.normal, xyz);
            return distance >= plane.from && distance <= plane.to;
        });
    }

private:
    struct Plane
    {
        Vector normal;
        double from = 0.0;
        double to = 0.0;
    };

    void addPlanes(const std::vector<Vector>& segments, const Vector& normal)
    {
        Plane plane{normal};
        for (const Vector& segment : segments)
            (dot(normal, segment) < 0.0 ? plane.from : plane.to) += dot(normal, segment);
        if (length(normal) > 1e-9)
            m_planes.push_back(plane);
    }

    std::vector<Plane> m_planes;
};

TEST(OptimalColours, haveTheVolumeOfTheExactSolid)
{
    const ExactSolid solid;
    std::mt19937 random(21);
    std::uniform_real_distribution<float> lightness(0, 100), a(-200, 200), b(-200, 200);
    constexpr int samples = 400000;
    int inside = 0;
    for (int i = 0; i < samples; ++i)
        if (solid.contains(xyzOfLab({lightness(random), a(random), b(random)})))
            ++inside;
    const double share = double(inside) / samples;
    constexpr double box = 100.0 * 400.0 * 400.0;
    const double deviation = box * std::sqrt(share * (1.0 - share) / samples);
    RecordProperty("exact", std::to_string(box * share));
    RecordProperty("surface", std::to_string(volume(OptimalColours::create())));
    EXPECT_NEAR(volume(OptimalColours::create()), box * share, 4.0 * deviation);
}

} // namespace
