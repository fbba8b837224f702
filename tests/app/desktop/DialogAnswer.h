// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

#include <functional>

/// Answers modal dialogs, where the call that opens the dialog blocks until it is closed.
namespace kvtest {

/// Runs @p act, and calls @p answer with the dialog of this type that it opens. Fails if no such dialog
/// opens, or if the answer does not close it. The window that was active before is active again at the
/// end: keys that are pressed next reach it, also if the display is slow to return the focus.
template <typename Dialog>
testing::AssertionResult answered(const std::function<void()>& act,
                                  const std::function<void(Dialog&)>& answer)
{
    constexpr int maxMs = 60000;
    enum
    {
        Waiting,
        Answered,
        Stuck
    } state = Waiting;
    const QPointer<QWidget> before = QApplication::activeWindow();
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (state == Waiting && dialog && dialog->isActiveWindow()) {
            state = Answered;
            answer(*dialog);
        } else if (dialog && sinceStart.elapsed() > maxMs) {
            state = Stuck;
            dialog->reject();
        }
    });
    look.start(10);
    act();
    look.stop();
    const auto isBack = [&] { return !before || !before->isVisible() || before->isActiveWindow(); };
    if (state == Answered && !QTest::qWaitFor(isBack, maxMs))
        return testing::AssertionFailure() << "the focus did not return from the dialog";
    if (state == Answered)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << (state == Waiting ? "no dialog came" : "the dialog stayed");
}

/// Runs @p act, which opens a file dialog, and types @p file there.
inline testing::AssertionResult chooseFile(const std::function<void()>& act, const QString& file)
{
    return answered<QFileDialog>(act, [&file](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(file);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

} // namespace kvtest
