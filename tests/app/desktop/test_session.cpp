// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/FileKind.h"
#include "desktop/files/Session.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

const QDir folder(QStringLiteral("/data/job"));

/// A session without default values.
Session everything()
{
    Session session;
    Session::Gamut builtIn;
    builtIn.input = QStringLiteral("Rec2020");
    builtIn.settings = {KVVMRenderPerceptual, true, 17, KVGamut::Adaptation::NoneD65};
    builtIn.look.visible = false;
    builtIn.look.mode = KVGamut3DViewer::Wireframe;
    builtIn.look.opacity = 0.25f;
    builtIn.look.color = QColor(0x12, 0x34, 0x56);
    builtIn.look.ambientStrength = 0.75f;
    builtIn.look.surface = false;
    builtIn.look.projection = false;
    builtIn.look.primaries = true;
    Session::Gamut file;
    file.input = QStringLiteral("/data/job/inks/größe 1.icc");
    file.automaticOpacity = true;
    session.gamuts = {builtIn, file};
    session.active = 1;
    session.view.camera = {{1, 2, 3}, {4, 5, 6.5f}, 45.0f, true};
    session.view.theme.background = QColor(1, 2, 3);
    session.view.grid = false;
    session.view.axes = false;
    session.view.plane = true;
    session.view.clipping = 62.5f;
    session.view.light = {7, 8, 9};
    session.view.lightColor = QColor(250, 240, 230);
    session.lightness = 72.5f;
    session.section = 37.5f;
    session.hueLeaf = 120.5f;
    session.sectionKind = SectionKind::Hue;
    session.sectionHue = 210.5f;
    session.sectionFixed = true;
    session.sectionColors = true;
    session.points = {QStringLiteral("/data/job/chart.ti3"), QStringLiteral("/elsewhere/photo.jpg")};
    session.tolerance = 2.5f;
    return session;
}

Result<Session> read(const QByteArray& json, const QDir& from = folder)
{
    return Session::fromJson(json, from);
}

/// The problem when reading a session after @p change.
Problem problemWith(const std::function<void(QJsonObject&)>& change)
{
    QJsonObject json = QJsonDocument::fromJson(everything().toJson(folder)).object();
    change(json);
    const Result<Session> session = read(QJsonDocument(json).toJson());
    EXPECT_FALSE(session);
    return session ? Problem() : session.error();
}

/// The same with @p value for @p key of the first gamut.
Problem problemOfGamut(const char* key, const QJsonValue& value)
{
    return problemWith([&](QJsonObject& json) {
        QJsonArray gamuts = json[QLatin1String("gamuts")].toArray();
        QJsonObject gamut = gamuts[0].toObject();
        gamut[QLatin1String(key)] = value;
        gamuts[0] = gamut;
        json[QLatin1String("gamuts")] = gamuts;
    });
}

Problem problemOfView(const char* key, const QJsonValue& value)
{
    return problemWith([&](QJsonObject& json) {
        QJsonObject view = json[QLatin1String("view")].toObject();
        view[QLatin1String(key)] = value;
        json[QLatin1String("view")] = view;
    });
}

void expectProblem(const Problem& problem, ProblemCode code, const QList<const char*>& arguments)
{
    QStringList expected;
    for (const char* argument : arguments)
        expected.append(QLatin1String(argument));
    EXPECT_EQ(problem.code, Problem::Code(code)) << arguments.value(0);
    EXPECT_EQ(problem.arguments, expected);
}

TEST(Session, isReadBackAsItWasWritten)
{
    EXPECT_EQ(read(everything().toJson(folder)).value(), everything());
    Session plain;
    plain.view = everything().view;
    plain.view.clipping.reset();
    EXPECT_EQ(read(plain.toJson(folder)).value(), plain);
}

TEST(Session, takesTheLightnessOfTheCutFromEarlierVersions)
{
    const auto lightnessOf = [](const QByteArray& view) {
        return read("{\"kvgamutSession\": 1, \"view\": " + view + "}").value().lightness;
    };
    EXPECT_EQ(lightnessOf(R"({"clip": 72.5})"), 72.5f);
    EXPECT_EQ(lightnessOf(R"({"section": 30})"), 30.0f);
    EXPECT_EQ(lightnessOf(R"({"clip": 72.5, "lightness": 20})"), 20.0f);
    EXPECT_EQ(lightnessOf("{}"), 50.0f);
    EXPECT_EQ(lightnessOf(R"({"clip": 900})"), 100.0f);
}

TEST(Session, findsFilesBesideItAfterAMove)
{
    const auto moved = read(everything().toJson(folder), QDir(QStringLiteral("/new/place")));
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->gamuts[0].input, QStringLiteral("Rec2020"));
    EXPECT_EQ(moved->gamuts[1].input, QStringLiteral("/new/place/inks/größe 1.icc"));
    EXPECT_EQ(moved->points[0], QStringLiteral("/new/place/chart.ti3"));
    EXPECT_EQ(moved->points[1], QStringLiteral("/elsewhere/photo.jpg")); // not in the folder
}

TEST(Session, hasDefaultsForMissingValues)
{
    const auto session = read(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB"}]})");
    ASSERT_TRUE(session);
    ASSERT_EQ(session->gamuts.size(), 1);
    EXPECT_EQ(session->gamuts[0].settings, KVGamut::Settings());
    EXPECT_EQ(session->gamuts[0].look, KVGamutLook());
    EXPECT_FALSE(session->view.clipping);
    EXPECT_FALSE(session->section);
    EXPECT_TRUE(session->points.isEmpty());
}

TEST(Session, keepsTheFormOfItsFiles)
{
    const auto session = read(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB", "ambient": 0.25}],
        "view": {"eye": [1, 2, 3], "light": [300, 200, -100], "background": "#010203", "clip": 40}})");
    ASSERT_TRUE(session);
    EXPECT_EQ(session->gamuts[0].look.ambientStrength, 0.25f);
    EXPECT_EQ(session->view.camera.position, QVector3D(1, 2, 3));
    EXPECT_EQ(session->view.light, QVector3D(200, -300, -100)); // the file has (-a*, L*, b*)
    EXPECT_EQ(session->view.theme.background, QColor(1, 2, 3));
    EXPECT_EQ(session->view.clipping, 40.0f);
    const QJsonObject written = QJsonDocument::fromJson(session->toJson(folder)).object();
    const QJsonObject view = written[QLatin1String("view")].toObject();
    EXPECT_EQ(view[QLatin1String("light")].toArray(), (QJsonArray{300, 200, -100}));
}

TEST(Session, refusesOtherFiles)
{
    for (const char* text : {"", "hello", "[]", "{}", "{\"gamuts\": []}", "{\"kvgamutSession\": 1"}) {
        const auto session = read(text);
        ASSERT_FALSE(session) << text;
        expectProblem(session.error(), ProblemCode::NotASession, {});
    }
}

TEST(Session, refusesUnknownVersions)
{
    expectProblem(problemWith([](QJsonObject& json) { json[QLatin1String("kvgamutSession")] = 2; }),
                  ProblemCode::SessionNewer, {"2", "1"});
}

TEST(Session, namesTheInvalidValueAndWhatItMustBe)
{
    expectProblem(problemOfGamut("intent", QStringLiteral("nice")), ProblemCode::SessionNotOneOf,
                  {"gamuts[0].intent", "perceptual, relative, saturation, absolute"});
    expectProblem(problemOfGamut("opacity", 1.5), ProblemCode::SessionNotInRange,
                  {"gamuts[0].opacity", "0", "1"});
    expectProblem(problemOfGamut("visible", 1), ProblemCode::SessionNotBool, {"gamuts[0].visible"});
    expectProblem(problemOfGamut("color", QStringLiteral("reddish")), ProblemCode::SessionNotColor,
                  {"gamuts[0].color"});
    expectProblem(problemOfGamut("input", QString()), ProblemCode::SessionNotName, {"gamuts[0].input"});
    expectProblem(problemOfView("lightness", 101), ProblemCode::SessionNotInRange,
                  {"view.lightness", "0", "100"});
    expectProblem(problemOfView("sectionHue", -1), ProblemCode::SessionNotInRange,
                  {"view.sectionHue", "0", "360"});
    expectProblem(problemOfView("sectionKind", QStringLiteral("blue")), ProblemCode::SessionNotOneOf,
                  {"view.sectionKind", "lightness, hue, rings"});
    expectProblem(problemOfView("section", 101), ProblemCode::SessionNotInRange,
                  {"view.section", "0", "100"});
    expectProblem(problemOfView("clip", QStringLiteral("high")), ProblemCode::SessionNotInRange,
                  {"view.clip", "-1000", "1000"});
    expectProblem(problemOfView("eye", QJsonArray{1, 2}), ProblemCode::SessionNotThreeValues, {"view.eye"});
    expectProblem(problemOfView("eye", QJsonArray{4, 5, 6.5}), ProblemCode::SessionSamePoint,
                  {"view.eye", "view.lookAt"});
}

TEST(Session, namesInvalidValuesOfItsOwn)
{
    const auto problemOf = [](const char* key, const QJsonValue& value) {
        return problemWith([&](QJsonObject& json) { json[QLatin1String(key)] = value; });
    };
    expectProblem(problemOf("active", 2), ProblemCode::SessionNotInRange, {"active", "0", "1"});
    expectProblem(problemOf("points", QJsonArray{7}), ProblemCode::SessionNotFileList, {"points"});
    expectProblem(problemOf("gamuts", 7), ProblemCode::SessionNotList, {"gamuts"});
    expectProblem(problemOf("view", 7), ProblemCode::SessionNotGroup, {"view"});
}

TEST(Session, refusesPositionsThatAreNotFinite)
{
    for (const char* key : {"eye", "lookAt", "light"})
        expectProblem(problemOfView(key, QJsonArray{1e39, 2, 3}), ProblemCode::SessionNotThreeValues,
                      {qPrintable(QLatin1String("view.") + QLatin1String(key))});
}

TEST(Session, readsColoursAsItWritesThem)
{
    const auto session = read(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB", "color": "transparent"}],
        "view": {"background": "#80ff0102", "lightColor": "#123456789abc"}})");
    ASSERT_TRUE(session);
    EXPECT_EQ(session->gamuts[0].look.color, QColor(0, 0, 0));
    EXPECT_EQ(session->view.theme.background, QColor(255, 1, 2));
    EXPECT_EQ(session->view.lightColor, QColor(0x12, 0x56, 0x9a));
    EXPECT_EQ(read(session->toJson(folder)), *session);
}

TEST(FileKind, dependsOnTheSuffix)
{
    EXPECT_EQ(fileKind(QStringLiteral("a b/printer.ICC")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("photo.jpeg")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("saved.kvgamut")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("without")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("chart.TI3")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("chart.cxf")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("brand.ASE")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("chart.v2.csv")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("monday.kvsession")), FileKind::Session);
}

TEST(Session, hasAtMostAThousandEntries)
{
    const Problem problem = problemWith([](QJsonObject& json) {
        QJsonArray files;
        for (int i = 0; i <= 1000; ++i)
            files.append(QStringLiteral("/dev/zero"));
        json.insert(QStringLiteral("points"), files);
    });
    EXPECT_EQ(problem.code, Problem::Code(ProblemCode::SessionTooLong));
    EXPECT_EQ(problem.arguments, QStringList({QStringLiteral("points"), QStringLiteral("1000")}));
}

} // namespace
