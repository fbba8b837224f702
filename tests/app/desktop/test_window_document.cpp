// SPDX-License-Identifier: Apache-2.0
// The session of the window as a document: unsaved changes, questions about them, and what a crash leaves.

#include "DialogAnswer.h"
#include "WindowCase.h"

#include "desktop/files/Autosave.h"
#include "desktop/files/SessionFile.h"
#include "desktop/panels/OfferBar.h"
#include "desktop/panels/UnsavedQuestion.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <sys/wait.h>
#include <unistd.h>

using kvtest::answered;
using kvtest::chooseFile;
using kvtest::spinUntil;

namespace {

const QString sRGB = QStringLiteral("sRGB"), p3 = QStringLiteral("DisplayP3");

/// Presses the button @p which of the question with the keyboard.
std::function<void(UnsavedQuestion&)> withKeys(QMessageBox::StandardButton which)
{
    return [which](UnsavedQuestion& question) {
        if (which == QMessageBox::Cancel) {
            QTest::keyClick(&question, Qt::Key_Escape);
        } else if (which == QMessageBox::Save) {
            QTest::keyClick(&question, Qt::Key_Return);
        } else {
            for (int i = 0; i < 3 && QApplication::focusWidget() != question.button(which); ++i)
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        }
    };
}

class Document : public kvtest::WindowCase
{
protected:
    void SetUp() override
    {
        WindowCase::SetUp();
        window.protectWork();
    }
    /// A session of one gamut, in a file that the window shows.
    void openSaved()
    {
        open({sRGB});
        ASSERT_TRUE(window.saveSession(file));
        ASSERT_TRUE(settle());
        ASSERT_FALSE(window.isWindowModified());
    }
    void change()
    {
        action("activeProjection").trigger();
        ASSERT_TRUE(spinUntil([this] { return window.isWindowModified(); }));
    }
    testing::AssertionResult asked(const std::function<void()>& act, QMessageBox::StandardButton answer)
    {
        return answered<UnsavedQuestion>(act, withKeys(answer));
    }
    QStringList inputs()
    {
        QStringList all;
        for (const GamutEntry& gamut : window.gamuts().entries())
            all.append(gamut.input);
        return all;
    }
    /// Whether the session in the file has the projection of its first gamut.
    bool savedProjection() const { return SessionFile::read(file)->gamuts.at(0).look.projection; }

    const QString file = path(QStringLiteral("monday.kvsession"));
};

TEST_F(Document, isMarkedWhileItHasUnsavedChanges)
{
    EXPECT_FALSE(window.isWindowModified());
    open({sRGB});
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("sRGB[*] – kvgamut"));
    action("undo").trigger();
    EXPECT_TRUE(spinUntil([this] { return !window.isWindowModified(); }));
    action("redo").trigger();
    EXPECT_TRUE(spinUntil([this] { return window.isWindowModified(); }));
    EXPECT_TRUE(chooseFile([&] { action("saveSession").trigger(); }, file));
    EXPECT_TRUE(spinUntil([this] { return !window.isWindowModified(); }));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("monday.kvsession[*] – kvgamut"));
    change();
    action("undo").trigger();
    EXPECT_TRUE(spinUntil([this] { return !window.isWindowModified(); }));
}

TEST_F(Document, isSavedToTheFileItCameFrom)
{
    openSaved();
    change();
    const bool projection = entry().look.projection;
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(savedProjection(), projection);
    EXPECT_TRUE(spinUntil([this] { return !window.isWindowModified(); }));
    const QString other = path(QStringLiteral("tuesday.kvsession"));
    EXPECT_TRUE(chooseFile([&] { action("saveSessionAs").trigger(); }, other));
    change();
    action("saveSession").trigger();
    EXPECT_EQ(savedProjection(), projection) << "the first file stays";
    EXPECT_NE(SessionFile::read(other)->gamuts.at(0).look.projection, projection);
}

TEST_F(Document, isNotClosedBeforeItsChangesAreSaved)
{
    openSaved();
    change();
    EXPECT_TRUE(asked([&] { action("quit").trigger(); }, QMessageBox::Cancel));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(asked([&] { window.close(); }, QMessageBox::Save));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(savedProjection(), entry().look.projection);
}

TEST_F(Document, canBeDiscarded)
{
    openSaved();
    const bool before = savedProjection();
    change();
    EXPECT_TRUE(asked([&] { window.close(); }, QMessageBox::Discard));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(savedProjection(), before);
}

TEST_F(Document, withoutAFileIsSavedWhereTheUserSays)
{
    open({sRGB});
    const auto close = [&] { window.close(); };
    EXPECT_TRUE(asked(
        [&] {
            const auto cancel = [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
            EXPECT_TRUE(answered<QFileDialog>(close, cancel));
        },
        QMessageBox::Save));
    EXPECT_TRUE(window.isVisible()) << "no file was chosen";
    EXPECT_TRUE(asked([&] { EXPECT_TRUE(chooseFile(close, file)); }, QMessageBox::Save));
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(SessionFile::read(file));
}

TEST_F(Document, staysOpenWhenSavingFails)
{
    const QString place = path(QStringLiteral("usb"));
    ASSERT_TRUE(QDir().mkpath(place));
    open({sRGB});
    ASSERT_TRUE(window.saveSession(place + QStringLiteral("/a.kvsession")));
    ASSERT_TRUE(QDir(place).removeRecursively());
    change();
    QSignalSpy problems(&window, &MainWindow::problem);
    EXPECT_TRUE(asked([&] { window.close(); }, QMessageBox::Save));
    EXPECT_EQ(problems.count(), 1);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.isWindowModified());
}

TEST_F(Document, isAskedForBeforeItIsReplaced)
{
    open({p3});
    ASSERT_TRUE(window.saveSession(path(QStringLiteral("other.kvsession"))));
    action("closeAll").trigger(); // nothing is lost
    EXPECT_TRUE(inputs().isEmpty());
    EXPECT_FALSE(window.isWindowModified());
    openSaved();
    change();
    EXPECT_TRUE(asked([&] { action("closeAll").trigger(); }, QMessageBox::Cancel));
    EXPECT_EQ(inputs(), QStringList{sRGB});
    EXPECT_TRUE(
        asked([&] { window.openSession(path(QStringLiteral("other.kvsession"))); }, QMessageBox::Cancel));
    EXPECT_EQ(inputs(), QStringList{sRGB});
    EXPECT_TRUE(
        asked([&] { window.openSession(path(QStringLiteral("other.kvsession"))); }, QMessageBox::Discard));
    EXPECT_EQ(inputs(), QStringList{p3});
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("other.kvsession[*] – kvgamut"));
    EXPECT_FALSE(window.isWindowModified());
}

TEST_F(Document, returnsToItsFileWhenOpeningAnotherIsUndone)
{
    openSaved();
    action("closeAll").trigger();
    ASSERT_TRUE(spinUntil([this] { return window.isComplete(); }));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("kvgamut[*]"));
    open({p3});
    action("undo").trigger();
    action("undo").trigger();
    ASSERT_TRUE(settle());
    EXPECT_EQ(inputs(), QStringList{sRGB});
    EXPECT_EQ(window.windowTitle(), QStringLiteral("monday.kvsession[*] – kvgamut"));
    window.protectWork(); // the window may be closed
}

TEST_F(Document, ofTheCommandLineIsNoChange)
{
    MainWindow other;
    other.addGamut(sRGB, {}, {});
    other.addGamut(QStringLiteral("/there/is/none.icc"), {}, {});
    other.protectWork();
    other.show();
    EXPECT_FALSE(other.isWindowModified());
    ASSERT_TRUE(spinUntil([&] { return other.isComplete(); }));
    EXPECT_FALSE(other.isWindowModified());
    ASSERT_EQ(other.gamuts().rowCount(), 1);
    EXPECT_TRUE(other.close()); // without a question
}

TEST_F(Document, isChangedByTheUserWhileItIsLoaded)
{
    MainWindow other;
    other.addGamut(sRGB, {}, {});
    other.protectWork();
    other.gamuts().changeActiveLook([](KVGamutLook& look) { look.projection = false; });
    ASSERT_TRUE(spinUntil([&] { return other.isComplete() && other.isWindowModified(); }));
    other.findChild<QAction*>(QStringLiteral("undo"))->trigger();
    ASSERT_TRUE(spinUntil([&] { return other.isComplete() && !other.isWindowModified(); }));
    EXPECT_EQ(other.gamuts().rowCount(), 1);
    EXPECT_TRUE(other.gamuts().at(0).look.projection);
}

TEST_F(Document, isNotChangedByTurningTheView)
{
    openSaved();
    action("fromTop").trigger();
    action("plane").trigger();
    QTest::keyClick(&control<QWidget>("view"), Qt::Key_Left);
    ASSERT_TRUE(settle());
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_TRUE(window.close());
}

// --- After a crash --------------------------------------------------------------------------------------

class Crash : public Document
{
protected:
    void SetUp() override
    {
        m_before = qgetenv("XDG_STATE_HOME");
        qputenv("XDG_STATE_HOME", QFile::encodeName(path(QStringLiteral("state"))));
        WindowCase::SetUp();
    }
    void TearDown() override { qputenv("XDG_STATE_HOME", m_before); }

    static QStringList kept()
    {
        return QDir(Autosave::folder()).entryList({QStringLiteral("*.kvsession")}, QDir::Files);
    }
    /// What a window that crashed leaves: its lock file is of a process that has ended.
    static void leave(const UnsavedWork& work, const QString& name = QStringLiteral("a.kvsession"))
    {
        ASSERT_TRUE(QDir().mkpath(Autosave::folder()));
        const QString place = QDir(Autosave::folder()).filePath(name);
        QFile out(place);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(work.toJson());
        const pid_t child = fork();
        if (child == 0) {
            QLockFile lock(place + QStringLiteral(".lock"));
            _exit(lock.tryLock(0) ? 0 : 1);
        }
        int status = 1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
        ASSERT_TRUE(QFile::exists(place + QStringLiteral(".lock")));
    }
    static UnsavedWork workOf(const QString& input, const QString& document = {})
    {
        UnsavedWork work;
        work.session.gamuts.append({input, {}, {}});
        work.document = document;
        return work;
    }
    QString offer() { return control<OfferBar>("offers").sentence(QStringLiteral("lost")); }
    void press(const char* button)
    {
        auto& widget = control<QPushButton>(button);
        widget.setFocus();
        QTest::keyClick(&widget, Qt::Key_Space);
    }

private:
    QByteArray m_before;
};

TEST_F(Crash, leavesTheUnsavedChanges)
{
    window.protectWork();
    EXPECT_TRUE(kept().isEmpty());
    open({sRGB});
    ASSERT_TRUE(spinUntil([] { return kept().size() == 1; }));
    const QFileInfo work(QDir(Autosave::folder()).filePath(kept().first()));
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther;
    EXPECT_TRUE(spinUntil([&] { return !(QFile::permissions(work.filePath()) & others); }));
    EXPECT_FALSE(QFile::permissions(Autosave::folder()) & (others | QFile::ExeGroup | QFile::ExeOther));
    EXPECT_EQ(LostWork::newest(), nullptr) << "this window is open";
    ASSERT_TRUE(window.saveSession(file));
    EXPECT_TRUE(spinUntil([] { return kept().isEmpty(); })) << "nothing is unsaved";
}

TEST_F(Crash, leavesNothingWhenTheWindowEndsNormally)
{
    {
        MainWindow other;
        other.protectWork();
        other.addGamut(sRGB);
        ASSERT_TRUE(spinUntil([] { return kept().size() == 1; }));
    }
    EXPECT_TRUE(QDir(Autosave::folder()).isEmpty());
}

TEST_F(Crash, isFollowedByAnOfferToRestore)
{
    leave(workOf(sRGB, file));
    window.protectWork();
    EXPECT_TRUE(offer().startsWith(QStringLiteral("A window ended unexpectedly."))) << offer().toStdString();
    EXPECT_TRUE(control<QWidget>("offers").isVisible());
    press("restoreLost");
    ASSERT_TRUE(settle());
    EXPECT_EQ(inputs(), QStringList{sRGB});
    EXPECT_FALSE(control<QWidget>("offers").isVisible());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("monday.kvsession[*] – kvgamut"));
    EXPECT_FALSE(kept().contains(QStringLiteral("a.kvsession")));
    EXPECT_TRUE(asked([&] { window.close(); }, QMessageBox::Save));
    EXPECT_TRUE(SessionFile::read(file));
}

TEST_F(Crash, canBeForgotten)
{
    leave(workOf(sRGB));
    leave(workOf(p3), QStringLiteral("b.kvsession"));
    window.protectWork();
    press("discardLost");
    EXPECT_EQ(kept().size(), 1);
    press("discardLost"); // that of the other one
    EXPECT_TRUE(kept().isEmpty());
    EXPECT_FALSE(control<QWidget>("offers").isVisible());
    EXPECT_TRUE(inputs().isEmpty());
}

TEST_F(Crash, isOfferedByOneWindowOnlyAndAgainUntilAnswered)
{
    leave(workOf(sRGB));
    {
        MainWindow other;
        other.protectWork();
        window.protectWork();
        EXPECT_TRUE(offer().isEmpty());
    }
    window.protectWork();
    EXPECT_FALSE(offer().isEmpty());
}

TEST_F(Crash, ofAnAutomaticRunLeavesNothing)
{
    leave(workOf(p3));
    MainWindow other; // without protectWork()
    other.show();
    other.addGamut(sRGB);
    ASSERT_TRUE(spinUntil([&] { return other.isComplete() && other.isWindowModified(); }));
    EXPECT_TRUE(other.findChild<OfferBar*>()->isHidden());
    EXPECT_TRUE(other.close()); // without a question
    EXPECT_EQ(kept(), QStringList{QStringLiteral("a.kvsession")});
}

TEST_F(Crash, withAnUnreadableFileIsNotOffered)
{
    ASSERT_TRUE(QDir().mkpath(Autosave::folder()));
    QFile out(QDir(Autosave::folder()).filePath(QStringLiteral("a.kvsession")));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write("hello");
    out.close();
    window.protectWork();
    EXPECT_TRUE(offer().isEmpty());
    EXPECT_FALSE(control<QWidget>("messageBar").isVisible());
}

TEST_F(Crash, withoutRoomForTheChangesIsAnnouncedOnce)
{
    write(QStringLiteral("state"), "a file where the folder should be");
    window.protectWork();
    QSignalSpy problems(&window, &MainWindow::problem);
    open({sRGB});
    ASSERT_TRUE(spinUntil([&] { return problems.count() == 1; }));
    change();
    ASSERT_TRUE(settle()); // tried again
    EXPECT_EQ(problems.count(), 1);
    EXPECT_EQ(problems[0][0].value<Problem>().code, Problem::Code(ProblemCode::CannotWrite));
}

} // namespace
