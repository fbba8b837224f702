// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/BackToFront.h>
#include <scene/VertexStride.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <span>

namespace {

using kvtest::quietNaN;

/// Primitives of n vertices. The floats after each position are unique, to identify the record.
struct Scene
{
    int verticesPerPrimitive = 3;
    std::vector<float> floats;

    std::size_t floatsPerPrimitive() const { return std::size_t(verticesPerPrimitive * kvVertexFloats); }
    std::size_t count() const { return floats.size() / floatsPerPrimitive(); }

    void add(const std::vector<QVector3D>& corners)
    {
        for (const QVector3D& p : corners) {
            floats.insert(floats.end(), {p.x(), p.y(), p.z()});
            for (int i = 3; i < kvVertexFloats; ++i)
                floats.push_back(float(floats.size()));
        }
    }
};

/// Squared distances of the vertices of a primitive from the eye: minimum and sum.
std::pair<double, double> distances(const float* record, int vertices, const QVector3D& eye)
{
    double nearest = std::numeric_limits<double>::infinity();
    double sum = 0.0;
    for (int i = 0; i < vertices; ++i) {
        const float* p = record + i * kvVertexFloats;
        const double x = double(p[0]) - eye.x();
        const double y = double(p[1]) - eye.y();
        const double z = double(p[2]) - eye.z();
        const double d = x * x + y * y + z * z;
        nearest = std::min(nearest, d);
        sum += d;
    }
    return {nearest, sum};
}

/// A slow and simple reference: a stable sort of whole records.
std::vector<float> naive(const Scene& scene, const QVector3D& eye)
{
    std::vector<std::vector<float>> records;
    const auto size = std::ptrdiff_t(scene.floatsPerPrimitive());
    for (auto it = scene.floats.begin(); it != scene.floats.end(); it += size)
        records.emplace_back(it, it + size);
    std::stable_sort(records.begin(), records.end(), [&](const auto& a, const auto& b) {
        return distances(a.data(), scene.verticesPerPrimitive, eye) >
               distances(b.data(), scene.verticesPerPrimitive, eye);
    });
    std::vector<float> sorted;
    for (const auto& record : records)
        sorted.insert(sorted.end(), record.begin(), record.end());
    return sorted;
}

std::vector<float> sorted(BackToFront& sorter, const Scene& scene, const QVector3D& eye)
{
    std::vector<float> out(scene.floats.size(), quietNaN);
    sorter.sort(scene.floats, scene.verticesPerPrimitive, eye, out);
    return out;
}

/// Small integer coordinates, for which all distances are exact in float, including ties.
Scene wholeNumbers(int verticesPerPrimitive, int count, int range, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> coordinate(-range, range);
    Scene scene;
    scene.verticesPerPrimitive = verticesPerPrimitive;
    for (int i = 0; i < count; ++i) {
        std::vector<QVector3D> corners;
        for (int k = 0; k < verticesPerPrimitive; ++k)
            corners.emplace_back(coordinate(random), coordinate(random), coordinate(random));
        scene.add(corners);
    }
    return scene;
}

} // namespace

class BackToFrontSizes : public testing::TestWithParam<std::tuple<int, int>>
{
};

TEST_P(BackToFrontSizes, matchesASortOfWholeRecords)
{
    const auto [vertices, count] = GetParam();
    BackToFront sorter;
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const Scene scene = wholeNumbers(vertices, count, 200, seed);
        for (const QVector3D& eye : {QVector3D(0, 0, -350), QVector3D(3, 5, 7), QVector3D(-200, 100, 50)})
            EXPECT_EQ(sorted(sorter, scene, eye), naive(scene, eye)) << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(BackToFront, BackToFrontSizes,
                         testing::Combine(testing::Values(2, 3),
                                          testing::Values(1, 2, 3, 15, 16, 17, 33, 1000, 20000)),
                         [](const auto& row) {
                             return std::to_string(std::get<1>(row.param)) + "primitivesOf" +
                                    std::to_string(std::get<0>(row.param));
                         });

TEST_P(BackToFrontSizes, resortGivesTheSameResultAsSort)
{
    const auto [vertices, count] = GetParam();
    const Scene scene = wholeNumbers(vertices, count, 20, 4); // many ties
    BackToFront sorter;
    std::vector<float> previous = sorted(sorter, scene, {0, 0, -350});
    for (const QVector3D& eye : {QVector3D(0, 1, -350), QVector3D(0, 0, 350), QVector3D(0, 0, 0),
                                 QVector3D(0, 0, 0), QVector3D(3, 5, 7), QVector3D(-200, 100, 50)}) {
        std::vector<float> again(scene.floats.size(), quietNaN);
        sorter.resort(previous, eye, again);
        EXPECT_EQ(again, naive(scene, eye)) << "from " << eye.x() << ", " << eye.y() << ", " << eye.z();
        previous = again;
    }
}

TEST(BackToFront, equalNearestDistancesAreOrderedByDescendingSum)
{
    Scene scene;
    scene.add({{0, 0, 10}, {0, 0, 11}, {0, 0, 12}}); // nearest 100, sum 365
    scene.add({{0, 0, 20}, {0, 30, 0}, {10, 0, 0}}); // nearest 100, sum 1400
    scene.add({{0, 0, 10}, {0, 10, 0}, {10, 0, 0}}); // nearest 100, sum 300
    scene.add({{0, 0, 11}, {0, 11, 0}, {11, 0, 0}}); // nearest 121
    scene.add({{0, 0, 5}, {0, 90, 0}, {90, 0, 0}});  // nearest 25, although its sum is the largest
    BackToFront sorter;
    const auto out = sorted(sorter, scene, {0, 0, 0});
    ASSERT_EQ(out.size(), scene.floats.size());
    std::vector<std::pair<double, double>> order;
    for (std::size_t i = 0; i < 5; ++i)
        order.push_back(distances(out.data() + i * 45, 3, {0, 0, 0}));
    const std::vector<std::pair<double, double>> expected = {
        {121, 363}, {100, 1400}, {100, 365}, {100, 300}, {25, 16225}};
    EXPECT_EQ(order, expected);
}

TEST(BackToFront, completeTiesKeepTheInputOrder)
{
    for (const int vertices : {2, 3}) {
        // With coordinates of -1, 0 and 1 nearly every primitive is in a tie.
        const Scene scene = wholeNumbers(vertices, 3000, 1, 9);
        BackToFront sorter;
        EXPECT_EQ(sorted(sorter, scene, {0, 0, 0}), naive(scene, {0, 0, 0}));
    }
}

TEST(BackToFront, sortsRandomPositionsByDistance)
{
    std::mt19937 random(21);
    std::uniform_real_distribution<float> lab(-130.0f, 130.0f);
    const auto point = [&] { return QVector3D(lab(random), lab(random), lab(random)); };
    Scene scene;
    for (int i = 0; i < 5000; ++i)
        scene.add({point(), point(), point()});
    const QVector3D eye(-210.5f, 333.25f, 87.125f);
    BackToFront sorter;
    const auto out = sorted(sorter, scene, eye);
    for (std::size_t i = 1; i < scene.count(); ++i) {
        const double before = distances(out.data() + (i - 1) * 45, 3, eye).first;
        const double after = distances(out.data() + i * 45, 3, eye).first;
        ASSERT_GE(before * (1.0 + 1e-6), after) << "triangle " << i;
    }
    auto all = out;
    auto original = scene.floats;
    std::sort(all.begin(), all.end());
    std::sort(original.begin(), original.end());
    EXPECT_EQ(all, original);
}

TEST(BackToFront, oppositeEyesGiveOppositeOrders)
{
    Scene scene;
    for (int i = 0; i < 50; ++i)
        scene.add({QVector3D(0, 0, i), QVector3D(1, 0, i), QVector3D(0, 1, i)});
    BackToFront sorter;
    const auto front = sorted(sorter, scene, {0, 0, -1000});
    const auto back = sorted(sorter, scene, {0, 0, 1000});
    for (std::size_t i = 0; i < 50; ++i) {
        EXPECT_EQ(front[i * 45 + 2], float(49 - int(i)));
        EXPECT_EQ(back[i * 45 + 2], float(i));
    }
}

TEST(BackToFront, nanPositionsDoNotAffectOtherRecords)
{
    std::mt19937 random(4);
    std::uniform_int_distribution<int> coordinate(-100, 100);
    for (const int vertices : {2, 3}) {
        Scene scene, valid;
        scene.verticesPerPrimitive = valid.verticesPerPrimitive = vertices;
        std::size_t invalid = 0;
        for (int i = 0; i < 4000; ++i) {
            std::vector<QVector3D> corners;
            for (int k = 0; k < vertices; ++k)
                corners.emplace_back(coordinate(random), coordinate(random), coordinate(random));
            const bool bad = i % 3 == 0;
            if (bad) {
                corners[std::size_t(i / 3 % vertices)].setY(quietNaN);
                ++invalid;
            }
            const std::size_t at = scene.floats.size();
            scene.add(corners);
            if (!bad)
                valid.floats.insert(valid.floats.end(), scene.floats.begin() + std::ptrdiff_t(at),
                                    scene.floats.end());
        }
        BackToFront sorter;
        const auto out = sorted(sorter, scene, {1, 2, 3});

        const std::size_t size = scene.floatsPerPrimitive();
        std::vector<float> validOut;
        std::vector<float> idsIn, idsOut;
        std::size_t invalidOut = 0;
        for (std::size_t i = 0; i < scene.count(); ++i) {
            idsIn.push_back(scene.floats[i * size + 3]);
            idsOut.push_back(out[i * size + 3]);
            const bool bad = std::any_of(out.begin() + std::ptrdiff_t(i * size),
                                         out.begin() + std::ptrdiff_t((i + 1) * size),
                                         [](float f) { return std::isnan(f); });
            if (bad)
                ++invalidOut;
            else
                validOut.insert(validOut.end(), out.begin() + std::ptrdiff_t(i * size),
                                out.begin() + std::ptrdiff_t((i + 1) * size));
        }
        EXPECT_EQ(invalidOut, invalid);
        std::sort(idsIn.begin(), idsIn.end());
        std::sort(idsOut.begin(), idsOut.end());
        EXPECT_EQ(idsOut, idsIn) << "a record is missing or duplicated";
        EXPECT_EQ(validOut, naive(valid, {1, 2, 3}));
    }
}

TEST(BackToFront, nanEyeKeepsAllRecords)
{
    const Scene scene = wholeNumbers(3, 500, 50, 2);
    BackToFront sorter;
    auto out = sorted(sorter, scene, {quietNaN, 0, 0});
    auto all = scene.floats;
    std::sort(out.begin(), out.end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(out, all);
}

TEST(BackToFront, emptyInputWritesNothing)
{
    BackToFront sorter;
    float guard = 42.0f;
    sorter.sort({}, 3, {0, 0, 0}, std::span(&guard, 1).first(0));
    EXPECT_EQ(guard, 42.0f);
}

TEST(BackToFront, sorterCanBeReusedForScenesOfAnySize)
{
    BackToFront sorter;
    for (const int count : {1000, 3, 0, 17, 2000, 1}) {
        for (const int vertices : {3, 2}) {
            const Scene scene = wholeNumbers(vertices, count, 100, unsigned(count));
            EXPECT_EQ(sorted(sorter, scene, {0, 0, 7}), naive(scene, {0, 0, 7})) << count;
        }
    }
}
