// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

using namespace kvtest;

namespace {

using FramingTest = ProgramTest;

/// The pixels that differ from the background in the corner.
QRect drawnPart(const QImage& picture)
{
    const QRgb background = picture.pixel(0, 0);
    QRect part;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != background)
                part |= QRect(x, y, 1, 1);
    return part;
}

/// Margins of the tighter axis as shares of the picture, and of the other one.
struct Margins
{
    explicit Margins(const QImage& picture)
    {
        const QRect part = drawnPart(picture);
        const auto share = [](int pixels, int side) { return double(pixels) / side; };
        const double left = share(part.left(), picture.width());
        const double right = share(picture.width() - 1 - part.right(), picture.width());
        const double top = share(part.top(), picture.height());
        const double bottom = share(picture.height() - 1 - part.bottom(), picture.height());
        smallest = std::min({left, right, top, bottom});
        tighter = std::min(std::max(left, right), std::max(top, bottom));
    }
    double smallest; ///< of the four
    double tighter;  ///< the larger one of the tighter axis
};

TEST_F(FramingTest, fillsPicturesOfEveryShape)
{
    for (const char* size : {"100x100", "400x1000", "300x2000", "1000x300", "8000x500", "640x480"})
        for (const char* gamuts : {"sRGB", "ProPhoto", KVGAMUT_CMYK_PROFILE " sRGB --orthogonal"}) {
            const Margins margins(rendered(words(gamuts) + words("--no-grid --size") + words(size)));
            // half a pixel of a line or of rounding in a small picture
            EXPECT_GE(margins.smallest, 0.02) << gamuts << " in " << size;
            EXPECT_LE(margins.tighter, 0.08) << gamuts << " in " << size;
        }
}

TEST_F(FramingTest, fillsPicturesFromEverySide)
{
    for (const char* view : {"front", "back", "left", "right", "top", "bottom", "oblique"}) {
        const Margins margins(rendered(words("ProPhoto --no-grid --size 400x300 --view") + words(view)));
        EXPECT_GE(margins.smallest, 0.02) << view;
        EXPECT_LE(margins.tighter, 0.08) << view;
    }
}

TEST_F(FramingTest, showsTheNamedViewsFromTheirSide)
{
    const auto centreOf = [this](const char* view, const char* colour, const char* position) {
        write(path(QStringLiteral("p.csv")), "L,a,b,colour\n" + QByteArray(position) + "," + colour + "\n");
        const QImage picture =
            rendered(words("sRGB --no-surface --no-projection --no-axes --no-grid --orthogonal --frame none "
                           "--size 200x200 --ambient 1 --view") +
                     words(view) + QStringList{QStringLiteral("--points"), path(QStringLiteral("p.csv"))});
        return drawnPart(picture).center() - QPoint(100, 100);
    };
    // +a* is to the right from the front and to the left from the back
    EXPECT_GT(centreOf("front", "red", "50,60,0").x(), 20);
    EXPECT_LT(centreOf("back", "red", "50,60,0").x(), -20);
    // +b* is to the right from the side of +a*, and to the left from that of -a*
    EXPECT_GT(centreOf("right", "red", "50,0,60").x(), 20);
    EXPECT_LT(centreOf("left", "red", "50,0,60").x(), -20);
    for (const char* view : {"front", "back", "left", "right"})
        EXPECT_LT(centreOf(view, "red", "90,0,0").y(), -10) << view; // L* is up
    // +a* is to the right in both; +b* is up from the top and down from the bottom
    EXPECT_GT(centreOf("top", "red", "50,60,0").x(), 20);
    EXPECT_GT(centreOf("bottom", "red", "50,60,0").x(), 20);
    EXPECT_LT(centreOf("top", "red", "50,0,60").y(), -20);
    EXPECT_GT(centreOf("bottom", "red", "50,0,60").y(), 20);
}

TEST_F(FramingTest, framesWhatIsLeftOfAClippedGamut)
{
    const Margins margins(
        rendered(words("ProPhoto --no-grid --no-axes --no-projection --clip 20 --view top --size 300x300")));
    EXPECT_GE(margins.smallest, 0.02);
    EXPECT_LE(margins.tighter, 0.08);
}

TEST_F(FramingTest, framesPointsAndLinesWithTheirSize)
{
    write(path(QStringLiteral("far.csv")), "L,a,b,colour\n50,300,0,red\n60,-20,250,blue\n");
    const Margins margins(rendered(words("sRGB --no-grid --size 400x300 --point-size 40 --points") +
                                   QStringList{path(QStringLiteral("far.csv"))}));
    EXPECT_GE(margins.smallest, 0.02);
    EXPECT_LE(margins.tighter, 0.08);
}

TEST_F(FramingTest, aCameraIsKeptUnlessFramingIsAskedFor)
{
    const QStringList look = words("ProPhoto --no-grid --size 300x200 --camera 250,-420,-400");
    const QImage kept = rendered(look);
    EXPECT_EQ(kept, rendered(look + words("--frame none")));
    const QImage framed = rendered(look + words("--frame all"));
    EXPECT_NE(kept, framed);
    EXPECT_LE(Margins(framed).tighter, 0.08);
}

TEST_F(FramingTest, takesTheCameraThatTheWindowCopies)
{
    const QStringList text{QStringLiteral("--camera"),
                           QStringLiteral("kvgamut camera 130,120,-230 look at 40,10,0 angle 60 orthogonal")};
    const QStringList look = words("sRGB --size 200x150");
    const QImage expected =
        rendered(look + words("--camera 130,120,-230 --look-at 40,10,0 --angle 60 --orthogonal"));
    EXPECT_EQ(rendered(look + text), expected);
    EXPECT_NE(rendered(look + text + words("--angle 40")), expected); // an option of its own takes precedence
    const QString file = path(QStringLiteral("a.png"));
    for (const char* more : {"--look-at 1,2,3", "--view top"})
        EXPECT_EQ(kvgamut(words("render sRGB") + text + words(more) + QStringList{QStringLiteral("-o"), file})
                      .exitCode,
                  WrongUsage)
            << more;
    EXPECT_EQ(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("--camera"),
                       QStringLiteral("kvgamut camera 1,2,3"), QStringLiteral("-o"), file})
                  .exitCode,
              WrongUsage);
}

} // namespace
