// SPDX-License-Identifier: Apache-2.0
#include "RandomHost.h"

#include "support/ShownViewer.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtOpenGL/QOpenGLWindow>

#include <algorithm>

namespace {

constexpr QSize startSize(160, 120); // the cost of a shown viewer grows with its size
constexpr float uncut = 1000000.0f;
constexpr int names = 4;                // few, so that different calls use the same ids
constexpr int minGrid = 5, maxGrid = 9; // grids whose gamuts take milliseconds
const QString kept = QStringLiteral("kept");

QString screenProfile()
{
    return QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
}

QString nameAt(int index)
{
    return QStringLiteral("item %1").arg(index);
}

QHash<QString, QVariant> profile(const QString& path, int gridPoints)
{
    return {
        {QStringLiteral("ProfilePath"), path},
        {QStringLiteral("AdditionnalParam"),
         QHash<QString, QVariant>{{QStringLiteral("Link_GridPointNumber"), gridPoints}}},
    };
}

QSet<QString> asSet(const QStringList& list)
{
    return {list.cbegin(), list.cend()};
}

} // namespace

const std::vector<RandomHost::Call>& RandomHost::calls()
{
    static const std::vector<Call> table{
        {"load", 10, &RandomHost::load},
        {"load inside the call", 2, &RandomHost::loadInsideTheCall},
        {"remove a gamut", 6, &RandomHost::removeGamut},
        {"change a gamut", 20, &RandomHost::changeGamut},
        {"ask a gamut", 6, &RandomHost::askGamut},
        {"add markers", 7, &RandomHost::addMarkers},
        {"add points", 7, &RandomHost::addPoints},
        {"add segments", 7, &RandomHost::addSegments},
        {"remove a set", 6, &RandomHost::removeSet},
        {"clear sets", 3, &RandomHost::clearSets},
        {"change sets", 6, &RandomHost::changeSets},
        {"toggle decorations", 8, &RandomHost::toggleDecorations},
        {"build decorations", 1, &RandomHost::buildDecorations},
        {"move the camera", 12, &RandomHost::moveCamera},
        {"change the projection", 8, &RandomHost::changeProjection},
        {"change the look", 8, &RandomHost::changeLook},
        {"clip", 5, &RandomHost::clip},
        {"take a picture", 2, &RandomHost::takePicture},
        {"pick", 4, &RandomHost::pick},
        {"drag", 8, &RandomHost::drag},
        {"resize", 4, &RandomHost::resize},
        {"hide and show", 4, &RandomHost::hideAndShow},
        {"reparent", 2, &RandomHost::reparent},
        {"close and show", 1, &RandomHost::close},
        {"turn events", 40, &RandomHost::turnEvents},
        // only if the host loses contexts
        {"destroy the native window", 2, &RandomHost::destroyNativeWindow},
        {"replace the viewer", 1, &RandomHost::replaceViewer},
    };
    return table;
}

RandomHost::RandomHost(quint32 seed, bool losesContexts) : m_random(seed), m_losesContexts(losesContexts)
{
    m_parent = std::make_unique<QWindow>();
    m_parent->resize(400, 300);
    m_parent->show();
    makeViewer();
}

RandomHost::~RandomHost()
{
    supersedeAll();
    m_viewer.reset(); // before its parent
}

void RandomHost::makeViewer()
{
    m_viewer = std::make_unique<KVGamut3DViewer>();
    m_markers.clear();
    m_points.clear();
    m_segments.clear();
    m_gamuts.clear();
    m_grid = m_axes = true;
    m_plane = false;
    m_clipping = uncut;
    m_pointSize = m_viewer->pointSize();
    m_background = m_viewer->background();
    m_light = m_viewer->lightPos();
    m_viewer->resize(startSize);
    m_viewer->show();
}

void RandomHost::call()
{
    const auto& table = calls();
    const auto end = table.cend() - (m_losesContexts ? 0 : 2);
    int total = 0;
    for (auto at = table.cbegin(); at != end; ++at)
        total += at->weight;
    int chosen = below(total);
    auto at = table.cbegin();
    while (chosen >= at->weight)
        chosen -= (at++)->weight;

    m_lastCall = QString::fromLatin1(at->name);
    ++m_calls;
    ++m_tally[m_lastCall];
    (this->*at->make)();
    compare();
}

// --- Random values ------------------------------------------------------------------------------------

float RandomHost::number(float from, float to)
{
    return from + (to - from) * static_cast<float>(below(10001)) / 10000.0f;
}

QVector3D RandomHost::position()
{
    const float L = number(0, 100), a = number(-100, 100), b = number(-100, 100);
    return {L, a, b};
}

QColor RandomHost::color()
{
    const int r = below(256), g = below(256), b = below(256);
    return QColor(r, g, b);
}

QString RandomHost::name()
{
    return nameAt(below(names));
}

int RandomHost::duration()
{
    return coin() ? 0 : below(120);
}

QList<KVGamut3DViewer::ColoredPosition> RandomHost::items()
{
    QList<KVGamut3DViewer::ColoredPosition> list;
    const int count = 1 + below(12);
    for (int i = 0; i < count; ++i) {
        const QColor itsColor = color();
        list.append({itsColor, position()});
    }
    return list;
}

// --- Gamuts -------------------------------------------------------------------------------------------

void RandomHost::supersede(Gamut& gamut)
{
    if (gamut.load)
        gamut.load->superseded = true;
    gamut.load.reset();
}

void RandomHost::supersedeAll()
{
    for (Gamut& gamut : m_gamuts)
        supersede(gamut);
}

void RandomHost::load()
{
    const QString id = name();
    Gamut& gamut = m_gamuts[id];
    supersede(gamut);
    gamut.load = QSharedPointer<Load>::create();
    gamut.load->id = id;
    gamut.load->good = below(5) != 0;
    const QString path = gamut.load->good ? screenProfile() : QStringLiteral("/nowhere.icc");
    m_viewer->load(id, profile(path, minGrid + below(maxGrid - minGrid + 1)),
                   [this, load = gamut.load](const QString& reportedId, bool ok) {
                       ++load->reports;
                       ++m_reported;
                       expect(!load->superseded, QStringLiteral("a superseded load was reported"));
                       expect(load->reports == 1, QStringLiteral("a load was reported twice"));
                       expect(reportedId == load->id, QStringLiteral("a load was reported under another id"));
                       expect(ok == load->good, QStringLiteral("a load had the wrong result"));
                       expect(!ok || m_viewer->volume(load->id) > 0, QStringLiteral("a gamut has no volume"));
                   });
}

void RandomHost::loadInsideTheCall()
{
    const QString id = name();
    m_gamuts[id]; // a load in progress continues
    m_viewer->load(id, profile(screenProfile(), minGrid), nullptr);
    expect(m_viewer->volume(id) > 0, QStringLiteral("a load inside the call has no volume"));
}

void RandomHost::removeGamut()
{
    const QString id = name();
    m_viewer->removeGamut(id);
    if (m_gamuts.contains(id))
        supersede(m_gamuts[id]);
    m_gamuts.remove(id);
}

void RandomHost::changeGamut()
{
    const QString id = name();
    const bool known = m_gamuts.contains(id);
    switch (below(8)) {
    case 0: {
        const bool visible = coin();
        m_viewer->setGamutVisible(id, visible);
        if (known)
            m_gamuts[id].visible = visible;
        break;
    }
    case 1: {
        const auto mode = static_cast<KVGamut3DViewer::DisplayMode>(below(4));
        m_viewer->setDisplayMode(id, mode);
        if (known)
            m_gamuts[id].mode = mode;
        break;
    }
    case 2:
        m_viewer->setDisplayGamut(id, coin());
        break;
    case 3:
        m_viewer->setDisplayProjection(id, coin());
        break;
    case 4:
        m_viewer->setDisplayPrimaries(id, coin());
        break;
    case 5: {
        const float alpha = coin() ? 1.0f : number(0, 1);
        m_viewer->changeGamutAlpha(id, alpha, duration());
        break;
    }
    case 6:
        m_viewer->setGamutAmbientStrength(id, number(0, 1));
        break;
    default: {
        const QColor chosen = color();
        m_viewer->changeGamutColor(id, chosen);
        if (known)
            m_gamuts[id].color = chosen;
    }
    }
}

void RandomHost::askGamut()
{
    const QString id = name(), other = name();
    const bool known = m_gamuts.contains(id);
    const auto saved = m_viewer->save(id);
    expect(known || saved.isEmpty(), QStringLiteral("an unknown gamut was saved"));
    const auto faces = m_viewer->faceList(id);
    expect(faces.isEmpty() == !(m_viewer->volume(id) > 0), QStringLiteral("faces and volume disagree"));
    float f[6] = {-1, -1, -1, -1, -1, -1};
    const bool compared = m_viewer->gamutSetProperties(id, other, f[0], f[1], f[2], f[3], f[4], f[5]);
    expect(compared == (known && m_gamuts.contains(other)),
           QStringLiteral("a comparison has the wrong result"));
    if (!faces.isEmpty())
        expect(m_viewer->isInsideGamut(id, QVector3D(50, 0, 0)), QStringLiteral("grey is not inside"));
}

// --- Sets ---------------------------------------------------------------------------------------------

void RandomHost::addMarkers()
{
    const QString set = name();
    const auto type = static_cast<KVGamut3DViewer::MarkerType>(1 + below(3));
    const auto list = items();
    const float size = number(1, 12), ambient = number(0, 1);
    m_viewer->addMarkerSet(set, type, list, size, ambient);
    m_markers.insert(set);
}

void RandomHost::addPoints()
{
    const QString set = name();
    m_viewer->addPointSet(set, items());
    m_points.insert(set);
}

void RandomHost::addSegments()
{
    const QString set = name();
    QList<std::pair<KVGamut3DViewer::ColoredPosition, KVGamut3DViewer::ColoredPosition>> segments;
    const auto ends = items();
    for (qsizetype i = 0; i + 1 < ends.size(); ++i)
        segments.append({ends[i], ends[i + 1]});
    m_viewer->addSegmentSet(set, segments);
    if (!segments.isEmpty())
        m_segments.insert(set);
}

void RandomHost::removeSet()
{
    const QString set = name();
    switch (below(3)) {
    case 0:
        m_viewer->removeMarkerSet(set);
        m_markers.remove(set);
        break;
    case 1:
        m_viewer->removePointSet(set);
        m_points.remove(set);
        break;
    default:
        m_viewer->removeSegmentSet(set);
        m_segments.remove(set);
    }
}

void RandomHost::clearSets()
{
    switch (below(3)) {
    case 0:
        m_viewer->clearMarkerSet();
        m_markers.clear();
        break;
    case 1:
        m_viewer->clearPointSet();
        m_points.clear();
        break;
    default:
        m_viewer->clearSegmentSet();
        m_segments.clear();
    }
}

void RandomHost::changeSets()
{
    switch (below(3)) {
    case 0:
        m_pointSize = number(1, 8);
        m_viewer->setPointSize(m_pointSize);
        break;
    case 1: {
        const QString set = name();
        m_viewer->setPointSetSize(set, 1 + below(8));
        break;
    }
    default: {
        const QString set = name();
        m_viewer->setSegmentSetWidth(set, number(0, 5));
    }
    }
}

// --- Decorations, camera, look ------------------------------------------------------------------------

void RandomHost::toggleDecorations()
{
    const bool on = coin();
    switch (below(3)) {
    case 0:
        m_viewer->setDisplayGrid(m_grid = on);
        break;
    case 1:
        m_viewer->setDisplayAxes(m_axes = on);
        break;
    default:
        m_viewer->setabPlane(m_plane = on);
    }
}

void RandomHost::buildDecorations()
{
    m_viewer->addAxesAndGrid();
    m_viewer->addabPlane();
    m_plane = false; // it is hidden at first
}

void RandomHost::moveCamera()
{
    if (below(4) == 0) {
        m_viewer->resetCamera(coin() ? KVGamut3DViewer::Top : KVGamut3DViewer::Bottom, duration());
        return;
    }
    const QVector3D eye = 4 * position(), interest = position();
    const int ms = duration();
    m_viewer->setCamera(eye, ms, interest);
    if (ms == 0)
        expect(m_viewer->camera() == eye && m_viewer->interestPt() == interest,
               QStringLiteral("the camera is at the wrong place"));
}

void RandomHost::changeProjection()
{
    const int ms = duration();
    if (coin()) {
        const float angle = number(10, 90);
        m_viewer->setViewingAngle(angle, ms);
        expect(ms > 0 || m_viewer->viewingAngle() == angle, QStringLiteral("the viewing angle is wrong"));
    } else {
        const bool on = coin();
        m_viewer->setOrthogonalProjection(on, ms);
        expect(ms > 0 || m_viewer->orthogonalProjection() == on, QStringLiteral("the projection is wrong"));
    }
}

void RandomHost::changeLook()
{
    switch (below(4)) {
    case 0:
        m_viewer->setBackground(m_background = color());
        break;
    case 1:
        m_viewer->setLightPos(m_light = position());
        break;
    case 2:
        m_viewer->setLightColor(color());
        break;
    default:
        m_viewer->setFramerate(below(100));
    }
}

void RandomHost::clip()
{
    m_clipping = coin() ? uncut : number(0, 100);
    m_viewer->setClipping(m_clipping);
}

void RandomHost::takePicture()
{
    const QSize size(1 + below(300), 1 + below(300));
    const QImage image = coin() ? m_viewer->picture() : m_viewer->picture(size);
    expect(image.isNull() || image.size() == size || image.size().width() > 0,
           QStringLiteral("a picture has the wrong size"));
}

// --- Input and window ---------------------------------------------------------------------------------

void RandomHost::pick()
{
    const QPoint p(below(startSize.width()), below(startSize.height()));
    const auto ray = m_viewer->rayToPoint(p);
    KVGamut3DViewer::squaredDistanceToRay(position(), ray);
}

void RandomHost::drag()
{
    const QPointF p(below(startSize.width()), below(startSize.height()));
    const Qt::MouseButton button = coin() ? Qt::LeftButton : Qt::RightButton;
    if (coin()) {
        QMouseEvent move(QEvent::MouseMove, p, p, Qt::NoButton, button, Qt::NoModifier);
        QCoreApplication::sendEvent(m_viewer.get(), &move);
    } else if (coin()) {
        QMouseEvent release(QEvent::MouseButtonRelease, p, p, button, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_viewer.get(), &release);
    } else {
        QWheelEvent wheel(p, p, QPoint(), QPoint(0, 120 * (1 - 2 * below(2))), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_viewer.get(), &wheel);
    }
}

void RandomHost::resize()
{
    const QSize size(20 + below(200), 20 + below(150));
    m_viewer->resize(size);
}

void RandomHost::hideAndShow()
{
    m_viewer->setVisible(!m_viewer->isVisible());
}

void RandomHost::reparent()
{
    m_viewer->setParent(m_viewer->parent() ? nullptr : m_parent.get());
}

void RandomHost::close()
{
    m_viewer->close();
    if (coin())
        QCoreApplication::processEvents();
    m_viewer->show();
}

void RandomHost::turnEvents()
{
    kvtest::spinFor(below(4));
}

void RandomHost::destroyNativeWindow()
{
    m_viewer->destroy();
    if (coin())
        QCoreApplication::processEvents();
    m_viewer->create();
    m_viewer->show();
}

void RandomHost::replaceViewer()
{
    supersedeAll();
    m_viewer.reset();
    makeViewer();
    ++m_replaced;
}

// --- State at rest, and comparison --------------------------------------------------------------------

void RandomHost::stretch()
{
    m_lastCall = QStringLiteral("stretch");
    for (int i = 0; i < names; ++i) {
        const QString id = nameAt(i);
        m_viewer->load(id, profile(screenProfile(), maxGrid), nullptr);
        m_viewer->setDisplayMode(id, KVGamut3DViewer::Wireframe); // draws a bar for each edge of each face
        m_viewer->changeGamutAlpha(id, 0.5f, 0);
        m_gamuts[id].mode = KVGamut3DViewer::Wireframe;
    }
    expect(kvtest::spinUntil([this] { return m_viewer->isSettled(); }),
           QStringLiteral("the picture does not settle"));
}

bool RandomHost::waitForLoads()
{
    return kvtest::spinUntil([this] {
        return std::all_of(m_gamuts.cbegin(), m_gamuts.cend(),
                           [](const Gamut& gamut) { return !gamut.load || gamut.load->reports > 0; });
    });
}

void RandomHost::rest()
{
    m_lastCall = QStringLiteral("rest");
    expect(waitForLoads(), QStringLiteral("a load is not reported"));
    if (m_losesContexts)
        replaceViewer(); // the old viewer must not leave anything behind

    KVGamut3DViewer& v = *m_viewer;
    v.clearMarkerSet();
    v.clearPointSet();
    v.clearSegmentSet();
    const QStringList ids = v.gamuts();
    for (const QString& id : ids)
        v.removeGamut(id);
    m_markers.clear();
    m_points.clear();
    m_segments.clear();
    m_gamuts.clear();

    // Shows a gamut, so that differences in drawing gamuts are found, too.
    v.setClipping(m_clipping = uncut);
    v.load(kept, profile(screenProfile(), maxGrid), nullptr);
    m_gamuts[kept];
    v.setPointSize(m_pointSize = 4.0f);
    v.setDisplayGrid(m_grid = true);
    v.setDisplayAxes(m_axes = true);
    v.addabPlane(); // hidden, and without the buffer that it has after it was shown
    m_plane = false;
    v.setLightPos(m_light = QVector3D(0, 300, 0));
    v.setLightColor(Qt::white);
    v.setOrthogonalProjection(false, 0);
    v.setViewingAngle(30, 0);
    v.setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
    v.setBackground(m_background = Qt::gray);

    v.setParent(nullptr);
    v.show();
    v.resize(startSize);
    // The window system may still send events about earlier sizes.
    expect(kvtest::spinUntil([&] {
               if (v.size() != startSize)
                   v.resize(startSize);
               kvtest::spinFor(50);
               return v.isSettled() && v.size() == startSize && v.picture().size() == startSize;
           }),
           QStringLiteral("the picture does not settle"));
    compare();
}

GLCensus RandomHost::census() const
{
    QOpenGLWindow* window = glWindow();
    window->makeCurrent();
    const GLCensus census = countGLObjects(window->context());
    window->doneCurrent();
    return census;
}

QOpenGLWindow* RandomHost::glWindow() const
{
    return m_viewer->findChild<QOpenGLWindow*>();
}

void RandomHost::compare()
{
    const KVGamut3DViewer& v = *m_viewer;
    expect(asSet(v.markerSet()) == m_markers, QStringLiteral("the marker sets are wrong"));
    expect(asSet(v.pointSet()) == m_points, QStringLiteral("the point sets are wrong"));
    expect(asSet(v.segmentSet()) == m_segments, QStringLiteral("the segment sets are wrong"));
    const auto ids = m_gamuts.keys();
    expect(asSet(v.gamuts()) == asSet(ids), QStringLiteral("the gamuts are wrong"));
    expect(v.displayGrid() == m_grid && v.displayAxes() == m_axes && v.abPlane() == m_plane,
           QStringLiteral("the decorations are wrong"));
    expect(v.clipping() == m_clipping, QStringLiteral("the clipping is wrong"));
    expect(v.pointSize() == m_pointSize, QStringLiteral("the point size is wrong"));
    expect(v.background() == m_background, QStringLiteral("the background is wrong"));
    expect(v.lightPos() == m_light, QStringLiteral("the light is at the wrong place"));
    for (auto gamut = m_gamuts.cbegin(); gamut != m_gamuts.cend(); ++gamut) {
        expect(v.gamutVisible(gamut.key()) == gamut->visible, QStringLiteral("a visibility is wrong"));
        expect(v.displayMode(gamut.key()) == gamut->mode, QStringLiteral("a display mode is wrong"));
        expect(v.gamutColor(gamut.key()) == gamut->color, QStringLiteral("a colour is wrong"));
    }
}

void RandomHost::expect(bool holds, const QString& what)
{
    constexpr int maxFaults = 20;
    if (!holds && m_faults.size() < maxFaults)
        m_faults.append(QStringLiteral("call %1 (%2): %3").arg(m_calls).arg(m_lastCall, what));
}
