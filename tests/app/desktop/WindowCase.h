// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CalmLayout.h"
#include "desktop/MainWindow.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

namespace kvtest {

/// A profile with four inks.
inline const QString cmyk = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");

/// Fixture with the visible window of the program.
class WindowCase : public testing::Test
{
protected:
    void SetUp() override
    {
        window.resize(1150, 760);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, 60000));
    }

    /// Opens @p inputs and waits until everything is computed and drawn.
    void open(const QStringList& inputs)
    {
        window.open(inputs);
        ASSERT_TRUE(settle());
        ASSERT_TRUE(layoutIsFinal());
        ASSERT_TRUE(settle());
    }

    bool settle()
    {
        return spinUntil([this] {
            return window.isComplete() && window.viewer().isSettled() && !window.viewer().picture().isNull();
        });
    }

    QImage settledPicture()
    {
        EXPECT_TRUE(settle());
        return window.viewer().picture();
    }

    template <typename Widget>
    Widget& control(const char* name)
    {
        auto* widget = window.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }

    QAction& action(const char* name)
    {
        auto* found = window.findChild<QAction*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    /// The window inside the viewer, which receives pointer events.
    QWindow& innerWindow() { return *window.viewer().findChild<QWindow*>(); }

    const GamutEntry& entry(int row = 0) { return window.gamuts().at(row); }
    QString path(const QString& name) const { return folder.filePath(name); }

    QString write(const QString& name, const QByteArray& bytes)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }

    /// Drags @p file to @p target and drops it.
    static void drop(QObject& target, const QString& file)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        const auto send = [&](QDropEvent&& event) {
            event.setAccepted(false);
            QCoreApplication::sendEvent(&target, &event);
            EXPECT_TRUE(event.isAccepted());
        };
        send(QDragEnterEvent(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier));
        send(QDragMoveEvent(QPoint(30, 30), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier));
        send(QDropEvent(QPointF(30, 30), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier));
    }

    QTemporaryDir folder;
    MainWindow window;
};

} // namespace kvtest
