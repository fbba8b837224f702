// SPDX-License-Identifier: Apache-2.0
// The meta-objects, which QML, scripts and property editors use.
#include "GamutViewCase.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>

namespace {

class GamutViewMeta : public GamutViewCase
{
};

QStringList propertiesOf(const QMetaObject& meta)
{
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QLatin1String(meta.property(i).name()));
    return names;
}

} // namespace

TEST_F(GamutViewMeta, theViewHasItsProperties)
{
    EXPECT_EQ(propertiesOf(KVGamutView::staticMetaObject),
              (QStringList{QStringLiteral("camera"), QStringLiteral("theme"),
                           QStringLiteral("themeFollowsPalette"), QStringLiteral("loading"),
                           QStringLiteral("coarseWhileMoving"), QStringLiteral("drawable")}));
    for (const char* name : {"camera", "theme", "loading", "drawable"}) {
        const QMetaObject& meta = KVGamutView::staticMetaObject;
        EXPECT_TRUE(meta.property(meta.indexOfProperty(name)).hasNotifySignal()) << name;
    }
}

TEST_F(GamutViewMeta, propertiesAreReadAndWrittenByName)
{
    const KVCamera camera{{300, 1, 2}, {50, 0, 0}, 45.0f, true};
    EXPECT_TRUE(view->setProperty("camera", QVariant::fromValue(camera)));
    EXPECT_EQ(view->property("camera").value<KVCamera>(), camera);
    KVViewTheme theme;
    theme.axes = Qt::red;
    EXPECT_TRUE(view->setProperty("theme", QVariant::fromValue(theme)));
    EXPECT_EQ(view->theme(), theme);
    EXPECT_FALSE(view->property("coarseWhileMoving").toBool());
    EXPECT_TRUE(view->setProperty("coarseWhileMoving", true));
    EXPECT_TRUE(view->coarseWhileMoving());
    EXPECT_FALSE(view->property("loading").toBool());
    EXPECT_FALSE(view->setProperty("loading", true)) << "read only";
}

TEST_F(GamutViewMeta, theValuesHaveTheirProperties)
{
    EXPECT_EQ(propertiesOf(KVCamera::staticMetaObject),
              (QStringList{QStringLiteral("position"), QStringLiteral("interestPoint"),
                           QStringLiteral("viewingAngle"), QStringLiteral("orthogonal")}));
    EXPECT_EQ(propertiesOf(KVGamutLook::staticMetaObject),
              (QStringList{QStringLiteral("visible"), QStringLiteral("mode"), QStringLiteral("color"),
                           QStringLiteral("opacity"), QStringLiteral("ambientStrength"),
                           QStringLiteral("surface"), QStringLiteral("projection"),
                           QStringLiteral("primaries"), QStringLiteral("outlineColor")}));
    EXPECT_EQ(propertiesOf(KVLegendEntry::staticMetaObject),
              (QStringList{QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("details"),
                           QStringLiteral("key")}));
    EXPECT_EQ(propertiesOf(KVAnnotations::staticMetaObject),
              (QStringList{QStringLiteral("scales"), QStringLiteral("legend"), QStringLiteral("highlight"),
                           QStringLiteral("caption"), QStringLiteral("fontFamily"),
                           QStringLiteral("textScale"), QStringLiteral("scaleBar")}));
    EXPECT_EQ(propertiesOf(KVScaleBar::staticMetaObject),
              (QStringList{QStringLiteral("title"), QStringLiteral("colors"), QStringLiteral("low"),
                           QStringLiteral("high")}));
    EXPECT_EQ(propertiesOf(KVViewTheme::staticMetaObject),
              (QStringList{QStringLiteral("background"), QStringLiteral("axes"), QStringLiteral("labels"),
                           QStringLiteral("grid"), QStringLiteral("section")}));
    EXPECT_EQ(propertiesOf(KVHit::staticMetaObject),
              (QStringList{QStringLiteral("kind"), QStringLiteral("id"), QStringLiteral("index"),
                           QStringLiteral("lab"), QStringLiteral("distance"), QStringLiteral("rayOrigin"),
                           QStringLiteral("rayDirection"), QStringLiteral("pixel"), QStringLiteral("button"),
                           QStringLiteral("modifiers"), QStringLiteral("endsDrag")}));
}

TEST_F(GamutViewMeta, propertiesOfAValueAreReadAndWritten)
{
    KVHit hit;
    const QMetaObject& meta = KVHit::staticMetaObject;
    EXPECT_TRUE(meta.property(meta.indexOfProperty("index")).writeOnGadget(&hit, 7));
    EXPECT_EQ(hit.index, 7);
    hit.kind = KVHit::Kind::Marker;
    EXPECT_EQ(meta.property(meta.indexOfProperty("kind")).readOnGadget(&hit).value<KVHit::Kind>(),
              KVHit::Kind::Marker);
    hit.modifiers = Qt::ShiftModifier;
    EXPECT_EQ(
        meta.property(meta.indexOfProperty("modifiers")).readOnGadget(&hit).value<Qt::KeyboardModifiers>(),
        Qt::ShiftModifier);
}

TEST_F(GamutViewMeta, theKindsOfHitsHaveNames)
{
    const auto kinds = QMetaEnum::fromType<KVHit::Kind>();
    EXPECT_STREQ(kinds.valueToKey(static_cast<int>(KVHit::Kind::Gamut)), "Gamut");
    EXPECT_EQ(kinds.keyCount(), 4);
}

TEST_F(GamutViewMeta, signalsCarryTheirValuesInVariants)
{
    QSignalSpy failed(view.get(), &KVGamutView::failed);
    view->show(QStringLiteral("empty"), KVGamut::GamutObject());
    ASSERT_TRUE(eventually([&] { return !failed.isEmpty(); }));
    EXPECT_TRUE(failed[0][1].canConvert<KVProblem>());
    EXPECT_TRUE(QMetaType::fromName("KVProblem").isValid());
    EXPECT_TRUE(QMetaType::fromType<KVViewState>().isValid());
}
