// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationCount.h"

#include <scene/Disposal.h>
#include <scene/Generators.h>

#include <gtest/gtest.h>

#include <QtCore/QSemaphore>
#include <QtCore/QThread>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

namespace {

constexpr std::size_t manyElements = std::size_t(4) << 20; // 16 MB of floats

} // namespace

TEST(Disposal, takesTheElementsOfALongList)
{
    std::vector<float> longList(manyElements, 1.0f);
    kvDisposeOfElements(std::move(longList));
    EXPECT_EQ(longList.capacity(), 0u); // NOLINT(bugprone-use-after-move)
}

TEST(Disposal, leavesAShortListToItsOwner)
{
    std::vector<float> shortList(100, 1.0f);
    kvDisposeOfElements(std::move(shortList));
    EXPECT_EQ(shortList.size(), 100u); // NOLINT(bugprone-use-after-move)
}

TEST(Disposal, destroysOnAnotherThread)
{
    QSemaphore destroyed;
    Qt::HANDLE thread = nullptr;
    kvDispose(std::shared_ptr<void>(&destroyed, [&](void*) {
        thread = QThread::currentThreadId();
        destroyed.release();
    }));
    destroyed.acquire();
    EXPECT_NE(thread, QThread::currentThreadId());
}

#ifdef Q_OS_LINUX
// A page that was returned reads as zeros. The first and the last page belong to others in part.
TEST(Disposal, returnsWholePagesOfTheContentsFirst)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), size = 1000 * page;
    auto* const memory = static_cast<std::byte*>(std::aligned_alloc(page, size));
    std::fill_n(memory, size, std::byte(7));
    QSemaphore destroyed;
    kvDispose(std::shared_ptr<void>(memory, [&destroyed](void*) { destroyed.release(); }),
              std::span(memory + 16, size - 32));
    destroyed.acquire();
    const auto zeros = std::count(memory + page, memory + size - page, std::byte(0));
    EXPECT_EQ(static_cast<std::size_t>(zeros), size - 2 * page);
    EXPECT_EQ(memory[0], std::byte(7));
    EXPECT_EQ(memory[page - 1], std::byte(7));
    EXPECT_EQ(memory[size - page], std::byte(7));
    EXPECT_EQ(memory[size - 1], std::byte(7));
    std::free(memory);
}
#endif

// Thousands of small blocks would take milliseconds to release, which nobody could cancel.
TEST(SegmentRecords, needFewAllocationsHoweverManySegments)
{
    QList<ColoredSegment> segments;
    for (int i = 0; i < 20'000; ++i)
        segments.append({{Qt::red, QVector3D(float(i), 0, 0)}, {Qt::blue, QVector3D(float(i), 10, 5)}});
    const std::uint64_t before = kvtest::allocationsSoFar();
    const GeometryData geometry = kvSegmentRecords(segments, true, 1.0f, {}, {});
    const std::uint64_t allocations = kvtest::allocationsSoFar() - before;
    EXPECT_LT(kvtest::countsAllocations() ? allocations : 0u, 50u);
    EXPECT_FALSE(geometry.records.isEmpty());
}
