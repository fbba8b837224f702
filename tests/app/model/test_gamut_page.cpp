// SPDX-License-Identifier: Apache-2.0
#include "model/export/GamutPage.h"
#include "model/export/PageSurface.h"
#include "model/export/PageText.h"
#include "model/inputs/GamutSource.h"
#include "model/pictures/PictureStyle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>

#include <cmath>

using testing::HasSubstr;
using testing::Not;

namespace {

const QString cmyk = QStringLiteral(KVGAMUT_CMYK_PROFILE);
// all that could end an element, an attribute or a string, or that could turn the text around it
const QString hostile =
    QString::fromUtf8("</script><script>alert(1)</script><!--\"'&{{data}}\xE2\x80\xAE\xE2\x80\xA8\\");

KVGamut::GamutObject gamutOf(const QString& input)
{
    return *GamutSource::open(input)->compute({});
}

GamutPage::Gamut pageGamut(const QString& input, const QString& name = {})
{
    return {name.isEmpty() ? input : name, {}, QColor(10, 20, 30), QColor(40, 50, 60), gamutOf(input)};
}

/// The contents of the elements of @p page that begin with @p tag.
QByteArrayList elements(const QByteArray& page, const QByteArray& tag, const QByteArray& end)
{
    QByteArrayList found;
    for (qsizetype at = page.indexOf(tag); at >= 0; at = page.indexOf(tag, at + 1)) {
        const qsizetype from = at + tag.size();
        found.append(page.mid(from, page.indexOf(end, from) - from));
    }
    return found;
}

QJsonObject dataOf(const QByteArray& page)
{
    const QByteArrayList data = elements(page, "<script type=\"application/json\" id=\"data\">", "</script>");
    EXPECT_EQ(data.size(), 1);
    return QJsonDocument::fromJson(data.value(0)).object();
}

QByteArray hashOf(const QByteArray& content)
{
    return "'sha256-" + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toBase64() + '\'';
}

KVGamut::LabPoint labAt(const PageSurface& surface, qsizetype vertex)
{
    const auto value = [&](std::size_t i) {
        const auto steps =
            qFromLittleEndian<quint16>(surface.positions.constData() + 6 * vertex + 2 * qsizetype(i));
        return static_cast<float>(surface.grid.low[i] + steps * surface.grid.step[i]);
    };
    return {value(0), value(1), value(2)};
}

double distance(const KVGamut::LabPoint& p, const KVGamut::LabPoint& q)
{
    return std::hypot(double(p.L - q.L), double(p.a - q.a), double(p.b - q.b));
}

// --- Texts ----------------------------------------------------------------------------------------

TEST(PageText, inHtmlIsNeverMarkup)
{
    const QByteArray text = PageText::html(hostile);
    for (const char* part : {"<", ">", "\"", "'", "\xE2\x80\xAE", "\xE2\x80\xA8"})
        EXPECT_THAT(text.toStdString(), Not(HasSubstr(part)));
    EXPECT_THAT(text.toStdString(),
                HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;&lt;!--&quot;&#39;&amp;"));
}

TEST(PageText, inHtmlKeepsItsLines)
{
    EXPECT_EQ(PageText::html(QStringLiteral("a\nb")), "a\nb");
}

TEST(PageText, inAScriptIsTheSameValue)
{
    QString all = hostile;
    for (char16_t c = 1; c < 0x3000; ++c)
        all += QChar(c);
    const QByteArray document =
        QJsonDocument(QJsonObject{{QStringLiteral("name"), all}}).toJson(QJsonDocument::Compact);
    const QByteArray text = PageText::jsonInScript(document);
    EXPECT_EQ(QJsonDocument::fromJson(text), QJsonDocument::fromJson(document));
    for (const char* part : {"<", ">", "&", "\xE2\x80\xAE", "\xE2\x80\xA8", "\xE2\x80\xA9"})
        EXPECT_THAT(text.toStdString(), Not(HasSubstr(part)));
}

TEST(PageText, isNotSearchedForNames)
{
    EXPECT_EQ(PageText::filled("<{{a}}|{{b}}|{{c}}|{{", {{"a", "{{b}}"}, {"b", "{{a}}"}}),
              "<{{b}}|{{a}}|{{c}}|{{");
}

TEST(PagePolicy, allowsExactlyTheGivenScriptsAndStyle)
{
    EXPECT_EQ(PageText::policy({"one", "two"}, "style"),
              "default-src 'none'; script-src " + hashOf("one") + ' ' + hashOf("two") + "; style-src " +
                  hashOf("style") + "; img-src data:; base-uri 'none'; form-action 'none'");
}

// --- Surfaces -------------------------------------------------------------------------------------

TEST(PageSurface, isExactToAHundredth)
{
    for (const QString& input : {QStringLiteral("ProPhoto"), cmyk}) {
        const KVGamut::GamutObject gamut = gamutOf(input);
        const PageSurface surface = PageSurface::of(gamut);
        ASSERT_EQ(surface.triangles.size(), gamut.faceCount() * 3 * surface.indexBytes);
        EXPECT_LT(surface.grid.error(), 0.01);
        const auto& triangles = gamut.mesh().triangles;
        double largest = 0.0;
        for (std::size_t i = 0; i < triangles.size(); ++i)
            for (std::size_t k = 0; k < 3; ++k) {
                const auto vertex =
                    qFromLittleEndian<quint16>(surface.triangles.constData() + 2 * qsizetype(3 * i + k));
                largest = std::max(largest, distance(labAt(surface, vertex),
                                                     gamut.mesh().lab[std::size_t(triangles[i][k])]));
            }
        EXPECT_LT(largest, surface.grid.error() + 1e-4);
    }
}

TEST(PageSurface, statesTheErrorOfItsSteps)
{
    PageSurface::Grid grid;
    grid.step = {0.002, 0.004, 0.004};
    EXPECT_DOUBLE_EQ(grid.error(), 0.003);
    grid.step = {750.0 / 65535.0, 750.0 / 65535.0, 750.0 / 65535.0};
    EXPECT_LT(grid.error(), 0.01);
}

TEST(PageSurface, hasTheColoursOfTheScreen)
{
    const PageSurface surface = PageSurface::of(gamutOf(QStringLiteral("ProPhoto")));
    for (qsizetype vertex = 0; vertex < surface.colors.size() / 3; ++vertex) {
        const KVGamut::LabPoint lab = labAt(surface, vertex);
        const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.L, lab.a, lab.b});
        for (qsizetype i = 0; i < 3; ++i) // half a step of rounding, and the rounding of the position
            ASSERT_NEAR(uchar(surface.colors[3 * vertex + i]), double(rgb[i]), 1.0) << vertex;
    }
}

TEST(PageSurface, hasLongIndicesForManyVertices)
{
    KVGamut::Settings settings;
    settings.gridPoints = 129;
    const PageSurface surface =
        PageSurface::of(*GamutSource::open(QStringLiteral("sRGB"))->compute(settings));
    const qsizetype vertices = surface.positions.size() / 6;
    ASSERT_GT(vertices, 65536);
    ASSERT_EQ(surface.indexBytes, 4);
    quint32 last = 0;
    for (qsizetype i = 0; i < surface.triangles.size(); i += 4)
        last = std::max(last, qFromLittleEndian<quint32>(surface.triangles.constData() + i));
    EXPECT_EQ(last + 1, vertices);
}

TEST(PageSurface, isFlatIfTheGamutIsEmpty)
{
    const PageSurface surface = PageSurface::of({});
    EXPECT_TRUE(surface.positions.isEmpty());
    EXPECT_EQ(surface.grid.error(), 0.0);
}

// --- The page -------------------------------------------------------------------------------------

class GamutPageTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_gamuts = {pageGamut(cmyk, hostile), pageGamut(QStringLiteral("sRGB"))};
        s_page = GamutPage::of(s_gamuts);
    }
    static void TearDownTestSuite()
    {
        s_gamuts.clear();
        s_page.clear();
    }

    inline static QList<GamutPage::Gamut> s_gamuts;
    inline static QByteArray s_page;
};

TEST_F(GamutPageTest, isSmallerThanThreeMegabytesForTwoGamuts)
{
    EXPECT_LT(s_page.size(), 3'000'000);
}

TEST_F(GamutPageTest, isTheSameEachTime)
{
    EXPECT_EQ(GamutPage::of(s_gamuts), s_page);
}

TEST_F(GamutPageTest, allowsItsOwnScriptsAndStyleOnly)
{
    const QByteArrayList scripts = elements(s_page, "<script>", "</script>");
    const QByteArrayList styles = elements(s_page, "<style>", "</style>");
    ASSERT_EQ(scripts.size(), 2);
    ASSERT_EQ(styles.size(), 1);
    EXPECT_TRUE(scripts[0].contains("THREE"));
    const QByteArray policy =
        elements(s_page, "http-equiv=\"Content-Security-Policy\" content=\"", "\"").value(0);
    EXPECT_EQ(policy, PageText::policy(scripts, styles[0]));
    EXPECT_EQ(s_page.count("<script"), 3) << "the third is the data";
}

TEST_F(GamutPageTest, hasNoScriptOrStyleInAttributes)
{
    QByteArray markup = s_page;
    for (const QByteArray& tag : {QByteArray("<script>"), QByteArray("<style>")})
        for (const QByteArray& content : elements(s_page, tag, QByteArray("</") + tag.mid(1)))
            markup.replace(content, "");
    static const QRegularExpression inlined(QStringLiteral("<[^>]*\\s(on[a-z]+|style|src)="));
    EXPECT_FALSE(inlined.match(QString::fromUtf8(markup)).hasMatch());
    EXPECT_FALSE(markup.contains("http:") || markup.contains("https:"));
}

TEST_F(GamutPageTest, showsHostileNamesAsText)
{
    const QJsonArray gamuts = dataOf(s_page)[QLatin1String("gamuts")].toArray();
    ASSERT_EQ(gamuts.size(), 2);
    EXPECT_EQ(gamuts[0][QLatin1String("name")].toString(),
              QStringLiteral("</script><script>alert(1)</script><!--\"'&{{data}}\\u202e \\"));
    EXPECT_FALSE(s_page.contains("alert(1)</script>"));
    EXPECT_EQ(elements(s_page, "<title>", "</title>").value(0),
              "&lt;/script&gt;&lt;script&gt;alert(1)&lt;/script&gt;&lt;!--&quot;&#39;&amp;{{data}}\\u202e "
              "\\, sRGB - gamut");
}

TEST_F(GamutPageTest, statesTheNumbersOfTheGamuts)
{
    const QJsonObject data = dataOf(s_page);
    for (qsizetype i = 0; i < 2; ++i) {
        const QJsonObject gamut = data[QLatin1String("gamuts")][i].toObject();
        const KVGamut::Report report = s_gamuts[i].gamut.report();
        const auto written = [](double volume) { // as by all commands
            return std::round(volume * 10.0) / 10.0;
        };
        EXPECT_EQ(gamut[QLatin1String("volume")].toDouble(), written(report.volume));
        EXPECT_EQ(gamut[QLatin1String("uncertainty")].toDouble(), written(report.volumeUncertainty));
        EXPECT_EQ(gamut[QLatin1String("intent")].toString(), QStringLiteral("absolute"));
        EXPECT_EQ(gamut[QLatin1String("white")][0].toDouble(), double(report.white.L));
    }
    const auto [found, uncertainty, problem] = s_gamuts[0].gamut.compareWithUncertainty(s_gamuts[1].gamut);
    const QJsonValue coverage = data[QLatin1String("coverage")];
    EXPECT_EQ(coverage[0][1][QLatin1String("share")].toDouble(), double(found.firstCovered));
    EXPECT_EQ(coverage[0][1][QLatin1String("uncertainty")].toDouble(), uncertainty.firstCovered);
    EXPECT_EQ(coverage[1][0][QLatin1String("share")].toDouble(), double(found.secondCovered));
    EXPECT_EQ(coverage[1][0][QLatin1String("uncertainty")].toDouble(), uncertainty.secondCovered);
    EXPECT_TRUE(coverage[1][1].isNull());
}

TEST_F(GamutPageTest, containsTheLicenceOfWhatDrawsIt)
{
    EXPECT_TRUE(s_page.contains("The MIT License"));
    EXPECT_TRUE(s_page.contains("three.js authors"));
    EXPECT_TRUE(s_page.contains("Apache License 2.0"));
}

TEST(GamutPage, reportsEachComparison)
{
    const QList<GamutPage::Gamut> gamuts(3, pageGamut(QStringLiteral("sRGB")));
    QList<float> shares;
    const QByteArray page = GamutPage::of(gamuts, [&shares](float share) { shares.append(share); });
    EXPECT_FALSE(page.isEmpty());
    EXPECT_EQ(shares, (QList<float>{1.0f / 3.0f, 2.0f / 3.0f, 1.0f}));
}

TEST(GamutPage, showsGamutsInsideOthers)
{
    QList<GamutPage::Gamut> gamuts{pageGamut(QStringLiteral("ProPhoto")), pageGamut(cmyk),
                                   pageGamut(QStringLiteral("sRGB"))};
    GamutPage::chooseOpacities(gamuts);
    EXPECT_EQ(gamuts[0].opacity, GamutPage::faint);
    EXPECT_EQ(gamuts[1].opacity, 1.0f);
    EXPECT_EQ(gamuts[2].opacity, GamutPage::translucent);
}

TEST(GamutPage, choosesKeyColoursForEachGround)
{
    QList<GamutPage::Gamut> gamuts(3);
    gamuts[1].key = Qt::magenta; // by the user
    GamutPage::chooseKeys(gamuts);
    const PictureStyle onLight = PictureStyle::named(QStringLiteral("paper"));
    const PictureStyle onDark = PictureStyle::named(QStringLiteral("dark"));
    for (const qsizetype i : {0, 2}) {
        EXPECT_EQ(gamuts[i].key, onLight.key(i));
        EXPECT_EQ(gamuts[i].darkKey, onDark.key(i));
    }
    EXPECT_EQ(gamuts[1].key, QColor(Qt::magenta));
    EXPECT_EQ(gamuts[1].darkKey, QColor(Qt::magenta));
}

} // namespace
