// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Census.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QSharedPointer>
#include <QtGui/QImage>

#include <array>
#include <memory>
#include <random>
#include <vector>

class QOpenGLWindow;

/// A host that makes random calls to a viewer. The seed determines the order of the calls.
///
/// It records every id, switch and load, compares the state of the viewer with its record after each call,
/// and reports differences as faults.
class RandomHost
{
public:
    /// @param losesContexts whether calls also destroy and recreate the native window or the viewer
    RandomHost(quint32 seed, bool losesContexts);
    ~RandomHost();

    /// Makes one random call and compares the state of the viewer.
    void call();

    /// Shows more translucent triangles than any sequence of calls does. The viewer keeps the memory in which
    /// it sorts them, so this allocates the maximum once.
    void stretch();

    /// Resets the viewer to its first state and waits for all loads and for the picture.
    void rest();
    /// The picture in this state.
    QImage picture() const { return m_viewer->picture(); }
    /// The GL objects of the viewer's context.
    GLCensus census() const;

    /// The first differences that were found.
    const QStringList& faults() const { return m_faults; }
    /// How often each call was made.
    const QHash<QString, int>& tally() const { return m_tally; }
    int reportedLoads() const { return m_reported; }
    int replacedViewers() const { return m_replaced; }
    /// Adds a fault, such as a warning of Qt.
    void note(const QString& fault) { expect(false, fault); }

private:
    struct Load
    {
        QString id;
        bool good = false;       ///< the file is a profile
        bool superseded = false; ///< must not be reported any more
        int reports = 0;
    };
    struct Gamut
    {
        bool visible = true;
        KVGamut3DViewer::DisplayMode mode = KVGamut3DViewer::Smooth;
        QColor color;
        QSharedPointer<Load> load; ///< the last one with a callback
    };
    struct Call
    {
        const char* name;
        int weight;
        void (RandomHost::*make)();
    };

    static const std::vector<Call>& calls();

    // random values
    int below(int bound) { return static_cast<int>(m_random() % static_cast<quint32>(bound)); }
    bool coin() { return below(2) == 0; }
    float number(float from, float to);
    QVector3D position();
    QColor color();
    QString name(); ///< one of a few ids, so that different calls use the same ids
    int duration();
    QList<KVGamut3DViewer::ColoredPosition> items();

    // calls
    void load();
    void loadInsideTheCall();
    void removeGamut();
    void changeGamut();
    void askGamut();
    void addMarkers();
    void addPoints();
    void addSegments();
    void removeSet();
    void clearSets();
    void changeSets();
    void toggleDecorations();
    void buildDecorations();
    void moveCamera();
    void changeProjection();
    void changeLook();
    void clip();
    void takePicture();
    void pick();
    void drag();
    void resize();
    void hideAndShow();
    void reparent();
    void close();
    void turnEvents();
    void destroyNativeWindow();
    void replaceViewer();

    void makeViewer();
    void supersede(Gamut& gamut);
    void supersedeAll();
    bool waitForLoads();
    void compare();
    void expect(bool holds, const QString& what);
    QOpenGLWindow* glWindow() const;

    std::mt19937 m_random;
    bool m_losesContexts;
    std::unique_ptr<QWindow> m_parent;
    std::unique_ptr<KVGamut3DViewer> m_viewer;

    QSet<QString> m_markers, m_points, m_segments;
    QHash<QString, Gamut> m_gamuts;
    bool m_grid = true, m_axes = true, m_plane = false;
    float m_clipping = 1000000.0f, m_pointSize = 4.0f;
    QColor m_background;
    QVector3D m_light;

    QString m_lastCall;
    int m_calls = 0;
    int m_reported = 0;
    int m_replaced = 0;
    QStringList m_faults;
    QHash<QString, int> m_tally;
};
