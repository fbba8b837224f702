// SPDX-License-Identifier: Apache-2.0
#include "app/support/PointFileTest.h"

#include <QtCore/QtEndian>

#include <array>
#include <bit>

namespace {

template <typename Number>
QByteArray big(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray utf16(const QString& text)
{
    QByteArray bytes;
    for (const QChar c : text)
        bytes += big(quint16(c.unicode()));
    return bytes;
}

// --- ASE ----------------------------------------------------------------------------------------------

QByteArray swatch(const char* name, const QByteArray& model, const QList<float>& values)
{
    const QString text = QString::fromUtf8(name) + QChar(0);
    QByteArray body = big(quint16(text.size())) + utf16(text) + model;
    for (const float value : values)
        body += big(std::bit_cast<quint32>(value));
    body += big(quint16(2)); // a normal colour
    return big(quint16(1)) + big(quint32(body.size())) + body;
}

QByteArray ase(const QList<QByteArray>& blocks)
{
    return "ASEF" + big(quint16(1)) + big(quint16(0)) + big(quint32(blocks.size())) + blocks.join();
}

QByteArray groupEnd()
{
    return big(quint16(0xC002)) + big(quint32(0));
}

PointOptions inSrgb()
{
    PointOptions options;
    options.space = QStringLiteral("sRGB");
    return options;
}

TEST_F(PointFileTest, readsLabSwatchesWithTheirNames)
{
    const auto found = points(ase({swatch("Café red", "LAB ", {0.545f, -37.0f, -50.25f}), groupEnd(),
                                   swatch("two", "LAB ", {1.0f, 0.0f, 0.0f})}));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].name, QStringLiteral("Café red"));
    expectNear(found[0].lab, LabPoint{54.5f, -37.0f, -50.25f}, 1e-4f);
    EXPECT_EQ(found[1].name, QStringLiteral("two"));
}

TEST_F(PointFileTest, convertsRgbSwatchesWithTheDeclaredSpace)
{
    const QByteArray palette = ase({swatch("red", "RGB ", {1.0f, 0.0f, 0.0f})});
    EXPECT_THAT(problem(palette), testing::StartsWith("RGB values without their colour space"));
    const auto found = points(palette, {}, inSrgb());
    ASSERT_EQ(found.size(), 1);
    expectNear(found[0].lab, LabPoint{54.29f, 80.80f, 69.89f}, 0.05f);
    EXPECT_EQ(found[0].deviceChannels, 3);
}

TEST_F(PointFileTest, leavesOutSwatchesThatItCannotUse)
{
    const QByteArray palette =
        ase({swatch("grey", "Gray", {0.5f}), swatch("lab", "LAB ", {0.5f, 1.0f, 2.0f}),
             swatch("wild", "LAB ", {9.0f, 0.0f, 0.0f}), swatch("nan", "LAB ", {0.5f, std::nanf(""), 0.0f}),
             swatch("hot", "RGB ", {1.5f, 0.0f, 0.0f})});
    EXPECT_EQ(leftOut(palette),
              "4 of 5 colours are left out (numbers: 1, 5, 3, 4): number 1: the colour model "
              "'Gray' is not known; known are RGB, CMYK and Lab");
}

TEST_F(PointFileTest, refusesDamagedSwatchFiles)
{
    const QByteArray whole = ase({swatch("lab", "LAB ", {0.5f, 1.0f, 2.0f})});
    for (qsizetype size = 5; size < whole.size(); ++size)
        EXPECT_EQ(problem(whole.left(size)), "the ASE palette is damaged") << size;
    EXPECT_EQ(problem(QByteArray(whole).replace(8, 4, big(quint32(0xFFFFFFFF)))),
              "the ASE palette is damaged");
    EXPECT_EQ(problem(QByteArray(whole).replace(14, 4, big(quint32(0xFFFFFFFF)))),
              "the ASE palette is damaged");
    EXPECT_EQ(problem(ase({})), "the file contains no positions");
}

// --- ACB ----------------------------------------------------------------------------------------------

QByteArray counted(const char* text)
{
    const QString string = QString::fromUtf8(text);
    return big(quint32(string.size())) + utf16(string);
}

QByteArray book(int space, const QList<std::pair<const char*, QByteArray>>& colors)
{
    QByteArray bytes = "8BCB" + big(quint16(1)) + big(quint16(3000)) +
                       counted("$$$/colorbook/x/title=A book") + counted("$$$/colorbook/x/prefix=BOOK ") +
                       counted(" C") + counted("") + big(quint16(colors.size())) + big(quint16(7)) +
                       big(quint16(3)) + big(quint16(space));
    for (const auto& [name, values] : colors)
        bytes += counted(name) + "000001" + values;
    return bytes + "spflspot";
}

TEST_F(PointFileTest, readsColourBooksInLab)
{
    const auto found = points(
        book(7, {{"185", QByteArray("\xFF\x80\x80", 3)}, {"", QByteArray(3, '\0')}, {"2", "\x80\x90\x70"}}));
    ASSERT_EQ(found.size(), 2); // colours without a name fill a page
    EXPECT_EQ(found[0].name, QStringLiteral("BOOK 185 C"));
    expectNear(found[0].lab, LabPoint{100, 0, 0}, 1e-4f);
    expectNear(found[1].lab, LabPoint{128.0f / 2.55f, 16, -16}, 1e-4f);
}

TEST_F(PointFileTest, readsColourBooksInRgbAndCmyk)
{
    const auto red = points(book(0, {{"red", QByteArray("\xFF\0\0", 3)}}), {}, inSrgb());
    expectNear(red.value(0).lab, LabPoint{54.29f, 80.80f, 69.89f}, 0.05f);
    PointOptions press;
    press.space = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");
    press.intent = KVVMRenderRelativeColorimetric;
    const auto paper = points(book(2, {{"paper", QByteArray(4, '\xFF')}}), {}, press);
    expectNear(paper.value(0).lab, LabPoint{100, 0, 0}, 0.5f);
    EXPECT_EQ(paper.value(0).device, (std::array<float, 4>{0, 0, 0, 0}));
}

TEST_F(PointFileTest, refusesDamagedOrUnknownColourBooks)
{
    const QByteArray whole = book(7, {{"185", "\x80\x80\x80"}});
    const qsizetype end = whole.size() - 8;
    for (qsizetype size = 5; size < end; ++size)
        EXPECT_EQ(problem(whole.left(size)), "the ACB palette is damaged") << size;
    EXPECT_EQ(problem(QByteArray(whole).replace(8, 4, big(quint32(0xFFFFFFFF)))),
              "the ACB palette is damaged");
    EXPECT_THAT(problem(book(8, {{"185", "\x80\x80\x80"}})), HasSubstr("the colour model '8' is not known"));
}

// --- GPL ----------------------------------------------------------------------------------------------

TEST_F(PointFileTest, readsGimpPalettesAsSrgb)
{
    const Result<PointSet> set = read("GIMP Palette\nName: Test\nColumns: 2\n#\n255   0   0\tDeep red\r\n"
                                      "  0   0   0\n300 0 0 wrong\n");
    ASSERT_TRUE(set);
    ASSERT_EQ(set->points.size(), 2);
    EXPECT_EQ(set->points[0].name, QStringLiteral("Deep red"));
    expectNear(set->points[0].lab, LabPoint{54.29f, 80.80f, 69.89f}, 0.05f);
    EXPECT_EQ(set->reading.space, QStringLiteral("sRGB"));
    EXPECT_EQ(ProblemText::english(set->note->about({})),
              QStringLiteral("1 of 3 colours are left out (lines: 7): line 7: R is 300, expected 0 to 255"));
}

// --- Other files --------------------------------------------------------------------------------------

TEST_F(PointFileTest, namesTheFormatOfFilesThatAreNotColours)
{
    for (const auto& [start, format] : {std::pair{QByteArray("RIFF\x10\0\0\0WEBPVP8 ", 16), "WebP"},
                                        {QByteArray("%PDF-1.7\n"), "PDF"},
                                        {QByteArray("PK\x03\x04 xl/workbook.xml"), "ZIP (as in .xlsx, .ods)"},
                                        {QByteArray("GIF89a"), "GIF"},
                                        {QByteArray("8BPS\0\1", 6), "PSD"}})
        EXPECT_EQ(problem(start), std::string("not a file of colours, but ") + format +
                                      "; known are CSV, CGATS, CxF, ASE, ACB and GPL");
}

} // namespace
