// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <lcms2.h>

#include <map>
#include <string>

using namespace kvtest;

namespace {

struct Pair
{
    const char* name;
    const char* one;
    const char* other;
};

void PrintTo(const Pair& pair, std::ostream* out)
{
    *out << "'" << pair.one << "' and '" << pair.other << "'";
}

const auto nameOf = [](const testing::TestParamInfo<Pair>& info) { return std::string(info.param.name); };
const QStringList smallSize = words("--size 200x150");

/// Compares pictures. Many pairs have one in common, so each is rendered once.
class PairTest : public ProgramTest, public testing::WithParamInterface<Pair>
{
protected:
    QImage picture(const char* options)
    {
        static std::map<std::string, QImage> pictures;
        QImage& known = pictures[options];
        if (known.isNull())
            known = rendered(words(options) + smallSize);
        return known;
    }
};

class EffectTest : public PairTest
{
};

TEST_P(EffectTest, showsInThePicture)
{
    const QImage one = picture(GetParam().one);
    const QImage other = picture(GetParam().other);
    ASSERT_EQ(one.size(), other.size());
    EXPECT_NE(one, other);
}

INSTANTIATE_TEST_SUITE_P(
    OfAnOption, EffectTest,
    testing::Values(
        Pair{"viewTop", "sRGB", "sRGB --view top"},
        Pair{"viewBottom", "sRGB --view top", "sRGB --view bottom"},
        Pair{"camera", "sRGB", "sRGB --camera 60,300,-300"},
        Pair{"lookAt", "sRGB --camera 60,300,-300", "sRGB --camera 60,300,-300 --look-at 20,0,0"},
        Pair{"orthogonal", "sRGB", "sRGB --orthogonal"}, Pair{"angle", "sRGB", "sRGB --angle 45"},
        Pair{"wireframe", "sRGB", "sRGB --mode wireframe"},
        Pair{"flat", "sRGB --color orange", "sRGB --color orange --mode flat"},
        Pair{"alphaOfOne", "sRGB", "sRGB --alpha 0.5"},
        Pair{"alphaOfTheFirst", "sRGB ProPhoto", "sRGB ProPhoto --alpha 0.5"},
        Pair{"alphaOfTheSecond", "sRGB ProPhoto", "sRGB ProPhoto --alpha 1,0.8"},
        Pair{"colour", "sRGB", "sRGB --color orange"},
        Pair{"colourOfTheSecond", "sRGB ProPhoto --color orange", "sRGB ProPhoto --color orange,blue"},
        Pair{"modeOfTheSecond", "sRGB ProPhoto --mode smooth", "sRGB ProPhoto --mode smooth,wireframe"},
        Pair{"light", "sRGB", "sRGB --light 50,0,-300"},
        Pair{"lightColour", "sRGB", "sRGB --light-color #80c0ff"},
        Pair{"noBackground", "sRGB --background black", "sRGB --no-background"},
        Pair{"ambient", "sRGB", "sRGB --ambient 0.9"}, Pair{"background", "sRGB", "sRGB --background white"},
        Pair{"noGrid", "sRGB", "sRGB --no-grid"}, Pair{"noAxes", "sRGB", "sRGB --no-axes"},
        Pair{"plane", "sRGB", "sRGB --plane"}, Pair{"clip", "sRGB", "sRGB --clip 50"},
        Pair{"primaries", "sRGB --no-surface", "sRGB --no-surface --primaries"},
        Pair{"noProjection", "sRGB", "sRGB --no-projection"}, Pair{"noSurface", "sRGB", "sRGB --no-surface"},
        Pair{"grid", "sRGB", "sRGB --grid 3"},
        Pair{"intent", KVGAMUT_CMYK_PROFILE, KVGAMUT_CMYK_PROFILE " --intent relative"},
        Pair{"blackPointCompensation", KVGAMUT_CMYK_PROFILE " --intent relative",
             KVGAMUT_CMYK_PROFILE " --intent relative --bpc"},
        Pair{"adaptation", "sRGB", "sRGB --adaptation none"},
        Pair{"adaptationToD65", "sRGB --adaptation none", "sRGB --adaptation none-d65"},
        Pair{"anotherProfile", "sRGB", "AdobeRGB"},
        Pair{"whichGamutIsFirst", "sRGB ProPhoto", "ProPhoto sRGB"}),
    nameOf);

class SamenessTest : public PairTest
{
};

TEST_P(SamenessTest, isTheSamePicture)
{
    ASSERT_STRNE(GetParam().one, GetParam().other);
    const QImage one = picture(GetParam().one);
    EXPECT_EQ(one, picture(GetParam().other)); // the bytes differ: they state the command
    EXPECT_FALSE(one.isNull());
}

INSTANTIATE_TEST_SUITE_P(
    OfTwoSpellings, SamenessTest,
    testing::Values(
        Pair{"modeZero", "sRGB --mode 0", "sRGB --mode solid"},
        Pair{"modeOne", "sRGB --mode 1", "sRGB --mode smooth"},
        Pair{"modeTwo", "sRGB --color red --mode 2", "sRGB --color red --mode flat"},
        Pair{"modeThree", "sRGB --mode 3", "sRGB --mode wireframe"},
        Pair{"smoothIsTheDefault", "sRGB", "sRGB --mode smooth"},
        Pair{"solidLooksSmooth", "sRGB --mode smooth", "sRGB --mode solid"},
        Pair{"modeForAll", "sRGB ProPhoto --mode wireframe", "sRGB ProPhoto --mode wireframe,3"},
        Pair{"lightFromAboveIsTheDefault", "sRGB", "sRGB --light 300,0,0 --light-color white"},
        Pair{"absoluteIsTheDefault", KVGAMUT_CMYK_PROFILE, KVGAMUT_CMYK_PROFILE " --intent absolute"},
        Pair{"theLargerOneIsTranslucent", "ProPhoto sRGB", "ProPhoto sRGB --alpha 0.35,1"},
        Pair{"alphaOfTheFirstOnly", "sRGB ProPhoto --alpha 0.7", "sRGB ProPhoto --alpha 0.7,0.35"},
        Pair{"builtInNamesInAnyCase", "srgb displayp3", "sRGB DisplayP3"},
        Pair{"coloursByNameAndNumber", "sRGB --color orange", "sRGB --color #ffa500"},
        Pair{"optionsBeforeAndAfter", "sRGB --view top", "--view top sRGB"},
        Pair{"valuesAfterAnEqualsSign", "sRGB --camera -60,200,-300", "sRGB --camera=-60,200,-300"},
        Pair{"blackPointCompensationOfTheAbsoluteIntent", KVGAMUT_CMYK_PROFILE,
             KVGAMUT_CMYK_PROFILE " --bpc"}),
    nameOf);

using OptionTest = ProgramTest;

TEST_F(OptionTest, aFullyTransparentGamutLeavesTheBackground)
{
    const QImage picture = rendered(words(
        "sRGB --alpha 0 --size 200x200 --frame none --view top --no-grid --no-axes --background #203040"));
    // halfway between neutral and red: on the surface, but not on the outline
    const QPoint pixel = topCamera({200, 200}).pixelOf({60, 40, 20});
    EXPECT_EQ(picture.pixelColor(pixel), QColor(0x20, 0x30, 0x40));
}

TEST_F(OptionTest, aWireframeLetsTheBackgroundShowBetweenItsEdges)
{
    const QStringList look = words(
        "sRGB --grid 3 --size 400x400 --frame none --view top --no-grid --no-axes --background #203040");
    const auto backgroundPixels = [](const QImage& picture) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == QColor(0x20, 0x30, 0x40) ? 1 : 0;
        return count;
    };
    const int aroundTheSurface = backgroundPixels(rendered(look));
    const int aroundTheWires = backgroundPixels(rendered(look + words("--mode wireframe")));
    EXPECT_GT(aroundTheWires, aroundTheSurface + 400 * 400 / 20);
    EXPECT_LT(aroundTheWires, 400 * 400);
}

TEST_F(OptionTest, aColourReplacesTheGamutsOwn)
{
    const QImage picture =
        rendered(words("sRGB --color blue --size 300x300 --frame none --view top --ambient 1 --no-axes"));
    // green and red of the gamut are now shades of blue: blue is the maximum, the other channels are equal
    for (const Device& device : {Device{0.25, 1, 0.25}, Device{1, 0.25, 0.25}}) {
        const QColor seen = picture.pixelColor(topCamera({300, 300}).pixelOf(labOf(device)));
        EXPECT_GT(seen.blue(), seen.red() + 20);
        EXPECT_EQ(seen.red(), seen.green());
    }
}

TEST_F(OptionTest, aParallelProjectionShowsEqualSizesAtAllHeights)
{
    // In a parallel projection from the top, the position of a colour does not depend on its L*.
    const QImage picture =
        rendered(words("sRGB --orthogonal --frame none --view top --size 600x600 --ambient 1 --no-axes"));
    const double unitsPerPixel = 2.0 * 472.48712 * std::tan(15.0 * 3.14159265358979323846 / 180.0) / 600.0;
    for (const Device& device :
         {Device{1, 0.25, 0.25}, Device{0.25, 1, 0.25}, Device{0.25, 0.25, 1}, Device{0.5, 0.75, 1}}) {
        const Lab lab = labOf(device);
        const QPoint pixel(static_cast<int>(std::floor(300.0 + lab.a / unitsPerPixel)),
                           static_cast<int>(std::floor(300.0 - lab.b / unitsPerPixel)));
        EXPECT_LE(difference(picture.pixelColor(pixel), colorOf(device)), 8)
            << testing::PrintToString(device);
    }
}

// A profile with a different table for each intent: each has a darker white than the one before.
class IntentTest : public OptionTest
{
protected:
    QString profile()
    {
        const QString file = path(QStringLiteral("intents.icc"));
        const cmsHPROFILE handle = cmsCreateProfilePlaceholder(nullptr);
        cmsSetProfileVersion(handle, 4.3);
        cmsSetDeviceClass(handle, cmsSigOutputClass);
        cmsSetColorSpace(handle, cmsSigRgbData);
        cmsSetPCS(handle, cmsSigLabData);
        write(handle, cmsSigAToB0Tag, 1.0);
        write(handle, cmsSigAToB1Tag, 0.8);
        write(handle, cmsSigAToB2Tag, 0.6);
        cmsCIEXYZ paper = *cmsD50_XYZ();
        for (double* v : {&paper.X, &paper.Y, &paper.Z})
            *v *= 0.7;
        cmsWriteTag(handle, cmsSigMediaWhitePointTag, &paper);
        EXPECT_TRUE(cmsSaveProfileToFile(handle, file.toUtf8().constData()));
        cmsCloseProfile(handle);
        return file;
    }

private:
    /// Device to Lab: r, g, b become L*, a*, b*, with white at @p lightness of 100.
    static void write(cmsHPROFILE handle, cmsTagSignature tag, double lightness)
    {
        const auto sampler = [](const cmsUInt16Number in[], cmsUInt16Number out[], void* cargo) -> int {
            const double top = *static_cast<const double*>(cargo);
            const double r = in[0] / 65535.0, g = in[1] / 65535.0, b = in[2] / 65535.0;
            cmsCIELab lab{100.0 * top * (r + g + b) / 3.0, 60.0 * (r - g), 60.0 * (0.5 * (r + g) - b)};
            cmsFloat2LabEncoded(out, &lab);
            return 1;
        };
        cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 3, 3);
        cmsStage* table = cmsStageAllocCLut16bit(nullptr, 9, 3, 3, nullptr);
        cmsStageSampleCLut16bit(table, sampler, &lightness, 0);
        cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, cmsStageAllocToneCurves(nullptr, 3, nullptr));
        cmsPipelineInsertStage(pipeline, cmsAT_END, table);
        cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
        EXPECT_TRUE(cmsWriteTag(handle, tag, pipeline));
        cmsPipelineFree(pipeline);
    }
};

TEST_F(IntentTest, eachShowsTheWhiteOfItsOwnTable)
{
    const QString file = profile();
    const QStringList look = words("--size 200x200 --frame none --view top --ambient 1 --no-axes");
    const auto whiteOf = [&](const char* intent) {
        return rendered(QStringList{file, QStringLiteral("--intent"), QString::fromUtf8(intent)} + look)
            .pixelColor(100, 100);
    };
    // sRGB value of a neutral of that lightness
    const auto grey = [](double L) {
        const double y = std::pow((L + 16.0) / 116.0, 3.0);
        const int v = static_cast<int>(std::lround(255.0 * (1.055 * std::pow(y, 1.0 / 2.4) - 0.055)));
        return QColor(v, v, v);
    };
    constexpr int tolerance = 6; // the pixel may lie beside the highest point
    EXPECT_LE(difference(whiteOf("perceptual"), grey(100.0)), tolerance);
    EXPECT_LE(difference(whiteOf("relative"), grey(80.0)), tolerance);
    EXPECT_LE(difference(whiteOf("saturation"), grey(60.0)), tolerance);
    // relative to a paper with Y 0.7: L* 80 is Y 0.5668, times 0.7 gives 0.3968
    const double onPaper = 116.0 * std::cbrt(0.7 * std::pow(96.0 / 116.0, 3.0)) - 16.0;
    EXPECT_LE(difference(whiteOf("absolute"), grey(onPaper)), tolerance);
}

} // namespace
