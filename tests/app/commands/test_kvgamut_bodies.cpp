// SPDX-License-Identifier: Apache-2.0
// Parts of a gamut as bodies: `kvgamut render --body` and `kvgamut export --body`.

#include "app/support/Program.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <array>
#include <map>

using namespace kvtest;

namespace {

class BodyTest : public ProgramTest
{
protected:
    QJsonObject body(const QString& arguments)
    {
        const QString name = path(QStringLiteral("body.json"));
        EXPECT_TRUE(
            succeeded(kvgamut(words(QStringLiteral("export ") + arguments) << QStringLiteral("-o") << name)));
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(file.readAll()).array().at(0).toObject();
    }
};

/// The volume that the triangles enclose, by the divergence theorem.
double enclosed(const QJsonObject& mesh)
{
    const QJsonArray vertices = mesh[QStringLiteral("vertices")].toArray();
    const auto at = [&vertices](const QJsonValue& v) {
        const QJsonArray p = vertices[v.toInt()].toArray();
        return std::array<double, 3>{p[0].toDouble(), p[1].toDouble(), p[2].toDouble()};
    };
    double sum = 0.0;
    const QJsonArray triangles = mesh[QStringLiteral("triangles")].toArray();
    for (const QJsonValue& triangle : triangles) {
        const QJsonArray t = triangle.toArray();
        const auto p = at(t[0]), q = at(t[1]), r = at(t[2]);
        sum += p[0] * (q[1] * r[2] - q[2] * r[1]) - p[1] * (q[0] * r[2] - q[2] * r[0]) +
               p[2] * (q[0] * r[1] - q[1] * r[0]);
    }
    return sum / 6.0;
}

bool hasEachEdgeTwice(const QJsonObject& mesh)
{
    std::map<std::pair<int, int>, int> uses;
    const QJsonArray triangles = mesh[QStringLiteral("triangles")].toArray();
    for (const QJsonValue& triangle : triangles)
        for (int i = 0; i < 3; ++i)
            ++uses[{triangle.toArray()[i].toInt(), triangle.toArray()[(i + 1) % 3].toInt()}];
    return std::all_of(uses.begin(), uses.end(), [&uses](const auto& edge) {
        const auto back = uses.find({edge.first.second, edge.first.first});
        return edge.second == 1 && back != uses.end() && back->second == 1;
    });
}

} // namespace

TEST_F(BodyTest, exportedBodiesDivideTheFirstGamut)
{
    const QJsonObject outside = body(QStringLiteral("AdobeRGB sRGB --grid 9 --body outside"));
    const QJsonObject common = body(QStringLiteral("AdobeRGB sRGB --grid 9 --body intersection"));
    const QJsonObject whole = body(QStringLiteral("AdobeRGB --grid 9"));
    EXPECT_TRUE(hasEachEdgeTwice(outside));
    EXPECT_TRUE(hasEachEdgeTwice(common));
    EXPECT_NEAR(enclosed(outside) + enclosed(common), enclosed(whole), 1.0);
    EXPECT_NEAR(enclosed(common), common[QStringLiteral("surface_volume")].toDouble(), 1.0);
    EXPECT_NEAR(outside[QStringLiteral("volume")].toDouble() + common[QStringLiteral("volume")].toDouble(),
                whole[QStringLiteral("volume")].toDouble(), 1.0);
    EXPECT_GT(enclosed(outside), 100000.0);
}

TEST_F(BodyTest, anExportedBodySaysWhatItIs)
{
    const QJsonObject outside = body(QStringLiteral("AdobeRGB sRGB --grid 5 --body outside"));
    EXPECT_EQ(outside[QStringLiteral("part")].toString(), QStringLiteral("AdobeRGB outside sRGB"));
    EXPECT_EQ(outside[QStringLiteral("profile")].toString(), QStringLiteral("AdobeRGB"));
    const QString ply = path(QStringLiteral("body.ply"));
    ASSERT_TRUE(succeeded(
        kvgamut(words(QStringLiteral("export AdobeRGB sRGB --grid 5 --body intersection -o")) << ply)));
    QFile file(ply);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.read(1000).contains("comment part: AdobeRGB and sRGB, intersection\n"));
}

TEST_F(BodyTest, aPageContainsTheBodyAndItsGamuts)
{
    const QString name = path(QStringLiteral("body.html"));
    ASSERT_TRUE(
        succeeded(kvgamut(words(QStringLiteral("export AdobeRGB sRGB --grid 5 --body outside -o")) << name)));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray page = file.readAll();
    for (const char* shown :
         {"\"name\":\"AdobeRGB\"", "\"name\":\"sRGB\"", "\"name\":\"AdobeRGB outside sRGB\""})
        EXPECT_EQ(page.count(shown), 1) << shown;
    EXPECT_EQ(page.count("\"opacity\":0.15"), 2);
}

TEST_F(BodyTest, gamutsBesideABodyAreTranslucentOrLines)
{
    const QString body =
        QStringLiteral("render AdobeRGB sRGB --grid 5 --size 100x80 --body outside --verbose -o ");
    const auto faint = kvgamut(words(body + path(QStringLiteral("a.png"))));
    EXPECT_TRUE(faint.errors.contains("AdobeRGB is drawn as: translucent")) << faint.errors.constData();
    EXPECT_TRUE(faint.errors.contains("sRGB is drawn as: translucent"));
    const auto lines = kvgamut(words(body + path(QStringLiteral("b.png --look lines"))));
    EXPECT_TRUE(lines.errors.contains("sRGB is drawn as: lines")) << lines.errors.constData();
}

TEST_F(BodyTest, aPartThatDoesNotExistIsRefused)
{
    for (const QString& command : {QStringLiteral("export"), QStringLiteral("render")}) {
        const auto result = kvgamut(words(command + QStringLiteral(" sRGB sRGB --body outside -o"))
                                    << path(QStringLiteral("x.ply")));
        const auto picture = kvgamut(words(command + QStringLiteral(" sRGB sRGB --body outside -o"))
                                     << path(QStringLiteral("x.png")));
        const auto& actual = command == QStringLiteral("export") ? result : picture;
        EXPECT_EQ(actual.exitCode, 1);
        EXPECT_TRUE(actual.errors.contains("no part of sRGB is outside sRGB (2)"))
            << actual.errors.constData();
    }
}

TEST_F(BodyTest, optionsThatDoNotFitABodyAreRefused)
{
    for (const char* arguments :
         {"render sRGB --body outside -o x.png", "render sRGB AdobeRGB DisplayP3 --body outside -o x.png",
          "render AdobeRGB sRGB --body outside --loss sRGB -o x.png",
          "render AdobeRGB sRGB --body outside --no-surface -o x.png",
          "render AdobeRGB sRGB --body inside -o x.png", "export sRGB --body outside -o x.ply",
          "export AdobeRGB sRGB --body outside -o x.kvgamut"})
        EXPECT_EQ(kvgamut(words(QString::fromLatin1(arguments))).exitCode, 2) << arguments;
}
