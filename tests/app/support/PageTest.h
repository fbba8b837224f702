// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Browser.h"
#include "Program.h"

#include <QtCore/QJsonArray>
#include <QtCore/QPointF>
#include <QtCore/QRect>

#include <memory>

namespace kvtest {

/// A colour of the ab plane, as the view from above shows it.
struct Place
{
    QPoint pixel;
    double a;
    double b;
};

/// Opens pages of `kvgamut export` in a browser that all cases share.
class PageTest : public ProgramTest
{
protected:
    static void SetUpTestSuite()
    {
        if (Browser::isInstalled())
            s_browser = std::make_unique<Browser>();
    }
    static void TearDownTestSuite() { s_browser.reset(); }

    void SetUp() override
    {
        if (!s_browser)
            GTEST_SKIP() << "Chromium is not installed";
        browser().setMedia(QStringLiteral("prefers-color-scheme"), QStringLiteral("light"));
        browser().setSize(1300, 1000);
    }
    static Browser& browser() { return *s_browser; }

    QString exported(const QStringList& inputs) const
    {
        const QString file = path(QStringLiteral("the page é.html"));
        EXPECT_TRUE(succeeded(
            kvgamut(QStringList{QStringLiteral("export")} + inputs + QStringList{QStringLiteral("-o"), file},
                    withoutDisplay())));
        return file;
    }
    void open(const QStringList& inputs) { browser().open(exported(inputs)); }

    static void focus(const char* id)
    {
        browser().evaluate(QStringLiteral("document.getElementById('%1').focus()").arg(QLatin1String(id)));
    }
    /// Switches a check box with the keyboard.
    static void toggle(const char* id)
    {
        focus(id);
        browser().press(QStringLiteral(" "));
    }
    static void lookFrom(const char* name)
    {
        browser().evaluate(QStringLiteral("[...document.querySelectorAll('#directions button')].find(b => "
                                          "b.textContent === '%1').focus()")
                               .arg(QLatin1String(name)));
        browser().press(QStringLiteral("Enter"));
    }
    static QJsonValue camera(const char* name)
    {
        return browser().evaluate(QStringLiteral("page.camera().%1").arg(QLatin1String(name)));
    }
    static QString text(const QString& script) { return browser().evaluate(script).toString(); }
    static QRect box(const char* id)
    {
        const QJsonValue rect = browser().evaluate(
            QStringLiteral("(r => [r.left, r.top, r.width, "
                           "r.height])(document.getElementById('%1').getBoundingClientRect())")
                .arg(QLatin1String(id)));
        return QRectF(rect[0].toDouble(), rect[1].toDouble(), rect[2].toDouble(), rect[3].toDouble())
            .toRect();
    }
    /// Where a colour is in the picture of the page.
    static QPointF onPicture(double L, double a, double b)
    {
        const QJsonValue place =
            browser().evaluate(QStringLiteral("page.project([%1, %2, %3])").arg(L).arg(a).arg(b));
        return QPointF(place[0].toDouble(), place[1].toDouble()) + QPointF(box("canvas").topLeft());
    }
    /// The pixels of a grid over the view from above, in parallel projection, without axes and shading.
    static QList<Place> placesFromAbove()
    {
        for (const char* id : {"perspective", "shading", "axes"})
            toggle(id);
        lookFrom("Top");
        const QPointF zero = onPicture(50, 0, 0), a = onPicture(50, 100, 0) - zero,
                      b = onPicture(50, 0, 100) - zero;
        EXPECT_NEAR(a.y(), 0.0, 1e-6);
        EXPECT_NEAR(b.x(), 0.0, 1e-6);
        EXPECT_NEAR(a.x(), -b.y(), 1e-6) << "the same scale";
        QList<Place> places;
        const QRect canvas = box("canvas").adjusted(1, 1, -1, -1);
        for (int y = canvas.top(); y < canvas.bottom(); y += 9)
            for (int x = canvas.left(); x < canvas.right(); x += 9)
                places.append({QPoint(x, y), (x + 0.5 - zero.x()) / a.x() * 100.0,
                               (y + 0.5 - zero.y()) / b.y() * 100.0});
        return places;
    }

    inline static std::unique_ptr<Browser> s_browser;
};

} // namespace kvtest
