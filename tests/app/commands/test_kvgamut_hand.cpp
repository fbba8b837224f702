// SPDX-License-Identifier: Apache-2.0
#include "app/support/AffineProfile.h"
#include "app/support/Boxes.h"
#include "app/support/RealInput.h"
#include "app/support/ScreenClipboard.h"
#include "app/support/ViewTest.h"
#include "support/WindowManager.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QVector3D>

#include <cmath>
#include <functional>
#include <numbers>
#include <optional>

// The window with real key and pointer events and a window manager. The results are read from the screen, the
// clipboard and files.

using namespace kvtest;

namespace {

const QString window = QStringLiteral("kvgamut$");
const QString view = QStringLiteral("^view$");

bool until(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, maxWaitMs);
}

/// All Lab positions "L,a,b" in a line of text.
QList<QVector3D> positionsIn(const QString& text)
{
    static const QRegularExpression position(QStringLiteral("(-?[0-9.e-]+),(-?[0-9.e-]+),(-?[0-9.e-]+)"));
    QList<QVector3D> positions;
    for (auto i = position.globalMatch(text); i.hasNext();) {
        const QRegularExpressionMatch match = i.next();
        positions.append(
            {match.captured(1).toFloat(), match.captured(2).toFloat(), match.captured(3).toFloat()});
    }
    return positions;
}

/// A device with thirteen inks, which takes about a second to compute. Each intent has its own box as gamut.
struct SlowDevice
{
    Box perceptual{{20, -30, -30}, {80, 30, 30}};
    Box relative{{30, -20, -20}, {70, 20, 20}};
    Box saturation{{10, -40, -40}, {90, 40, 40}};

    QByteArray profile() const
    {
        return testprofiles::intentProfile(cmsSig13colorData, 2, perceptual.map(), relative.map(),
                                           saturation.map());
    }
};

class HandTest : public ViewTest
{
protected:
    static void SetUpTestSuite()
    {
        windowManager = std::make_unique<WindowManager>();
        ASSERT_TRUE(windowManager->start()) << "openbox is needed";
    }
    static void TearDownTestSuite() { windowManager.reset(); }

    void SetUp() override { ASSERT_TRUE(hand.isReady()); }

    void TearDown() override
    {
        ViewTest::TearDown();
        EXPECT_EQ(errors(), "");
    }

    /// Standard error without a warning of Qt, which appears when a dialog opens and closes before the
    /// window manager has reported it.
    std::string errors()
    {
        std::string said;
        const QList<QByteArray> lines = m_process.readAllStandardError().split('\n');
        for (const QByteArray& line : lines)
            if (!line.isEmpty() && !line.startsWith("qt.qpa.xcb: internal error: "))
                said += line.toStdString() + '\n';
        return said;
    }

    /// Opens a window that fits on the screen, and waits until it has the keyboard focus.
    void openWindow(const QStringList& arguments)
    {
        open(arguments + words("--size 1200x900"));
        ASSERT_TRUE(until([] { return hasKeyboard(window); }));
    }

    /// The same with gamuts, drawn in red on grey without grid, axes and projection.
    void openRed(const QStringList& arguments)
    {
        openWindow(arguments + words("--color red --ambient 1 --background #808080 --no-grid --no-axes "
                                     "--no-projection"));
        ASSERT_TRUE(until([] { return !placeOnScreen(view).isEmpty(); }));
    }

    QString fileOf(const char* name, const QByteArray& bytes) const
    {
        write(path(QLatin1String(name)), bytes);
        return path(QLatin1String(name));
    }

    // --- What is on the screen --------------------------------------------------------------------

    static QPoint middleOfView() { return placeOnScreen(view).center(); }

    /// The position of @p lab on the screen, seen from the top.
    static QPoint fromTop(const Lab& lab)
    {
        const QRect place = placeOnScreen(view);
        return place.topLeft() + topCamera(place.size()).pixelOf(lab);
    }
    static QPoint fromFront(const Lab& lab)
    {
        const QRect place = placeOnScreen(view);
        return place.topLeft() + freeCamera({50, 0, -500}, {50, 0, 0}, place.size()).pixelOf(lab);
    }

    /// Whether the pixel is a shade of red, in any light.
    static bool isRed(const QPoint& p)
    {
        const QColor seen = screenshot().pixelColor(p);
        return seen.red() > seen.green() + 30 && seen.red() > seen.blue() + 30;
    }
    static bool isBackground(const QPoint& p)
    {
        return difference(screenshot().pixelColor(p), QColor(0x80, 0x80, 0x80)) <= 12;
    }

    /// Waits until a part of the screen no longer changes, and returns its picture.
    static QImage atRest(const std::function<QRect()>& part)
    {
        constexpr int longEnoughMs = 1000; // longer than a camera animation
        QImage last;
        QElapsedTimer rest;
        EXPECT_TRUE(until([&] {
            const QImage now = screenshot().copy(part());
            if (now != last || !rest.isValid()) {
                last = now;
                rest.start();
            }
            return rest.elapsed() > longEnoughMs;
        }));
        return last;
    }
    static QImage viewAtRest()
    {
        return atRest([] { return placeOnScreen(view); });
    }

    /// The controls between the view and the section: L*, its slider and number, and "Cut".
    static QRect clipControls()
    {
        constexpr int wide = 70;
        const QRect place = placeOnScreen(view);
        return {place.right() + 5, place.top(), wide, place.height()};
    }

    /// The share of pixels that differ between two pictures.
    static double shareUnlike(const QImage& one, const QImage& other)
    {
        if (one.size() != other.size() || one.isNull())
            return 1.0;
        int count = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x)
                if (difference(one.pixelColor(x, y), other.pixelColor(x, y)) > 8)
                    ++count;
        return static_cast<double>(count) / (one.width() * one.height());
    }

    /// During a load the status bar has a progress bar and a button at its end.
    static bool isLoading()
    {
        const QRect place = placeOnScreen(window);
        const QImage end = screenshot().copy(place.right() - 120, place.bottom() - 20, 90, 10);
        for (int y = 0; y < end.height(); ++y)
            for (int x = 0; x < end.width(); ++x)
                if (end.pixel(x, y) != end.pixel(0, 0))
                    return true;
        return false;
    }

    // --- User actions -----------------------------------------------------------------------------

    /// The text that the program copies to the clipboard when @p keys are pressed.
    QString copied(const char* keys)
    {
        clipboard.clear();
        hand.press(keys);
        std::optional<QString> text;
        EXPECT_TRUE(until([&] { return (text = clipboard.text()).has_value(); })) << keys;
        return text.value_or(QString());
    }

    /// Clicks a gamut and waits until the position is marked. The window manager delays clicks, so that key
    /// events could arrive earlier.
    void clickGamut(const QPoint& p)
    {
        const QRect around(p - QPoint(3, 3), QSize(7, 7));
        const QImage before = screenshot().copy(around);
        hand.click(p);
        ASSERT_TRUE(until([&] { return screenshot().copy(around) != before; }));
    }

    /// A cell of the comparison, in full precision.
    QString compared(qsizetype row, qsizetype column)
    {
        const QStringList lines = copied("Ctrl+Shift+T").split(QLatin1Char('\n'));
        return lines.value(row + 1).split(QLatin1Char('\t')).value(column);
    }
    bool comesToBe(const char* intent, const Box& box)
    {
        return until([&] {
            return compared(0, 1) == QLatin1String(intent) &&
                   std::abs(compared(0, 5).toDouble() - box.volume()) < 0.005 * box.volume();
        });
    }

    /// Waits until the dialog opens, types the answer and waits until the dialog is closed.
    void answer(const char* dialog, const QStringList& answers)
    {
        const QString title = QLatin1Char('^') + QLatin1String(dialog) + QLatin1Char('$');
        ASSERT_TRUE(until([&] { return hasKeyboard(title); })) << dialog;
        for (qsizetype i = 0; i < answers.size(); ++i) {
            if (i > 0)
                hand.press("Tab");
            hand.type(answers[i]);
        }
        hand.press("Return");
        ASSERT_TRUE(until([&] { return placeOnScreen(title).isEmpty(); })) << dialog;
    }

    void dismiss(const char* dialog)
    {
        const QString title = QLatin1Char('^') + QLatin1String(dialog) + QLatin1Char('$');
        ASSERT_TRUE(until([&] { return hasKeyboard(title); })) << dialog;
        hand.press("Esc");
        ASSERT_TRUE(until([&] { return placeOnScreen(title).isEmpty(); })) << dialog;
        ASSERT_TRUE(until([] { return hasKeyboard(window); })) << dialog;
    }

    /// The position of the eye, then the point that it looks at.
    QList<QVector3D> camera() { return positionsIn(copied("Ctrl+K")); }

    static inline std::unique_ptr<WindowManager> windowManager;
    RealInput hand;
    ScreenClipboard clipboard;
};

// --- Loading ----------------------------------------------------------------------------------------

TEST_F(HandTest, showsTheLastIntentChosenWhileLoading)
{
    const SlowDevice device;
    openRed(QStringList{fileOf("inks.icc", device.profile())} + words("--intent perceptual --view top"));
    ASSERT_TRUE(until([] { return isRed(fromTop({80, 25, 0})) && !isLoading(); }));
    hand.press("F7");
    ASSERT_TRUE(until(isLoading));
    hand.press("F5");
    hand.press("F6");
    ASSERT_TRUE(until(isLoading));
    EXPECT_TRUE(isRed(fromTop({80, 25, 0}))); // the old gamut stays until the new one is computed
    EXPECT_TRUE(until([] { return isRed(fromTop({70, 15, 0})) && isBackground(fromTop({70, 25, 0})); }));
    EXPECT_TRUE(comesToBe("Relative colorimetric", device.relative));
    EXPECT_FALSE(isLoading());
}

TEST_F(HandTest, cancelsALoadByKey)
{
    const SlowDevice device;
    openRed(QStringList{fileOf("inks.icc", device.profile())} + words("--intent perceptual --view top"));
    ASSERT_TRUE(comesToBe("Perceptual", device.perceptual));
    hand.press("F6");
    ASSERT_TRUE(until(isLoading));
    hand.press("Esc");
    ASSERT_TRUE(until([] { return !isLoading(); }));
    EXPECT_TRUE(comesToBe("Perceptual", device.perceptual));
    EXPECT_TRUE(isRed(fromTop({80, 25, 0})));
    hand.press("F7");
    EXPECT_TRUE(comesToBe("Saturation", device.saturation));
    EXPECT_TRUE(until([] { return isRed(fromTop({90, 35, 0})); }));
}

TEST_F(HandTest, keepsLoadedGamutsWhenTheRestIsCancelled)
{
    QStringList files;
    for (const char* name : {"1.icc", "2.icc", "3.icc", "4.icc", "5.icc", "6.icc"})
        files.append(fileOf(name, SlowDevice().profile()));
    const Box box{{20, -30, -30}, {80, 30, 30}};
    openRed(QStringList{fileOf("box.icc", box.profile())} + files + words("--intent perceptual --view top"));
    ASSERT_TRUE(until([] { return isRed(fromTop({80, 25, 0})); }));
    ASSERT_TRUE(isLoading());
    hand.press("Esc");
    EXPECT_TRUE(until([] { return !isLoading(); }));
    EXPECT_FALSE(placeOnScreen(QStringLiteral("^box.icc")).isEmpty());
    EXPECT_TRUE(placeOnScreen(QStringLiteral("6.icc")).isEmpty());
    EXPECT_TRUE(isRed(fromTop({80, 25, 0})));
    EXPECT_EQ(compared(0, 0), QStringLiteral("box.icc"));
}

TEST_F(HandTest, closesWhileLoadingWithoutMessages)
{
    QStringList files;
    for (const char* name : {"1.icc", "2.icc", "3.icc", "4.icc", "5.icc", "6.icc"})
        files.append(fileOf(name, SlowDevice().profile()));
    openRed(files + words("--intent perceptual"));
    ASSERT_TRUE(until(isLoading));
    askToClose(window);
    ASSERT_TRUE(m_process.waitForFinished(maxWaitMs));
    EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_process.exitCode(), 0);
    EXPECT_EQ(errors(), "");
}

// --- The section ------------------------------------------------------------------------------------

/// A red box from L* 20 to 80, seen from the front.
class SectionByHand : public HandTest
{
protected:
    void SetUp() override
    {
        HandTest::SetUp();
        const Box box{{20, -30, -30}, {80, 30, 30}};
        openRed(QStringList{fileOf("box.icc", box.profile())} +
                words("--intent perceptual --camera 50,0,-500 --look-at 50,0,0"));
        ASSERT_TRUE(until([] { return showsFrom(25) && showsFrom(75); }));
    }

    /// The front side of the box at a lightness.
    static bool showsFrom(double L) { return isRed(fromFront({L, 15, -30})); }
    static bool isCutAt(double L) { return isBackground(fromFront({L, 15, -30})); }

    /// The number of pixels of the outline in the panel on the right. The line in the legend is small.
    static int outlineInSection()
    {
        const QRect controls = clipControls();
        const QImage screen = screenshot();
        int count = 0;
        for (int y = controls.top(); y < controls.bottom(); ++y)
            for (int x = controls.right() + 20; x < screen.width(); ++x)
                if (difference(screen.pixelColor(x, y), QColor(255, 0, 0)) <= 12)
                    ++count;
        return count;
    }
    static bool showsSection() { return outlineInSection() > 250; }

    /// The height of the area of the slider that changes when it moves down by @p units: from the top of the
    /// handle before to the bottom of the handle after.
    QRect changeOfSlider(int units)
    {
        constexpr int narrowest = 5;
        const auto slider = [] { return clipControls().adjusted(0, 0, 0, -60); }; // without the number below
        const QImage before = atRest(slider);
        for (int i = 0; i < units; ++i)
            hand.press("Ctrl+Down");
        const QImage after = atRest(slider);
        QRect change;
        for (int y = 0; y < before.height(); ++y) {
            QRect row;
            for (int x = 0; x < before.width(); ++x)
                if (before.pixel(x, y) != after.pixel(x, y))
                    row |= QRect(x, y, 1, 1);
            if (row.width() >= narrowest) // ignore ticks, whose shade may change
                change |= row;
        }
        return change.translated(slider().topLeft());
    }
};

TEST_F(SectionByHand, cutsAndSlidesByKey)
{
    hand.press("C");
    EXPECT_TRUE(until([] { return isCutAt(60) && showsFrom(45); }));
    EXPECT_TRUE(until(showsSection));
    for (int i = 0; i < 20; ++i)
        hand.press("Ctrl+Up");
    EXPECT_TRUE(until([] { return isCutAt(75) && showsFrom(65); }));
    for (int i = 0; i < 40; ++i)
        hand.press("Ctrl+Down");
    EXPECT_TRUE(until([] { return isCutAt(40) && showsFrom(25); }));
    EXPECT_TRUE(until(showsSection));
    for (int i = 0; i < 15; ++i) // below the box
        hand.press("Ctrl+Down");
    EXPECT_TRUE(until([] { return isCutAt(25); }));
    EXPECT_TRUE(until([] { return !showsSection(); }));
    hand.press("C");
    EXPECT_TRUE(until([] { return showsFrom(25) && showsFrom(75); }));
}

TEST_F(SectionByHand, cutsAndSlidesByDraggingTheHandle)
{
    constexpr int units = 20;  // from 50 to 30
    constexpr int handle = 14; // approximate height in pixels
    const QRect change = changeOfSlider(units);
    ASSERT_GT(change.height(), 3 * handle);
    const double perUnit = static_cast<double>(change.height() - handle) / units;
    const QPoint at30(change.center().x(), change.bottom() - handle / 2);
    const auto at = [&](double L) { return at30 - QPoint(0, qRound(perUnit * (L - 30.0))); };

    hand.press("C");
    hand.drag(at30, at(70));
    EXPECT_TRUE(until([] { return isCutAt(75) && showsFrom(65); }));
    EXPECT_TRUE(until(showsSection));
    hand.drag(at(70), at(90)); // above the box
    EXPECT_TRUE(until([] { return showsFrom(75); }));
    EXPECT_TRUE(until([] { return !showsSection(); }));
    hand.drag(at(90), at(40));
    EXPECT_TRUE(until([] { return isCutAt(46) && showsFrom(34); }));
    EXPECT_TRUE(until(showsSection));
}

// --- The clicked colour -----------------------------------------------------------------------------

TEST_F(HandTest, showsTheLabOfAClickedSurface)
{
    openRed(QStringList{fileOf("affine.icc", AffineDevice::profile())} +
            words("--intent perceptual --view top"));
    for (const Device& device : {Device{1, 0.5, 0.25}, {0.25, 1, 0.5}, {0.5, 0.75, 1}}) {
        const cmsCIELab lab = AffineDevice::lab(device.r, device.g, device.b);
        ASSERT_TRUE(until([&] { return isRed(fromTop({lab.L, lab.a, lab.b})); }));
        clickGamut(fromTop({lab.L, lab.a, lab.b}));
        QVector3D found;
        const auto isSaid = [&] {
            static const QRegularExpression line(QStringLiteral(
                "Surface of affine.icc\nL\\* (-?[0-9.]+) +a\\* (-?[0-9.]+) +b\\* (-?[0-9.]+)\n"));
            const QRegularExpressionMatch match = line.match(copied("Ctrl+I"));
            found = {match.captured(1).toFloat(), match.captured(2).toFloat(), match.captured(3).toFloat()};
            return std::abs(found.x() - float(lab.L)) < 0.5f && std::abs(found.y() - float(lab.a)) < 0.5f &&
                   std::abs(found.z() - float(lab.b)) < 0.5f;
        };
        EXPECT_TRUE(until(isSaid)) << found.x() << " " << found.y() << " " << found.z() << ", expected "
                                   << lab.L << " " << lab.a << " " << lab.b;
    }
}

// --- Files ------------------------------------------------------------------------------------------

TEST_F(HandTest, savesThePictureInTheTypedSize)
{
    openWindow(words("sRGB --view top --ambient 1"));
    ASSERT_TRUE(comeToShow(upperFaces));
    clickGamut(middleOfView() + QPoint(20, 20));
    hand.press("Ctrl+E");
    answer("Size of the picture", words("640 480"));
    const QString file = path(QStringLiteral("picture.png"));
    answer("Save picture", {file});
    ASSERT_TRUE(until([&] { return !QImage(file).isNull(); }));
    const QImage picture(file);
    ASSERT_EQ(picture.size(), QSize(640, 480));
    for (const Device& device : upperFaces)
        EXPECT_LE(
            difference(picture.pixelColor(topCamera(picture.size()).pixelOf(labOf(device))), colorOf(device)),
            12)
            << testing::PrintToString(device);
}

TEST_F(HandTest, restoresASessionInAnotherRun)
{
    const Box box{{20, -30, -30}, {80, 30, 30}};
    const QString session = path(QStringLiteral("all.kvsession"));
    openWindow(QStringList{QStringLiteral("sRGB"), fileOf("box.icc", box.profile())} +
               words("--view top --ambient 1"));
    ASSERT_TRUE(until([this] { return copied("Ctrl+Shift+T").count(QLatin1Char('\n')) == 2; }));
    hand.press("N"); // the box
    hand.press("F6");
    hand.press(".");
    for (const char* keys : {"Shift+D", "F3", "P", "C", "3"})
        hand.press(keys);
    ASSERT_TRUE(until([this] { return compared(1, 1) == QStringLiteral("Relative colorimetric"); }));
    viewAtRest();
    hand.press("Ctrl+S");
    answer("Save session", {session});
    ASSERT_TRUE(until([&] { return QFile::exists(session) && hasKeyboard(window); }));
    const QImage seen = viewAtRest();
    const QString table = copied("Ctrl+Shift+T");
    const QString place = copied("Ctrl+K");

    for (const char* keys : {"Ctrl+Backspace", "Shift+L", "F4", "P", "C", "B"})
        hand.press(keys);
    EXPECT_TRUE(until([&] { return shareUnlike(screenshot().copy(placeOnScreen(view)), seen) > 0.1; }));
    hand.press("Ctrl+Q");
    ASSERT_TRUE(until([] { return hasKeyboard(QStringLiteral("^Unsaved changes$")); }));
    hand.press("Alt+D");
    ASSERT_TRUE(m_process.waitForFinished(maxWaitMs));
    EXPECT_EQ(m_process.exitCode(), 0);

    openWindow({});
    hand.press("Ctrl+Shift+O");
    answer("Restore session", {session});
    ASSERT_TRUE(until([] { return !placeOnScreen(QStringLiteral("^all.kvsession – kvgamut$")).isEmpty(); }));
    EXPECT_TRUE(until([&] { return copied("Ctrl+Shift+T") == table; }));
    EXPECT_EQ(copied("Ctrl+K"), place);
    EXPECT_TRUE(until([&] { return shareUnlike(screenshot().copy(placeOnScreen(view)), seen) < 0.001; }));
}

// --- The keyboard -----------------------------------------------------------------------------------

/// A window with a gamut, after a click into the view.
class KeysInTheView : public HandTest
{
protected:
    void SetUp() override
    {
        HandTest::SetUp();
        openWindow(words("sRGB --ambient 1 --camera 50,0,-500"));
        ASSERT_TRUE(until([] { return !placeOnScreen(view).isEmpty() && !isLoading(); }));
        viewAtRest();
        clickGamut(middleOfView());
    }

    /// Presses a key of the view. @return whether the camera turns by 9 degrees around L*
    testing::AssertionResult turnsByKey()
    {
        const QList<QVector3D> before = camera();
        hand.press("Left");
        viewAtRest();
        double angle = 0.0;
        if (until([&] { return std::abs((angle = angleBetween(before, camera())) - 9.0) < 0.05; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "it turned by " << angle << " degrees";
    }

    static double angleBetween(const QList<QVector3D>& before, const QList<QVector3D>& after)
    {
        if (before.size() != 2 || after.size() != 2)
            return 0.0;
        const auto direction = [](const QList<QVector3D>& of) {
            const QVector3D towards = of[0] - of[1];
            return std::atan2(double(towards.z()), double(towards.y()));
        };
        return std::abs(std::remainder(direction(after) - direction(before), 2.0 * std::numbers::pi)) *
               180.0 / std::numbers::pi;
    }
};

TEST_F(KeysInTheView, turnTheCameraOnly)
{
    const QImage controls = atRest(clipControls);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(turnsByKey());
        clickGamut(middleOfView() + QPoint(10, 20 * (i - 1)));
    }
    EXPECT_TRUE(until([&] { return screenshot().copy(clipControls()) == controls; }));
}

TEST_F(KeysInTheView, reachTheShortcuts)
{
    hand.press("T");
    hand.press("Ctrl+K"); // during the camera animation, which continues
    EXPECT_TRUE(comeToShow(upperFaces));
    hand.press("V"); // hides the gamut
    EXPECT_TRUE(until([this] {
        const QImage screen = screenshot();
        return difference(screen.pixelColor(placeFromTop(upperFaces[0])), colorOf(upperFaces[0])) > 40;
    }));
    hand.press("Ctrl+2");
    EXPECT_TRUE(until([] { return !placeOnScreen(QStringLiteral("^sRGB, AdobeRGB")).isEmpty(); }));
}

TEST_F(KeysInTheView, reachTheNextControlByTabAndReturn)
{
    const QImage controls = atRest(clipControls);
    hand.press("Tab"); // to the slider
    hand.press("Up");
    EXPECT_TRUE(until([&] { return screenshot().copy(clipControls()) != controls; }));
    hand.press("Down");
    hand.press("Shift+Tab");
    EXPECT_TRUE(turnsByKey());
    EXPECT_TRUE(until([&] { return screenshot().copy(clipControls()) == controls; }));
}

TEST_F(KeysInTheView, goToEachDialog)
{
    for (int i = 0; i < 3; ++i) {
        hand.press("Ctrl+E");
        answer("Size of the picture", words("320 200"));
        dismiss("Save picture");
        hand.press("Ctrl+S");
        dismiss("Save session");
        hand.press("H");
        dismiss("Keys");
        clickGamut(middleOfView() + QPoint(15, 12 * (i - 1)));
    }
    EXPECT_TRUE(turnsByKey());
}

TEST_F(KeysInTheView, goToADialogOpenedRightAfterAClick)
{
    for (int i = 0; i < 4; ++i) {
        hand.click(middleOfView() + QPoint(15, 12 * (i - 2))); // may arrive before the key, or after it
        hand.press("Ctrl+S");
        dismiss("Save session");
        hand.click(middleOfView() + QPoint(-15, 12 * (i - 2)));
        hand.press("Ctrl+E");
        answer("Size of the picture", words("320 200"));
        dismiss("Save picture");
    }
    EXPECT_TRUE(turnsByKey());
}

TEST_F(KeysInTheView, releaseShiftInADialog)
{
    const QVector3D interest = camera().value(1);
    hand.press("Ctrl+Shift+O"); // Shift is released in the dialog
    dismiss("Restore session");
    const QImage before = viewAtRest();
    hand.drag(middleOfView(), middleOfView() + QPoint(60, 0));
    EXPECT_TRUE(until([&] { return screenshot().copy(placeOnScreen(view)) != before; }));
    viewAtRest();
    EXPECT_LT((camera().value(1) - interest).length(), 0.01f); // turned, not moved
}

// --- What is kept for the next window -------------------------------------------------------------------

TEST_F(HandTest, sizeAndBackgroundAreKeptForTheNextWindow)
{
    const auto quit = [&] {
        ASSERT_TRUE(until([] { return hasKeyboard(window); }));
        hand.press("Ctrl+Q");
        ASSERT_TRUE(m_process.waitForFinished(maxWaitMs));
    };
    const auto sizeIs = [](const QSize& size) {
        return until([&] { return placeOnScreen(window).size() == size; });
    };
    const auto isBackground = [](const QColor& color) {
        return until([&] {
            const QRect area = placeOnScreen(view);
            return !area.isEmpty() && screenshot().pixelColor(area.bottomLeft() + QPoint(5, -5)) == color;
        });
    };
    const QStringList gamut{QStringLiteral("sRGB")};
    open(gamut + words("--size 1111x707 --background #203040 --no-grid"));
    quit();
    open(gamut + words("--no-grid"));
    EXPECT_TRUE(sizeIs({1111, 707}));
    EXPECT_TRUE(isBackground(QColor(0x20, 0x30, 0x40)));
    m_process.terminate();
    m_process.waitForFinished();

    open(gamut + words("--no-settings --no-grid --size 1000x700"));
    EXPECT_TRUE(sizeIs({1000, 700}));
    EXPECT_TRUE(isBackground(Qt::gray));
    quit();
    open(gamut + words("--no-grid"));
    EXPECT_TRUE(sizeIs({1111, 707})) << "--no-settings keeps nothing";
    EXPECT_TRUE(QFile::remove(environment().value(QStringLiteral("XDG_CONFIG_HOME")) +
                              QStringLiteral("/kvgamut/window")));
}

} // namespace
