// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QColorSpace>

#include <webp/demux.h>

using namespace kvtest;

namespace {

class TurntableTest : public ProgramTest
{
protected:
    Answer turn(const char* more, const QString& output)
    {
        return kvgamut(words("render sRGB --size 96x72") + words(more) +
                       QStringList{QStringLiteral("-o"), output});
    }
    QImage frame(int number) const
    {
        return QImage(path(QStringLiteral("turn-%1.png").arg(number, 3, 10, QLatin1Char('0'))));
    }
};

TEST_F(TurntableTest, writesANumberedFileForEachPicture)
{
    ASSERT_TRUE(succeeded(turn("--turntable 4", path(QStringLiteral("turn.png")))));
    EXPECT_EQ(files(), (QStringList{QStringLiteral("turn-001.png"), QStringLiteral("turn-002.png"),
                                    QStringLiteral("turn-003.png"), QStringLiteral("turn-004.png")}));
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(frame(i).size(), QSize(96, 72));
        for (int k = 1; k < i; ++k)
            EXPECT_NE(frame(i), frame(k)) << i << " and " << k;
    }
}

TEST_F(TurntableTest, turnsAroundTheAxisOfLightness)
{
    // a point at +a*, seen from the front in a parallel projection, goes to -b* after a quarter of a turn:
    // the camera turns counter-clockwise, from -b* to +a*
    write(path(QStringLiteral("p.csv")), "L,a,b,colour\n50,60,0,red\n");
    const QStringList look =
        words("--no-surface --no-projection --annotate none --no-axes --no-grid --orthogonal --frame none "
              "--view front --ambient 1 --turntable 4 --points");
    const Answer answer = kvgamut(
        words("render sRGB --size 200x200") + look +
        QStringList{path(QStringLiteral("p.csv")), QStringLiteral("-o"), path(QStringLiteral("turn.png"))});
    ASSERT_TRUE(succeeded(answer));
    const auto middleOf = [this](int number) {
        const QImage picture = frame(number);
        QRect part;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixel(x, y) != picture.pixel(0, 0))
                    part |= QRect(x, y, 1, 1);
        return part.center().x() - 100;
    };
    EXPECT_GT(middleOf(1), 20);
    EXPECT_NEAR(middleOf(2), 0, 1);
    EXPECT_LT(middleOf(3), -20);
    EXPECT_NEAR(middleOf(4), 0, 1);
    EXPECT_NEAR(middleOf(1), -middleOf(3), 1);
}

TEST_F(TurntableTest, everyPictureHoldsTheWholeScene)
{
    ASSERT_TRUE(succeeded(turn("ProPhoto --no-grid --turntable 12", path(QStringLiteral("turn.png")))));
    for (int i = 1; i <= 12; ++i) {
        const QImage picture = frame(i);
        for (int x = 0; x < picture.width(); ++x) {
            EXPECT_EQ(picture.pixelColor(x, 0), QColor(Qt::gray)) << i;
            EXPECT_EQ(picture.pixelColor(x, picture.height() - 1), QColor(Qt::gray)) << i;
        }
        for (int y = 0; y < picture.height(); ++y) {
            EXPECT_EQ(picture.pixelColor(0, y), QColor(Qt::gray)) << i;
            EXPECT_EQ(picture.pixelColor(picture.width() - 1, y), QColor(Qt::gray)) << i;
        }
    }
}

TEST_F(TurntableTest, isOneAnimationInWebP)
{
    const QString file = path(QStringLiteral("turn.webp"));
    ASSERT_TRUE(succeeded(turn("--turntable 5", file)));
    EXPECT_EQ(files(), QStringList{QStringLiteral("turn.webp")});
    ASSERT_TRUE(succeeded(turn("--turntable 5", path(QStringLiteral("turn.png")))));
    const QByteArray bytes = contents(file);
    const WebPData data{reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size())};
    WebPAnimDecoder* decoder = WebPAnimDecoderNew(&data, nullptr);
    ASSERT_NE(decoder, nullptr);
    WebPAnimInfo info;
    WebPAnimDecoderGetInfo(decoder, &info);
    EXPECT_EQ(info.frame_count, 5u);
    EXPECT_EQ(info.loop_count, 0u); // for ever
    for (int i = 1; WebPAnimDecoderHasMoreFrames(decoder) != 0; ++i) {
        uint8_t* pixels = nullptr;
        int end = 0;
        ASSERT_NE(WebPAnimDecoderGetNext(decoder, &pixels, &end), 0);
        EXPECT_EQ(end, i * 1200) << "six seconds for a turn";
        QImage shown = QImage(pixels, 96, 72, QImage::Format_RGBA8888).convertToFormat(QImage::Format_RGB32);
        QImage expected = frame(i).convertToFormat(QImage::Format_RGB32);
        expected.setColorSpace({});
        EXPECT_EQ(shown, expected) << i;
    }
    WebPAnimDecoderDelete(decoder);
}

TEST_F(TurntableTest, writesTheSameBytesEachTime)
{
    for (const char* name : {"turn.webp", "turn.png"}) {
        ASSERT_TRUE(succeeded(turn("--turntable 3", path(QLatin1String(name)))));
        const QString file = path(files().first());
        const QByteArray first = contents(file);
        ASSERT_TRUE(succeeded(turn("--turntable 3", path(QLatin1String(name)))));
        EXPECT_EQ(contents(file), first);
        QFile::remove(file);
    }
}

TEST_F(TurntableTest, writesNothingWhenItIsInterrupted)
{
    const Answer answer =
        shell(QStringLiteral("cd \"$1\"; \"$KVGAMUT\" render sRGB --size 200x150 --turntable 3600 "
                             "-o turn.png & sleep 2; kill -INT $!; kill $!; wait $!; ls -A"),
              {path(QString())});
    EXPECT_EQ(answer.output, "");
}

TEST_F(TurntableTest, leavesNoNewFileWhenOneCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(path(QStringLiteral("turn-003.png"))));
    const Answer answer = turn("--turntable 4", path(QStringLiteral("turn.png")));
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_TRUE(answer.errors.contains("turn-003.png': cannot be written")) << answer.errors.toStdString();
    EXPECT_EQ(files(), QStringList{QStringLiteral("turn-003.png")});
}

TEST_F(TurntableTest, neverOverwritesAnInput)
{
    const QString input = path(QStringLiteral("turn-002.png"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(KVGAMUT_CMYK_PROFILE), input));
    const QByteArray before = contents(input);
    const Answer answer = kvgamut({QStringLiteral("render"), input, QStringLiteral("--turntable"),
                                   QStringLiteral("3"), QStringLiteral("--size"), QStringLiteral("64x48"),
                                   QStringLiteral("-o"), path(QStringLiteral("turn.png"))});
    EXPECT_EQ(answer.exitCode, WrongUsage);
    EXPECT_TRUE(answer.errors.contains("the output would overwrite this input"))
        << answer.errors.toStdString();
    EXPECT_EQ(contents(input), before);
}

TEST_F(TurntableTest, refusesWhatCannotBeASeries)
{
    for (const char* line : {"--turntable 1 -o a.png", "--turntable 3601 -o a.png", "--turntable x -o a.png",
                             "--turntable 4 -o -", "--turntable 4 -o /dev/null", "--turntable 4",
                             "--turntable 4 -o a.png --reference b.png"}) {
        const Answer answer = kvgamut(words("render sRGB") + words(line));
        EXPECT_EQ(answer.exitCode, WrongUsage) << line;
        EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
        EXPECT_TRUE(answer.output.isEmpty());
    }
}

TEST_F(TurntableTest, aNameWithoutASuffixIsNumberedToo)
{
    ASSERT_TRUE(succeeded(turn("--turntable 2 --format jpg", path(QStringLiteral("a b")))));
    EXPECT_EQ(files(), (QStringList{QStringLiteral("a b-001"), QStringLiteral("a b-002")}));
}

} // namespace
