// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <gamut/KV3DGamutObject.h>
#include <scene/Generators.h>

#include "support/FakeVelmora.h"
#include "support/SceneCheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using fakevelmora::Gamut;
using fakevelmora::node;
using fakevelmora::tetrahedron;
using kvtest::Vertex;
using kvtest::verticesOf;
using Params = QHash<QString, QVariant>;

/// The colour that the default fake engine returns for a Lab triple of whole numbers.
QColor colorOf(float L, float a, float b)
{
    return QColor(static_cast<int>(L * 2), static_cast<int>(a + 128), static_cast<int>(b + 128));
}

ColoredPoint pointAt(float L, float a, float b)
{
    return {colorOf(L, a, b), QVector3D(L, a, b)};
}

class GamutSceneObject : public fakevelmora::Case
{
protected:
    GamutSceneObject() : object(QSharedPointer<KV3DGamutObject>::create(QStringLiteral("sRGB"))) {}

    /// Loads @p gamut inside the call.
    void install(const Gamut& gamut, const QByteArray& profile = "profile A")
    {
        fakevelmora::onInit([gamut](const fakevelmora::InitCall&) { return std::optional(gamut); });
        object->load({{QStringLiteral("ProfileData"), profile}}, {}, {});
    }

    QSharedPointer<KV3DObject> child(const char* name) const { return object->child(QLatin1String(name)); }

    QSharedPointer<KV3DObject> below(const char* name) const
    {
        return object->childAt({QStringLiteral("Gamut"), QLatin1String(name)});
    }

    QList<QSharedPointer<KV3DObject>> everything() const
    {
        return {child("Projection"), child("Gamut"),     below("Front"),
                below("Wireframe"),  child("Primaries"), child("PrimariesPoints")};
    }

    QSharedPointer<KV3DGamutObject> object;
};

/// A gamut of one face with simple coordinates.
Gamut oneFace()
{
    Gamut gamut;
    gamut.name = QStringLiteral("one face");
    gamut.faces = {{node({10, 20, 30}), node({40, -50, 60}), node({90, 5, -100})}};
    gamut.outline = {{node({10, 20, 30}), node({40, -50, 60})}};
    gamut.reference = {1, 2, 3};
    gamut.primaries = {{{11, 12, 13}, {21, 22, 23}}, {}, {{31, 32, 33}}};
    gamut.volume = 17.25f;
    return gamut;
}

constexpr float kNoClip = 1000000.0f;

} // namespace

// --- An empty gamut ------------------------------------------------------------------------------

TEST_F(GamutSceneObject, hasTheDefaultsOfASceneObject)
{
    EXPECT_EQ(object->name(), QStringLiteral("sRGB"));
    EXPECT_EQ(object->id(), QStringLiteral("sRGB"));
    EXPECT_TRUE(object->isVisible());
    EXPECT_TRUE(object->children().isEmpty());
    EXPECT_TRUE(object->solid().isNull());
    EXPECT_TRUE(object->params().isEmpty());
    EXPECT_EQ(object->alpha(), 1.0f);
    EXPECT_EQ(object->ambientStrength(), 1.0f);
    EXPECT_EQ(object->displayMode(), 1);
    EXPECT_EQ(object->clip(), kNoClip);
    EXPECT_FALSE(object->color().isValid());
    EXPECT_FALSE(object->property(QStringLiteral("volume")).isValid());
}

TEST_F(GamutSceneObject, beforeTheFirstLoadOpacityAndAmbientStrengthAreIgnored)
{
    object->setAlpha(0.25f, 0);
    object->setAlpha(0.25f, 500);
    object->applyAlpha(0.25f);
    object->setAmbientStrength(0.5f);
    EXPECT_EQ(object->alpha(), 1.0f);
    EXPECT_EQ(object->ambientStrength(), 1.0f);
    EXPECT_FALSE(object->hasTransition());
    install(tetrahedron(QStringLiteral("A")));
    EXPECT_EQ(object->alpha(), 1.0f);
    EXPECT_EQ(object->ambientStrength(), 1.0f);
}

TEST_F(GamutSceneObject, aDisplayModeBeforeTheFirstLoadIsOnlyStored)
{
    for (const int mode : {0, 2, 3, 7}) {
        object->setDisplayMode(mode);
        EXPECT_EQ(object->displayMode(), mode);
        EXPECT_TRUE(object->children().isEmpty());
    }
}

// --- The children --------------------------------------------------------------------------------

TEST_F(GamutSceneObject, theFirstLoadCreatesTheChildren)
{
    install(tetrahedron(QStringLiteral("A")));
    EXPECT_EQ(object->childOrder(),
              (QStringList{QStringLiteral("Projection"), QStringLiteral("Gamut"), QStringLiteral("Primaries"),
                           QStringLiteral("PrimariesPoints")}));
    ASSERT_TRUE(child("Gamut"));
    EXPECT_EQ(object->solid(), child("Gamut"));
    EXPECT_EQ(child("Gamut")->childOrder(),
              (QStringList{QStringLiteral("Front"), QStringLiteral("Wireframe")}));
    const QStringList names{QStringLiteral("Projection"), QStringLiteral("Gamut"),
                            QStringLiteral("Front"),      QStringLiteral("Wireframe"),
                            QStringLiteral("Primaries"),  QStringLiteral("PrimariesPoints")};
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(everything()[i]->name(), names[i]);
        EXPECT_EQ(everything()[i]->id(), names[i]);
    }
}

TEST_F(GamutSceneObject, theSurfaceAndTheProjectionAreShownAtFirst)
{
    install(tetrahedron(QStringLiteral("A")));
    EXPECT_TRUE(child("Projection")->isVisible());
    EXPECT_TRUE(child("Gamut")->isVisible());
    EXPECT_TRUE(below("Front")->isVisible());
    EXPECT_FALSE(below("Wireframe")->isVisible());
    EXPECT_FALSE(child("Primaries")->isVisible());
    EXPECT_FALSE(child("PrimariesPoints")->isVisible());
}

TEST_F(GamutSceneObject, theContainerHasNoGeometryOfItsOwn)
{
    install(tetrahedron(QStringLiteral("A")));
    EXPECT_TRUE(child("Gamut")->vertices().isEmpty());
    EXPECT_TRUE(object->vertices().isEmpty());
}

TEST_F(GamutSceneObject, publishesTheVolumeAsAFloat)
{
    install(tetrahedron(QStringLiteral("A"), 832000.5f));
    EXPECT_EQ(object->property(QStringLiteral("volume")).typeId(), QMetaType::Float);
    EXPECT_EQ(object->property(QStringLiteral("volume")).toFloat(), 832000.5f);
    install(tetrahedron(QStringLiteral("B"), 2.0f));
    EXPECT_EQ(object->property(QStringLiteral("volume")).toFloat(), 2.0f);
}

TEST_F(GamutSceneObject, aReloadKeepsTheChildrenAndTheirSettings)
{
    install(oneFace());
    const auto before = everything();
    child("Projection")->setVisible(false);
    child("Primaries")->setVisible(true);
    below("Wireframe")->setVisible(true);
    object->setAlpha(0.5f, 0);
    object->setAmbientStrength(0.25f);
    child("Projection")->setAlpha(0.75f, 0);

    install(tetrahedron(QStringLiteral("B")), "profile B");
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(object->childOrder().size(), 4);
    EXPECT_FALSE(child("Projection")->isVisible());
    EXPECT_TRUE(child("Primaries")->isVisible());
    EXPECT_TRUE(below("Wireframe")->isVisible());
    EXPECT_TRUE(below("Front")->isVisible());
    EXPECT_EQ(object->alpha(), 0.5f);
    EXPECT_EQ(object->ambientStrength(), 0.25f);
    EXPECT_EQ(below("Front")->vertices().size(), 4 * 3 * 15);
    for (const Vertex& vertex : verticesOf(*below("Front")))
        EXPECT_EQ(vertex.color[3], 0.5f);
    for (const Vertex& vertex : verticesOf(*child("Projection")))
        EXPECT_EQ(vertex.color[3], 0.75f);
    EXPECT_EQ(object->params(), (Params{{QStringLiteral("ProfileData"), QByteArray("profile B")}}));
}

// --- The meshes ----------------------------------------------------------------------------------

TEST_F(GamutSceneObject, theSurfaceHasTheFacesInTheirColours)
{
    install(oneFace());
    const auto vertices = verticesOf(*below("Front"));
    ASSERT_EQ(vertices.size(), 3);
    const ColoredPoint corners[] = {pointAt(10, 20, 30), pointAt(40, -50, 60), pointAt(90, 5, -100)};
    // The normal of the plane through the corners, in double precision.
    const double u[] = {30, -70, 30};
    const double v[] = {80, -15, -130};
    double n[] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(vertices[i].lab(), corners[i].second);
        EXPECT_EQ(vertices[i].base[0], corners[i].first.redF());
        EXPECT_EQ(vertices[i].base[1], corners[i].first.greenF());
        EXPECT_EQ(vertices[i].base[2], corners[i].first.blueF());
        EXPECT_EQ(vertices[i].base[3], 1.0f);
        EXPECT_EQ(vertices[i].color, vertices[i].base);
        EXPECT_EQ(vertices[i].clip, kNoClip);
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(vertices[i].normal[k], n[k] / length, 1e-6);
    }
    EXPECT_EQ(below("Front")->primitiveMode(), 4);
    EXPECT_EQ(below("Front")->lineWidth(), 1.0f);
}

TEST_F(GamutSceneObject, theSurfaceKeepsTheOrderOfTheFaces)
{
    install(tetrahedron(QStringLiteral("A")));
    const auto faces = tetrahedron({}).faces;
    const auto vertices = verticesOf(*below("Front"));
    ASSERT_EQ(vertices.size(), 3 * faces.size());
    for (qsizetype f = 0; f < faces.size(); ++f)
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(vertices[3 * f + i].lab(),
                      QVector3D(faces[f][i].lab[0], faces[f][i].lab[1], faces[f][i].lab[2]));
}

TEST_F(GamutSceneObject, theWireframeHasTheThreeEdgesOfEachFace)
{
    object->setDisplayMode(3);
    install(oneFace());
    const ColoredPoint a = pointAt(10, 20, 30);
    const ColoredPoint b = pointAt(40, -50, 60);
    const ColoredPoint c = pointAt(90, 5, -100);
    kvtest::expectGeometry(*below("Wireframe"), kvSegments({{a, b}, {b, c}, {c, a}}, true, 1.2f));
    EXPECT_EQ(below("Wireframe")->lineWidth(), 1.2f);
    EXPECT_FALSE(below("Wireframe")->vertices().isEmpty());
}

TEST_F(GamutSceneObject, theProjectionLiesAboveLightnessZeroInSurfaceColours)
{
    install(oneFace());
    const ColoredPoint a{colorOf(10, 20, 30), QVector3D(0.3f, 20, 30)};
    const ColoredPoint b{colorOf(40, -50, 60), QVector3D(0.3f, -50, 60)};
    kvtest::expectGeometry(*child("Projection"), kvSegments({{a, b}}, true, 2.0f));
    for (const Vertex& vertex : verticesOf(*child("Projection")))
        EXPECT_NEAR(vertex.position.y(), 0.3, 2.0 / 1.5 / 2.0 * std::sqrt(2.0) + 1e-4);
}

TEST_F(GamutSceneObject, thePrimariesAreOnePolylinePerColorantFromTheReference)
{
    install(oneFace());
    const ColoredPoint reference = pointAt(1, 2, 3);
    const ColoredPoint first = pointAt(11, 12, 13);
    const ColoredPoint second = pointAt(21, 22, 23);
    const ColoredPoint other = pointAt(31, 32, 33);
    kvtest::expectGeometry(
        *child("Primaries"),
        kvSegments({{reference, first}, {first, second}, {reference, other}}, false, 2.0f));
    kvtest::expectGeometry(*child("PrimariesPoints"),
                           kvMarkers(1, {reference, first, second, other}, 3.0f, 0.0f));
    EXPECT_EQ(child("PrimariesPoints")->markers().size(), 4) << "the reference once";
    EXPECT_EQ(child("PrimariesPoints")->ambientStrength(), 1.0f);
}

TEST_F(GamutSceneObject, withoutPrimariesTheReferenceAloneIsMarked)
{
    Gamut gamut = oneFace();
    gamut.primaries.clear();
    install(gamut);
    EXPECT_TRUE(child("Primaries")->vertices().isEmpty());
    ASSERT_EQ(child("PrimariesPoints")->markers().size(), 1);
    EXPECT_TRUE(child("PrimariesPoints")->markers().first() == pointAt(1, 2, 3));
    EXPECT_FALSE(child("PrimariesPoints")->vertices().isEmpty());
}

TEST_F(GamutSceneObject, aPrimaryWithoutPointsAddsNothing)
{
    Gamut gamut = oneFace();
    gamut.primaries = {{}, {}};
    install(gamut);
    EXPECT_TRUE(child("Primaries")->vertices().isEmpty());
    EXPECT_EQ(child("PrimariesPoints")->markers().size(), 1);
}

TEST_F(GamutSceneObject, missingNodesAndMissingValuesCountAsZero)
{
    Gamut gamut = oneFace();
    gamut.faces = {{node({}), node({50}), node({60, 7})}, {node({70, 8, 9})}};
    gamut.outline = {{node({30})}};
    gamut.reference = {40, 6};
    gamut.primaries = {{{20}}};
    fakevelmora::onLab2Rgb([](const QList<float>& lab) { // the origin is black, as with every engine
        return lab.isEmpty() ? lab : QList<float>{lab[0] * 2.0f, lab.value(1), lab.value(2)};
    });
    install(gamut);
    const auto front = verticesOf(*below("Front"));
    ASSERT_EQ(front.size(), 6);
    const QVector3D expected[] = {{0, 0, 0}, {50, 0, 0}, {60, 7, 0}, {70, 8, 9}, {0, 0, 0}, {0, 0, 0}};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(front[i].lab(), expected[i]) << i;
    for (const int i : {0, 4, 5})
        EXPECT_EQ(front[i].base, (std::array<float, 4>{0.0f, 0.0f, 0.0f, 1.0f})) << "black, node " << i;
    EXPECT_EQ(front[1].base, (std::array<float, 4>{QColor(100, 0, 0).redF(), 0.0f, 0.0f, 1.0f}));

    const ColoredPoint outlineStart{QColor(60, 0, 0), QVector3D(0.3f, 0, 0)};
    const ColoredPoint outlineEnd{QColor(0, 0, 0), QVector3D(0.3f, 0, 0)};
    kvtest::expectGeometry(*child("Projection"), kvSegments({{outlineStart, outlineEnd}}, true, 2.0f));
    ASSERT_EQ(child("PrimariesPoints")->markers().size(), 2);
    EXPECT_EQ(child("PrimariesPoints")->markers()[0].second, QVector3D(40, 6, 0));
    EXPECT_EQ(child("PrimariesPoints")->markers()[1].second, QVector3D(20, 0, 0));
}

TEST_F(GamutSceneObject, aColourOutOfRangeIsInvalid)
{
    fakevelmora::onLab2Rgb([](const QList<float>&) { return QList<float>{-1, -1, -1}; });
    install(oneFace());
    for (const Vertex& vertex : verticesOf(*below("Front")))
        EXPECT_EQ(vertex.base, (std::array<float, 4>{0.0f, 0.0f, 0.0f, 1.0f}));
    for (const ColoredPoint& point : child("PrimariesPoints")->markers())
        EXPECT_FALSE(point.first.isValid());
}

// --- Colours of Lab triples ----------------------------------------------------------------------

TEST_F(GamutSceneObject, labToColorPassesTheTripleUnchanged)
{
    QList<QList<float>> asked;
    fakevelmora::onLab2Rgb([&](const QList<float>& lab) {
        asked.append(lab);
        return QList<float>{1, 2, 3};
    });
    EXPECT_EQ(kvLabToColor({50, -60, 70}), QColor(1, 2, 3));
    EXPECT_EQ(kvLabToColor({}), QColor(1, 2, 3));
    EXPECT_EQ(asked, (QList<QList<float>>{{50, -60, 70}, {}}));
}

TEST_F(GamutSceneObject, labToColorTruncatesAndRejectsValuesOutsideAByte)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const struct
    {
        const char* what;
        QList<float> rgb;
        QColor expected;
    } rows[] = {
        {"fractions are cut", {254.9f, 0.9f, 12.3f}, QColor(254, 0, 12)},
        {"just below 256 is 255", {255.99f, 0, 0}, QColor(255, 0, 0)},
        {"256 is outside", {256.0f, 0, 0}, QColor()},
        {"a small negative is cut to 0", {-0.9f, 1, 2}, QColor(0, 1, 2)},
        {"-1 is outside", {0, 0, -1.0f}, QColor()},
        {"far outside", {0, -3000.0f, 0}, QColor()},
        {"beyond an int", {1e10f, 0, 0}, QColor()},
        {"beyond an int, negative", {0, 0, -1e10f}, QColor()},
        {"infinite", {infinity, 0, 0}, QColor()},
        {"not a number", {0, std::numeric_limits<float>::quiet_NaN(), 0}, QColor()},
        {"nothing is black", {}, QColor(0, 0, 0)},
        {"one value is red", {10}, QColor(10, 0, 0)},
        {"two values are red and green", {10, 20}, QColor(10, 20, 0)},
        {"a fourth value does not show", {10, 20, 30, 40}, QColor(10, 20, 30)},
        {"but a fourth value outside counts", {10, 20, 30, 400}, QColor()},
    };
    for (const auto& row : rows) {
        fakevelmora::onLab2Rgb([&](const QList<float>&) { return row.rgb; });
        const QColor color = kvLabToColor({50, 0, 0});
        EXPECT_EQ(color.isValid(), row.expected.isValid()) << row.what;
        EXPECT_EQ(color, row.expected) << row.what;
        if (color.isValid()) {
            EXPECT_EQ(color.alpha(), 255) << row.what;
        }
    }
}

// --- Display modes -------------------------------------------------------------------------------

TEST_F(GamutSceneObject, modeThreeShowsTheWireframeAndEveryOtherTheSurface)
{
    install(tetrahedron(QStringLiteral("A")));
    for (const int mode : {3, 0, 3, 1, 3, 2, 3, 17, 3, -4}) {
        object->setDisplayMode(mode);
        EXPECT_EQ(object->displayMode(), mode);
        EXPECT_EQ(below("Front")->isVisible(), mode != 3) << mode;
        EXPECT_EQ(below("Wireframe")->isVisible(), mode == 3) << mode;
        EXPECT_EQ(child("Gamut")->displayMode(), mode);
        EXPECT_EQ(below("Front")->displayMode(), mode);
        EXPECT_EQ(below("Wireframe")->displayMode(), mode);
        for (const char* other : {"Projection", "Primaries", "PrimariesPoints"})
            EXPECT_EQ(child(other)->displayMode(), 1) << other;
    }
    EXPECT_TRUE(child("Projection")->isVisible());
    EXPECT_TRUE(child("Gamut")->isVisible());
}

TEST_F(GamutSceneObject, aDisplayModeRecoloursOnlyTheSurface)
{
    install(oneFace());
    object->setColor(QColor(200, 100, 50));
    const QList<float> projection = child("Projection")->vertices();
    const auto smooth = verticesOf(*below("Front"));
    EXPECT_NE(smooth[0].color, smooth[1].color);

    object->setDisplayMode(2);
    const auto flat = verticesOf(*below("Front"));
    EXPECT_EQ(flat[0].color, flat[1].color);
    EXPECT_EQ(flat[1].color, flat[2].color);
    // One lightness for the face: the mean of 10, 40 and 90 is below 50, so the colour is darkened.
    const double t = (10 + 40 + 90) / 100.0 / 3.0;
    EXPECT_NEAR(flat[0].color[0], 200 / 255.0 * 2 * t, 1e-4);
    EXPECT_NEAR(flat[0].color[1], 100 / 255.0 * 2 * t, 1e-4);
    EXPECT_NEAR(flat[0].color[2], 50 / 255.0 * 2 * t, 1e-4);
    EXPECT_EQ(child("Projection")->vertices(), projection);

    object->setDisplayMode(1);
    const auto again = verticesOf(*below("Front"));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(again[i].color, smooth[i].color);
}

// --- Opacity, ambient strength, colour -----------------------------------------------------------

TEST_F(GamutSceneObject, opacityAffectsOnlyTheSurface)
{
    install(tetrahedron(QStringLiteral("A")));
    object->setAlpha(0.25f, 0);
    EXPECT_EQ(object->alpha(), 0.25f);
    EXPECT_EQ(child("Gamut")->alpha(), 0.25f);
    EXPECT_EQ(below("Front")->alpha(), 0.25f);
    EXPECT_EQ(below("Wireframe")->alpha(), 0.25f);
    for (const Vertex& vertex : verticesOf(*below("Front")))
        EXPECT_EQ(vertex.color[3], 0.25f);
    for (const char* other : {"Projection", "Primaries", "PrimariesPoints"})
        EXPECT_EQ(child(other)->alpha(), 1.0f) << other;

    child("Gamut")->setAlpha(0.75f, 0);
    EXPECT_EQ(object->alpha(), 0.75f);
}

TEST_F(GamutSceneObject, anOpacityTransitionRunsOnTheSurface)
{
    install(tetrahedron(QStringLiteral("A")));
    object->setAlpha(0.25f, 500);
    EXPECT_TRUE(child("Gamut")->hasTransition());
    EXPECT_FALSE(object->hasTransition());
    EXPECT_FALSE(child("Projection")->hasTransition());
    EXPECT_EQ(object->alpha(), 1.0f) << "it moves while frames are drawn";
    object->applyAlpha(0.5f);
    EXPECT_EQ(object->alpha(), 0.5f);
    EXPECT_FALSE(child("Gamut")->hasTransition()) << "applied without a duration, it ends the change";
}

TEST_F(GamutSceneObject, ambientStrengthAffectsOnlyTheSurface)
{
    install(tetrahedron(QStringLiteral("A")));
    object->setAmbientStrength(0.3f);
    EXPECT_EQ(object->ambientStrength(), 0.3f);
    EXPECT_EQ(child("Gamut")->ambientStrength(), 0.3f);
    EXPECT_EQ(below("Front")->ambientStrength(), 0.3f);
    EXPECT_EQ(below("Wireframe")->ambientStrength(), 0.3f);
    for (const char* other : {"Projection", "Primaries", "PrimariesPoints"})
        EXPECT_EQ(child(other)->ambientStrength(), 1.0f) << other;
}

TEST_F(GamutSceneObject, aColourIsShadedByLightnessOnTheSurfaceOnly)
{
    install(oneFace());
    object->setColor(QColor(200, 100, 50));
    const auto front = verticesOf(*below("Front"));
    const double c[] = {200 / 255.0, 100 / 255.0, 50 / 255.0};
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(front[0].color[k], c[k] * 2 * 0.10, 1e-4);
        EXPECT_NEAR(front[1].color[k], c[k] * 2 * 0.40, 1e-4);
        const double towardsColor = 2.0 - 2 * 0.90;
        EXPECT_NEAR(front[2].color[k], c[k] * towardsColor + (1 - towardsColor), 1e-4);
    }
    for (const auto& plain : {child("Projection"), child("Primaries"), child("PrimariesPoints")})
        for (const Vertex& vertex : verticesOf(*plain))
            for (int k = 0; k < 3; ++k)
                ASSERT_NEAR(vertex.color[k], c[k], 1e-4);
}

TEST_F(GamutSceneObject, aColourSetBeforeTheFirstLoadShowsWithIt)
{
    object->setColor(QColor(200, 100, 50));
    install(oneFace());
    EXPECT_EQ(object->color(), QColor(200, 100, 50));
    const auto front = verticesOf(*below("Front"));
    EXPECT_NEAR(front[0].color[0], 200 / 255.0 * 2 * 0.10, 1e-4);
    EXPECT_NEAR(front[1].color[1], 100 / 255.0 * 2 * 0.40, 1e-4);
    for (const char* plain : {"Projection", "Primaries", "PrimariesPoints"}) {
        ASSERT_FALSE(child(plain)->vertices().isEmpty());
        for (const Vertex& vertex : verticesOf(*child(plain)))
            ASSERT_NEAR(vertex.color[2], 50 / 255.0, 1e-4) << plain;
    }
}

TEST_F(GamutSceneObject, anInvalidColourBeforeTheFirstLoadHasNoEffect)
{
    object->setColor(QColor());
    install(oneFace());
    for (const auto& shown : {below("Front"), child("Projection")})
        for (const Vertex& vertex : verticesOf(*shown))
            EXPECT_EQ(vertex.color, vertex.base);
}

TEST_F(GamutSceneObject, aReloadKeepsTheColour)
{
    install(oneFace());
    object->setColor(QColor(200, 100, 50));
    Gamut moved = oneFace();
    moved.faces[0][0] = node({20, 20, 30});
    install(moved);
    EXPECT_EQ(object->color(), QColor(200, 100, 50));
    const auto front = verticesOf(*below("Front"));
    EXPECT_NEAR(front[0].color[0], 200 / 255.0 * 2 * 0.20, 1e-4);
    EXPECT_EQ(front[0].base[0], QColor(40, 0, 0).redF());
}

// --- Sections ------------------------------------------------------------------------------------

TEST_F(GamutSceneObject, aSectionIsCutFromTheMeshAtTheLightness)
{
    install(tetrahedron(QStringLiteral("A")));
    qsizetype faces = -1;
    fakevelmora::onRing([&](const QList<QList<KVHull::Node>>& given) {
        faces = given.size();
        return QList<QList<QList<float>>>{{{42.5f, 1, 2}, {42.5f, 3, 4}}, {{42.5f, 5, 6}, {42.5f, 7, 8}}};
    });
    object->setClip(42.5f);
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1.0f, 0.0f, 0.0f, -42.5f}}));
    EXPECT_EQ(faces, 4);

    const auto section = child("Section");
    ASSERT_TRUE(section);
    EXPECT_EQ(section->name(), QStringLiteral("Section"));
    EXPECT_EQ(section->id(), QStringLiteral("Section"));
    EXPECT_TRUE(section->isVisible());
    EXPECT_EQ(object->childOrder().last(), QStringLiteral("Section"));
    const QColor grey(80, 80, 80, 1);
    const auto end = [&](float a, float b) { return ColoredPoint(grey, QVector3D(42.5f, a, b)); };
    kvtest::expectGeometry(*section,
                           kvSegments({{end(1, 2), end(3, 4)}, {end(5, 6), end(7, 8)}}, false, 2.0f));
    EXPECT_EQ(section->lineWidth(), 2.0f);
}

TEST_F(GamutSceneObject, aSectionHasItsOwnColourAndOpacity)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) { return QList<QList<QList<float>>>{{{50, 0, 0}, {50, 30, 0}}}; });
    object->setClip(50);
    ASSERT_FALSE(child("Section")->vertices().isEmpty());
    for (const Vertex& vertex : verticesOf(*child("Section"))) {
        for (int k = 0; k < 3; ++k) {
            ASSERT_NEAR(vertex.base[k], 80 / 255.0, 1e-4);
            ASSERT_NEAR(vertex.color[k], 80 / 255.0, 1e-4);
        }
        ASSERT_NEAR(vertex.base[3], 1 / 255.0, 1e-4);
        ASSERT_EQ(vertex.color[3], 1.0f);
    }
}

TEST_F(GamutSceneObject, repeatingASectionChangesNothing)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) { return QList<QList<QList<float>>>{{{50, 0, 0}, {50, 30, 0}}}; });
    object->setClip(50);
    const auto section = child("Section");
    const QList<float> vertices = section->vertices();
    object->setClip(50);
    EXPECT_EQ(child("Section"), section);
    EXPECT_EQ(section->vertices(), vertices);
    EXPECT_EQ(object->childOrder().count(QStringLiteral("Section")), 1);
}

TEST_F(GamutSceneObject, aPlaneOutsideTheGamutEmptiesTheSection)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) { return QList<QList<QList<float>>>{{{50, 0, 0}, {50, 30, 0}}}; });
    object->setClip(50);
    fakevelmora::onRing({});
    object->setClip(120);
    EXPECT_TRUE(child("Section")->vertices().isEmpty());
    EXPECT_EQ(child("Section")->lineWidth(), 2.0f);
    EXPECT_EQ(fakevelmora::planes().last(), (QList<float>{1.0f, 0.0f, 0.0f, -120.0f}));
}

TEST_F(GamutSceneObject, missingPointsAndValuesOfARingCountAsZero)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) {
        return QList<QList<QList<float>>>{
            {}, {{50, 1, 2}}, {{50}, {50, 3}}, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}};
    });
    object->setClip(50);
    const QColor grey(80, 80, 80, 1);
    const auto at = [&](float L, float a, float b) { return ColoredPoint(grey, QVector3D(L, a, b)); };
    kvtest::expectGeometry(*child("Section"), kvSegments({{at(0, 0, 0), at(0, 0, 0)},
                                                          {at(50, 1, 2), at(0, 0, 0)},
                                                          {at(50, 0, 0), at(50, 3, 0)},
                                                          {at(1, 2, 3), at(4, 5, 6)}},
                                                         false, 2.0f));
}

TEST_F(GamutSceneObject, aSectionKeepsTheWidthThatTheHostGaveIt)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) { return QList<QList<QList<float>>>{{{50, 0, 0}, {50, 30, 0}}}; });
    object->setClip(50);
    child("Section")->setLineWidth(5.0f);
    object->setClip(50);
    const QColor grey(80, 80, 80, 1);
    kvtest::expectGeometry(*child("Section"),
                           kvSegments({{{grey, {50, 0, 0}}, {grey, {50, 30, 0}}}}, false, 5.0f));
    EXPECT_EQ(child("Section")->lineWidth(), 5.0f);
}

TEST_F(GamutSceneObject, clippingAffectsOnlyTheSurface)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onRing([](const auto&) { return QList<QList<QList<float>>>{{{50, 0, 0}, {50, 30, 0}}}; });
    object->setClip(50);
    EXPECT_EQ(object->clip(), kNoClip) << "the gamut's own value stays";
    for (const auto& clipped : {child("Gamut"), below("Front"), below("Wireframe")}) {
        EXPECT_EQ(clipped->clip(), 50.0f);
        for (const Vertex& vertex : verticesOf(*clipped))
            ASSERT_EQ(vertex.clip, 50.0f);
    }
    for (const char* whole : {"Projection", "Primaries", "PrimariesPoints", "Section"}) {
        EXPECT_EQ(child(whole)->clip(), kNoClip) << whole;
        for (const Vertex& vertex : verticesOf(*child(whole)))
            ASSERT_EQ(vertex.clip, kNoClip) << whole;
    }
}

TEST_F(GamutSceneObject, aReloadStaysClipped)
{
    install(tetrahedron(QStringLiteral("A")));
    object->setClip(50);
    install(tetrahedron(QStringLiteral("B")));
    for (const Vertex& vertex : verticesOf(*below("Front")))
        ASSERT_EQ(vertex.clip, 50.0f);
}

TEST_F(GamutSceneObject, aSectionBeforeTheFirstLoadIsEmpty)
{
    object->setClip(50);
    ASSERT_TRUE(child("Section"));
    EXPECT_TRUE(child("Section")->vertices().isEmpty());
    EXPECT_EQ(object->childOrder(), QStringList{QStringLiteral("Section")});
    const auto section = child("Section");
    install(tetrahedron(QStringLiteral("A")));
    EXPECT_EQ(child("Section"), section);
    EXPECT_EQ(object->childOrder().size(), 5);
    EXPECT_EQ(below("Front")->clip(), kNoClip) << "there was no surface to clip";
}

// --- Questions to the engine ---------------------------------------------------------------------

TEST_F(GamutSceneObject, isInsidePassesTheValuesInTheirOrder)
{
    install(tetrahedron(QStringLiteral("A")));
    fakevelmora::onIsInside([](const QList<float>& p) { return p.first() == 1.0f; });
    EXPECT_TRUE(object->isInside(QVector3D(1, 2, 3)));
    EXPECT_FALSE(object->isInside(QVector3D(3, 2, 1)));
    EXPECT_EQ(fakevelmora::insidePoints(), (QList<QList<float>>{{1, 2, 3}, {3, 2, 1}}));
}

TEST_F(GamutSceneObject, comparesItselfAsTheFirstGamut)
{
    install(tetrahedron(QStringLiteral("A")));
    KV3DGamutObject other(QStringLiteral("other"));
    fakevelmora::onInit(
        [](const fakevelmora::InitCall&) { return std::optional(tetrahedron(QStringLiteral("B"))); });
    other.load({{QStringLiteral("ProfileData"), QByteArray("profile B")}}, {}, {});
    const KVGamut::Comparison comparison = object->compare(other);
    EXPECT_EQ(fakevelmora::comparisons(), QStringList{QStringLiteral("A/B")});
    EXPECT_EQ(comparison.whiteFirst.L, 1.0f);
    EXPECT_EQ(comparison.volumeFirst, 13.0f);
    EXPECT_EQ(comparison.firstCovered, 18.0f);
}
