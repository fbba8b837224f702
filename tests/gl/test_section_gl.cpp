// SPDX-License-Identifier: Apache-2.0
// Filled sections in pictures.

#include <KVGamutView.h>

#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <cmath>

using kvtest::ShownViewer;

namespace {

const QString a = QStringLiteral("a"), b = QStringLiteral("b");

class SectionPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        load(a, "colord/sRGB.icc");
        shown.viewer.setDisplayGrid(false);
        shown.viewer.setDisplayAxes(false);
        KVCamera camera; // from above, in parallel
        camera.orthogonal = true;
        view.setCamera(camera);
    }

    void load(const QString& id, const char* file)
    {
        const QString path = QStringLiteral("/usr/share/color/icc/") + QString::fromLatin1(file);
        ASSERT_TRUE(QFile::exists(path));
        shown.viewer.load(id, {{QStringLiteral("ProfilePath"), path}}, nullptr);
        ASSERT_GT(shown.viewer.volume(id), 0.0f);
    }

    QImage withSection(const KVSection& section)
    {
        view.setSection(section);
        return shown.settledPicture();
    }

    /// The pixel at which a colour is seen, by the ray through each pixel.
    QPoint pixelOf(float aStar, float bStar) const
    {
        const auto& [origin, direction] = shown.viewer.rayToPoint(QPoint(0, 0));
        const auto& [next, nextDirection] = shown.viewer.rayToPoint(QPoint(100, 100));
        const QVector3D step = (next - origin) / 100.0f;
        return {int(std::lround((aStar - origin.y()) / step.y())),
                int(std::lround((bStar - origin.z()) / step.z()))};
    }

    static QColor trueColor(float lightness, float aStar, float bStar)
    {
        const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lightness, aStar, bStar});
        return QColor(int(rgb[0]), int(rgb[1]), int(rgb[2]));
    }

    ShownViewer shown{300, 300};
    KVGamutView view{&shown.viewer};
};

int difference(const QColor& p, const QColor& q)
{
    return std::max(
        {std::abs(p.red() - q.red()), std::abs(p.green() - q.green()), std::abs(p.blue() - q.blue())});
}

const std::array<std::pair<float, float>, 5> places{{{0, 0}, {40, 30}, {-30, 20}, {30, -50}, {60, -20}}};

} // namespace

TEST_F(SectionPictures, areUnchangedWithoutAClippingOrPlane)
{
    const QImage plain = shown.settledPicture();
    EXPECT_EQ(withSection({true, {}}), plain);
    view.setClipping(50.0f);
    const QImage lid = shown.settledPicture();
    EXPECT_NE(lid, plain);
    view.setClipping({});
    EXPECT_EQ(shown.settledPicture(), plain);
}

TEST_F(SectionPictures, ofClippedGamutsAreOpenByDefault)
{
    view.setClipping(50.0f);
    const QImage open = shown.settledPicture();
    EXPECT_NE(withSection({true, {}}), open);
    EXPECT_EQ(withSection({}), open);
}

TEST_F(SectionPictures, showTheTrueColoursOfTheLightness)
{
    for (const float lightness : {30.0f, 50.0f, 70.0f}) {
        view.setClipping(lightness);
        const QImage picture = withSection({true, {}});
        for (const auto& [aStar, bStar] : places) {
            if (!shown.viewer.isInsideGamut(a, {lightness, aStar, bStar}))
                continue;
            const QColor seen = picture.pixelColor(pixelOf(aStar, bStar));
            // a pixel is one Lab unit wide
            EXPECT_LE(difference(seen, trueColor(lightness, aStar, bStar)), 8)
                << lightness << ", " << aStar << ", " << bStar << ": " << seen.name().toStdString();
        }
    }
}

TEST_F(SectionPictures, ofSeveralGamutsShowOneColourWhereTheyOverlap)
{
    view.setClipping(50.0f);
    const QImage one = withSection({true, {}});
    load(b, "ghostscript/default_cmyk.icc");
    view.setClipping(50.0f);
    const QImage both = shown.settledPicture();
    for (const auto& [aStar, bStar] : places)
        if (shown.viewer.isInsideGamut(a, {50, aStar, bStar})) {
            const QPoint at = pixelOf(aStar, bStar);
            EXPECT_LE(difference(one.pixelColor(at), both.pixelColor(at)), 4) << aStar << ", " << bStar;
        }
}

TEST_F(SectionPictures, followTheOpacityOfTheGamut)
{
    view.setClipping(50.0f);
    const QImage opaque = withSection({true, {}});
    KVGamutLook look = view.look(a);
    look.opacity = 0.0f;
    view.setLook(a, look);
    const QPoint at = pixelOf(0, 20);
    EXPECT_EQ(shown.settledPicture().pixelColor(at), QColor(Qt::gray)); // the background
    look.opacity = 0.5f;
    view.setLook(a, look);
    EXPECT_NE(shown.settledPicture(), opaque);
}

TEST_F(SectionPictures, areNotShownForHiddenGamutsAndWireframes)
{
    view.setClipping(50.0f);
    for (const auto change :
         {+[](KVGamutLook& look) { look.visible = false; }, +[](KVGamutLook& look) { look.surface = false; },
          +[](KVGamutLook& look) { look.mode = KVGamut3DViewer::Wireframe; }}) {
        KVGamutLook look;
        change(look);
        view.setLook(a, look);
        view.setSection({});
        const QImage open = shown.settledPicture();
        EXPECT_EQ(withSection({true, {}}), open);
    }
}

TEST_F(SectionPictures, keepTheirColoursInAColouredGamut)
{
    view.setClipping(50.0f);
    const QPoint at = pixelOf(0, 20);
    const QColor before = withSection({true, {}}).pixelColor(at);
    KVGamutLook look = view.look(a);
    look.color = Qt::red;
    view.setLook(a, look);
    EXPECT_EQ(shown.settledPicture().pixelColor(at), before);
}

TEST_F(SectionPictures, aPlaneIsSeenInsideATranslucentGamut)
{
    KVGamutLook look;
    look.opacity = 0.35f;
    view.setLook(a, look);
    const QImage whole = shown.settledPicture();
    const QImage plane = withSection({false, 50.0f});
    EXPECT_NE(plane, whole);
    EXPECT_EQ(view.clipping(), std::nullopt);
    EXPECT_EQ(withSection({}), whole);
}

TEST_F(SectionPictures, aPlaneKeepsItsColoursInATranslucentGamut)
{
    KVGamutLook look;
    look.opacity = 0.02f; // a veil
    look.color = Qt::red; // of another colour
    view.setLook(a, look);
    const QImage plane = withSection({false, 50.0f});
    for (const auto& [aStar, bStar] : places) {
        if (!shown.viewer.isInsideGamut(a, {50, aStar, bStar}))
            continue;
        const QColor seen = plane.pixelColor(pixelOf(aStar, bStar));
        EXPECT_LE(difference(seen, trueColor(50, aStar, bStar)), 12) << aStar << ", " << bStar;
    }
    look.opacity = 0.0f;
    view.setLook(a, look);
    EXPECT_EQ(shown.settledPicture().pixelColor(pixelOf(0, 20)), QColor(Qt::gray)); // the background
}

TEST_F(SectionPictures, aPlaneAboveTheClippingIsNotShown)
{
    view.setClipping(40.0f);
    const QImage cut = shown.settledPicture();
    EXPECT_EQ(withSection({false, 60.0f}), cut);
}

TEST_F(SectionPictures, survivesAReloadWithAnotherProfile)
{
    view.setClipping(50.0f);
    view.setSection({true, 30.0f});
    load(a, "ghostscript/default_cmyk.icc");
    const QImage reloaded = shown.settledPicture();
    view.setSection({});
    EXPECT_EQ(withSection({true, 30.0f}), reloaded);
}

TEST_F(SectionPictures, ignoresAPlaneThatIsNotFinite)
{
    view.setSection({true, 30.0f});
    view.setSection({false, std::nanf("")});
    EXPECT_EQ(view.section(), (KVSection{true, 30.0f}));
    view.setSection({false, INFINITY});
    EXPECT_EQ(view.section(), (KVSection{true, 30.0f}));
}

TEST_F(SectionPictures, aClickOnALidReportsItsColour)
{
    view.setClipping(50.0f);
    const QPoint at = pixelOf(20, 10);
    EXPECT_LT(view.hitAt(at).lab.x(), 49.0f); // the inside of the surface below
    view.setSection({true, {}});
    const KVHit hit = view.hitAt(at);
    EXPECT_EQ(hit.kind, KVHit::Kind::Gamut);
    EXPECT_EQ(hit.id, a);
    EXPECT_NEAR(hit.lab.x(), 50.0f, 1e-3f);
    EXPECT_NEAR(hit.lab.y(), 20.0f, 1.5f);
    EXPECT_NEAR(hit.lab.z(), 10.0f, 1.5f);
    EXPECT_NE(view.hitAt(pixelOf(100, 90)).lab.x(), 50.0f); // beside it
    KVGamutLook look = view.look(a);
    look.mode = KVGamut3DViewer::Wireframe;
    view.setLook(a, look);
    EXPECT_LT(view.hitAt(at).lab.x(), 49.0f);
}
