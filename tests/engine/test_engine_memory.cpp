// SPDX-License-Identifier: Apache-2.0
// Exhausted memory: allocations of the C++ library fail from a given size on.

#include "Problems.h"
#include "TestProfiles.h"
#include "support/AllocationCount.h"

#include <gtest/gtest.h>

#include <QtCore/QFileInfo>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

using namespace testprofiles;

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
thread_local std::size_t maxAllocation = unlimited;

// Allocations of more than `bytes` bytes fail while this object exists.
class AllocationLimit
{
public:
    explicit AllocationLimit(std::size_t bytes) { maxAllocation = bytes; }
    ~AllocationLimit() { maxAllocation = unlimited; }
    Q_DISABLE_COPY_MOVE(AllocationLimit)
};

} // namespace

// The program's own definitions replace those of the library. They are not inlined: GCC 14 takes a free()
// that it finds in the place of an operator delete for a mismatch.
void* operator new(std::size_t size)
{
    void* block = size <= maxAllocation ? std::malloc(size) : nullptr;
    if (!block)
        throw std::bad_alloc();
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept
{
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

TEST(OutOfMemory, whileAGamutIsComputedIsAProblem)
{
    const auto profile = openedFile(srgb());
    KVGamut::GamutObject gamut = gamutOf(profile, 5);
    for (std::size_t bytes : {100u, 1000u, 10'000u, 100'000u}) {
        {
            const AllocationLimit limit(bytes);
            EXPECT_FALSE(gamut.init(profile, KVGamut::Settings{}));
        }
        EXPECT_EQ(gamut.problem(), (KVProblem{KVProblemCode::OutOfMemory, {}, {}})) << bytes;
        EXPECT_EQ(gamut.faceCount(), 0);
    }
    EXPECT_TRUE(gamut.init(profile, KVGamut::Settings{}));
    EXPECT_EQ(gamut.problem(), std::nullopt);
}

TEST(OutOfMemory, whileASavedGamutIsRestoredIsAProblem)
{
    const auto original = gamutOf(openedFile(srgb()), 9);
    const auto saved = original.serialize();
    KVGamut::GamutObject gamut = original;
    for (std::size_t bytes : {100u, 1000u, 5000u}) {
        {
            const AllocationLimit limit(bytes);
            gamut.deserialize(saved);
        }
        EXPECT_EQ(gamut.problem(), (KVProblem{KVProblemCode::OutOfMemory, {}, {}})) << bytes;
        EXPECT_EQ(gamut.faceCount(), 0);
    }
    gamut.deserialize(saved);
    EXPECT_EQ(gamut.problem(), std::nullopt);
    EXPECT_EQ(gamut.faceCount(), original.faceCount());
}

TEST(OutOfMemory, whileAProfileIsReadIsAProblem)
{
    const QByteArray path = srgb().toUtf8();
    KVProfile* profile = nullptr;
    {
        const AllocationLimit limit(16);
        profile = KVProfileCreateWithPath(path.constData());
    }
    EXPECT_EQ(profile, nullptr);
    EXPECT_EQ(KVProfileProblem(), (KVProblem{KVProblemCode::OutOfMemory, {}, srgb()}));
    EXPECT_TRUE(openedFile(srgb()));
}

TEST(ProfileFile, takesAsMuchMemoryAsItIsLong)
{
    const QByteArray path = srgb().toUtf8();
    const auto length = static_cast<std::uint64_t>(QFileInfo(srgb()).size());
    const auto before = kvtest::bytesAllocatedSoFar();
    KVProfilePtr profile(KVProfileCreateWithPath(path.constData()), KVProfileRelease);
    ASSERT_TRUE(profile);
    // a copy in Little CMS, names, and what Qt needs for a file
    EXPECT_LT(kvtest::bytesAllocatedSoFar() - before, 10 * length + 300'000);
    EXPECT_LE(profile->bytes.capacity(), profile->bytes.size() + 8192);
}
