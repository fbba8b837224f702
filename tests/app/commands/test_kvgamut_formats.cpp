// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace kvtest;

namespace {

/// The files that `render` writes.
class FormatTest : public ProgramTest
{
protected:
    Answer render(const QStringList& more, const QString& output)
    {
        return kvgamut(words("render sRGB --size 64x48") + more + QStringList{QStringLiteral("-o"), output});
    }
};

TEST_F(FormatTest, isThatOfTheSuffix)
{
    const std::pair<const char*, QByteArray> starts[] = {{"a.png", "\x89PNG\r\n"},
                                                         {"a.jpg", "\xFF\xD8\xFF"},
                                                         {"a.JPEG", "\xFF\xD8\xFF"},
                                                         {"a.tif", QByteArray("II*\0", 4)},
                                                         {"a.tiff", QByteArray("II*\0", 4)},
                                                         {"a.webp", "RIFF"},
                                                         {"a.svg", "<?xml"},
                                                         {"a.pdf", "%PDF-"}};
    for (const auto& [name, start] : starts) {
        const QString file = path(QLatin1String(name));
        ASSERT_TRUE(succeeded(render({}, file))) << name;
        EXPECT_TRUE(contents(file).startsWith(start)) << name;
    }
}

TEST_F(FormatTest, showsTheSamePictureInPngAndJpeg)
{
    ASSERT_TRUE(succeeded(render({}, path(QStringLiteral("a.png")))));
    ASSERT_TRUE(succeeded(render({}, path(QStringLiteral("a.jpg")))));
    const QImage png(path(QStringLiteral("a.png")));
    const QImage jpeg(path(QStringLiteral("a.jpg")));
    ASSERT_EQ(png.size(), jpeg.size());
    for (int x = 0; x < png.width(); x += 7)
        EXPECT_LE(difference(png.pixelColor(x, 24), jpeg.pixelColor(x, 24)), 48) << x;
}

TEST_F(FormatTest, anUnknownSuffixIsRefusedBeforeAnythingIsRead)
{
    for (const char* name : {"a.txt", "a.icc", "a", "a.png.bak", "a."}) {
        const QString file = path(QLatin1String(name));
        const Answer answer =
            kvgamut({QStringLiteral("render"), QStringLiteral("missing.icc"), QStringLiteral("-o"), file});
        EXPECT_TRUE(failedWith(
            answer, WrongUsage,
            QStringLiteral("kvgamut: --output: '%1' has none of the suffixes .png, .jpg, .jpeg, .tif, .tiff, "
                           ".webp, .svg and .pdf; use --format (see kvgamut --help)")
                .arg(file)));
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(FormatTest, canBeChosenWhateverTheSuffix)
{
    const QString file = path(QStringLiteral("picture"));
    ASSERT_TRUE(succeeded(render(words("--format webp"), file)));
    EXPECT_TRUE(contents(file).startsWith("RIFF"));
    const Answer answer = render(words("--format jpg"), QStringLiteral("-"));
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.startsWith("\xFF\xD8\xFF"));
    EXPECT_EQ(render(words("--format gif"), file).exitCode, WrongUsage);
}

TEST_F(FormatTest, jpegHasNoTransparency)
{
    EXPECT_TRUE(failedWith(render(words("--no-background"), path(QStringLiteral("a.jpg"))), WrongUsage,
                           QStringLiteral("kvgamut: --no-background: JPEG pictures have no transparency (see "
                                          "kvgamut --help)")));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(FormatTest, statesTheResolutionThatIsAskedFor)
{
    const QString file = path(QStringLiteral("a.png"));
    ASSERT_TRUE(succeeded(render(words("--dpi 300"), file)));
    EXPECT_EQ(QImage(file).dotsPerMeterX(), 11811);
    ASSERT_TRUE(succeeded(render({}, file)));
    EXPECT_EQ(QImage(file).dotsPerMeterX(), 3780);
    EXPECT_EQ(render(words("--dpi 0"), file).exitCode, WrongUsage);
}

// --- What a picture says about itself -----------------------------------------------------------------

TEST_F(FormatTest, aPngNamesTheCommandAndTheProfilesWithTheirHash)
{
    const QByteArray profile = contents(QStringLiteral(KVGAMUT_CMYK_PROFILE));
    write(path(QStringLiteral("my printer.icc")), profile);
    const Answer answer =
        shell(QStringLiteral("cd \"$1\"; exec \"$KVGAMUT\" render -oa.png 'my printer.icc' sRGB --size 64x48 "
                             "--color='#ff0000' --dpi 96"),
              {path(QString())});
    ASSERT_TRUE(succeeded(answer));
    const QImage picture(path(QStringLiteral("a.png")));
    EXPECT_EQ(picture.text(QStringLiteral("Command")),
              QStringLiteral("kvgamut render 'my printer.icc' sRGB --size 64x48 '--color=#ff0000' --dpi 96"));
    const QString hash =
        QString::fromLatin1(QCryptographicHash::hash(profile, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(picture.text(QStringLiteral("Profiles")),
              hash + QStringLiteral("  my printer.icc\nbuilt in  sRGB"));
    EXPECT_TRUE(picture.text(QStringLiteral("Software")).startsWith(QStringLiteral("kvgamut ")));
    EXPECT_FALSE(contents(path(QStringLiteral("a.png"))).contains(path(QString()).toUtf8()));
}

TEST_F(FormatTest, theNamesOfOutputAndReferenceDoNotChangeTheFile)
{
    const QString first = path(QStringLiteral("one.png"));
    const QString second = path(QStringLiteral("two.png"));
    ASSERT_TRUE(succeeded(render({}, first)));
    ASSERT_TRUE(succeeded(render({QStringLiteral("--reference"), first, QStringLiteral("--format=png"),
                                  QStringLiteral("--reference-threshold=2")},
                                 second)));
    EXPECT_EQ(contents(first), contents(second));
}

// --- The reference ------------------------------------------------------------------------------------

TEST_F(FormatTest, theReferenceIsNeverOverwrittenByAnotherName)
{
    const QString reference = path(QStringLiteral("app.png"));
    ASSERT_TRUE(succeeded(render({}, reference)));
    const QByteArray before = contents(reference);
    ASSERT_TRUE(QFile::link(reference, path(QStringLiteral("link.png"))));
    ASSERT_TRUE(QDir().mkdir(path(QStringLiteral("folder"))));
    for (const char* name : {"./app.png", "folder/../app.png", "link.png"}) {
        const Answer answer = shell(
            QStringLiteral("cd \"$1\"; exec \"$KVGAMUT\" render sRGB --size 64x48 --view top --reference "
                           "app.png -o \"$2\""),
            {path(QString()), QLatin1String(name)});
        EXPECT_TRUE(
            failedWith(answer, WrongUsage,
                       QStringLiteral("kvgamut: 'app.png': the output would overwrite this input; choose "
                                      "another name")))
            << name;
        EXPECT_EQ(contents(reference), before) << name;
    }
}

} // namespace
