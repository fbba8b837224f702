// SPDX-License-Identifier: Apache-2.0
#include "app/support/Numbers.h"

#include <gmock/gmock.h>

#include <QtGui/QColorSpace>
#include <QtGui/QImage>

using namespace kvtest;

namespace {

class CheckTest : public NumbersTest
{
protected:
    /// A photo of which a quarter is pure sRGB green, the rest grey.
    QString photo()
    {
        QImage picture(40, 20, QImage::Format_RGB888);
        picture.fill(QColor(128, 128, 128));
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 10; ++x)
                picture.setPixelColor(x, y, QColor(0, 255, 0));
        picture.setColorSpace(QColorSpace(QColorSpace::SRgb));
        const QString file = path(QStringLiteral("photo.png"));
        EXPECT_TRUE(picture.save(file));
        return file;
    }

    QString brandColors()
    {
        const QString file = path(QStringLiteral("brand.csv"));
        write(file, "name,L,a,b\ngrey,50,0,0\nreflex blue,20.4,25.1,-68.6\n");
        return file;
    }

    QStringList check(const QStringList& more) const
    {
        return QStringList{QStringLiteral("check"), cmyk} + more;
    }

    const QStringList keys{QStringLiteral("de00"),
                           QStringLiteral("de00_max"),
                           QStringLiteral("de00_mean"),
                           QStringLiteral("de00_p95"),
                           QStringLiteral("de00_same_hue"),
                           QStringLiteral("de76"),
                           QStringLiteral("de76_max"),
                           QStringLiteral("de76_mean"),
                           QStringLiteral("de76_p95"),
                           QStringLiteral("device"),
                           QStringLiteral("device_inverted"),
                           QStringLiteral("edge_share"),
                           QStringLiteral("inside_share"),
                           QStringLiteral("intent"),
                           QStringLiteral("inverted_de00"),
                           QStringLiteral("kind"),
                           QStringLiteral("lab"),
                           QStringLiteral("made"),
                           QStringLiteral("made_de00"),
                           QStringLiteral("made_de00_max"),
                           QStringLiteral("made_de00_mean"),
                           QStringLiteral("made_de00_p95"),
                           QStringLiteral("name"),
                           QStringLiteral("nearest"),
                           QStringLiteral("nearest_same_hue"),
                           QStringLiteral("outside_share"),
                           QStringLiteral("pass"),
                           QStringLiteral("pixels"),
                           QStringLiteral("profile"),
                           QStringLiteral("profile_kind"),
                           QStringLiteral("program"),
                           QStringLiteral("sha256"),
                           QStringLiteral("zone")};
};

} // namespace

TEST_F(CheckTest, answersWhetherAPhotoFits)
{
    const auto rows = json(check({QStringLiteral("--photo"), photo()}));
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(keysOf(rows[0]), keys);
    EXPECT_EQ(word(rows[0], "kind"), QStringLiteral("photo"));
    EXPECT_EQ(word(rows[0], "intent"), QStringLiteral("relative"));
    EXPECT_EQ(number(rows[0], "pixels"), 800.0);
    EXPECT_NEAR(number(rows[0], "inside_share"), 0.75, 1e-6);
    EXPECT_NEAR(number(rows[0], "outside_share"), 0.25, 1e-6);
    EXPECT_FALSE(flag(rows[0], "pass"));
    EXPECT_GT(number(rows[0], "de76_p95"), 20.0); // green of a screen in ink
    EXPECT_NEAR(number(rows[0], "de00_mean"), 0.25 * number(rows[0], "de00_max"), 0.02);
    EXPECT_GE(number(rows[0], "made_de00_max"), number(rows[0], "de00_max") - 0.05);
}

TEST_F(CheckTest, answersWhichColoursCanBePrinted)
{
    const auto rows = json(check({QStringLiteral("--colors"), brandColors()}));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(keysOf(rows[0]), keys);
    EXPECT_EQ(word(rows[0], "name"), QStringLiteral("grey"));
    EXPECT_EQ(word(rows[0], "zone"), QStringLiteral("in"));
    EXPECT_EQ(word(rows[0], "intent"), QStringLiteral("absolute"));
    EXPECT_TRUE(flag(rows[0], "pass"));
    EXPECT_EQ(rows[0].value(QLatin1String("device")).toArray().size(), 4);
    EXPECT_LT(number(rows[0], "made_de00"), 3.0);
    EXPECT_EQ(word(rows[1], "zone"), QStringLiteral("out"));
    EXPECT_FALSE(flag(rows[1], "pass"));
    EXPECT_LT(number(rows[1], "de00"), number(rows[1], "de76"));
    for (const QJsonValue value : rows[1].value(QLatin1String("device")).toArray())
        EXPECT_TRUE(value.toDouble() >= 0 && value.toDouble() <= 100);
}

TEST_F(CheckTest, usesTheChosenIntentForBoth)
{
    const auto rows = json(check({QStringLiteral("--colors"), brandColors(), QStringLiteral("--photo"),
                                  photo(), QStringLiteral("--intent"), QStringLiteral("perceptual")}));
    ASSERT_EQ(rows.size(), 3);
    for (const QJsonObject& row : rows)
        EXPECT_EQ(word(row, "intent"), QStringLiteral("perceptual"));
}

TEST_F(CheckTest, endsWithAnAnswerInText)
{
    const Answer answer =
        run(check({QStringLiteral("--photo"), photo(), QStringLiteral("--colors"), brandColors()}));
    EXPECT_EQ(answer.exitCode, 0);
    EXPECT_TRUE(answer.output.endsWith("photos: 0 of 1 fit; colours: 1 of 2 pass\n"))
        << answer.output.constData();
    EXPECT_TRUE(answer.output.startsWith("name")) << answer.output.constData();
}

TEST_F(CheckTest, exitsWithFiveIfMoreIsOutsideThanAllowed)
{
    const auto codeOf = [this](const QStringList& more) { return run(check(more)).exitCode; };
    const QStringList ofPhoto{QStringLiteral("--photo"), photo(), QStringLiteral("--fail-if-outside")};
    EXPECT_EQ(codeOf(ofPhoto + words(QStringLiteral("24"))), 5);
    EXPECT_EQ(codeOf(ofPhoto + words(QStringLiteral("26"))), 0);
    const QStringList ofColors{QStringLiteral("--colors"), brandColors()};
    EXPECT_EQ(codeOf(ofColors), 0);
    EXPECT_EQ(codeOf(ofColors + words(QStringLiteral("--tolerance 2"))), 5);
    EXPECT_EQ(codeOf(ofColors + words(QStringLiteral("--tolerance 20"))), 0);
}

TEST_F(CheckTest, usesTheOtherInputsIfOneCannotBeRead)
{
    const Answer answer = run(check(
        {QStringLiteral("--photo"), missing, photo(), QStringLiteral("--format"), QStringLiteral("json")}));
    EXPECT_EQ(answer.exitCode, 1);
    EXPECT_EQ(answer.errors.toStdString(),
              "kvgamut: '/nowhere/missing.icc': cannot be read: No such file or directory\n");
    EXPECT_EQ(rowsOf(answer.output).size(), 1);
    EXPECT_EQ(run({QStringLiteral("check"), missing, QStringLiteral("--photo"), photo()}).exitCode, 1);
}

TEST_F(CheckTest, needsSomethingToCheck)
{
    const Answer answer = run({QStringLiteral("check"), cmyk});
    EXPECT_EQ(answer.exitCode, 2);
    EXPECT_THAT(answer.errors.toStdString(),
                testing::HasSubstr("nothing to check: give --photo FILE or --colors FILE"));
}

TEST_F(CheckTest, doesNotOverwriteAPhoto)
{
    const QString file = photo();
    EXPECT_EQ(run(check({QStringLiteral("--photo"), file, QStringLiteral("-o"), file})).exitCode, 2);
    EXPECT_FALSE(QImage(file).isNull());
}

TEST_F(CheckTest, writesTheMaskAndTheMapOfAPhoto)
{
    const QString mask = path(QStringLiteral("mask.png")), map = path(QStringLiteral("map.tif"));
    const auto rows =
        json(check({QStringLiteral("--photo"), photo(), QStringLiteral("--mask"), mask,
                    QStringLiteral("--map"), map, QStringLiteral("--map-max"), QStringLiteral("30")}));
    ASSERT_EQ(rows.size(), 1);
    const QImage marked(mask);
    ASSERT_EQ(marked.width() * marked.height(), 800);
    int lost = 0;
    for (int y = 0; y < marked.height(); ++y)
        for (int x = 0; x < marked.width(); ++x)
            lost += marked.pixelColor(x, y).saturation() > 100;
    EXPECT_EQ(lost, 200); // a quarter
    EXPECT_TRUE(contents(map).startsWith("II"));
}

TEST_F(CheckTest, refusesMarksThatItCannotWrite)
{
    const auto exitCode = [this](const QStringList& more) {
        return run(check(QStringList{QStringLiteral("--photo"), photo()} + more)).exitCode;
    };
    const QString mask = QStringLiteral("--mask"), png = path(QStringLiteral("m.png"));
    EXPECT_EQ(exitCode({mask, path(QStringLiteral("m.svg"))}), WrongUsage);
    EXPECT_EQ(exitCode({mask, path(QStringLiteral("m"))}), WrongUsage);
    EXPECT_EQ(exitCode({mask, png, QStringLiteral("--photo"), photo()}), WrongUsage); // two photos
    const Answer piped = run(check({QStringLiteral("--photo"), QStringLiteral("-"), mask, png}));
    EXPECT_EQ(piped.exitCode, WrongUsage);
    EXPECT_TRUE(piped.errors.contains("read the photo again")) << piped.errors.toStdString();
    EXPECT_EQ(exitCode({mask, photo()}), WrongUsage); // over its input
    EXPECT_EQ(exitCode({mask, path(QStringLiteral("nowhere/m.png"))}), BadOutput);
    EXPECT_EQ(run(check({QStringLiteral("--colors"), brandColors(), mask, png})).exitCode, WrongUsage);
    EXPECT_FALSE(QFile::exists(png));
}

TEST_F(CheckTest, writesAPageForPeople)
{
    const QString page = path(QStringLiteral("report.html"));
    write(path(QStringLiteral("names.csv")),
          "name,L,a,b\n<script>alert(1)</script>,20.4,25.1,-68.6\ngrey,50,0,0\n");
    const Answer answer = run(check({QStringLiteral("--photo"), photo(), QStringLiteral("--colors"),
                                     path(QStringLiteral("names.csv")), QStringLiteral("--report"), page}));
    EXPECT_EQ(answer.exitCode, Done) << answer.errors.toStdString();
    const QByteArray html = contents(page);
    EXPECT_TRUE(html.startsWith("<!DOCTYPE html>"));
    EXPECT_TRUE(html.contains("<h1>photos: 0 of 1 fit; colours: 1 of 2 pass</h1>"));
    EXPECT_TRUE(html.contains("25.00&nbsp;%"));
    EXPECT_TRUE(html.contains("&lt;script&gt;alert(1)&lt;/script&gt;"));
    EXPECT_FALSE(html.contains("<script"));
    EXPECT_TRUE(html.contains("default-src 'none'"));
    EXPECT_TRUE(html.contains("bgcolor=\"#767676\"") || html.contains("bgcolor=\"#777777\"")); // the grey

    // the picture in the page has a quarter of its pixels marked
    const qsizetype start = html.indexOf("data:image/png;base64,") + 22;
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(
        QByteArray::fromBase64(html.mid(start, html.indexOf('"', start) - start)), "PNG"));
    int marked = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            marked += picture.pixelColor(x, y).saturation() > 100;
    EXPECT_EQ(marked * 4, picture.width() * picture.height());
}

TEST_F(CheckTest, writesTheSamePageAsPdf)
{
    const auto pdf = [this](const char* name) {
        const Answer answer =
            run(check({QStringLiteral("--photo"), photo(), QStringLiteral("--colors"), brandColors(),
                       QStringLiteral("--report"), path(QLatin1String(name))}));
        EXPECT_EQ(answer.exitCode, Done) << answer.errors.toStdString();
        return contents(path(QLatin1String(name)));
    };
    const QByteArray first = pdf("first.pdf");
    EXPECT_TRUE(first.startsWith("%PDF-"));
    EXPECT_TRUE(first.contains("/Image"));
    EXPECT_EQ(first.count("/Type /Page\n"), 1);
    EXPECT_EQ(pdf("second.PDF"), first);
    EXPECT_EQ(run(check({QStringLiteral("--colors"), brandColors(), QStringLiteral("--report"),
                         path(QStringLiteral("report.doc"))}))
                  .exitCode,
              WrongUsage);
}
