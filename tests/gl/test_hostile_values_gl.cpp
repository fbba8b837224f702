// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

// Invalid and extreme arguments. Each is treated as documented, frames are drawn with it, and the next valid
// calls restore the picture.

namespace {

using Viewer = KVGamut3DViewer;
using Items = QList<Viewer::ColoredPosition>;
using Params = QHash<QString, QVariant>;

constexpr float quietNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float huge = std::numeric_limits<float>::max();
constexpr int maxInt = std::numeric_limits<int>::max(), minInt = std::numeric_limits<int>::min();
constexpr float extremes[] = {quietNaN, inf, -inf, huge, -huge, 0.0f, -0.0f, -1.0f, 1e-45f};

const QString g = QStringLiteral("g"), set = QStringLiteral("set");
const Items two{{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}};
const QVector3D eye(210, -250, -330), interest(50, 0, 0);

Params srgb(int gridPoints = 9)
{
    return {
        {QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")},
        {QStringLiteral("AdditionnalParam"), Params{{QStringLiteral("Link_GridPointNumber"), gridPoints}}},
    };
}

bool same(float a, float b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

void addSets(Viewer& v)
{
    v.addMarkerSet(set, Viewer::Sphere, two, 20, 0.5f);
    v.addPointSet(set, two);
    v.addSegmentSet(set, {{two[0], two[1]}});
}

/// Sets the state with which every case begins and ends.
void makeValid(Viewer& v)
{
    v.setClipping(1000000.0f);
    v.setPointSize(4);
    v.load(g, srgb(), nullptr);
    v.setDisplayMode(g, Viewer::Smooth);
    v.setGamutAmbientStrength(g, 0.5f);
    v.changeGamutAlpha(g, 0.7f, 0);
    addSets(v);
    v.setSegmentSetWidth(set, 2);
    addSets(v);
    v.setLightPos(QVector3D(0, 300, 0));
    v.setLightColor(Qt::white);
    v.setOrthogonalProjection(false, 0);
    v.setViewingAngle(30, 0);
    v.setCamera(eye, 0, interest);
    v.addAxesAndGrid();
    v.resize(200, 150);
    v.setBackground(Qt::gray);
}

struct Call
{
    const char* name;
    std::function<void(Viewer&)> make;
};

class HostileValues : public testing::TestWithParam<Call>
{
};

} // namespace

TEST_P(HostileValues, validCallsRestoreThePictureAfterwards)
{
    const kvtest::Watchdog watchdog(300);
    ShownViewer shown(200, 150);
    ASSERT_TRUE(shown.shown);
    makeValid(shown.viewer);
    const QImage expected = shown.settledPicture();

    GetParam().make(shown.viewer);
    spinFor(100); // a few frames

    makeValid(shown.viewer);
    EXPECT_TRUE(spinUntil([&] { return shown.viewer.isSettled() && shown.viewer.picture() == expected; }));
    EXPECT_EQ(shown.viewer.markerSet(), QStringList{set});
    EXPECT_EQ(shown.viewer.gamuts(), QStringList{g});
}

INSTANTIATE_TEST_SUITE_P(
    , HostileValues,
    testing::Values(
        Call{"cameras",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.setCamera(QVector3D(x, 0, 0), 0, QVector3D(50, x, 0));
                     EXPECT_TRUE(same(v.camera().x(), x) && same(v.interestPt().y(), x));
                     v.setCamera(QVector3D(x, x, x), 20, QVector3D(x, x, x));
                     spinFor(10);
                     v.rayToPoint(QPoint(maxInt, minInt));
                 }
             }},
        Call{"theEyeAtTheInterestPoint",
             [](Viewer& v) {
                 v.setCamera(interest, 0, interest);
                 EXPECT_EQ(v.camera(), v.interestPt());
             }},
        Call{"movesFromNaN",
             [](Viewer& v) {
                 v.setCamera(QVector3D(quietNaN, quietNaN, quietNaN), 0, QVector3D());
                 v.setCamera(eye, 30, interest);
                 EXPECT_TRUE(spinUntil([&] { return v.camera() == eye && v.interestPt() == interest; }));
                 EXPECT_TRUE(spinUntil([&] { return v.isSettled(); }));
             }},
        Call{"durations",
             [](Viewer& v) {
                 v.setCamera(eye, minInt, interest);
                 EXPECT_EQ(v.camera(), eye);
                 v.setCamera(QVector3D(1, 2, 3), maxInt, interest);
                 v.changeGamutAlpha(g, 0.2f, maxInt);
                 spinFor(40);
                 EXPECT_LT((v.camera() - eye).length(), 1.0f);
                 v.changeGamutAlpha(g, 0.3f, minInt);
                 EXPECT_EQ(v.gamutAlpha(g), 0.3f);
             }},
        Call{"viewingAngles",
             [](Viewer& v) {
                 for (const float x : {quietNaN, inf, huge, 0.0f, -30.0f, 90.0f, 180.0f, 360.0f, 1e-45f}) {
                     v.setViewingAngle(x, 0);
                     EXPECT_TRUE(same(v.viewingAngle(), x));
                     spinFor(40);
                     v.setOrthogonalProjection(true, 0);
                     spinFor(40);
                     v.setOrthogonalProjection(false, 20);
                 }
             }},
        Call{"opacities",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.changeGamutAlpha(g, x, 0);
                     EXPECT_TRUE(same(v.gamutAlpha(g), x));
                     spinFor(35);
                     v.changeGamutAlpha(g, 0.5f, 30);
                     EXPECT_TRUE(spinUntil([&] { return v.gamutAlpha(g) == 0.5f; })) << x;
                 }
             }},
        Call{"ambientStrengths",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.setGamutAmbientStrength(g, x);
                     EXPECT_TRUE(same(v.gamutAmbientStrength(g), x));
                     spinFor(35);
                 }
             }},
        Call{"clippings",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.setClipping(x);
                     EXPECT_TRUE(same(v.clipping(), x));
                     spinFor(35);
                 }
             }},
        Call{"lights",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.setLightPos(QVector3D(x, x, x));
                     EXPECT_TRUE(same(v.lightPos().x(), x));
                     v.setLightColor(QColor());
                     v.setBackground(QColor());
                     EXPECT_FALSE(v.background().isValid());
                     spinFor(35);
                 }
             }},
        Call{"sizesOfPointsAndWidths",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     v.setPointSize(x);
                     EXPECT_TRUE(same(v.pointSize(), x));
                     v.addMarkerSet(set, Viewer::Star, two, x, x);
                     v.addMarkerSet(set, Viewer::BracketedCube, two, x, x);
                     spinFor(35);
                     v.addMarkerSet(set, static_cast<Viewer::MarkerType>(minInt), two, x, x);
                     v.setSegmentSetWidth(set, x);
                     v.addSegmentSet(set, {{two[0], two[1]}, {two[1], two[0]}});
                     spinFor(35);
                 }
                 v.setPointSetSize(set, minInt);
                 v.setPointSetSize(set, maxInt);
             }},
        Call{"positions",
             [](Viewer& v) {
                 for (const float x : extremes) {
                     const Items items{{Qt::red, QVector3D(x, 0, 0)}, {QColor(), QVector3D(50, x, x)}};
                     for (const auto type : {Viewer::Sphere, Viewer::BracketedCube, Viewer::Star})
                         v.addMarkerSet(set, type, items, 10, 0);
                     v.addPointSet(set, items);
                     v.addSegmentSet(set, {{items[0], items[1]}, {items[1], items[0]}, {items[0], items[0]}});
                     spinFor(35);
                     EXPECT_EQ(v.segmentSet(), QStringList{set});
                 }
             }},
        Call{"enumerators",
             [](Viewer& v) {
                 for (const int x : {minInt, -1, 4, 77, maxInt}) {
                     v.setDisplayMode(g, static_cast<Viewer::DisplayMode>(x));
                     EXPECT_EQ(static_cast<int>(v.displayMode(g)), x);
                     v.resetCamera(static_cast<Viewer::View>(x), 0);
                     EXPECT_GT(v.camera().x(), 0.0f); // from above
                     spinFor(35);
                 }
             }},
        Call{"framerates",
             [](Viewer& v) {
                 for (const int x : {minInt, -1, 0, maxInt}) {
                     v.setFramerate(x);
                     EXPECT_EQ(v.framerate(), x);
                     v.setBackground(Qt::red);
                     spinFor(50);
                 }
                 v.setFramerate(30);
             }},
        Call{"names",
             [](Viewer& v) {
                 const QString giant(1 << 20, QLatin1Char('x'));
                 for (const QString& name : {QString(), QStringLiteral(""), giant, QString(QChar(0)),
                                             QStringLiteral("root"), QStringLiteral("Front")}) {
                     v.addMarkerSet(name, Viewer::Sphere, two, 5, 0);
                     v.addPointSet(name, two);
                     v.load(name, srgb(), nullptr);
                     EXPECT_TRUE(v.exists(name) && v.markerSet().contains(name));
                     EXPECT_EQ(v.pointSet().contains(name), !name.isEmpty());
                     spinFor(35);
                     v.removeMarkerSet(name);
                     v.removePointSet(name);
                     v.removeGamut(name);
                     EXPECT_FALSE(v.exists(name) || v.markerSet().contains(name));
                 }
             }},
        Call{"labels",
             [](Viewer& v) {
                 const QString id = QStringLiteral("X");
                 KV3DObject& axes = *v.findChild<KVGLWidget*>()->root().child(QStringLiteral("Axes"));
                 v.fillVertexBufferForText(nullptr, id, id, 1, Qt::black);
                 v.fillVertexBufferForText(&axes, id, QString(), 1, Qt::black);
                 v.fillVertexBufferForText(&axes, id, QStringLiteral("\n\t"), minInt, QColor());
                 v.fillVertexBufferForText(&axes, id, QString(2000, QLatin1Char('w')), maxInt, Qt::black);
                 spinFor(50);
             }},
        Call{"emptyAndEnormousPictures",
             [](Viewer& v) {
                 EXPECT_TRUE(v.picture(QSize()).isNull());
                 EXPECT_TRUE(v.picture(QSize(0, 10)).isNull());
                 EXPECT_TRUE(v.picture(QSize(-10, -10)).isNull());
                 EXPECT_TRUE(v.picture(QSize(maxInt, maxInt)).isNull());
                 EXPECT_EQ(v.picture(QSize(5000, 1)).size(), QSize(5000, 1));
                 EXPECT_FALSE(v.picture().isNull());
             }},
        Call{"windowSizes",
             [](Viewer& v) {
                 for (const QSize size : {QSize(0, 0), QSize(-5, -5), QSize(1, 1), QSize(1, 3000)}) {
                     v.resize(size);
                     spinFor(60);
                     v.picture();
                     v.rayToPoint(QPoint(0, 0));
                 }
             }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(HostileLoad, failedLoadKeepsThePreviousGamut)
{
    const kvtest::Watchdog watchdog(300);
    ShownViewer shown(200, 150);
    Viewer& v = shown.viewer;
    makeValid(v);
    const QImage expected = shown.settledPicture();
    const Params before = v.params(g);
    const float volume = v.volume(g);
    const Params saved = v.save(g);

    const auto key = [](const char* name) { return QString::fromLatin1(name); };
    const QVariant invalidValues[] = {QVariant(),
                                      QVariant(42),
                                      QVariant(double(quietNaN)),
                                      QVariant(QString(1 << 20, QLatin1Char('/'))),
                                      QVariant(QByteArray(1 << 16, '\0')),
                                      QVariant(QStringList{QStringLiteral("a")}),
                                      QVariant(Params{{key("Gamut"), 1}}),
                                      QVariant(QVariantList{1, 2}),
                                      QVariant::fromValue<void*>(nullptr)};
    QList<Params> wrong{{}};
    for (const QVariant& value : invalidValues) {
        for (const char* name : {"ProfilePath", "ProfileData", "Profile", "Gamut", "AdditionnalParam"})
            wrong.append({{key(name), value}});
        // every entry of a saved gamut
        for (auto part = saved.cbegin(); part != saved.cend(); ++part) {
            if (part.value() == value)
                continue;
            Params damaged = saved;
            damaged[part.key()] = value;
            wrong.append(damaged);
        }
    }
    int reports = 0;
    for (const Params& params : wrong) {
        bool ended = false, loaded = true;
        v.load(QStringLiteral("other"), params, [&](QString, bool ok) {
            ended = true;
            loaded = ok;
            ++reports;
        });
        ASSERT_TRUE(spinUntil([&] { return ended; }));
        // A gamut that is damaged only in entries that are not needed may load; then it has a volume.
        EXPECT_EQ(loaded, v.volume(QStringLiteral("other")) > 0) << qPrintable(params.keys().join(u' '));
        EXPECT_TRUE(!loaded || params.contains(key("Gamut")));
        v.removeGamut(QStringLiteral("other"));
        v.load(g, params.contains(key("Gamut")) && loaded ? before : params, nullptr);
        EXPECT_EQ(v.params(g), before);
        EXPECT_EQ(v.volume(g), volume);
    }
    EXPECT_EQ(reports, wrong.size());
    EXPECT_EQ(shown.settledPicture(), expected);
}

TEST(HostileLoad, settingsOfTheWrongTypeAreConverted)
{
    const kvtest::Watchdog watchdog(300);
    ShownViewer shown(200, 150);
    const QString settings = QStringLiteral("AdditionnalParam");
    const QString grid = QStringLiteral("Link_GridPointNumber");
    for (const QVariant& value :
         {QVariant(QStringLiteral("many")), QVariant(maxInt), QVariant(minInt), QVariant(0), QVariant(1),
          QVariant(double(inf)), QVariant(QByteArray("\0\1", 2)), QVariant(Params{})}) {
        Params params = srgb();
        params[settings] = Params{{grid, value}};
        shown.viewer.load(g, params, nullptr);
        // the gamut is that of the profile, independent of the grid
        EXPECT_NEAR(shown.viewer.volume(g), 832781, 0.02 * 832781) << value.toString().toStdString();
    }
    Params params = srgb();
    params[settings] = Params{{QStringLiteral("Link_ICCRendering"), 99}};
    shown.viewer.load(QStringLiteral("no intent"), params, nullptr);
    EXPECT_EQ(shown.viewer.volume(QStringLiteral("no intent")), 0.0f);
}
