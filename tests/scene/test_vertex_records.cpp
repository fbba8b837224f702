// SPDX-License-Identifier: Apache-2.0
#include <scene/GeometryData.h>
#include <scene/VertexRecords.h>
#include <scene/VertexStride.h>

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

QList<float> randomVertices(std::mt19937& random, int count)
{
    std::uniform_real_distribution<float> value(0, 100);
    QList<float> floats;
    for (int i = 0; i < count * GeometryData::floatsPerVertex; ++i)
        floats.append(value(random));
    return floats;
}

/// A random change of any kind, as made by the setters of scene objects.
std::function<void(VertexRecords&)> randomChange(std::mt19937& random)
{
    const float value = std::uniform_real_distribution<float>(0, 1)(random);
    switch (std::uniform_int_distribution<int>(0, 5)(random)) {
    case 0: {
        const QList<float> vertices = randomVertices(random, 6);
        return [vertices](VertexRecords& r) { r.assign(vertices); };
    }
    case 1:
        return [value](VertexRecords& r) { r.setAlpha(value); };
    case 2:
        return [value](VertexRecords& r) { r.setClip(100 * value); };
    case 3:
        return [](VertexRecords& r) { r.shade({}); }; // invalid colour: keeps the present colours
    case 4:
        return [value](VertexRecords& r) {
            r.shade({QColor::fromHsvF(value, 1, 1), 2, true, KVPrimitiveTriangles});
        };
    default:
        return [value](VertexRecords& r) {
            r.shade({QColor::fromHsvF(value, 1, 1), 1, value > 0.5f, KVPrimitiveLines});
        };
    }
}

} // namespace

TEST(VertexRecords, lazyAndImmediateChangesGiveEqualRecords)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        VertexRecords atOnce, late;
        for (int i = 0; i < 12; ++i) {
            const auto change = randomChange(random);
            change(atOnce);
            change(late);
            (void)atOnce.list();
        }
        EXPECT_EQ(late.list(), atOnce.list()) << "seed " << seed;
    }
}

TEST(VertexRecords, copiesAreIndependent)
{
    std::mt19937 random(1);
    VertexRecords records;
    records.assign(randomVertices(random, 3));
    VertexRecords copy = records;
    copy.setClip(7.0f);
    EXPECT_EQ(copy.list()[14], 7.0f);
    EXPECT_EQ(records.list()[14], 1000000.0f);
}
