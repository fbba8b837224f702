// SPDX-License-Identifier: Apache-2.0
#include "GamutViewCase.h"

#include <QtCore/QCborValue>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>

#include <limits>

namespace {

using kvtest::Vertex;
using kvtest::verticesOf;

using kvtest::id;
using kvtest::other;

class GamutViewLooks : public GamutViewCase
{
protected:
    QSharedPointer<KV3DObject> part(std::initializer_list<QString> path) const
    {
        return item("Profiles", id)->childAt(path);
    }
    QSharedPointer<KV3DObject> front() const
    {
        return part({QStringLiteral("Gamut"), QStringLiteral("Front")});
    }
    QSharedPointer<KV3DObject> wireframe() const
    {
        return part({QStringLiteral("Gamut"), QStringLiteral("Wireframe")});
    }

    static KVGamutLook someLook()
    {
        KVGamutLook look;
        look.visible = false;
        look.mode = KVGamut3DViewer::Wireframe;
        look.color = QColor(10, 200, 30);
        look.opacity = 0.25f;
        look.ambientStrength = 0.75f;
        look.surface = false;
        look.projection = false;
        look.primaries = true;
        look.outlineColor = QColor(200, 40, 60);
        return look;
    }

    void expectSomeLook() const
    {
        EXPECT_FALSE(viewer->gamutVisible(id));
        EXPECT_EQ(viewer->displayMode(id), KVGamut3DViewer::Wireframe);
        EXPECT_EQ(viewer->gamutColor(id), QColor(10, 200, 30));
        EXPECT_EQ(viewer->gamutAlpha(id), 0.25f);
        EXPECT_EQ(viewer->gamutAmbientStrength(id), 0.75f);
        EXPECT_FALSE(viewer->displayGamut(id));
        EXPECT_FALSE(viewer->displayProjection(id));
        EXPECT_TRUE(viewer->displayPrimaries(id));
        EXPECT_EQ(view->look(id), someLook());
    }
};

/// Colours in which the vertices of an object are drawn.
QList<QColor> drawnColors(const KV3DObject& object)
{
    QList<QColor> colors;
    for (const Vertex& v : verticesOf(object)) {
        const QColor color = QColor::fromRgbF(v.color[0], v.color[1], v.color[2]);
        if (!colors.contains(color))
            colors.append(color);
    }
    return colors;
}

KVViewTheme someTheme()
{
    return {QColor(1, 2, 3), QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255), QColor(255, 255, 0)};
}

KVViewState someState()
{
    KVViewState state;
    state.camera = {{1.5f, 2.0f, -300.25f}, {40.0f, 1.0f, 2.0f}, 42.5f, true};
    state.theme = someTheme();
    state.light = {30.0f, 20.0f, 10.0f};
    state.lightColor = QColor(200, 210, 220);
    state.grid = false;
    state.axes = false;
    state.plane = true;
    state.clipping = 62.5f;
    state.looks[id].opacity = 0.35f;
    state.looks[id].color = QColor(1, 200, 3);
    state.looks[other].mode = KVGamut3DViewer::Flat;
    state.settings[id] = {KVVMRenderPerceptual, true, 17, KVGamut::Adaptation::NoneD65};
    return state;
}

} // namespace

// --- Looks ---------------------------------------------------------------------------------------

TEST_F(GamutViewLooks, aGamutIsShownWithColoursOfItsVertices)
{
    const KVGamut::GamutObject gamut = computed();
    const QList<QRgb> colors(static_cast<qsizetype>(gamut.mesh().lab.size()), qRgb(10, 20, 30));
    bool done = false;
    view->show(id, gamut, colors, view.get(), [&done](const std::optional<KVProblem>& problem) {
        EXPECT_FALSE(problem);
        done = true;
    });
    ASSERT_TRUE(eventually([&done] { return done; }));
    const QColor expected(10, 20, 30);
    const std::array<float, 4> base{expected.redF(), expected.greenF(), expected.blueF(), 1.0f};
    for (const Vertex& vertex : verticesOf(*front()))
        EXPECT_EQ(vertex.base, base);
    showAndWait(id, gamut);
    EXPECT_NE(verticesOf(*front()).first().base, base) << "its own colours again";
}

TEST_F(GamutViewLooks, aGamutIsShownWithTheColoursOfValues)
{
    const KVGamut::GamutObject gamut = computed();
    std::vector<float> values;
    for (const KVGamut::LabPoint& lab : gamut.mesh().lab)
        values.push_back(lab.L);
    bool done = false;
    const auto show = [&](const std::vector<float>& shown) {
        done = false;
        view->showValues(id, gamut, shown, {{40.0f, qRgb(10, 20, 30)}, {40.0f, qRgb(200, 210, 220)}},
                         view.get(), [&done](const std::optional<KVProblem>& problem) {
                             EXPECT_FALSE(problem);
                             done = true;
                         });
        return eventually([&done] { return done; });
    };
    ASSERT_TRUE(show(values));
    const float dark = QColor(10, 20, 30).redF(), light = QColor(200, 210, 220).redF();
    int ofDark = 0, ofLight = 0;
    for (const Vertex& vertex : verticesOf(*front())) {
        ofDark += vertex.base[0] == dark;
        ofLight += vertex.base[0] == light;
    }
    EXPECT_GT(ofDark, 0);
    EXPECT_GT(ofLight, 0);
    EXPECT_EQ(ofDark + ofLight, verticesOf(*front()).size()) << "no other colour";
    EXPECT_EQ(view->gamut(id).mesh().lab.size(), gamut.mesh().lab.size()); // only drawing splits triangles
    ASSERT_TRUE(show({1.0f}));
    const auto own = verticesOf(*front());
    showAndWait(id, gamut);
    ASSERT_EQ(verticesOf(*front()).size(), own.size());
    EXPECT_EQ(verticesOf(*front()).first().base, own.first().base);
}

TEST_F(GamutViewLooks, aNewGamutHasTheDefaultLook)
{
    showAndWait(id);
    EXPECT_EQ(view->look(id), KVGamutLook());
    EXPECT_EQ(viewer->gamutAmbientStrength(id), KVGamutLook().ambientStrength);
}

TEST_F(GamutViewLooks, aLookIsAppliedToAShownGamut)
{
    showAndWait(id);
    view->setLook(id, someLook());
    expectSomeLook();
}

TEST_F(GamutViewLooks, aLookSetBeforeTheLoadAppearsWithIt)
{
    view->setLook(id, someLook());
    EXPECT_EQ(view->look(id), someLook());
    showAndWait(id);
    expectSomeLook();
}

TEST_F(GamutViewLooks, aLookAwaitsALoadOfTheViewerToo)
{
    view->setLook(id, someLook());
    viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("profile A")}}, {});
    expectSomeLook();
}

TEST_F(GamutViewLooks, aLookSurvivesAFailedLoad)
{
    view->setLook(id, someLook());
    view->show(id, KVGamut::GamutObject());
    ASSERT_TRUE(eventually([this] { return !view->isLoading(); }));
    EXPECT_EQ(view->look(id), someLook());
    showAndWait(id);
    expectSomeLook();
}

TEST_F(GamutViewLooks, aReloadKeepsTheLook)
{
    showAndWait(id);
    view->setLook(id, someLook());
    showAndWait(id, computed(5.0f));
    expectSomeLook();
}

TEST_F(GamutViewLooks, aRemovedGamutForgetsItsLook)
{
    view->setLook(id, someLook());
    view->remove(id);
    EXPECT_EQ(view->look(id), KVGamutLook());
    view->setLook(id, someLook());
    showAndWait(id);
    view->remove(id);
    showAndWait(id);
    EXPECT_EQ(view->look(id), KVGamutLook());
}

TEST_F(GamutViewLooks, whatTheViewerSetsIsPartOfTheLook)
{
    showAndWait(id);
    viewer->changeGamutAlpha(id, 0.5f, 0);
    viewer->setDisplayPrimaries(id, true);
    EXPECT_EQ(view->look(id).opacity, 0.5f);
    EXPECT_TRUE(view->look(id).primaries);
}

TEST_F(GamutViewLooks, settersOfTheViewerBeforeTheFirstLoadKeepTheirEffect)
{
    view->show(id, computed());
    viewer->setDisplayMode(id, KVGamut3DViewer::Flat);
    ASSERT_TRUE(eventually([this] { return !view->isLoading(); }));
    EXPECT_EQ(view->look(id).mode, KVGamut3DViewer::Flat);
    EXPECT_EQ(view->look(id).ambientStrength, KVGamutLook().ambientStrength);
}

// --- Colours -------------------------------------------------------------------------------------

TEST_F(GamutViewLooks, theOutlineHasAColourOfItsOwn)
{
    KVGamutLook look;
    look.outlineColor = QColor(200, 40, 60);
    view->setLook(id, look);
    showAndWait(id);
    const auto outline = part({QStringLiteral("Projection")});
    EXPECT_EQ(drawnColors(*outline), QList<QColor>{look.outlineColor});
    EXPECT_GT(drawnColors(*part({QStringLiteral("Gamut"), QStringLiteral("Front")})).size(), 1);
    EXPECT_EQ(view->look(id), look);
    EXPECT_EQ(KVViewState::fromMap(view->state().toMap()).looks.value(id), look);

    showAndWait(id); // again
    EXPECT_EQ(drawnColors(*outline), QList<QColor>{look.outlineColor});
    view->setLook(id, {});
    EXPECT_GT(drawnColors(*outline).size(), 1);
    EXPECT_EQ(view->look(id), KVGamutLook());
}

TEST_F(GamutViewLooks, theOutlineFollowsTheSurfaceWithoutAColourOfItsOwn)
{
    showAndWait(id);
    KVGamutLook look;
    look.color = QColor(10, 200, 30);
    look.outlineColor = QColor(200, 40, 60);
    view->setLook(id, look);
    look.outlineColor = QColor();
    view->setLook(id, look);
    EXPECT_EQ(drawnColors(*part({QStringLiteral("Projection")})), QList<QColor>{look.color});
    EXPECT_EQ(view->look(id), look);
}

TEST_F(GamutViewLooks, anInvalidColourRestoresTheColoursOfTheGamut)
{
    showAndWait(id);
    viewer->setDisplayPrimaries(id, true);
    viewer->setClipping(50.0f);
    const QStringList parts{QStringLiteral("Projection"), QStringLiteral("Primaries"),
                            QStringLiteral("PrimariesPoints"), QStringLiteral("Section")};
    QList<QList<float>> before{front()->vertices()};
    for (const QString& name : parts)
        before.append(part({name})->vertices());

    viewer->changeGamutColor(id, QColor(200, 10, 10));
    EXPECT_NE(front()->vertices(), before[0]);
    viewer->changeGamutColor(id, QColor());
    EXPECT_FALSE(viewer->gamutColor(id).isValid());
    EXPECT_EQ(front()->vertices(), before[0]);
    for (qsizetype i = 0; i < parts.size(); ++i)
        EXPECT_EQ(part({parts[i]})->vertices(), before[i + 1]) << parts[i].toStdString();
}

TEST_F(GamutViewLooks, coloursAreRestoredWhereNoVerticesWereMadeYet)
{
    showAndWait(other);
    const auto untouched =
        item("Profiles", other)->childAt({QStringLiteral("Gamut"), QStringLiteral("Wireframe")});
    showAndWait(id);
    viewer->changeGamutColor(id, Qt::red); // the wireframe's vertices are made on demand
    viewer->changeGamutColor(id, QColor());
    EXPECT_EQ(wireframe()->vertices(), untouched->vertices());
}

TEST_F(GamutViewLooks, restoredColoursKeepOpacityAndClipping)
{
    showAndWait(id);
    viewer->changeGamutColor(id, Qt::red);
    viewer->changeGamutAlpha(id, 0.5f, 0);
    viewer->setClipping(40.0f);
    viewer->changeGamutColor(id, QColor());
    for (const Vertex& v : verticesOf(*front())) {
        EXPECT_EQ(v.color[3], 0.5f);
        EXPECT_EQ(v.clip, 40.0f);
    }
}

TEST_F(GamutViewLooks, aDisplayModeKeepsRestoredColours)
{
    showAndWait(id);
    const QList<float> before = front()->vertices();
    viewer->changeGamutColor(id, Qt::red);
    viewer->changeGamutColor(id, QColor());
    viewer->setDisplayMode(id, KVGamut3DViewer::Flat);
    viewer->setDisplayMode(id, KVGamut3DViewer::Smooth);
    EXPECT_EQ(front()->vertices(), before);
}

TEST_F(GamutViewLooks, anInvalidColourWithoutAColourChangesNothing)
{
    showAndWait(id);
    const int uploads = front()->uploadCount();
    const bool drawn = front()->isDrawnSinceChange();
    const QList<float> before = front()->vertices();
    viewer->changeGamutColor(id, QColor());
    EXPECT_EQ(front()->vertices(), before);
    EXPECT_EQ(front()->uploadCount(), uploads);
    EXPECT_EQ(front()->isDrawnSinceChange(), drawn);
}

// --- Themes --------------------------------------------------------------------------------------

TEST_F(GamutViewLooks, theDefaultThemeIsWhatTheViewerBeginsWith)
{
    EXPECT_EQ(view->theme(), KVViewTheme());
    const QList<float> axes = group("Axes")->vertices();
    const QList<float> grid = group("Grid")->vertices();
    view->setTheme(someTheme());
    view->setTheme(KVViewTheme());
    EXPECT_EQ(group("Axes")->vertices(), axes);
    EXPECT_EQ(group("Grid")->vertices(), grid);
}

TEST_F(GamutViewLooks, aThemeColoursAxesLabelsGridAndSections)
{
    viewer->setClipping(50.0f);
    fakevelmora::onRing([](const auto&) {
        return QList<QList<QList<float>>>{{{50.0f, 0.0f, 0.0f}, {50.0f, 10.0f, 0.0f}}};
    });
    showAndWait(id);
    QSignalSpy changed(view.get(), &KVGamutView::themeChanged);
    view->setTheme(someTheme());
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(view->theme(), someTheme());
    EXPECT_EQ(viewer->background(), someTheme().background);
    EXPECT_EQ(drawnColors(*group("Axes")), QList<QColor>{someTheme().axes});
    EXPECT_EQ(drawnColors(*group("Grid")), QList<QColor>{someTheme().grid});
    EXPECT_EQ(drawnColors(*part({QStringLiteral("Section")})), QList<QColor>{someTheme().section});
    for (const char* label : {"Axis_X", "Axis_Y", "Axis_Z"})
        EXPECT_EQ(drawnColors(*group("Axes")->child(QLatin1String(label))),
                  QList<QColor>{someTheme().labels});
}

TEST_F(GamutViewLooks, aThemeColoursTheSectionsOfLaterGamuts)
{
    viewer->setClipping(50.0f);
    fakevelmora::onRing([](const auto&) {
        return QList<QList<QList<float>>>{{{50.0f, 0.0f, 0.0f}, {50.0f, 10.0f, 0.0f}}};
    });
    view->setTheme(someTheme());
    showAndWait(id);
    EXPECT_EQ(drawnColors(*part({QStringLiteral("Section")})), QList<QColor>{someTheme().section});
}

TEST_F(GamutViewLooks, aThemeKeepsWhatIsHidden)
{
    viewer->setDisplayGrid(false);
    viewer->setDisplayAxes(false);
    view->setTheme(someTheme());
    EXPECT_FALSE(viewer->displayGrid());
    EXPECT_FALSE(viewer->displayAxes());
}

TEST_F(GamutViewLooks, theBackgroundOfTheViewerIsPartOfTheTheme)
{
    QSignalSpy changed(view.get(), &KVGamutView::themeChanged);
    viewer->setBackground(Qt::red);
    viewer->setBackground(Qt::red);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(view->theme().background, QColor(Qt::red));
}

TEST_F(GamutViewLooks, twoViewsShareTheTheme)
{
    const KVGamutView second(viewer.get());
    view->setTheme(someTheme());
    EXPECT_EQ(second.theme(), someTheme());
}

TEST_F(GamutViewLooks, aThemeFollowsThePaletteWhileAskedTo)
{
    const QPalette before = QGuiApplication::palette();
    QPalette dark(QColor(40, 40, 40));
    dark.setColor(QPalette::Window, QColor(20, 30, 40));
    dark.setColor(QPalette::WindowText, QColor(220, 230, 240));
    QPalette light = dark;
    light.setColor(QPalette::Window, QColor(250, 251, 252));

    view->setThemeFollowsPalette(true);
    EXPECT_TRUE(view->themeFollowsPalette());
    EXPECT_EQ(view->theme(), KVViewTheme::fromPalette(before));
    QGuiApplication::setPalette(dark);
    settle();
    EXPECT_EQ(view->theme(), KVViewTheme::fromPalette(dark));
    EXPECT_EQ(view->theme().background, QColor(20, 30, 40));
    EXPECT_EQ(view->theme().axes, QColor(220, 230, 240));
    view->setThemeFollowsPalette(false);
    QGuiApplication::setPalette(light);
    settle();
    EXPECT_EQ(view->theme(), KVViewTheme::fromPalette(dark));
    QGuiApplication::setPalette(before);
    settle();
}

TEST_F(GamutViewLooks, theGridOfAPaletteLiesBetweenTextAndWindow)
{
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::white);
    const KVViewTheme theme = KVViewTheme::fromPalette(palette);
    EXPECT_GT(theme.grid.lightness(), 0);
    EXPECT_LT(theme.grid.lightness(), 128) << "weaker than the axes";
}

// --- State ---------------------------------------------------------------------------------------

TEST_F(GamutViewLooks, theStateOfANewViewIsTheDefaultState)
{
    EXPECT_EQ(view->state(), KVViewState());
    EXPECT_EQ(viewer->camera(), KVCamera().position);
    EXPECT_EQ(viewer->interestPt(), KVCamera().interestPoint);
}

TEST_F(GamutViewLooks, aStateIsRestored)
{
    view->setState(someState());
    EXPECT_EQ(view->state(), someState());
    EXPECT_EQ(viewer->lightPos(), QVector3D(-20, 30, 10)) << "scene coordinates";
    EXPECT_EQ(viewer->clipping(), 62.5f);
    EXPECT_TRUE(viewer->gamuts().isEmpty()) << "nothing is loaded";
    showAndWait(id);
    EXPECT_EQ(viewer->gamutAlpha(id), 0.35f);
    EXPECT_EQ(view->state(), someState());
}

TEST_F(GamutViewLooks, aStateWithoutClippingCutsNothing)
{
    viewer->setClipping(30.0f);
    view->setState({});
    EXPECT_EQ(viewer->clipping(), 1000000.0f);
    EXPECT_EQ(view->state().clipping, std::nullopt);
}

TEST_F(GamutViewLooks, clippingIsSetAndTakenBackByItself)
{
    EXPECT_EQ(view->clipping(), std::nullopt);
    view->setClipping(40.0f);
    EXPECT_EQ(viewer->clipping(), 40.0f);
    EXPECT_EQ(view->clipping(), 40.0f);
    for (const float invalid :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity()}) {
        view->setClipping(invalid);
        EXPECT_EQ(viewer->clipping(), 40.0f);
    }
    view->setClipping({});
    EXPECT_EQ(viewer->clipping(), 1000000.0f);
    EXPECT_EQ(view->clipping(), std::nullopt);
    viewer->setClipping(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(view->clipping(), std::nullopt);
}

TEST_F(GamutViewLooks, theLightIsSetInLab)
{
    view->setLight({10, 20, 30}, Qt::yellow);
    EXPECT_EQ(viewer->lightPos(), QVector3D(-20, 10, 30)) << "scene coordinates";
    EXPECT_EQ(viewer->lightColor(), QColor(Qt::yellow));
    EXPECT_EQ(view->state().light, QVector3D(10, 20, 30));
}

TEST_F(GamutViewLooks, theStateHoldsTheSettingsOfLoads)
{
    view->load(id, KVLoadRequest::fromData("profile A", {KVVMRenderSaturation, true, 9}));
    EXPECT_EQ(view->state().settings.value(id), (KVGamut::Settings{KVVMRenderSaturation, true, 9}));
    view->remove(id);
    EXPECT_TRUE(view->state().settings.isEmpty());
}

TEST_F(GamutViewLooks, aStateSurvivesJsonAndCbor)
{
    const QVariantMap map = someState().toMap();
    EXPECT_EQ(KVViewState::fromMap(map), someState());
    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    EXPECT_EQ(KVViewState::fromMap(QJsonDocument::fromJson(json).object().toVariantMap()), someState());
    const QByteArray cbor = QCborValue::fromVariant(map).toCbor();
    EXPECT_EQ(KVViewState::fromMap(QCborValue::fromCbor(cbor).toVariant().toMap()), someState());
}

TEST_F(GamutViewLooks, theDefaultStateSurvivesToo)
{
    EXPECT_EQ(KVViewState::fromMap(KVViewState().toMap()), KVViewState());
    EXPECT_EQ(KVViewState::fromMap({}), KVViewState());
}

TEST_F(GamutViewLooks, invalidValuesOfAMapKeepTheDefaults)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QVariantMap camera{{QStringLiteral("position"), QVariantList{1.0, 2.0}},
                             {QStringLiteral("viewingAngle"), 0.0},
                             {QStringLiteral("orthogonal"), QStringLiteral("yes")}};
    const QVariantMap look{{QStringLiteral("mode"), 7},
                           {QStringLiteral("opacity"), 1.5},
                           {QStringLiteral("ambientStrength"), nan},
                           {QStringLiteral("color"), QStringLiteral("no colour")}};
    const QVariantMap settings{{QStringLiteral("intent"), 4},
                               {QStringLiteral("gridPoints"), 1e9},
                               {QStringLiteral("adaptation"), 3}};
    const KVViewState state =
        KVViewState::fromMap({{QStringLiteral("camera"), camera},
                              {QStringLiteral("light"), QVariantList{nan, 0.0, 0.0}},
                              {QStringLiteral("clipping"), nan},
                              {QStringLiteral("theme"), 5},
                              {QStringLiteral("looks"), QVariantMap{{id, look}}},
                              {QStringLiteral("settings"), QVariantMap{{id, settings}}}});
    KVViewState expected;
    expected.looks.insert(id, {});
    expected.settings.insert(id, {});
    EXPECT_EQ(state, expected);
}

TEST_F(GamutViewLooks, aCameraThatLooksAtItsOwnPlaceIsInvalid)
{
    const QVariantList place{1.0, 2.0, 3.0};
    const QVariantMap camera{{QStringLiteral("position"), place}, {QStringLiteral("interestPoint"), place}};
    EXPECT_EQ(KVViewState::fromMap({{QStringLiteral("camera"), camera}}).camera, KVCamera());
}
