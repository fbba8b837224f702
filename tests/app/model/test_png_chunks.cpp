// SPDX-License-Identifier: Apache-2.0
#include "model/inputs/PngChunks.h"

#include <gtest/gtest.h>

#include <QtCore/QtEndian>

namespace {

const QByteArray signature("\x89PNG\r\n\x1a\n");

QByteArray chunk(const QByteArray& type, const QByteArray& data, int declared = -1)
{
    QByteArray length(4, '\0');
    qToBigEndian(static_cast<quint32>(declared < 0 ? static_cast<int>(data.size()) : declared),
                 length.data());
    return length + type + data + "crc!";
}

const QByteArray header = chunk("IHDR", QByteArray(13, '\1'));
const QByteArray pixels = chunk("IDAT", "pixels");
const QByteArray end = chunk("IEND", {});

TEST(PngChunks, areCompleteIfTheFileHasTheirBytes)
{
    EXPECT_TRUE(PngChunks::areComplete(signature + header + chunk("zTXt", "text") + pixels + end));
    EXPECT_FALSE(
        PngChunks::areComplete(signature + header + chunk("zTXt", "text", 738'000'000) + pixels + end));
    EXPECT_FALSE(PngChunks::areComplete(signature + chunk("IHDR", "cut", 13)));
}

TEST(PngChunks, areNotCheckedBehindTheFirstPixels)
{
    EXPECT_TRUE(PngChunks::areComplete(signature + header + chunk("IDAT", "cut", 1000)));
    EXPECT_TRUE(PngChunks::areComplete(signature + header + pixels + chunk("tEXt", "cut", 1000)));
}

TEST(PngChunks, acceptFilesWithoutAnyChunk)
{
    for (const QByteArray& bytes : {QByteArray(), QByteArray("\x89PNG"), signature, signature + "1234567"})
        EXPECT_TRUE(PngChunks::areComplete(bytes)) << bytes.size();
}

TEST(PngChunks, ofPixelsAreTheSameBytesWithoutTexts)
{
    const QByteArray plain = signature + header + chunk("gAMA", "1234") + pixels + end;
    const auto kept = PngChunks::ofPixels(plain);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->constData(), plain.constData()); // not a copy
}

TEST(PngChunks, ofPixelsExcludeTextsTheProfileAndUnknownOptionalChunks)
{
    QByteArray texts;
    for (const char* type : {"zTXt", "iTXt", "tEXt", "sPLT", "eXIf", "prVt", "iCCP"})
        texts += chunk(type, "anything");
    const QByteArray colour = chunk("tRNS", "12") + chunk("gAMA", "1234") + chunk("sRGB", "1");
    EXPECT_EQ(PngChunks::ofPixels(signature + header + texts + colour + pixels + texts + end),
              signature + header + colour + pixels + end);
}

TEST(PngChunks, ofPixelsMayBeCutOffInThePixels)
{
    const QByteArray cut = signature + header + chunk("IDAT", "cut", 1000);
    EXPECT_EQ(PngChunks::ofPixels(cut), cut);
    EXPECT_FALSE(PngChunks::ofPixels(signature + header + chunk("tEXt", "cut", 1000)));
}

TEST(PngChunks, leaveOtherFilesUnchanged)
{
    const QByteArray jpeg("\xFF\xD8\xFF\xE0 something else, which has no chunks");
    EXPECT_EQ(PngChunks::ofPixels(jpeg), jpeg);
}

} // namespace
