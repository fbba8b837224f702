// SPDX-License-Identifier: Apache-2.0
// What the item offers to QML: the calls of KVGamut3DViewer and KVGamutView as properties and functions.

#include "GamutQuickModelPrivate.h"
#include "GamutQuickViewPrivate.h"

#include <QtCore/QFile>
#include <QtCore/QMetaProperty>
#include <QtQml/QQmlFile>

#include <cmath>
#include <limits>
#include <optional>

namespace {

/// Fills @p request in. The problem of the first setting that is not known, or of the URL.
std::optional<KVProblem> read(const QUrl& profile, const QVariantMap& settings, KVLoadRequest& request)
{
    for (auto it = settings.begin(); it != settings.end(); ++it) {
        if (it.key() == QLatin1String("intent"))
            request.settings.intent = static_cast<KVVMRenderType>(it->toInt());
        else if (it.key() == QLatin1String("blackPointCompensation"))
            request.settings.blackPointCompensation = it->toBool();
        else if (it.key() == QLatin1String("gridPoints"))
            request.settings.gridPoints = it->toInt();
        else
            return KVProblem{KVProblemCode::UnknownSetting, {it.key()}, {}};
    }
    request.profilePath = profile.isRelative() ? profile.path() : QQmlFile::urlToLocalFileOrQrc(profile);
    if (request.profilePath.isEmpty()) // nothing is fetched from the network
        return KVProblem{KVProblemCode::FileNotFound, {}, profile.toDisplayString()};
    if (!request.profilePath.startsWith(QLatin1Char(':')))
        return {};
    QFile resource(request.profilePath);
    if (!resource.open(QIODevice::ReadOnly))
        return KVProblem{KVProblemCode::FileNotFound, {}, profile.toDisplayString()};
    request.profileData = resource.readAll();
    request.profilePath.clear();
    return {};
}

} // namespace

KVGamut3DViewer* KVGamutQuickView::viewer() const
{
    return d->canvas.viewer();
}

KVGamutView* KVGamutQuickView::view() const
{
    return d->canvas.view();
}

KVGamutQuickModel* KVGamutQuickView::gamuts() const
{
    return &d->model;
}

bool KVGamutQuickView::isLoading() const
{
    return view()->isLoading();
}

bool KVGamutQuickView::isSettled() const
{
    return d->settled && viewer()->isSettled();
}

QString KVGamutQuickView::drawingProblem() const
{
    if (!d->canvas.isShown() || view()->isDrawable()) // to ask makes a context
        return {};
    const std::optional<KVProblem> problem = view()->drawingProblem();
    return problem ? problem->text() : QString();
}

// --- Camera ---------------------------------------------------------------------------------------

QVector3D KVGamutQuickView::cameraPosition() const
{
    return viewer()->camera();
}

void KVGamutQuickView::setCameraPosition(const QVector3D& position)
{
    setCamera(position, interestPoint(), 0);
}

QVector3D KVGamutQuickView::interestPoint() const
{
    return viewer()->interestPt();
}

void KVGamutQuickView::setInterestPoint(const QVector3D& point)
{
    setCamera(cameraPosition(), point, 0);
}

void KVGamutQuickView::setCamera(const QVector3D& position, const QVector3D& interestPoint, int durationMs)
{
    KVCamera camera = view()->camera();
    camera.position = position;
    camera.interestPoint = interestPoint;
    view()->setCamera(camera, durationMs);
}

float KVGamutQuickView::viewingAngle() const
{
    return viewer()->viewingAngle();
}

void KVGamutQuickView::setViewingAngle(float degrees)
{
    KVCamera camera = view()->camera();
    camera.viewingAngle = degrees;
    view()->setCamera(camera);
}

bool KVGamutQuickView::isOrthogonal() const
{
    return viewer()->orthogonalProjection();
}

void KVGamutQuickView::setOrthogonal(bool orthogonal)
{
    viewer()->setOrthogonalProjection(orthogonal, 0);
}

void KVGamutQuickView::resetCamera(Preset preset, int durationMs)
{
    viewer()->resetCamera(static_cast<KVGamut3DViewer::View>(preset), durationMs);
}

void KVGamutQuickView::frame(const QStringList& gamutIds, int durationMs)
{
    view()->frame(gamutIds, durationMs);
}

// --- Look -----------------------------------------------------------------------------------------

QColor KVGamutQuickView::background() const
{
    return viewer()->background();
}

void KVGamutQuickView::setBackground(const QColor& color)
{
    KVViewTheme theme = view()->theme();
    theme.background = color;
    if (theme != view()->theme())
        view()->setTheme(theme);
}

bool KVGamutQuickView::grid() const
{
    return viewer()->displayGrid();
}

void KVGamutQuickView::setGrid(bool shown)
{
    if (shown == grid())
        return;
    viewer()->setDisplayGrid(shown);
    Q_EMIT frameOfReferenceChanged();
}

bool KVGamutQuickView::axes() const
{
    return viewer()->displayAxes();
}

void KVGamutQuickView::setAxes(bool shown)
{
    if (shown == axes())
        return;
    viewer()->setDisplayAxes(shown);
    Q_EMIT frameOfReferenceChanged();
}

bool KVGamutQuickView::abPlane() const
{
    return viewer()->abPlane();
}

void KVGamutQuickView::setAbPlane(bool shown)
{
    if (shown == abPlane())
        return;
    viewer()->setabPlane(shown);
    Q_EMIT frameOfReferenceChanged();
}

bool KVGamutQuickView::scales() const
{
    return view()->annotations().scales;
}

void KVGamutQuickView::setScales(bool shown)
{
    KVAnnotations annotations = view()->annotations();
    if (shown == annotations.scales)
        return;
    annotations.scales = shown;
    view()->setAnnotations(annotations);
    Q_EMIT frameOfReferenceChanged();
}

float KVGamutQuickView::clipping() const
{
    return view()->clipping().value_or(std::numeric_limits<float>::quiet_NaN());
}

void KVGamutQuickView::setClipping(float lightness)
{
    const std::optional<float> wanted = std::isfinite(lightness) ? std::optional(lightness) : std::nullopt;
    if (wanted == view()->clipping())
        return;
    view()->setClipping(wanted);
    Q_EMIT clippingChanged();
}

bool KVGamutQuickView::isInteractive() const
{
    return viewer()->enableInteraction();
}

void KVGamutQuickView::setInteractive(bool interactive)
{
    if (interactive == isInteractive())
        return;
    viewer()->setEnableInteraction(interactive);
    Q_EMIT interactiveChanged();
}

bool KVGamutQuickView::coarseWhileMoving() const
{
    return view()->coarseWhileMoving();
}

void KVGamutQuickView::setCoarseWhileMoving(bool coarse)
{
    if (coarse == coarseWhileMoving())
        return;
    view()->setCoarseWhileMoving(coarse);
    Q_EMIT coarseWhileMovingChanged();
}

// --- Gamuts ---------------------------------------------------------------------------------------

void KVGamutQuickView::load(const QString& gamutId, const QUrl& profile, const QVariantMap& settings)
{
    KVLoadRequest request;
    const std::optional<KVProblem> problem = read(profile, settings, request);
    d->model.d->begin(gamutId, profile.toString());
    if (!problem) {
        view()->load(gamutId, request);
        return;
    }
    const auto report = [this, gamutId, text = problem->text()] {
        d->model.d->fail(gamutId, text);
        Q_EMIT failed(gamutId, text);
    };
    QMetaObject::invokeMethod(this, report, Qt::QueuedConnection); // like the end of every other load
}

void KVGamutQuickView::cancel(const QString& gamutId)
{
    view()->cancel(gamutId);
}

void KVGamutQuickView::remove(const QString& gamutId)
{
    view()->remove(gamutId);
    d->model.d->remove(gamutId);
}

void KVGamutQuickView::setLook(const QString& gamutId, const QVariantMap& look)
{
    KVGamutLook changed = view()->look(gamutId);
    const QMetaObject& members = KVGamutLook::staticMetaObject;
    for (auto it = look.begin(); it != look.end(); ++it) {
        const int index = members.indexOfProperty(it.key().toUtf8().constData());
        if (index >= 0)
            members.property(index).writeOnGadget(&changed, *it);
    }
    view()->setLook(gamutId, changed);
    d->model.d->notify(gamutId, {});
}

QVariantMap KVGamutQuickView::look(const QString& gamutId) const
{
    const KVGamutLook look = view()->look(gamutId);
    const QMetaObject& members = KVGamutLook::staticMetaObject;
    QVariantMap values;
    for (int i = 0; i < members.propertyCount(); ++i)
        values.insert(QString::fromLatin1(members.property(i).name()),
                      members.property(i).readOnGadget(&look));
    values.insert(QStringLiteral("mode"), static_cast<int>(look.mode)); // a type that QML does not know
    return values;
}

KVHit KVGamutQuickView::hitAt(const QPointF& position) const
{
    return view()->hitAt(position.toPoint());
}

bool KVGamutQuickView::isInside(const QString& gamutId, const QVector3D& lab) const
{
    return viewer()->isInsideGamut(gamutId, lab);
}

bool KVGamutQuickView::savePicture(const QUrl& file, const QSize& size) const
{
    const QString name = file.isRelative() ? file.path() : file.toLocalFile();
    const QImage picture = viewer()->picture(size);
    return !picture.isNull() && !name.isEmpty() && picture.save(name);
}
