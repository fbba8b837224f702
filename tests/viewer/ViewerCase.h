// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>
#include <scene/KV3DObject.h>

#include "support/FakeVelmora.h"
#include "support/SceneCheck.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QTest>

#include <memory>

namespace kvtest {

/// Names of gamuts: of one that is loaded, of a second one, and of none.
inline const QString id = QStringLiteral("sRGB");
inline const QString other = QStringLiteral("Display P3");
inline const QString unknown = QStringLiteral("unknown");

} // namespace kvtest

/// A case with a viewer that is never shown, and access to its scene.
class ViewerCase : public fakevelmora::Case
{
protected:
    void SetUp() override
    {
        Case::SetUp();
        viewer = std::make_unique<KVGamut3DViewer>();
    }

    void TearDown() override
    {
        viewer.reset();
        Case::TearDown();
    }

    KVGLWidget& widget() const { return *viewer->findChild<KVGLWidget*>(); }
    KV3DObject& root() const { return widget().root(); }
    QSharedPointer<KV3DObject> group(const char* id) const { return root().child(QLatin1String(id)); }
    QSharedPointer<KV3DObject> item(const char* groupId, const QString& id) const
    {
        return root().childAt({QLatin1String(groupId), id});
    }

    /// Runs the event loop until @p condition holds; false after a timeout that only a defect exceeds.
    template <typename Condition>
    static bool eventually(Condition condition)
    {
        return QTest::qWaitFor(condition, 120000);
    }

    /// Delivers all pending events. After it, a test can check that something did not happen.
    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }

    std::unique_ptr<KVGamut3DViewer> viewer;
};
