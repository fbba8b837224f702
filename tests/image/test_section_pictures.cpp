// SPDX-License-Identifier: Apache-2.0
// Gamuts that are cut off and closed, at several sizes and on two grounds.

#include "Baseline.h"
#include "support/ShownViewer.h"

#include <KVGamutView.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>

namespace {

constexpr QSize reduced(800, 600); // pictures larger than this are compared at this size

class SectionBaselines : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        load(QStringLiteral("a"), "colord/sRGB.icc", 0.35f);
        load(QStringLiteral("b"), "ghostscript/default_cmyk.icc", 1.0f);
        KVCamera camera;
        camera.interestPoint = {40, 0, 0};
        camera.position = {210, -250, -330};
        view.setCamera(camera);
        view.setClipping(55.0f);
        view.setSection({true, {}});
    }

    void load(const QString& id, const char* file, float opacity)
    {
        const QString path = QStringLiteral("/usr/share/color/icc/") + QString::fromLatin1(file);
        ASSERT_TRUE(QFile::exists(path));
        shown.viewer.load(id, {{QStringLiteral("ProfilePath"), path}}, nullptr);
        KVGamutLook look;
        look.opacity = opacity;
        view.setLook(id, look);
    }

    void setGround(const QColor& background, const QColor& section)
    {
        KVViewTheme theme = view.theme();
        theme.background = background;
        theme.section = section;
        view.setTheme(theme);
    }

    QImage picture(const QSize& size)
    {
        EXPECT_TRUE(shown.settle());
        const QImage drawn = shown.viewer.picture(size);
        EXPECT_EQ(drawn.size(), size);
        return size.width() > reduced.width()
                   ? drawn.scaled(reduced, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                   : drawn;
    }

    /// Compares with the baseline, and checks that it would notice a missing lid.
    void expectLids(const QString& name, const QSize& size)
    {
        kvtest::expectBaseline(name, picture(size));
        view.setSection({});
        EXPECT_FALSE(
            withinThreshold(comparePictures(picture(size), kvtest::baseline(name)), kvtest::edgesOnly));
    }

    kvtest::ShownViewer shown{240, 180};
    KVGamutView view{&shown.viewer};
};

} // namespace

TEST_F(SectionBaselines, small)
{
    setGround(Qt::white, Qt::black);
    expectLids(QStringLiteral("lid-light-200"), {200, 150});
}

TEST_F(SectionBaselines, onALightGround)
{
    setGround(Qt::white, Qt::black);
    expectLids(QStringLiteral("lid-light-800"), {800, 600});
}

TEST_F(SectionBaselines, onADarkGround)
{
    setGround(QColor(24, 26, 31), Qt::white);
    expectLids(QStringLiteral("lid-dark-800"), {800, 600});
}

TEST_F(SectionBaselines, large)
{
    setGround(QColor(24, 26, 31), Qt::white);
    expectLids(QStringLiteral("lid-dark-3000"), {3000, 2250});
}

TEST_F(SectionBaselines, withoutCutting)
{
    view.setClipping({});
    view.setSection({false, 55.0f});
    setGround(Qt::white, Qt::black);
    expectLids(QStringLiteral("plane-light-800"), {800, 600});
}
