// SPDX-License-Identifier: Apache-2.0
#include "WindowCase.h"

#include "desktop/files/RecentFiles.h"
#include "desktop/panels/KeyList.h"
#include "model/export/GamutPage.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QThreadPool>
#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtGui/QDropEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include <QtOpenGL/QOpenGLWindow>

#include <cmath>
#include <malloc.h>
#include <sys/stat.h>

using kvtest::spinFor;
using kvtest::spinUntil;

namespace {

using kvtest::cmyk;

class Window : public kvtest::WindowCase
{
protected:
    QByteArray read(const QString& name)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// All actions of the menus, without separators and submenus.
    static QList<QAction*> actionsOf(const QList<QAction*>& actions)
    {
        QList<QAction*> result;
        for (QAction* action : actions) {
            if (action->menu())
                result.append(actionsOf(action->menu()->actions()));
            else if (!action->isSeparator())
                result.append(action);
        }
        return result;
    }
};

/// MB that the program has allocated.
double allocated()
{
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd) / 1048576.0;
}

TEST_F(Window, swapsNothingWhileNothingChanges)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& shown = *window.viewer().findChild<QOpenGLWindow*>();
    QSignalSpy swaps(&shown, &QOpenGLWindow::frameSwapped);
    const auto restsFor = [&](int ms) {
        swaps.clear();
        spinFor(ms);
        return swaps.isEmpty();
    };
    EXPECT_TRUE(spinUntil([&] { return restsFor(300); }));
    EXPECT_TRUE(restsFor(600));
    window.view().setTheme(KVViewTheme::fromPalette(QPalette(Qt::darkGreen)));
    EXPECT_TRUE(spinUntil([&] { return !swaps.isEmpty(); })) << "changes are shown all the same";
}

TEST_F(Window, freesItsMemoryWhenEverythingIsClosed)
{
    open({QStringLiteral("sRGB")}); // OpenGL is set up
    action("closeAll").trigger();
    double before = 0.0;
    ASSERT_TRUE(spinUntil([&before] { // what was returned has been returned
        before = allocated();
        spinFor(1500);
        return std::abs(allocated() - before) < 0.5;
    }));
    for (int i = 0; i < 10; ++i) {
        KVGamut::Settings settings;
        settings.gridPoints = 33 + 2 * i;
        window.addGamut(QStringLiteral("sRGB"), settings, {}, true);
    }
    ASSERT_TRUE(settle());
    KVCamera camera = window.view().camera();
    camera.position.setY(camera.position.y() + 20.0f);
    window.view().setCamera(camera);
    ASSERT_TRUE(settle());
    ASSERT_GT(allocated(), before + 100.0);
    action("closeAll").trigger();
    // Software renderers may keep the triangles of the last two frames: up to 36 MB each.
    EXPECT_TRUE(spinUntil([&] { return allocated() < before + 40.0; })) << allocated() - before << " MB more";
}

TEST_F(Window, welcomesWhileNothingIsOpen)
{
    EXPECT_TRUE(control<QWidget>("welcome").isVisible());
    control<QPushButton>("welcomeExample").click();
    EXPECT_FALSE(control<QWidget>("welcome").isVisible());
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.gamuts().rowCount(), 2);
    action("closeAll").trigger();
    EXPECT_TRUE(control<QWidget>("welcome").isVisible());
}

TEST_F(Window, opensFilesThatAreDroppedAnywhere)
{
    drop(window, cmyk); // while the welcome page covers the view
    ASSERT_TRUE(settle());
    drop(window.viewer(), cmyk);
    drop(innerWindow(), cmyk);
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.gamuts().rowCount(), 3);
    drop(innerWindow(), write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n"));
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.points().rowCount(), 1);
}

TEST_F(Window, makesTheOpenedFileTheActiveGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    EXPECT_EQ(window.gamuts().activeRow(), 0) << "the first of those that are opened together";
    drop(innerWindow(), cmyk);
    EXPECT_EQ(window.gamuts().activeRow(), 2);
    QTest::keyClick(&window, Qt::Key_F6); // at once
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry(2).computedWith.intent, KVVMRenderRelativeColorimetric);
    EXPECT_EQ(entry(0).computedWith.intent, KVVMRenderAbsoluteColorimetric);
    window.gamuts().setActiveRow(1);
    open({write(QStringLiteral("no profile.icc"), "hello")});
    EXPECT_EQ(window.gamuts().activeRow(), 1) << "as before";
}

TEST_F(Window, saysThatIntentsDiffer)
{
    open({QStringLiteral("sRGB"), QStringLiteral("OptimalColors"), cmyk});
    auto& note = control<QLabel>("intentNote");
    EXPECT_FALSE(note.isVisible()) << "a body without a profile has no intent";
    window.gamuts().setSettings(2, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(settle());
    EXPECT_TRUE(note.isVisible());
    EXPECT_TRUE(note.text().contains(QStringLiteral("Absolute colorimetric, Relative colorimetric")))
        << note.text().toStdString();
    window.gamuts().remove(2);
    EXPECT_FALSE(note.isVisible());
}

TEST_F(Window, framesWhatTakesTheDraggedFiles)
{
    open({QStringLiteral("sRGB")});
    const auto frameOf = [](QWidget& target) {
        QList<QWidget*> shown = target.findChildren<QWidget*>(QStringLiteral("dropFrame"));
        shown.removeIf([](const QWidget* side) { return !side->isVisible(); });
        return shown.size();
    };
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(cmyk)});
    const auto enter = [&](QObject& target) {
        QDragEnterEvent event(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &event);
    };
    auto& colors = control<QWidget>("colorsPanel");
    QWidget& centre = *window.centralWidget();
    enter(innerWindow());
    EXPECT_EQ(frameOf(centre), 4);
    EXPECT_EQ(frameOf(colors), 0);
    const QWidget* side = centre.findChild<QWidget*>(QStringLiteral("dropFrame"));
    EXPECT_EQ(side->palette().color(side->backgroundRole()), QApplication::palette().highlight().color());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&innerWindow(), &leave);
    EXPECT_EQ(frameOf(centre), 0);
    enter(colors);
    EXPECT_EQ(frameOf(colors), 4);
    drop(colors, write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n"));
    EXPECT_EQ(frameOf(colors), 0);
    drop(innerWindow(), cmyk);
    EXPECT_EQ(frameOf(centre), 0);
}

TEST_F(Window, showsTheInnerGamutWhenTheOuterOneIsOpenedFirst)
{
    open({QStringLiteral("ProPhoto"), QStringLiteral("sRGB")});
    EXPECT_FLOAT_EQ(entry(0).look.opacity, KVGamutLook::translucentOpacity);
    EXPECT_FLOAT_EQ(entry(1).look.opacity, 1.0f);
}

TEST_F(Window, ignoresDropsWithoutFiles)
{
    QMimeData data;
    data.setText(QStringLiteral("words"));
    QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.setAccepted(false);
    QCoreApplication::sendEvent(&window.viewer(), &event);
    EXPECT_FALSE(event.isAccepted());
}

TEST_F(Window, reportsAFileThatDoesNotOpen)
{
    QSignalSpy problems(&window, &MainWindow::problem);
    auto& bar = control<QWidget>("messageBar");
    EXPECT_FALSE(bar.isVisible());
    open({write(QStringLiteral("no profile.icc"), "hello"), QStringLiteral("sRGB")});
    EXPECT_TRUE(bar.isVisible());
    ASSERT_EQ(problems.count(), 1);
    EXPECT_EQ(problems[0][0].value<Problem>().subject, path(QStringLiteral("no profile.icc")));
    ASSERT_EQ(window.gamuts().rowCount(), 1);
    EXPECT_FLOAT_EQ(entry().look.opacity, 1.0f); // the first visible gamut is opaque
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(Window, showsTheLastIntentChosenWhileLoading)
{
    window.addGamut(cmyk, {KVVMRenderAbsoluteColorimetric, false, 65}, {});
    kvtest::spinFor(20);
    for (const char* name : {"intent0", "intent2", "intent1"}) {
        action(name).trigger();
        kvtest::spinFor(10);
    }
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry().computedWith.intent, KVVMRenderRelativeColorimetric);
    EXPECT_NEAR(window.viewer().volume(entry().id), 411424.0f, 1500.0f);
}

TEST_F(Window, keepsThePresentGamutWhenALoadIsCancelled)
{
    open({cmyk});
    const QImage before = settledPicture();
    window.gamuts().setSettings(0, {KVVMRenderPerceptual, false, 129});
    auto& cancel = control<QToolButton>("cancel");
    EXPECT_TRUE(cancel.isVisible());
    EXPECT_TRUE(control<QWidget>("progress").isVisible());
    cancel.click();
    EXPECT_FALSE(cancel.isVisible());
    EXPECT_EQ(settledPicture(), before);
    EXPECT_EQ(entry().settings, KVGamut::Settings());
}

TEST_F(Window, canBeDestroyedWhileLoading)
{
    auto other = std::make_unique<MainWindow>();
    other->show();
    other->addGamut(cmyk, {KVVMRenderPerceptual, false, 129}, {});
    other->addGamut(QStringLiteral("sRGB"));
    other->addPoints({write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n")});
    kvtest::spinFor(30);
    other.reset();
    EXPECT_TRUE(kvtest::spinUntil([] { return KVCompletionProtocol::runningTasks().isEmpty(); }));
}

TEST_F(Window, describesTheClickedColour)
{
    open({QStringLiteral("sRGB")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    auto& finding = control<QLabel>("finding");
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    // seen from the top, white is in the middle of the view
    EXPECT_TRUE(finding.text().contains(QStringLiteral("sRGB"))) << finding.text().toStdString();
    EXPECT_TRUE(finding.text().contains(QStringLiteral("L* 100.0"))) << finding.text().toStdString();
    EXPECT_EQ(window.viewer().markerSet().size(), 1); // a marker at the clicked position
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_FALSE(finding.text().contains(QStringLiteral("sRGB")));
    EXPECT_TRUE(window.viewer().markerSet().isEmpty());
}

TEST_F(Window, describesWhatTheMarkerOfTheLastClickHides)
{
    open({QStringLiteral("sRGB")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    const QString text = control<QLabel>("finding").text();
    ASSERT_TRUE(settle());
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    EXPECT_EQ(control<QLabel>("finding").text(), text);
    EXPECT_EQ(window.viewer().markerSet().size(), 1);
}

TEST_F(Window, describesAPointInFrontOfASurface)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "name,L,a,b\nabove,120,0,0\n")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    const QString text = control<QLabel>("finding").text();
    EXPECT_TRUE(text.startsWith(QStringLiteral("above\nL* 120.0"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("outside sRGB"))) << text.toStdString();
}

TEST_F(Window, describesWhatTheCutReveals)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "name,L,a,b\nwithin,40,0,0\n")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    const auto text = [&] {
        QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
        return control<QLabel>("finding").text();
    };
    EXPECT_TRUE(text().startsWith(QStringLiteral("Surface of sRGB"))) << text().toStdString();
    action("cut").trigger();
    ASSERT_TRUE(settle());
    EXPECT_TRUE(text().contains(QStringLiteral("L* 50.0"))) << text().toStdString(); // the lid
    control<QDoubleSpinBox>("clipNumber").setValue(35.0);                            // below the point
    ASSERT_TRUE(settle());
    EXPECT_TRUE(text().startsWith(QStringLiteral("within\nL* 40.0"))) << text().toStdString();
}

TEST_F(Window, keepsTheLookOfAGamutThatIsComputedAgain)
{
    open({cmyk});
    KVGamutLook look = entry().look;
    look.color = Qt::red;
    look.opacity = 0.5f;
    look.projection = false;
    look.mode = KVGamut3DViewer::Flat;
    window.gamuts().setLook(0, look);
    window.gamuts().setSettings(0, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(settle());
    const QImage changedBefore = settledPicture();
    EXPECT_EQ(window.view().look(entry().id), look);

    action("closeAll").trigger(); // the same with the look set after the computation
    window.addGamut(cmyk, {KVVMRenderRelativeColorimetric, false, -1}, {});
    ASSERT_TRUE(settle());
    window.gamuts().setLook(0, look);
    EXPECT_EQ(settledPicture(), changedBefore);
}

TEST_F(Window, doesNotInspectAfterADrag)
{
    open({QStringLiteral("sRGB")});
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mousePress(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    QTest::mouseMove(&innerWindow(), middle + QPoint(40, 10));
    QTest::mouseRelease(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle + QPoint(40, 10));
    EXPECT_TRUE(window.viewer().markerSet().isEmpty());
}

TEST_F(Window, copiesTheSelectedNumbers)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& table = control<QTableView>("comparison");
    table.setFocus();
    table.setCurrentIndex(table.model()->index(1, ComparisonModel::Volume));
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    bool ok = false;
    EXPECT_NEAR(QGuiApplication::clipboard()->text().toDouble(&ok), 1233000.0, 2000.0);
    EXPECT_TRUE(ok);
    action("copyTable").trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
}

TEST_F(Window, copiesAndPastesTheCamera)
{
    open({QStringLiteral("sRGB")});
    const QImage before = settledPicture();
    action("copyCamera").trigger();
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    EXPECT_NE(settledPicture(), before);
    action("pasteCamera").trigger();
    ASSERT_TRUE(settle());
    EXPECT_LT((window.viewer().camera() - QVector3D(265, 160, -450)).length(), 60.0f);

    QSignalSpy problems(&window, &MainWindow::problem);
    QGuiApplication::clipboard()->setText(QStringLiteral("no camera"));
    action("pasteCamera").trigger();
    EXPECT_EQ(problems.count(), 1);
}

TEST_F(Window, savesPicturesOfAnySize)
{
    open({QStringLiteral("sRGB")});
    ASSERT_TRUE(window.savePicture(path(QStringLiteral("größe 1.png")), {1500, 900}));
    QImage saved(path(QStringLiteral("größe 1.png")));
    EXPECT_EQ(saved.colorSpace(), QColorSpace(QColorSpace::SRgb));
    saved.setColorSpace({}); // comparisons include it
    EXPECT_EQ(saved.size(), QSize(1500, 900));
    EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32), window.viewer().picture({1500, 900}));
    QSignalSpy problems(&window, &MainWindow::problem);
    EXPECT_FALSE(window.savePicture(path(QStringLiteral("no/such/folder.png")), {100, 100}));
    EXPECT_FALSE(window.savePicture(path(QStringLiteral("picture.xyz")), {100, 100}));
    EXPECT_EQ(problems.count(), 2);
    window.copyPicture();
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), window.viewer().picture().size());
}

TEST_F(Window, savesTheSectionAsADrawing)
{
    open({QStringLiteral("sRGB")});
    ASSERT_TRUE(window.saveSection(path(QStringLiteral("s.svg"))));
    EXPECT_TRUE(read(QStringLiteral("s.svg")).contains("<svg"));
    EXPECT_TRUE(read(QStringLiteral("s.svg")).contains("sRGB"));
    ASSERT_TRUE(window.saveSection(path(QStringLiteral("s.pdf"))));
    EXPECT_TRUE(read(QStringLiteral("s.pdf")).startsWith("%PDF"));
    EXPECT_FALSE(window.saveSection(path(QStringLiteral("s.doc"))));
}

TEST_F(Window, savesThePageThatTheCommandExports)
{
    const QStringList names{QStringLiteral("sRGB"), QStringLiteral("DisplayP3")};
    open(names);
    window.savePage(path(QStringLiteral("seite é.html")));
    ASSERT_TRUE(settle());
    QList<GamutPage::Gamut> gamuts;
    for (const QString& name : names) {
        const GamutSource source = *GamutSource::open(name);
        gamuts.append({name, GamutPage::descriptionOf(source), {}, {}, *source.compute({})});
    }
    GamutPage::chooseKeys(gamuts);
    GamutPage::chooseOpacities(gamuts);
    EXPECT_EQ(read(QStringLiteral("seite é.html")), GamutPage::of(gamuts));
}

TEST_F(Window, savesAPageOfGamutsAsTheyLook)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3"), QStringLiteral("AdobeRGB")});
    KVGamutLook look;
    look.visible = false;
    look.color = QColor(1, 2, 3);
    window.gamuts().setLook(0, look);
    look = {};
    look.mode = KVGamut3DViewer::Wireframe;
    window.gamuts().setLook(1, look);
    look = {};
    look.surface = false;
    look.opacity = 0.75f;
    window.gamuts().setLook(2, look);
    window.savePage(path(QStringLiteral("p.html")));
    ASSERT_TRUE(settle());
    const QByteArray page = read(QStringLiteral("p.html"));
    EXPECT_TRUE(page.contains("\"key\":\"#010203\""));
    EXPECT_EQ(page.count("\"visible\":false"), 2);
    EXPECT_TRUE(page.contains("\"opacity\":0.35"));
    EXPECT_TRUE(page.contains("\"opacity\":0.75"));
}

TEST_F(Window, saysWhyAPageCannotBeSaved)
{
    QSignalSpy problems(&window, &MainWindow::problem);
    const auto code = [&] { return problems.last().first().value<Problem>().code; };
    window.savePage(path(QStringLiteral("p.html")));
    ASSERT_TRUE(kvtest::spinUntil([&] { return problems.count() == 1; }));
    EXPECT_EQ(code(), Problem::Code(ProblemCode::NoGamutToSave));
    open({QStringLiteral("sRGB")});
    window.savePage(path(QStringLiteral("p.doc")));
    ASSERT_TRUE(kvtest::spinUntil([&] { return problems.count() == 2; }));
    EXPECT_EQ(code(), Problem::Code(ProblemCode::PageFormatUnknown));
    window.savePage(path(QStringLiteral("no/p.html")));
    ASSERT_TRUE(kvtest::spinUntil([&] { return problems.count() == 3; }));
    EXPECT_EQ(code(), Problem::Code(ProblemCode::CannotWrite));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("p.html"))));
}

TEST_F(Window, canBeClosedWhileAPageIsWritten)
{
    auto other = std::make_unique<MainWindow>();
    other->addGamut(QStringLiteral("sRGB"));
    ASSERT_TRUE(kvtest::spinUntil([&] { return other->gamuts().at(0).hasGamut(); }));
    other->savePage(path(QStringLiteral("late.html")));
    other.reset();
    ASSERT_TRUE(kvtest::spinUntil([this] { return QFileInfo::exists(path(QStringLiteral("late.html"))); }));
    EXPECT_TRUE(read(QStringLiteral("late.html")).endsWith("</html>\n")) << "all of it";
}

TEST_F(Window, isRestoredFromItsSession)
{
    open({QStringLiteral("sRGB"), cmyk, write(QStringLiteral("p.csv"), "L,a,b\n60,-120,90\n50,0,0\n")});
    window.gamuts().setSettings(1, {KVVMRenderRelativeColorimetric, true, 9});
    window.gamuts().setActiveRow(1);
    for (const char* name : {"fromTop", "plane", "backgroundDark", "lightLeft", "cut", "showSection",
                             "sectionColors", "orthogonal"})
        action(name).trigger();
    const QImage before = settledPicture();
    const Session saved = window.session();
    ASSERT_TRUE(window.saveSession(path(QStringLiteral("all.kvsession"))));

    action("closeAll").trigger();
    for (const char* name : {"fromBottom", "plane", "backgroundLight", "lightAbove", "cut", "showSection",
                             "sectionColors", "orthogonal"})
        action(name).trigger();
    // The empty window hides the viewer, which draws nothing while it is hidden.
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.isComplete(); }));
    ASSERT_TRUE(window.openSession(path(QStringLiteral("all.kvsession"))));
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.session(), saved);
    EXPECT_EQ(settledPicture(), before);
    EXPECT_TRUE(action("plane").isChecked()); // the controls show the session's values
    EXPECT_TRUE(action("cut").isChecked());
    EXPECT_TRUE(action("showSection").isChecked());
    EXPECT_TRUE(action("sectionColors").isChecked());
}

TEST_F(Window, keepsItsContentWhenASessionIsInvalid)
{
    open({QStringLiteral("sRGB")});
    QSignalSpy problems(&window, &MainWindow::problem);
    EXPECT_FALSE(window.openSession(write(QStringLiteral("bad.kvsession"), "hello")));
    EXPECT_FALSE(window.openSession(path(QStringLiteral("missing.kvsession"))));
    EXPECT_EQ(problems.count(), 2);
    EXPECT_EQ(window.gamuts().rowCount(), 1);
}

TEST_F(Window, staysUsableWhileASessionDoesNotAnswer)
{
    const QString pipe = path(QStringLiteral("pipe.kvsession"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0); // nobody writes to it
    window.open({pipe});
    EXPECT_FALSE(window.isComplete());
    window.cancelLoading();
    EXPECT_TRUE(window.isComplete());
    window.readSession(pipe); // the window can also be closed
}

TEST_F(Window, canBeGoneWhenASessionAnswers)
{
    const QString pipe = path(QStringLiteral("pipe.kvsession"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    {
        MainWindow other;
        other.readSession(pipe);
    }
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone()); // the work ends without its window
}

TEST_F(Window, remembersRecentFiles)
{
    RecentFiles::clear();
    const QString points = write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n");
    open({cmyk, QStringLiteral("sRGB"), points});
    EXPECT_EQ(RecentFiles::list(), (QStringList{points, cmyk}));
    QFile::remove(points);
    EXPECT_EQ(RecentFiles::list(), QStringList{cmyk});
}

TEST_F(Window, hasAUniqueKeyForEveryAction)
{
    RecentFiles::clear();
    QHash<QString, QString> owners;
    const auto actions = actionsOf(window.menuBar()->actions());
    EXPECT_GT(actions.size(), 50);
    for (const QAction* action : actions) {
        EXPECT_FALSE(action->shortcuts().isEmpty()) << action->text().toStdString();
        const auto keys = action->shortcuts();
        for (const QKeySequence& key : keys) {
            const QString name = key.toString();
            EXPECT_FALSE(owners.contains(name)) << name.toStdString() << ": " << action->text().toStdString();
            owners.insert(name, action->text());
        }
    }
}

TEST_F(Window, listsItsKeysUnderH)
{
    QTest::keyClick(&window, Qt::Key_H);
    auto* list = window.findChild<KeyList*>();
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->isVisible());
    EXPECT_FALSE(list->isModal());
    const auto* tree = list->findChild<QTreeWidget*>();
    const auto actions = actionsOf(window.menuBar()->actions());
    for (const QAction* action : actions) {
        const QString text = action->text().remove(QLatin1Char('&'));
        const auto items = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive, 0);
        ASSERT_FALSE(items.isEmpty()) << text.toStdString();
    }
}

TEST_F(Window, reachesEveryControlByTab)
{
    open({QStringLiteral("sRGB")});
    window.gamuts().setSettings(0, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(settle());
    control<QWidget>("gamutList").setFocus();
    QStringList reached;
    for (int i = 0; i < 29; ++i) {
        QWidget* widget = QApplication::focusWidget();
        ASSERT_NE(widget, nullptr);
        reached.append(widget->objectName());
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    for (const char* name :
         {"gamutList",   "intent",     "blackPoint", "grid",       "mode",       "opacity",    "ambient",
          "surface",     "projection", "primaries",  "view",       "clipSlider", "clipNumber", "clipCut",
          "colorSearch", "colorZone",  "colors",     "pointFiles", "tolerance",  "addPoints",  "comparison"})
        EXPECT_TRUE(reached.contains(QLatin1String(name)))
            << name << " is not among " << reached.join(QLatin1Char(' ')).toStdString();
}

TEST_F(Window, followsADarkPalette)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(0x35, 0x37, 0x3a), QColor(0x2b, 0x2d, 0x30)));
    QImage section;
    EXPECT_TRUE(kvtest::spinUntil([&] {
        section = control<QWidget>("slice").grab().toImage();
        return section.pixelColor(2, 2).lightness() < 100; // background
    }));
    int brightest = 0; // text and frame on it
    for (int y = 0; y < section.height(); ++y)
        for (int x = 0; x < section.width(); ++x)
            brightest = std::max(brightest, section.pixelColor(x, y).lightness());
    EXPECT_GT(brightest, 150);
    QApplication::setPalette(before);
}

TEST_F(Window, passesKeysToTheView)
{
    open({QStringLiteral("sRGB")});
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Plus}) {
        const QVector3D before = window.viewer().camera();
        QTest::keyClick(&control<QWidget>("view"), key);
        ASSERT_TRUE(settle());
        EXPECT_NE(window.viewer().camera(), before) << key;
    }
}

} // namespace
