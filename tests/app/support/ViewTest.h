// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Picture.h"
#include "Program.h"
#include "ScreenWindows.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtTest/QTest>

#include <algorithm>
#include <vector>

namespace kvtest {

constexpr int maxWaitMs = 120000;

/// Fixture that runs `kvgamut view` on the screen of the test.
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

    /// The position of the colour @p device on the screen, seen from the top.
    static QPoint placeFromTop(const Device& device)
    {
        const QRect view = placeOnScreen(QStringLiteral("^view$"));
        return view.topLeft() + topCamera(view.size()).pixelOf(labOf(device));
    }

    /// Waits until the view, seen from the top, shows the colours @p devices at their pixels. @return whether
    /// that happened before the timeout
    static bool comeToShow(const std::vector<Device>& devices)
    {
        return QTest::qWaitFor(
            [&] {
                if (placeOnScreen(QStringLiteral("^view$")).isEmpty())
                    return false;
                const QImage screen = screenshot();
                return std::all_of(devices.begin(), devices.end(), [&](const Device& device) {
                    return difference(screen.pixelColor(placeFromTop(device)), colorOf(device)) <= 12;
                });
            },
            maxWaitMs);
    }

    QProcess m_process;
    const std::vector<Device> upperFaces{
        {1, 0.5, 0.25}, {0.5, 1, 0.25}, {0.25, 1, 0.5}, {0.5, 0.25, 1}, {0.5, 0.75, 1}};
};

} // namespace kvtest
