// SPDX-License-Identifier: Apache-2.0
// Pictures of `kvgamut render` with all that explains them, compared with reviewed ones: styles, parts, looks
// and sizes.

#include "app/support/Program.h"
#include "image/Baseline.h"

#include <QtCore/QRect>

using namespace kvtest;

namespace {

struct Case
{
    const char* name;
    const char* arguments;
    const char* without; ///< arguments of a picture without the feature
    const char* size = "320x240";
};

void PrintTo(const Case& tested, std::ostream* out)
{
    *out << tested.name;
}

class Baselines : public ProgramTest, public testing::WithParamInterface<Case>
{
protected:
    QImage picture(const char* arguments)
    {
        QStringList words = QString::fromLatin1(arguments).split(QLatin1Char(' '));
        words << QStringLiteral("-o") << path(QStringLiteral("picture.png")) << QStringLiteral("--size")
              << QString::fromLatin1(GetParam().size);
        EXPECT_TRUE(succeeded(kvgamut(QStringList(QStringLiteral("render")) + words)));
        return QImage(path(QStringLiteral("picture.png")));
    }
};

constexpr int maxWidth = 800;

/// Wide pictures are kept smaller, to keep their files small.
QImage kept(const QImage& picture)
{
    return picture.width() <= maxWidth ? picture : picture.scaledToWidth(maxWidth, Qt::SmoothTransformation);
}

} // namespace

TEST_P(Baselines, showTheirFeature)
{
    const QString name = QString::fromLatin1(GetParam().name);
    const QImage actual = picture(GetParam().arguments);
    expectBaseline(name, kept(actual));
    EXPECT_FALSE(
        withinThreshold(comparePictures(kept(picture(GetParam().without)), baseline(name)), edgesOnly))
        << "the baseline does not show its feature";
}

INSTANTIATE_TEST_SUITE_P(
    Styles, Baselines,
    testing::Values(Case{"style-screen", "sRGB AdobeRGB --style screen", "sRGB AdobeRGB --style paper"},
                    Case{"style-paper", "sRGB AdobeRGB --style paper", "sRGB AdobeRGB --style screen"},
                    Case{"style-slide", "sRGB AdobeRGB --style slide", "sRGB AdobeRGB --style paper",
                         "640x480"},
                    Case{"style-dark", "sRGB AdobeRGB --style dark", "sRGB AdobeRGB --style screen"}));

INSTANTIATE_TEST_SUITE_P(
    Parts, Baselines,
    testing::Values(Case{"annotated-scales", "sRGB --annotate scales", "sRGB --annotate none"},
                    Case{"annotated-legend", "sRGB AdobeRGB --annotate legend",
                         "sRGB AdobeRGB --annotate none"},
                    Case{"annotated-caption", "sRGB --annotate none --caption A_caption_of_the_picture",
                         "sRGB --annotate none"}));

INSTANTIATE_TEST_SUITE_P(
    Points, Baselines,
    testing::Values(Case{"points-distance",
                         "sRGB --alpha 0.35 --point-size 6 --point-colors distance --points " KVGAMUT_RING,
                         "sRGB --alpha 0.35 --point-size 6 --points " KVGAMUT_RING}));

INSTANTIATE_TEST_SUITE_P(Sections, Baselines,
                         testing::Values(Case{"section-hue", "sRGB --alpha 0.4 --section-hue 310",
                                              "sRGB --alpha 0.4 --section-hue 130"}));

INSTANTIATE_TEST_SUITE_P(Bodies, Baselines,
                         testing::Values(Case{"body-outside", "AdobeRGB sRGB --body outside",
                                              "AdobeRGB sRGB --body intersection"},
                                         Case{"body-intersection", "AdobeRGB sRGB --body intersection",
                                              "AdobeRGB sRGB --look lines"}));

INSTANTIATE_TEST_SUITE_P(Looks, Baselines,
                         testing::Values(Case{"look-lines", "sRGB --look lines", "sRGB"},
                                         Case{"look-nested", "ProPhoto sRGB DisplayP3",
                                              "ProPhoto sRGB DisplayP3 --alpha 1"}));

INSTANTIATE_TEST_SUITE_P(
    Loss, Baselines,
    testing::Values(
        Case{"loss-200-light", "AdobeRGB --loss sRGB --style paper", "AdobeRGB --style paper", "200x150"},
        Case{"loss-200-dark", "AdobeRGB --loss sRGB --style dark", "AdobeRGB --style dark", "200x150"},
        Case{"loss-800-light", "AdobeRGB --loss sRGB --style paper", "AdobeRGB --style paper", "800x600"},
        Case{"loss-800-dark", "AdobeRGB --loss sRGB --style dark", "AdobeRGB --style dark", "800x600"},
        Case{"loss-3000-light", "AdobeRGB --loss sRGB --style paper", "AdobeRGB --style paper", "3000x2250"},
        Case{"loss-3000-dark", "AdobeRGB --loss sRGB --style dark", "AdobeRGB --style dark", "3000x2250"}));

INSTANTIATE_TEST_SUITE_P(
    Sizes, Baselines,
    testing::Values(
        Case{"size-200-light", "sRGB --style paper", "sRGB --style paper --annotate none", "200x150"},
        Case{"size-200-dark", "sRGB --style dark", "sRGB --style dark --annotate none", "200x150"},
        Case{"size-800-light", "sRGB --style paper", "sRGB --style paper --annotate none", "800x600"},
        Case{"size-800-dark", "sRGB --style dark", "sRGB --style dark --annotate none", "800x600"},
        Case{"size-3000-light", "sRGB --style paper", "sRGB --style paper --annotate none", "3000x2250"},
        Case{"size-3000-dark", "sRGB --style dark", "sRGB --style dark --annotate none", "3000x2250"}));
