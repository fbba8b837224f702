// SPDX-License-Identifier: Apache-2.0
// What the window looks like: sizes of screens, light and dark, languages. Compared with reviewed pictures,
// at half their size.

#include "WindowCase.h"
#include "WindowPicture.h"

#include "desktop/language/Translations.h"

#include <QtGui/QPalette>

#include <memory>

namespace {

using kvtest::cmyk;

struct Look
{
    const char* name;
    QSize size;
    const char* language = "en";
    bool isDark = false;
};

void PrintTo(const Look& look, std::ostream* out)
{
    *out << look.name;
}

/// The first base class, so that language and palette are set before the window is created.
class Surroundings : public testing::WithParamInterface<Look>
{
protected:
    Surroundings()
    {
        if (GetParam().isDark)
            QApplication::setPalette(QPalette(QColor(0x35, 0x37, 0x3a), QColor(0x2b, 0x2d, 0x30)));
    }
    ~Surroundings() { QApplication::setPalette(m_before); }

private:
    QPalette m_before = QApplication::palette();
    Translations m_language{QStringList{QLatin1String(GetParam().language)}};
};

class WindowPictures : public Surroundings, public kvtest::WindowCase
{
};

TEST_P(WindowPictures, areLikeTheBaseline)
{
    const Look look = GetParam();
    window.resize(look.size);
    ASSERT_TRUE(kvtest::spinUntil([&] { return window.size() == look.size; }));
    window.resetPanels();
    open({QStringLiteral("DisplayP3"), cmyk});
    window.addPoints(
        {write(QStringLiteral("brand.csv"), "name,L,a,b\nreflex blue,25,25,-70\norange,65,60,80\n"
                                            "grass,55,-35,30\ngrey,50,0,0\nrose,70,40,5\n")});
    window.gamuts().setActiveRow(1);
    action("cut").trigger();
    action("frame").trigger();
    if (look.isDark)
        action("backgroundDark").trigger();
    ASSERT_TRUE(settle());
    ASSERT_TRUE(kvtest::layoutIsFinal());
    ASSERT_TRUE(settle());
    const QImage picture = kvtest::pictureOf(window);
    kvtest::expectBaseline(
        QLatin1String(look.name),
        picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
        kvtest::sameWindow);
}

INSTANTIATE_TEST_SUITE_P(
    Of, WindowPictures,
    testing::Values(Look{"small-853", {853, 480}}, Look{"tabs-1024", {1024, 600}},
                    Look{"usual-1280", {1280, 800}}, Look{"large-1900", {1900, 1000}},
                    Look{"dark-1280", {1280, 800}, "en", true}, Look{"dark-1024", {1024, 600}, "en", true},
                    Look{"german-1280", {1280, 800}, "de"}, Look{"french-1280", {1280, 800}, "fr"},
                    Look{"spanish-1024", {1024, 600}, "es"}),
    [](const auto& each) {
        return QString::fromLatin1(each.param.name).remove(QLatin1Char('-')).toStdString();
    });

} // namespace
