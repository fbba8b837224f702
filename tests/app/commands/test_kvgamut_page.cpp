// SPDX-License-Identifier: Apache-2.0
// The page of `kvgamut export`, in a browser: loading, keys and words.

#include "app/support/PageTest.h"

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtGui/QColor>

#include <algorithm>
#include <cmath>
#include <set>

using namespace kvtest;
using testing::IsEmpty;

namespace {

const QString sRGB = QStringLiteral("sRGB");
const QString rec2020 = QStringLiteral("Rec2020");
const QString hostile =
    QString::fromUtf8("<img src=x onerror=alert(1)><script>alert(2)<!--\"'&\xE2\x80\xAEtxt\xE2\x80\xA8.icc");
const QString hostileShown =
    QStringLiteral("<img src=x onerror=alert(1)><script>alert(2)<!--\"'&\\u202etxt .icc");

/// The relative luminance of WCAG 2.
double luminance(const QColor& color)
{
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(double(color.redF())) + 0.7152 * linear(double(color.greenF())) +
           0.0722 * linear(double(color.blueF()));
}

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one), b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// From "rgb(1, 2, 3)".
QColor cssColor(const QString& text)
{
    const QStringList parts = text.mid(text.indexOf(QLatin1Char('(')) + 1).chopped(1).split(QLatin1Char(','));
    return QColor(parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt());
}

// --- Loading --------------------------------------------------------------------------------------

TEST_F(PageTest, loadsWithoutMessages)
{
    open({sRGB, rec2020});
    EXPECT_THAT(browser().messages(), IsEmpty());
}

TEST_F(PageTest, asksForNothingButItself)
{
    open({sRGB, rec2020});
    for (const char* name : {"Top", "Front", "Oblique"})
        lookFrom(name);
    toggle("section-shown");
    browser().settle();
    ASSERT_FALSE(browser().requests().isEmpty());
    EXPECT_TRUE(browser().requests().takeFirst().startsWith(QLatin1String("file://")));
    for (const QString& address : browser().requests().mid(1))
        EXPECT_TRUE(address.startsWith(QLatin1String("data:"))) << address.toStdString();
}

TEST_F(PageTest, runsNoScriptThatIsAddedToIt)
{
    open({sRGB});
    browser().evaluate(QStringLiteral("document.body.append(Object.assign(document.createElement('script'), "
                                      "{textContent: 'window.added = true'}))"));
    EXPECT_TRUE(browser().evaluate(QStringLiteral("window.added === undefined")).toBool());
}

TEST_F(PageTest, showsHostileNamesAsText)
{
    const QString profile = path(hostile);
    ASSERT_TRUE(QFile::copy(QStringLiteral(KVGAMUT_CMYK_PROFILE), profile));
    open({profile, sRGB});
    EXPECT_THAT(browser().messages(), IsEmpty());
    EXPECT_EQ(text(QStringLiteral("document.querySelector('#legend .name').textContent")), hostileShown);
    EXPECT_EQ(text(QStringLiteral("document.querySelector('#tables .name').textContent")), hostileShown);
    EXPECT_EQ(text(QStringLiteral("document.getElementById('title').textContent")),
              QStringLiteral("Gamuts of %1 and sRGB").arg(hostileShown));
    EXPECT_EQ(text(QStringLiteral("document.title")), QStringLiteral("%1, sRGB - gamut").arg(hostileShown));
    EXPECT_EQ(browser().evaluate(QStringLiteral("document.images.length + document.scripts.length")).toInt(),
              3);
}

// --- Keyboard -------------------------------------------------------------------------------------

TEST_F(PageTest, turnsWithTheArrowKeys)
{
    open({sRGB});
    focus("canvas");
    const double yaw = camera("yaw").toDouble(), pitch = camera("pitch").toDouble();
    const QImage before = browser().picture();
    browser().press(QStringLiteral("ArrowLeft"));
    browser().press(QStringLiteral("ArrowUp"));
    EXPECT_EQ(camera("yaw").toDouble(), yaw + 5);
    EXPECT_EQ(camera("pitch").toDouble(), pitch + 5);
    EXPECT_NE(browser().picture(), before);
    browser().press(QStringLiteral("Home"));
    EXPECT_EQ(browser().picture(), before);
}

TEST_F(PageTest, zoomsWithPlusAndMinus)
{
    open({sRGB});
    focus("canvas");
    browser().press(QStringLiteral("+"));
    EXPECT_GT(camera("zoom").toDouble(), 1.1);
    browser().press(QStringLiteral("-"));
    EXPECT_NEAR(camera("zoom").toDouble(), 1.0, 1e-9);
}

TEST_F(PageTest, movesWithShiftAndTheArrowKeys)
{
    open({sRGB});
    focus("canvas");
    const QPointF before = onPicture(50, 0, 0);
    browser().press(QStringLiteral("ArrowRight"), true);
    EXPECT_NEAR(onPicture(50, 0, 0).x() - before.x(), 20.0, 0.5);
}

TEST_F(PageTest, hidesAGamutWithTheSpaceKey)
{
    open({sRGB});
    placesFromAbove();
    const QPoint middle = onPicture(50, 0, 0).toPoint() + QPoint(40, 0);
    EXPECT_NE(browser().picture().pixel(middle), qRgb(255, 255, 255));
    toggle("shown-0");
    EXPECT_EQ(browser().picture().pixel(middle), qRgb(255, 255, 255));
}

TEST_F(PageTest, movesTheSectionWithTheArrowKeysAndSaysSo)
{
    open({sRGB});
    focus("section-lightness");
    browser().press(QStringLiteral("ArrowRight"));
    EXPECT_EQ(text(QStringLiteral("document.getElementById('section-value').textContent")),
              QStringLiteral("L* 51"));
    EXPECT_TRUE(
        browser().evaluate(QStringLiteral("document.getElementById('section-shown').checked")).toBool());
    const QString said =
        text(QStringLiteral("new Promise(done => new MutationObserver(() => "
                            "done(document.getElementById('status').textContent))"
                            ".observe(document.getElementById('status'), {childList: true}))"));
    EXPECT_EQ(said, QStringLiteral("Section at L* 51"));
}

TEST_F(PageTest, reachesEveryControlWithTheTabKey)
{
    open({sRGB, rec2020});
    const int controls =
        browser()
            .evaluate(QStringLiteral(
                "document.querySelectorAll('a, canvas, button, input, select, summary, .scroll').length"))
            .toInt();
    ASSERT_GT(controls, 25);
    browser().evaluate(QStringLiteral("window.reached = new Set(); document.activeElement.blur()"));
    for (int i = 0; i < controls; ++i) {
        browser().press(QStringLiteral("Tab"));
        EXPECT_TRUE(browser()
                        .evaluate(QStringLiteral(
                            "(e => { reached.add(e); return e !== document.body && "
                            "parseFloat(getComputedStyle(e).outlineWidth) >= 2 && "
                            "getComputedStyle(e).outlineStyle !== 'none'; })(document.activeElement)"))
                        .toBool())
            << text(QStringLiteral("document.activeElement.outerHTML")).toStdString();
    }
    EXPECT_EQ(browser().evaluate(QStringLiteral("reached.size")).toInt(), controls);
}

// --- Words ----------------------------------------------------------------------------------------

TEST_F(PageTest, namesEveryControlForScreenReaders)
{
    open({sRGB, rec2020});
    int controls = 0;
    std::set<QString> names;
    for (const auto& [role, name] : browser().accessibleTree()) {
        if (!QStringList{QStringLiteral("button"), QStringLiteral("checkbox"), QStringLiteral("slider"),
                         QStringLiteral("combobox"), QStringLiteral("application"), QStringLiteral("table"),
                         QStringLiteral("form"), QStringLiteral("link")}
                 .contains(role))
            continue;
        ++controls;
        EXPECT_FALSE(name.isEmpty()) << role.toStdString();
        EXPECT_TRUE(names.insert(role + name).second) << name.toStdString() << " twice";
    }
    EXPECT_GT(controls, 25);
    EXPECT_TRUE(names.contains(QStringLiteral("sliderOpacity of sRGB")));
    EXPECT_TRUE(names.contains(QStringLiteral("checkboxRec2020")));
    EXPECT_TRUE(names.contains(QStringLiteral("applicationGamuts of sRGB and Rec2020")));
}

TEST_F(PageTest, statesTheNumbersInItsTables)
{
    open({sRGB, rec2020});
    const auto row = [](int table, int number) {
        return text(QStringLiteral("[...document.querySelectorAll('#tables table')[%1].rows[%2].cells]"
                                   ".map(cell => cell.textContent.trim()).join('|')")
                        .arg(table)
                        .arg(number));
    };
    EXPECT_THAT(row(0, 1).toStdString(),
                testing::MatchesRegex(
                    "sRGB.*\\|83[0-9],[0-9]{3} ± [0-9]+\\|absolute\\|no\\|100.0  0.0  0.0\\|0.0  0.0  0.0"));
    EXPECT_THAT(row(1, 1).toStdString(), testing::MatchesRegex("sRGB.*\\|–\\|100.00 ± 0.[0-9]+ %"));
    EXPECT_THAT(row(1, 2).toStdString(),
                testing::MatchesRegex("Rec2020.*\\|4[0-9].[0-9]+ ± [0-9]+.[0-9]+ %\\|–"));
}

TEST_F(PageTest, numbersItsAxes)
{
    open({rec2020});
    const QString script =
        QStringLiteral("[...document.querySelectorAll('#labels span')].filter(s => !s.hidden)"
                       ".map(s => s.textContent).join(' ')");
    const QStringList labels = text(script).split(QLatin1Char(' '));
    for (const char* label : {"L*", "a*", "b*", "100", "50", "20", "−50", "−100"})
        EXPECT_TRUE(labels.contains(QString::fromUtf8(label))) << label;
    toggle("axes");
    browser().settle();
    EXPECT_EQ(text(script), QString());
}

TEST_F(PageTest, keepsItsAxisLabelsInTheView)
{
    open({rec2020});
    for (const QSize& size : {QSize(1300, 1000), QSize(360, 640), QSize(2000, 700)})
        for (const char* name : {"Oblique", "Front", "Back", "Left", "Right", "Top", "Bottom"}) {
            browser().setSize(size.width(), size.height());
            lookFrom(name);
            browser().settle();
            EXPECT_EQ(
                text(QStringLiteral(
                    "(v => [...document.querySelectorAll('#labels span')].filter(s => !s.hidden).filter(s => "
                    "(r => r.left < v.left || r.right > v.right || r.top < v.top || r.bottom > v.bottom)"
                    "(s.getBoundingClientRect())).map(s => s.textContent).join(' '))"
                    "(document.getElementById('view').getBoundingClientRect())")),
                QString())
                << name << " in " << size.width() << " x " << size.height();
        }
}

TEST_F(PageTest, fitsANarrowWindow)
{
    browser().setSize(360, 640);
    open({sRGB, rec2020});
    EXPECT_LE(browser().evaluate(QStringLiteral("document.documentElement.scrollWidth")).toInt(), 360);
}

TEST_F(PageTest, hasTextsOfSufficientContrast)
{
    for (const char* scheme : {"light", "dark"}) {
        browser().setMedia(QStringLiteral("prefers-color-scheme"), QLatin1String(scheme));
        open({sRGB, rec2020});
        const QJsonArray colors =
            browser()
                .evaluate(QStringLiteral(
                    "(ground => [...document.querySelectorAll('h1, h2, p, label, legend, button, select, th, "
                    "td, caption, span, "
                    "summary, output, kbd')].map(e => [getComputedStyle(e).color, ground(e), e.outerHTML]))"
                    "(e => { for (; e; e = e.parentElement) { const c = getComputedStyle(e).backgroundColor; "
                    "if (c !== 'rgba(0, 0, 0, 0)') return c; } return 'rgb(255, 255, 255)'; })"))
                .toArray();
        EXPECT_GT(colors.size(), 50);
        for (const QJsonValue& color : colors) {
            if (!color[2].toString().contains(QLatin1String("class=\"key\""))) {
                EXPECT_GE(contrast(cssColor(color[0].toString()), cssColor(color[1].toString())), 4.5)
                    << scheme << ": " << color[2].toString().toStdString();
            }
        }
    }
}

TEST_F(PageTest, movesAtOnceIfTheReaderWantsNoMotion)
{
    open({sRGB});
    lookFrom("Top");
    EXPECT_EQ(camera("pitch").toDouble(), 90.0);
}

TEST_F(PageTest, showsItsTablesWithoutWebGl)
{
    const QString file = exported({sRGB, rec2020});
    Browser without({QStringLiteral("--disable-3d-apis")});
    without.open(file);
    EXPECT_EQ(without.evaluate(QStringLiteral("document.querySelectorAll('#tables table').length")).toInt(),
              2);
    EXPECT_TRUE(without.evaluate(QStringLiteral("document.getElementById('no-drawing').textContent"))
                    .toString()
                    .contains(QLatin1String("WebGL")));
    EXPECT_FALSE(without.evaluate(QStringLiteral("document.getElementById('no-drawing').hidden")).toBool());
}

} // namespace
