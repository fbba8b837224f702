// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Spin.h"

#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtTest/QTest>

namespace kvtest {

/// A viewer in a small window that was drawn at least once. The cost of an idle viewer grows with its size.
class ShownViewer
{
public:
    explicit ShownViewer(int width = 200, int height = 150)
    {
        viewer.resize(width, height);
        viewer.show();
        shown = settle();
    }

    KVGLWidget& widget() { return *viewer.findChild<KVGLWidget*>(); }
    KV3DObject& root() { return widget().root(); }

    /// Waits until the picture is up to date.
    bool settle()
    {
        return spinUntil([this] { return widget().drawnFrames() > 0 && viewer.isSettled(); });
    }

    /// Waits until nothing was drawn for a while, so that no event of the window system is pending. False if
    /// drawing does not stop.
    bool comeToRest()
    {
        for (int i = 0; i < 25; ++i) {
            const int before = widget().drawnFrames();
            spinFor(200);
            if (widget().drawnFrames() == before)
                return true;
        }
        return false;
    }

    /// Waits for the picture to be up to date and returns it.
    QImage settledPicture()
    {
        settle();
        return viewer.picture();
    }

    KVGamut3DViewer viewer;
    bool shown = false;
};

} // namespace kvtest
