// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/FileKind.h"
#include "desktop/files/Session.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

const QDir folder(QStringLiteral("/data/job"));

/// A session in which nothing has its default.
Session everything()
{
    Session session;
    Session::Gamut builtIn;
    builtIn.input = QStringLiteral("Rec2020");
    builtIn.settings = {KVVMRenderPerceptual, true, 17};
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
    session.gamuts = {builtIn, file};
    session.active = 1;
    session.view.camera = {{1, 2, 3}, {4, 5, 6.5f}, true, 45.0f};
    session.view.background = QColor(1, 2, 3);
    session.view.grid = false;
    session.view.axes = false;
    session.view.plane = true;
    session.view.clip = 62.5f;
    session.view.light = {7, 8, 9};
    session.view.lightColor = QColor(250, 240, 230);
    session.points = {QStringLiteral("/data/job/chart.ti3"), QStringLiteral("/elsewhere/photo.jpg")};
    session.tolerance = 2.5f;
    return session;
}

std::optional<Session> read(const QByteArray& json, const QDir& from = folder)
{
    QString problem;
    const auto session = Session::fromJson(json, from, problem);
    EXPECT_EQ(session.has_value(), problem.isEmpty());
    return session;
}

/// What is said of a session in which @p change was made.
QString problemWith(const std::function<void(QJsonObject&)>& change)
{
    QJsonObject json = QJsonDocument::fromJson(everything().toJson(folder)).object();
    change(json);
    QString problem;
    EXPECT_FALSE(Session::fromJson(QJsonDocument(json).toJson(), folder, problem));
    return problem;
}

/// The same where @p value stands for @p key of the first gamut.
QString problemOfGamut(const char* key, const QJsonValue& value)
{
    return problemWith([&](QJsonObject& json) {
        QJsonArray gamuts = json[QLatin1String("gamuts")].toArray();
        QJsonObject gamut = gamuts[0].toObject();
        gamut[QLatin1String(key)] = value;
        gamuts[0] = gamut;
        json[QLatin1String("gamuts")] = gamuts;
    });
}

QString problemOfView(const char* key, const QJsonValue& value)
{
    return problemWith([&](QJsonObject& json) {
        QJsonObject view = json[QLatin1String("view")].toObject();
        view[QLatin1String(key)] = value;
        json[QLatin1String("view")] = view;
    });
}

TEST(Session, comesBackAsItWasWritten)
{
    EXPECT_EQ(read(everything().toJson(folder)), everything());
    Session plain;
    plain.view = everything().view;
    plain.view.clip.reset();
    EXPECT_EQ(read(plain.toJson(folder)), plain);
}

TEST(Session, movesTogetherWithTheFilesBesideIt)
{
    const auto moved = read(everything().toJson(folder), QDir(QStringLiteral("/new/place")));
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->gamuts[0].input, QStringLiteral("Rec2020"));
    EXPECT_EQ(moved->gamuts[1].input, QStringLiteral("/new/place/inks/größe 1.icc"));
    EXPECT_EQ(moved->points[0], QStringLiteral("/new/place/chart.ti3"));
    EXPECT_EQ(moved->points[1], QStringLiteral("/elsewhere/photo.jpg")); // it does not lie beside it
}

TEST(Session, givesDefaultsToWhatIsMissing)
{
    const auto session = read(R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB"}]})");
    ASSERT_TRUE(session);
    ASSERT_EQ(session->gamuts.size(), 1);
    EXPECT_EQ(session->gamuts[0].settings, GamutSettings());
    EXPECT_EQ(session->gamuts[0].look, KVGamutLook());
    EXPECT_FALSE(session->view.clip);
    EXPECT_TRUE(session->points.isEmpty());
}

TEST(Session, refusesWhatIsNoSession)
{
    for (const char* text : {"", "hello", "[]", "{}", "{\"gamuts\": []}", "{\"kvgamutSession\": 1"}) {
        QString problem;
        EXPECT_FALSE(Session::fromJson(text, folder, problem)) << text;
        EXPECT_EQ(problem, QStringLiteral("it is no session of this program")) << text;
    }
}

TEST(Session, refusesAVersionThatItDoesNotKnow)
{
    EXPECT_EQ(problemWith([](QJsonObject& json) { json[QLatin1String("kvgamutSession")] = 2; }),
              QStringLiteral("\"kvgamutSession\" should be a number from 1 to 1"));
}

TEST(Session, saysWhichValueIsWrongAndWhatItShouldBe)
{
    EXPECT_EQ(
        problemOfGamut("intent", QStringLiteral("nice")),
        QStringLiteral("gamut 1: \"intent\" should be one of perceptual, relative, saturation, absolute"));
    EXPECT_EQ(problemOfGamut("opacity", 1.5),
              QStringLiteral("gamut 1: \"opacity\" should be a number from 0 to 1"));
    EXPECT_EQ(problemOfGamut("visible", 1), QStringLiteral("gamut 1: \"visible\" should be true or false"));
    EXPECT_EQ(problemOfGamut("color", QStringLiteral("reddish")),
              QStringLiteral("gamut 1: \"color\" should be a colour like \"#40c0ff\""));
    EXPECT_EQ(problemOfGamut("input", QString()), QStringLiteral("gamut 1: \"input\" should be a name"));
    EXPECT_EQ(problemOfView("clip", QStringLiteral("high")),
              QStringLiteral("view: \"clip\" should be a number from -1000 to 1000"));
    EXPECT_EQ(problemOfView("eye", QJsonArray{1, 2}),
              QStringLiteral("view: \"eye\" should be three numbers"));
    EXPECT_EQ(problemOfView("eye", QJsonArray{4, 5, 6.5}),
              QStringLiteral("view: \"eye\" should be another point than \"lookAt\""));
    EXPECT_EQ(problemWith([](QJsonObject& json) { json[QLatin1String("active")] = 2; }),
              QStringLiteral("\"active\" should be a number from 0 to 1"));
    EXPECT_EQ(problemWith([](QJsonObject& json) { json[QLatin1String("points")] = QJsonArray{7}; }),
              QStringLiteral("\"points\" should be a list of files"));
}

TEST(FileKind, isToldByTheEndOfTheName)
{
    EXPECT_EQ(fileKind(QStringLiteral("a b/printer.ICC")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("photo.jpeg")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("saved.kvgamut")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("without")), FileKind::Gamut);
    EXPECT_EQ(fileKind(QStringLiteral("chart.TI3")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("chart.cxf")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("chart.v2.csv")), FileKind::Points);
    EXPECT_EQ(fileKind(QStringLiteral("monday.kvsession")), FileKind::Session);
}

} // namespace
