// SPDX-License-Identifier: Apache-2.0
#include "app/support/ScreenWindows.h"
#include "app/support/ViewTest.h"

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QUrl>
#include <QtGui/QDrag>
#include <QtGui/QMouseEvent>
#include <QtGui/QPixmap>
#include <QtGui/QRasterWindow>
#include <QtTest/QTest>

using namespace kvtest;

namespace {

TEST_F(ViewTest, showsTheGamutInAWindow)
{
    open({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("1270x750"),
          QStringLiteral("--view"), QStringLiteral("top"), QStringLiteral("--ambient"), QStringLiteral("1")});
    EXPECT_TRUE(comeToShow(upperFaces));
    EXPECT_EQ(placeOnScreen(QStringLiteral("kvgamut$")).size(), QSize(1270, 750));
    EXPECT_EQ(m_process.state(), QProcess::Running);
    EXPECT_EQ(m_process.readAllStandardError(), "");
}

TEST_F(ViewTest, showsTheRestWhenOneInputIsBad)
{
    open({QStringLiteral("missing.icc"), QStringLiteral("sRGB"), QStringLiteral("--view"),
          QStringLiteral("top"), QStringLiteral("--ambient"), QStringLiteral("1")});
    EXPECT_TRUE(comeToShow(upperFaces));
    EXPECT_EQ(m_process.readAllStandardError(), "kvgamut: 'missing.icc': no such file\n");
}

TEST_F(ViewTest, exitsWithoutAGamutToShow)
{
    EXPECT_TRUE(failedWith(kvgamut({QStringLiteral("view"), QStringLiteral("missing.icc")}), BadInput,
                           QStringLiteral("kvgamut: 'missing.icc': no such file")));
    const Answer grey = kvgamut({QStringLiteral("view"), QStringLiteral(KVGAMUT_GREY_PROFILE)});
    EXPECT_EQ(grey.exitCode, BadInput);
    EXPECT_EQ(grey.errors.count('\n'), 1);
}

TEST_F(ViewTest, staysOpenWithoutGamutsOnRequest)
{
    open({QStringLiteral("missing.icc"), QStringLiteral("--stay")});
    EXPECT_TRUE(
        QTest::qWaitFor([] { return !placeOnScreen(QStringLiteral("^kvgamut$")).isEmpty(); }, maxWaitMs));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_process.readAllStandardError().isEmpty(); }, maxWaitMs));
    EXPECT_EQ(m_process.state(), QProcess::Running);
}

TEST_F(ViewTest, staysOpenWithoutInputs)
{
    open({});
    EXPECT_TRUE(
        QTest::qWaitFor([] { return !placeOnScreen(QStringLiteral("^kvgamut$")).isEmpty(); }, maxWaitMs));
    EXPECT_EQ(m_process.state(), QProcess::Running);
    EXPECT_EQ(m_process.readAllStandardError(), "");
}

TEST_F(ViewTest, restoresASession)
{
    write(path(QStringLiteral("top.kvsession")),
          R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB", "ambient": 1}],
              "view": {"eye": [522.48712, 0, -0.0001], "lookAt": [50, 0, 0]}})");
    open({QStringLiteral("--session"), path(QStringLiteral("top.kvsession"))});
    EXPECT_TRUE(comeToShow(upperFaces));
    EXPECT_EQ(m_process.readAllStandardError(), "");
}

TEST_F(ViewTest, exitsWithAnInvalidSession)
{
    write(path(QStringLiteral("a b.kvsession")), "hello");
    const QString file = path(QStringLiteral("a b.kvsession"));
    EXPECT_TRUE(failedWith(kvgamut({QStringLiteral("view"), QStringLiteral("--session"), file}), BadInput,
                           QStringLiteral("kvgamut: '%1': not a session of this program").arg(file)));
}

/// A window from which a file can be dragged into other programs.
class DragSource : public QRasterWindow
{
public:
    explicit DragSource(const QString& file) : m_file(file)
    {
        setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        setGeometry(0, 0, 40, 40);
    }

protected:
    void paintEvent(QPaintEvent*) override {}
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        auto* data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(m_file)});
        auto* drag = new QDrag(this); // lives until the other program has fetched the data
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

private:
    const QString m_file;
};

TEST_F(ViewTest, opensAFileDroppedOntoTheScene)
{
    open({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("1200x900")});
    ASSERT_TRUE(
        QTest::qWaitFor([] { return !placeOnScreen(QStringLiteral("^view$")).isEmpty(); }, maxWaitMs));
    DragSource source(QStringLiteral(KVGAMUT_CMYK_PROFILE));
    source.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&source, maxWaitMs));
    const QPoint target = placeOnScreen(QStringLiteral("^view$")).center();
    const auto isOpen = [] { return !placeOnScreen(QStringLiteral("default_cmyk.icc.*kvgamut$")).isEmpty(); };
    // A slow program may miss the drop, so the drag is repeated.
    for (int attempt = 0; attempt < 10 && !isOpen(); ++attempt) {
        QProcess hand;
        hand.start(QStringLiteral("bash"),
                   {QStringLiteral("-c"),
                    QStringLiteral(
                        "xdotool mousemove 10 10 sleep 0.1 mousedown 1 sleep 0.1 mousemove 20 20 sleep 0.3 "
                        "mousemove %1 %2 sleep 0.3 mousemove_relative 5 5 sleep 0.3 mouseup 1")
                        .arg(target.x())
                        .arg(target.y())});
        EXPECT_TRUE(QTest::qWaitFor([&hand] { return hand.state() == QProcess::NotRunning; }, maxWaitMs));
        (void)QTest::qWaitFor(isOpen, 5000);
    }
    EXPECT_TRUE(QTest::qWaitFor(isOpen, maxWaitMs));
}

TEST_F(ViewTest, refusesUnknownOptions)
{
    EXPECT_EQ(kvgamut({QStringLiteral("view"), QStringLiteral("sRGB"), QStringLiteral("-o"),
                       QStringLiteral("x.png")})
                  .exitCode,
              2);
}

} // namespace
