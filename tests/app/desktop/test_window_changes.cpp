// SPDX-License-Identifier: Apache-2.0
// Files that change on disk while the window shows them.

#include "WindowCase.h"

#include "desktop/files/WindowMemory.h"
#include "desktop/panels/OfferBar.h"

#include <QtCore/QSaveFile>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QPushButton>

using kvtest::spinUntil;

namespace {

constexpr float srgbVolume = 832781.0f; // from an independent computation
constexpr float cmykVolume = 411424.0f; // relative colorimetric

class Changes : public kvtest::WindowCase
{
protected:
    static QByteArray profile(const char* which)
    {
        QFile file(QStringLiteral("/usr/share/color/icc/ghostscript/") + QLatin1String(which));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// As most programs save: to a new file, which then gets the name of the old one.
    void replace(const QString& file, const QByteArray& bytes)
    {
        QSaveFile out(path(file));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        ASSERT_TRUE(out.commit());
    }
    void openProfile()
    {
        window.addGamut(write(name, profile("srgb.icc")), {KVVMRenderRelativeColorimetric, false, -1}, {});
        ASSERT_TRUE(settle());
        ASSERT_NEAR(entry().gamut.volume(), srgbVolume, 5000.0f);
    }
    QString offer() { return control<OfferBar>("offers").sentence(QStringLiteral("changed")); }
    bool isOffered()
    {
        return spinUntil([this] { return !offer().isEmpty(); });
    }
    void press(const char* button)
    {
        auto& widget = control<QPushButton>(button);
        widget.setFocus();
        QTest::keyClick(&widget, Qt::Key_Space);
    }

    const QString name = QStringLiteral("printer.icc");
};

TEST_F(Changes, areOfferedByName)
{
    openProfile();
    replace(name, profile("default_cmyk.icc"));
    ASSERT_TRUE(isOffered());
    EXPECT_EQ(offer(), QStringLiteral("Changed on disk: printer.icc"));
    EXPECT_TRUE(control<QPushButton>("reloadChanged").isVisible());
    EXPECT_NEAR(entry().gamut.volume(), srgbVolume, 5000.0f) << "until the user says so";
    const quint64 revision = entry().revision;
    press("reloadChanged");
    EXPECT_TRUE(offer().isEmpty());
    ASSERT_TRUE(spinUntil([&] { return entry().revision != revision; }));
    EXPECT_NEAR(entry().gamut.volume(), cmykVolume, 800.0f);
    EXPECT_FALSE(window.findChild<QAction*>(QStringLiteral("redo"))->isEnabled());
    EXPECT_EQ(action("undo").text(), QStringLiteral("&Undo Add printer.icc")) << "no step of its own";
}

TEST_F(Changes, canBeIgnored)
{
    openProfile();
    replace(name, profile("default_cmyk.icc"));
    ASSERT_TRUE(isOffered());
    press("ignoreChanged");
    EXPECT_FALSE(control<QWidget>("offers").isVisible());
    replace(name, profile("default_rgb.icc"));
    EXPECT_TRUE(isOffered()) << "another change";
    window.gamuts().remove(0);
    EXPECT_TRUE(offer().isEmpty()) << "the file is closed";
}

TEST_F(Changes, areReadAutomaticallyOnRequest)
{
    openProfile();
    action("reloadAutomatically").trigger();
    replace(name, profile("default_cmyk.icc"));
    const quint64 revision = entry().revision;
    ASSERT_TRUE(spinUntil([&] { return entry().revision != revision; }));
    EXPECT_NEAR(entry().gamut.volume(), cmykVolume, 800.0f);
    EXPECT_TRUE(offer().isEmpty());

    MainWindow next;
    next.recall(WindowMemory::fromJson(window.memory().toJson()));
    EXPECT_TRUE(next.findChild<QAction*>(QStringLiteral("reloadAutomatically"))->isChecked());
}

TEST_F(Changes, areReadWithOtherSettings)
{
    openProfile();
    window.gamuts().setSettings(0, {KVVMRenderAbsoluteColorimetric, false, -1});
    ASSERT_TRUE(settle());
    replace(name, profile("default_cmyk.icc"));
    ASSERT_TRUE(isOffered());
    QTest::keyClick(&window, Qt::Key_F6);
    ASSERT_TRUE(settle());
    EXPECT_NEAR(entry().gamut.volume(), cmykVolume, 800.0f);
    EXPECT_TRUE(offer().isEmpty()) << "it was read";
}

TEST_F(Changes, thatCannotBeReadKeepTheGamut)
{
    openProfile();
    QSignalSpy problems(&window, &MainWindow::problem);
    replace(name, profile("default_cmyk.icc").left(5000));
    ASSERT_TRUE(isOffered());
    press("reloadChanged");
    ASSERT_TRUE(spinUntil([&] { return problems.count() == 1; }));
    EXPECT_EQ(problems[0][0].value<Problem>().subject, path(name));
    ASSERT_TRUE(settle());
    EXPECT_NEAR(entry().gamut.volume(), srgbVolume, 5000.0f);
    replace(name, profile("default_cmyk.icc")); // complete now
    ASSERT_TRUE(isOffered());
    action("reload").trigger();
    ASSERT_TRUE(settle());
    EXPECT_NEAR(entry().gamut.volume(), cmykVolume, 800.0f);
}

TEST_F(Changes, ofPointsAreReadToo)
{
    const QString points = QStringLiteral("p.csv");
    open({write(points, "L,a,b\n50,0,0\n")});
    replace(points, "L,a,b\n50,0,0\n60,0,0\n");
    ASSERT_TRUE(isOffered());
    press("reloadChanged");
    ASSERT_TRUE(spinUntil([this] { return window.points().set(0).points.size() == 2; }));
    replace(points, "hello");
    ASSERT_TRUE(isOffered());
    press("reloadChanged");
    ASSERT_TRUE(spinUntil([this] { return control<QWidget>("messageBar").isVisible(); }));
    ASSERT_EQ(window.points().rowCount(), 1);
    EXPECT_EQ(window.points().set(0).points.size(), 2) << "the former points stay";
    EXPECT_TRUE(spinUntil([this] { return window.isComplete(); }));
}

} // namespace
