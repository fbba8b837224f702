#include "Picture.h"
#include "Program.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtTest/QTest>

using namespace kvtest;

namespace {

constexpr int longestWaitMs = 20000;

/// `kvgamut view`, running, on the screen of this test.
class ViewTest : public ProgramTest
{
protected:
    void open(const QStringList& arguments)
    {
        m_process.setProcessEnvironment(environment());
        m_process.start(QStringLiteral(KVGAMUT_BINARY), QStringList{QStringLiteral("view")} + arguments);
        ASSERT_TRUE(m_process.waitForStarted());
    }

    void TearDown() override
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        m_process.waitForFinished();
    }

    static QImage screenshot() { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }

    /// Whether the pixels of @p devices come to show them, in a window at the origin of the screen
    /// that is seen through @p camera.
    static bool comeToShow(const std::vector<Device>& devices, const PinholeCamera& camera)
    {
        return QTest::qWaitFor(
            [&] {
                const QImage screen = screenshot();
                return std::all_of(devices.begin(), devices.end(), [&](const Device& device) {
                    const QColor seen = screen.pixelColor(camera.pixelOf(labOf(device)));
                    return difference(seen, colorOf(device)) <= 12;
                });
            },
            longestWaitMs);
    }

    QProcess m_process;
    const std::vector<Device> upperFaces{
        {1, 0.5, 0.25}, {0.5, 1, 0.25}, {0.25, 1, 0.5}, {0.5, 0.25, 1}, {0.5, 0.75, 1}};
};

TEST_F(ViewTest, showsTheGamutInAWindow)
{
    open({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("500x500"),
          QStringLiteral("--view"), QStringLiteral("top"), QStringLiteral("--ambient"), QStringLiteral("1")});
    EXPECT_TRUE(comeToShow(upperFaces, topCamera({500, 500})));
    EXPECT_EQ(m_process.state(), QProcess::Running);
    EXPECT_TRUE(m_process.readAllStandardError().isEmpty());
}

TEST_F(ViewTest, showsTheRestWhenOneInputIsBad)
{
    open({QStringLiteral("missing.icc"), QStringLiteral("sRGB"), QStringLiteral("--size"),
          QStringLiteral("500x500"), QStringLiteral("--view"), QStringLiteral("top"),
          QStringLiteral("--ambient"), QStringLiteral("1")});
    EXPECT_TRUE(comeToShow(upperFaces, topCamera({500, 500})));
    EXPECT_EQ(m_process.readAllStandardError(), "kvgamut: there is no file 'missing.icc'\n");
}

TEST_F(ViewTest, endsWhenThereIsNothingToShow)
{
    EXPECT_TRUE(failedWith(kvgamut({QStringLiteral("view"), QStringLiteral("missing.icc")}), 1,
                           QStringLiteral("kvgamut: there is no file 'missing.icc'")));
    const Answer grey = kvgamut({QStringLiteral("view"), QStringLiteral(KVGAMUT_GREY_PROFILE)});
    EXPECT_EQ(grey.exitCode, 1);
    EXPECT_EQ(grey.errors.count('\n'), 1);
}

TEST_F(ViewTest, refusesWhatIsNoOptionOfIts)
{
    EXPECT_EQ(kvgamut({QStringLiteral("view"), QStringLiteral("sRGB"), QStringLiteral("-o"),
                       QStringLiteral("x.png")})
                  .exitCode,
              2);
}

} // namespace
