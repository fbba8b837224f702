// SPDX-License-Identifier: Apache-2.0
// Regression tests: each file in found/ is an input that once caused a failure.

#include "Inputs.h"

#include "engine/WorkCount.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

// Calls use(data, size) for each file of a folder.
template <typename Use>
int forInputs(const char* folder, const Use& use)
{
    const QDir found(QStringLiteral(FUZZ_FOUND_DIR "/") + QLatin1String(folder));
    const QStringList names = found.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        QFile file(found.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        const QByteArray bytes = file.readAll();
        const work::Work cost = work::of([&] {
            use(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                static_cast<std::size_t>(bytes.size()));
        });
        EXPECT_LE(cost.colours, 250'000u) << qPrintable(name);
        EXPECT_LE(cost.bytes, 1u << 30) << qPrintable(name);
    }
    return static_cast<int>(names.size());
}

} // namespace

TEST(FuzzFound, profilesAreRefusedOrComputed)
{
    EXPECT_GE(forInputs("profile", kvfuzz::computeAndQuery), 1);
}

TEST(FuzzFound, savedGamutsAreRefusedOrRestored)
{
    EXPECT_GE(forInputs("gamut_hash",
                        [](const std::uint8_t* data, std::size_t size) {
                            kvfuzz::restoreAndQuery(kvfuzz::savedGamutFrom(data, size));
                        }),
              1);
}
