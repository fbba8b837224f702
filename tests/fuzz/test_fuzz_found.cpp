// SPDX-License-Identifier: Apache-2.0
// What the fuzzers found, tried again: each file below found/ once broke something.

#include "Inputs.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <ctime>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double slowness = 40.0;
#else
constexpr double slowness = 1.0;
#endif

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
        const std::clock_t start = std::clock();
        use(reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
        EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC, 2.0 * slowness) << qPrintable(name);
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
