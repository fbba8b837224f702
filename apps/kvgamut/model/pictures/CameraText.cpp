// SPDX-License-Identifier: Apache-2.0
#include "CameraText.h"

#include "ObliqueView.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <cmath>

namespace {

constexpr float minAngle = 1.0f;
constexpr float maxAngle = 150.0f;

QString textOf(const QVector3D& lab)
{
    return QStringLiteral("%1,%2,%3").arg(lab.x()).arg(lab.y()).arg(lab.z());
}

std::optional<QVector3D> labOf(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return {};
    QVector3D lab;
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        lab[i] = parts[i].toFloat(&ok);
        if (!ok || !std::isfinite(lab[i]))
            return {};
    }
    return lab;
}

} // namespace

QString CameraText::write(const KVCamera& camera)
{
    return QStringLiteral("kvgamut camera %1 look at %2 angle %3 %4")
        .arg(textOf(camera.position), textOf(camera.interestPoint))
        .arg(camera.viewingAngle)
        .arg(camera.orthogonal ? QStringLiteral("orthogonal") : QStringLiteral("perspective"));
}

std::optional<KVCamera> CameraText::read(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("\\Akvgamut camera (\\S+) look at (\\S+) angle (\\S+) (perspective|orthogonal)\\z"));
    const auto match = form.match(text.simplified());
    const auto position = labOf(match.captured(1));
    const auto interestPoint = labOf(match.captured(2));
    const float angle = match.captured(3).toFloat();
    if (!position || !interestPoint || *position == *interestPoint ||
        !(angle >= minAngle && angle <= maxAngle))
        return {};
    return KVCamera{*position, *interestPoint, angle, match.captured(4) == QLatin1String("orthogonal")};
}

KVCamera cameraFrom(const QVector3D& direction, float aspect)
{
    KVCamera camera;
    camera.interestPoint = QVector3D(50, 0, 0);
    const float distance = (obliqueCamera(aspect).position - camera.interestPoint).length();
    camera.position = camera.interestPoint + direction * distance;
    return camera;
}

KVCamera obliqueCamera(float aspect)
{
    const ObliqueView view = ObliqueView::inAspect(aspect);
    KVCamera camera;
    camera.position = view.eye;
    camera.interestPoint = view.lookAt;
    return camera;
}
