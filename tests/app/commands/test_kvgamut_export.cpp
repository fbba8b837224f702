// SPDX-License-Identifier: Apache-2.0
#include "app/support/AffineProfile.h"
#include "app/support/Picture.h"
#include "app/support/Program.h"
#include "support/Vec3d.h"

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QIODevice>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <vector>

using namespace kvtest;

namespace {

/// A surface that was read from a file, in (L*, a*, b*).
struct Surface
{
    std::vector<Lab> points;
    std::vector<std::array<double, 3>> colors; ///< sRGB 0..1, of each point; empty: none
    std::vector<std::array<int, 3>> triangles;
    QString note;
};

Lab zUp(double x, double y, double z)
{
    return {z, x, y};
}
Lab yUp(double x, double y, double z)
{
    return {y, x, -z};
}

// --- Readers, independent of the writers --------------------------------------------------------------

Surface readPly(const QByteArray& bytes)
{
    Surface surface;
    const qsizetype end = bytes.indexOf("end_header\n");
    qsizetype vertices = 0, faces = 0;
    const auto header = bytes.left(end).split('\n');
    for (const QByteArray& line : header) {
        if (line.startsWith("comment "))
            surface.note += QString::fromUtf8(line.mid(8)) + QLatin1Char('\n');
        if (line.startsWith("element vertex "))
            vertices = line.mid(15).toInt();
        if (line.startsWith("element face "))
            faces = line.mid(13).toInt();
    }
    EXPECT_TRUE(bytes.startsWith("ply\nformat ascii 1.0\n"));
    const auto lines = bytes.mid(end + 11).trimmed().split('\n');
    EXPECT_EQ(lines.size(), vertices + faces);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto f = lines[i].split(' ');
        if (i < vertices) {
            surface.points.push_back(zUp(f[0].toDouble(), f[1].toDouble(), f[2].toDouble()));
            surface.colors.push_back({f[3].toInt() / 255.0, f[4].toInt() / 255.0, f[5].toInt() / 255.0});
        } else {
            EXPECT_EQ(f[0], "3");
            surface.triangles.push_back({f[1].toInt(), f[2].toInt(), f[3].toInt()});
        }
    }
    return surface;
}

Surface readObj(const QByteArray& bytes)
{
    Surface surface;
    const auto lines = bytes.trimmed().split('\n');
    for (const QByteArray& line : lines) {
        const auto f = line.split(' ');
        if (f[0] == "#")
            surface.note += QString::fromUtf8(line.mid(2)) + QLatin1Char('\n');
        if (f[0] == "v") {
            surface.points.push_back(zUp(f[1].toDouble(), f[2].toDouble(), f[3].toDouble()));
            surface.colors.push_back({f[4].toDouble(), f[5].toDouble(), f[6].toDouble()});
        }
        if (f[0] == "f")
            surface.triangles.push_back({f[1].toInt() - 1, f[2].toInt() - 1, f[3].toInt() - 1});
    }
    return surface;
}

/// Merges vertices at the same position. Leaves out the colours, which belong to triangles, not vertices.
Surface readStl(const QByteArray& bytes)
{
    Surface surface;
    surface.note = QString::fromUtf8(bytes.left(80));
    EXPECT_FALSE(bytes.startsWith("solid"));
    QDataStream stream(bytes.mid(80));
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    quint32 count = 0;
    stream >> count;
    EXPECT_EQ(bytes.size(), 84 + 50 * qsizetype(count));
    std::map<std::array<float, 3>, int> places;
    for (quint32 i = 0; i < count; ++i) {
        float n[3];
        stream >> n[0] >> n[1] >> n[2];
        EXPECT_NEAR(std::hypot(n[0], n[1], n[2]), 1.0, 1e-4);
        std::array<int, 3> triangle{};
        for (int& corner : triangle) {
            std::array<float, 3> p{};
            stream >> p[0] >> p[1] >> p[2];
            const auto [place, isNew] = places.try_emplace(p, static_cast<int>(places.size()));
            if (isNew)
                surface.points.push_back(zUp(double(p[0]), double(p[1]), double(p[2])));
            corner = place->second;
        }
        quint16 colour = 0;
        stream >> colour;
        EXPECT_TRUE(colour & 0x8000); // valid
        surface.triangles.push_back(triangle);
    }
    EXPECT_EQ(stream.status(), QDataStream::Ok);
    return surface;
}

double srgbOfLinear(double v)
{
    return v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
}

Surface readGltf(const QByteArray& bytes)
{
    Surface surface;
    const QJsonObject file = QJsonDocument::fromJson(bytes).object();
    const auto at = [](const QJsonObject& object, const char* key) { return object[QLatin1String(key)]; };
    EXPECT_EQ(at(at(file, "asset").toObject(), "version").toString(), QStringLiteral("2.0"));
    surface.note =
        QString::fromUtf8(QJsonDocument(at(at(file, "asset").toObject(), "extras").toObject()).toJson());
    const QJsonObject bufferObject = at(file, "buffers")[0].toObject();
    const QByteArray mark("data:application/octet-stream;base64,");
    const QByteArray uri = at(bufferObject, "uri").toString().toLatin1();
    EXPECT_TRUE(uri.startsWith(mark));
    const QByteArray buffer = QByteArray::fromBase64(uri.mid(mark.size()));
    EXPECT_EQ(buffer.size(), at(bufferObject, "byteLength").toInt());

    const auto dataOf = [&](int accessor, int type, const char* kind, int components) {
        const QJsonObject a = at(file, "accessors")[accessor].toObject();
        EXPECT_EQ(at(a, "componentType").toInt(), type);
        EXPECT_EQ(at(a, "type").toString(), QLatin1String(kind));
        const QJsonObject view = at(file, "bufferViews")[at(a, "bufferView").toInt()].toObject();
        const int offset = at(view, "byteOffset").toInt(), length = at(view, "byteLength").toInt();
        EXPECT_EQ(length, at(a, "count").toInt() * components * 4);
        EXPECT_LE(offset + length, buffer.size());
        EXPECT_EQ(offset % 4, 0);
        return buffer.mid(offset, length);
    };
    const QJsonObject primitive = at(at(file, "meshes")[0].toObject(), "primitives")[0].toObject();
    EXPECT_EQ(at(primitive, "mode").toInt(), 4);
    const QJsonObject attributes = at(primitive, "attributes").toObject();
    const int position = at(attributes, "POSITION").toInt();
    QDataStream positions(dataOf(position, 5126, "VEC3", 3));
    QDataStream colours(dataOf(at(attributes, "COLOR_0").toInt(), 5126, "VEC3", 3));
    QDataStream indices(dataOf(at(primitive, "indices").toInt(), 5125, "SCALAR", 1));
    for (QDataStream* stream : {&positions, &colours, &indices}) {
        stream->setByteOrder(QDataStream::LittleEndian);
        stream->setFloatingPointPrecision(QDataStream::SinglePrecision);
    }
    double low[3] = {1e9, 1e9, 1e9}, high[3] = {-1e9, -1e9, -1e9};
    while (!positions.atEnd()) {
        float p[3], c[3];
        for (int i = 0; i < 3; ++i) {
            positions >> p[i];
            colours >> c[i];
            low[i] = std::min(low[i], double(p[i]));
            high[i] = std::max(high[i], double(p[i]));
        }
        surface.points.push_back(yUp(double(p[0]), double(p[1]), double(p[2])));
        surface.colors.push_back(
            {srgbOfLinear(double(c[0])), srgbOfLinear(double(c[1])), srgbOfLinear(double(c[2]))});
    }
    const QJsonObject accessor = at(file, "accessors")[position].toObject();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(at(accessor, "min")[i].toDouble(), low[i]);
        EXPECT_EQ(at(accessor, "max")[i].toDouble(), high[i]);
    }
    while (!indices.atEnd()) {
        quint32 i = 0, j = 0, k = 0;
        indices >> i >> j >> k;
        surface.triangles.push_back({int(i), int(j), int(k)});
    }
    return surface;
}

Surface readX3d(const QByteArray& bytes)
{
    Surface surface;
    QXmlStreamReader xml(bytes);
    QStringList points, colors, indices;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const auto value = [&xml](const char* name) {
            return xml.attributes().value(QLatin1String(name)).toString();
        };
        if (xml.name() == QLatin1String("meta"))
            surface.note += value("name") + QStringLiteral(": ") + value("content") + QLatin1Char('\n');
        if (xml.name() == QLatin1String("IndexedFaceSet"))
            indices = value("coordIndex").split(QLatin1Char(' '));
        if (xml.name() == QLatin1String("Coordinate"))
            points = value("point").split(QLatin1Char(' '));
        if (xml.name() == QLatin1String("Color"))
            colors = value("color").split(QLatin1Char(' '));
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    for (qsizetype i = 0; i + 2 < points.size(); i += 3) {
        surface.points.push_back(
            yUp(points[i].toDouble(), points[i + 1].toDouble(), points[i + 2].toDouble()));
        surface.colors.push_back({colors[i].toDouble(), colors[i + 1].toDouble(), colors[i + 2].toDouble()});
    }
    for (qsizetype i = 0; i + 3 < indices.size(); i += 4) {
        surface.triangles.push_back({indices[i].toInt(), indices[i + 1].toInt(), indices[i + 2].toInt()});
        EXPECT_EQ(indices[i + 3], QStringLiteral("-1"));
    }
    return surface;
}

Surface readJson(const QByteArray& bytes)
{
    Surface surface;
    const QJsonArray all = QJsonDocument::fromJson(bytes).array();
    EXPECT_EQ(all.size(), 1);
    QJsonObject object = all[0].toObject();
    for (const QJsonValue& p : object.take(QLatin1String("vertices")).toArray())
        surface.points.push_back({p[0].toDouble(), p[1].toDouble(), p[2].toDouble()});
    for (const QJsonValue& c : object.take(QLatin1String("colors")).toArray()) {
        const QColor color(c.toString());
        surface.colors.push_back({double(color.redF()), double(color.greenF()), double(color.blueF())});
    }
    for (const QJsonValue& t : object.take(QLatin1String("triangles")).toArray())
        surface.triangles.push_back({t[0].toInt(), t[1].toInt(), t[2].toInt()});
    surface.note = QString::fromUtf8(QJsonDocument(object).toJson());
    return surface;
}

// --- Properties of the surface ------------------------------------------------------------------------

double volumeOf(const Surface& surface)
{
    double sum = 0.0;
    for (const auto& t : surface.triangles) {
        const auto v = [&](int i) {
            const Lab& p = surface.points[static_cast<size_t>(t[static_cast<size_t>(i)])];
            return Vec3d{p.L, p.a, p.b};
        };
        sum += dot(v(0), cross(v(1), v(2)));
    }
    return sum / 6.0;
}

testing::AssertionResult isClosedAndManifold(const Surface& surface)
{
    std::set<std::pair<int, int>> edges;
    for (const auto& t : surface.triangles)
        for (size_t i = 0; i < 3; ++i)
            if (!edges.insert({t[i], t[(i + 1) % 3]}).second)
                return testing::AssertionFailure() << "an edge runs twice the same way";
    for (const auto& [from, to] : edges)
        if (!edges.count({to, from}))
            return testing::AssertionFailure() << "an edge has one face only";
    return testing::AssertionSuccess();
}

testing::AssertionResult sharesItsPoints(const Surface& surface)
{
    std::set<std::array<double, 3>> places;
    std::set<int> used;
    for (const Lab& p : surface.points)
        places.insert({p.L, p.a, p.b});
    for (const auto& t : surface.triangles)
        used.insert(t.begin(), t.end());
    if (places.size() != surface.points.size())
        return testing::AssertionFailure()
               << surface.points.size() - places.size() << " points are there twice";
    if (used.size() != surface.points.size() || *used.begin() != 0 || *used.rbegin() + 1 != int(used.size()))
        return testing::AssertionFailure() << "some points are not used, or not there";
    return testing::AssertionSuccess();
}

struct Format
{
    const char* suffix;
    Surface (*read)(const QByteArray&);
};
void PrintTo(const Format& format, std::ostream* out)
{
    *out << format.suffix;
}

class ExportTest : public ProgramTest
{
protected:
    QString output(const char* suffix) const
    {
        return path(QStringLiteral("a gamut é 印.") + QLatin1String(suffix));
    }
    static Answer exported(const QStringList& arguments)
    {
        return kvgamut(QStringList{QStringLiteral("export")} + arguments, withoutDisplay());
    }
    static QJsonObject volumeAnswer(const QStringList& arguments)
    {
        const Answer answer = kvgamut(
            QStringList{QStringLiteral("volume"), QStringLiteral("--format"), QStringLiteral("json")} +
                arguments,
            withoutDisplay());
        return QJsonDocument::fromJson(answer.output).array()[0].toObject();
    }
    const QString sRGB = QStringLiteral("sRGB");
    const QString cmyk = QStringLiteral(KVGAMUT_CMYK_PROFILE);
};

class ExportFormatTest : public ExportTest, public testing::WithParamInterface<Format>
{
protected:
    Surface surfaceOf(const QStringList& arguments)
    {
        const QString file = output(GetParam().suffix);
        EXPECT_TRUE(succeeded(exported(arguments + QStringList{QStringLiteral("-o"), file})));
        return GetParam().read(contents(file));
    }
};

TEST_P(ExportFormatTest, containsTheClosedSurfaceWithSharedVertices)
{
    for (const QStringList& profile :
         {QStringList{sRGB}, QStringList{cmyk},
          QStringList{cmyk, QStringLiteral("--intent"), QStringLiteral("relative")}}) {
        const Surface surface = surfaceOf(profile);
        const QJsonObject answer = volumeAnswer(profile);
        EXPECT_EQ(int(surface.triangles.size()), answer[QLatin1String("faces")].toInt());
        EXPECT_TRUE(sharesItsPoints(surface));
        EXPECT_TRUE(isClosedAndManifold(surface));
        EXPECT_NEAR(volumeOf(surface), answer[QLatin1String("volume")].toDouble(),
                    answer[QLatin1String("uncertainty")].toDouble());
        // Euler characteristic of a sphere: V - E + F = 2, with E = 3 F / 2
        EXPECT_EQ(2 * int(surface.points.size()) - int(surface.triangles.size()), 4);
    }
}

TEST_P(ExportFormatTest, hasTheVolumeOfAnAffineDevice)
{
    const QString profile = path(QStringLiteral("affine.icc"));
    write(profile, AffineDevice::profile());
    EXPECT_NEAR(volumeOf(surfaceOf({profile})) / AffineDevice::volume, 1.0, 5e-4);
}

TEST_P(ExportFormatTest, hasTheColourOfEachVertex)
{
    const Surface surface = surfaceOf({sRGB});
    if (QLatin1String(GetParam().suffix) == QLatin1String("stl")) {
        EXPECT_TRUE(surface.colors.empty());
        return;
    }
    ASSERT_EQ(surface.colors.size(), surface.points.size());
    for (size_t i = 0; i < surface.points.size(); ++i) {
        // on the surface of sRGB the colour, converted to Lab, is the position of the point
        const auto& [r, g, b] = surface.colors[i];
        const Lab back = labOf({r, g, b});
        const Lab& p = surface.points[i];
        // rounding to 8 bits changes dark colours by up to 2 dE
        EXPECT_LT(std::hypot(back.L - p.L, back.a - p.a, back.b - p.b), 3.0) << i;
    }
}

TEST_P(ExportFormatTest, statesProfileAndIntent)
{
    const Surface surface = surfaceOf({cmyk, QStringLiteral("--intent"), QStringLiteral("relative")});
    if (QLatin1String(GetParam().suffix) == QLatin1String("stl")) {
        EXPECT_TRUE(surface.note.startsWith(QLatin1String("x, y, z: a*, b*, L*; gamut of: ")));
        return;
    }
    for (const char* part : {"default_cmyk.icc", "relative", "white", "100", "volume", "D50"})
        EXPECT_TRUE(surface.note.contains(QLatin1String(part)))
            << part << " in " << surface.note.toStdString();
}

TEST_P(ExportFormatTest, isTheSameFileEachTimeAndOnStandardOutput)
{
    const QString file = output(GetParam().suffix);
    ASSERT_TRUE(succeeded(exported({sRGB, QStringLiteral("-o"), file})));
    const Answer answer = exported({sRGB, QStringLiteral("-o"), QStringLiteral("-"),
                                    QStringLiteral("--format"), QLatin1String(GetParam().suffix)});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_EQ(answer.output, contents(file));
}

INSTANTIATE_TEST_SUITE_P(As, ExportFormatTest,
                         testing::Values(Format{"ply", readPly}, Format{"obj", readObj},
                                         Format{"stl", readStl}, Format{"gltf", readGltf},
                                         Format{"x3d", readX3d}, Format{"json", readJson}),
                         [](const auto& format) { return std::string(format.param.suffix); });

TEST_F(ExportTest, jsonStatesTheVolumeOfItsSurface)
{
    const Answer answer = exported({sRGB, QStringLiteral("-o"), QStringLiteral("-"),
                                    QStringLiteral("--format"), QStringLiteral("json")});
    const QJsonObject gamut = QJsonDocument::fromJson(answer.output).array()[0].toObject();
    const Surface surface = readJson(answer.output);
    EXPECT_NEAR(gamut[QLatin1String("surface_volume")].toDouble() / volumeOf(surface), 1.0, 1e-6);
    EXPECT_GT(gamut[QLatin1String("volume")].toDouble(), gamut[QLatin1String("surface_volume")].toDouble());
}

TEST_F(ExportTest, aSavedGamutIsLoadedAgain)
{
    const QString file = output("kvgamut");
    ASSERT_TRUE(succeeded(exported(
        {cmyk, QStringLiteral("-o"), file, QStringLiteral("--intent"), QStringLiteral("relative")})));
    const QJsonObject before = volumeAnswer({cmyk, QStringLiteral("--intent"), QStringLiteral("relative")});
    const QJsonObject after = volumeAnswer({file});
    for (const char* key : {"volume", "faces", "intent", "method", "white"})
        EXPECT_EQ(after[QLatin1String(key)], before[QLatin1String(key)]) << key;
    // exporting the saved gamut gives the same surface with the same profile name
    const Answer fromProfile =
        exported({cmyk, QStringLiteral("-o"), QStringLiteral("-"), QStringLiteral("--format"),
                  QStringLiteral("ply"), QStringLiteral("--intent"), QStringLiteral("relative")});
    const Answer fromSaved = exported(
        {file, QStringLiteral("-o"), QStringLiteral("-"), QStringLiteral("--format"), QStringLiteral("ply")});
    EXPECT_EQ(fromSaved.output, fromProfile.output);
}

TEST_F(ExportTest, aSuffixInCapitalsIsTheSame)
{
    ASSERT_TRUE(succeeded(exported({sRGB, QStringLiteral("-o"), output("PLY")})));
    EXPECT_TRUE(contents(output("PLY")).startsWith("ply\n"));
}

TEST_F(ExportTest, settingsHaveAnEffect)
{
    const QStringList plain{cmyk,
                            QStringLiteral("-o"),
                            QStringLiteral("-"),
                            QStringLiteral("--format"),
                            QStringLiteral("obj"),
                            QStringLiteral("--intent"),
                            QStringLiteral("relative")};
    const QByteArray usual = exported(plain).output;
    EXPECT_NE(exported(plain + QStringList{QStringLiteral("--bpc")}).output, usual);
    EXPECT_NE(exported(plain + QStringList{QStringLiteral("--grid"), QStringLiteral("9")}).output, usual);
}

TEST_F(ExportTest, anUnknownSuffixNamesTheKnownOnes)
{
    for (const char* name : {"gamut.foo", "gamut", "-"}) {
        const QString file =
            QLatin1String(name) == QLatin1String("-") ? QStringLiteral("-") : path(QLatin1String(name));
        const Answer answer = exported({sRGB, QStringLiteral("-o"), file});
        EXPECT_EQ(answer.exitCode, WrongUsage);
        EXPECT_EQ(answer.errors.count('\n'), 1);
        EXPECT_TRUE(answer.errors.contains(".ply, .obj, .stl, .gltf, .x3d, .json, .icc, .kvgamut, .html"))
            << answer.errors.toStdString();
        EXPECT_TRUE(answer.output.isEmpty());
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ExportTest, aPageShowsSeveralGamuts)
{
    const QString file = output("html");
    ASSERT_TRUE(succeeded(exported({sRGB, cmyk, QStringLiteral("-o"), file})));
    const QByteArray page = contents(file);
    EXPECT_TRUE(page.startsWith("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.contains("<title>sRGB, default_cmyk.icc - gamut</title>"));
    EXPECT_LT(page.size(), 3'000'000);
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ExportTest, aPageIsTheSameEachTimeAndOnStandardOutput)
{
    ASSERT_TRUE(succeeded(exported({cmyk, QStringLiteral("-o"), output("html")})));
    const Answer answer = exported({cmyk, QStringLiteral("-o"), QStringLiteral("-"),
                                    QStringLiteral("--format"), QStringLiteral("html")});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_EQ(answer.output, contents(output("html")));
}

TEST_F(ExportTest, aPageDoesNotNameFolders)
{
    const QString profile = path(QStringLiteral("printer.icc"));
    ASSERT_TRUE(QFile::copy(cmyk, profile));
    ASSERT_TRUE(succeeded(exported({profile, QStringLiteral("-o"), output("html")})));
    EXPECT_FALSE(contents(output("html")).contains(path(QString()).toUtf8()));
    EXPECT_TRUE(contents(output("html")).contains("Artifex CMYK SWOP Profile")) << "its description";
}

TEST_F(ExportTest, aPageShowsTheGamutsThatCanBeUsed)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    const Answer answer = exported({missing, sRGB, QStringLiteral("-o"), output("html")});
    EXPECT_TRUE(failedWith(answer, BadInput, QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
    EXPECT_TRUE(contents(output("html")).contains("<title>sRGB - gamut</title>"));
}

TEST_F(ExportTest, aPageOfNothingIsNotWritten)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(exported({missing, QStringLiteral("-o"), output("html")}), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ExportTest, refusesInvalidArguments)
{
    const QString out = output("ply");
    for (const QStringList& arguments :
         {QStringList{sRGB}, QStringList{QStringLiteral("-o"), out},
          QStringList{sRGB, cmyk, QStringLiteral("-o"), out},
          QStringList{sRGB, QStringLiteral("-o"), out, QStringLiteral("--format"), QStringLiteral("dxf")}}) {
        const Answer answer = exported(arguments);
        EXPECT_EQ(answer.exitCode, WrongUsage);
        EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ExportTest, reportsWhatItCannotReadOrWrite)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(exported({missing, QStringLiteral("-o"), output("ply")}), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
    EXPECT_TRUE(files().isEmpty());
    const QString nowhere = path(QStringLiteral("no folder/a.ply"));
    EXPECT_TRUE(failedWith(
        exported({sRGB, QStringLiteral("-o"), nowhere}), BadOutput,
        QStringLiteral("kvgamut: '%1': cannot be written: No such file or directory").arg(nowhere)));
    const Answer closed =
        shell(QStringLiteral("set -o pipefail; \"$KVGAMUT\" export sRGB -o - --format ply | true"));
    EXPECT_EQ(closed.exitCode, BadOutput);
    EXPECT_EQ(closed.errors, ""); // the reader has enough
}

} // namespace
