// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/CameraState.h>
#include <glwindow/ContextScope.h>
#include <scene/ResourceFiles.h>
#include <viewer/GroupNames.h>
#include <viewer/ViewerPrivate.h>

#include <QtGui/QImage>

#include <algorithm>

namespace {

constexpr float planeLightness = -0.3f; // just below the grid
constexpr int planeEnd = 128;
constexpr int cell = 8;

/// Hides the plane while the camera is below it.
class PlaneCheckFunctor : public KV3DObject::IDrawCheckFunctor
{
public:
    bool accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&, const CameraState& camera,
                int) override
    {
        return camera.eye().y() >= 0.0f;
    }
};

/// Index of the pixel at @p share / 256 of @p size pixels, clamped to the image.
int pixelAt(int size, float share)
{
    const float at = std::min(static_cast<float>(size - 1), static_cast<float>(size) * share * 0.00390625f);
    return at > 0.0f ? static_cast<int>(at) : 0;
}

/// The image covers a* and b* from -128 to 128, a* to the right, b* up.
QColor imageColor(const QImage& image, int a, int b)
{
    if (image.isNull())
        return Qt::gray;
    const int row = pixelAt(image.height(), static_cast<float>(planeEnd - b));
    const int column = pixelAt(image.width(), static_cast<float>(planeEnd + a));
    return image.pixelColor(column, row);
}

QList<ColoredTriangle> planeTriangles(const QImage& image)
{
    const auto corner = [&](int a, int b) {
        return ColoredPoint{imageColor(image, a, b),
                            QVector3D(planeLightness, static_cast<float>(a), static_cast<float>(b))};
    };
    QList<ColoredTriangle> triangles;
    for (int a0 = -planeEnd; a0 < planeEnd; a0 += cell) {
        for (int b0 = -planeEnd; b0 < planeEnd; b0 += cell) {
            const int a1 = a0 + cell, b1 = b0 + cell;
            triangles.append(ColoredTriangle{corner(a0, b0), corner(a0, b1), corner(a1, b1)});
            triangles.append(ColoredTriangle{corner(a1, b1), corner(a1, b0), corner(a0, b0)});
        }
    }
    return triangles;
}

} // namespace

void KVGamut3DViewer::addabPlane()
{
    const ContextScope scope(d->widget);
    const auto plane = d->findOrCreate(
        d->widget->root(), GroupNames::plane(), GroupNames::plane(), false, [](KV3DObject& fresh) {
            fresh.setDrawCheck(QSharedPointer<KV3DObject::IDrawCheckFunctor>(new PlaneCheckFunctor));
            fresh.setDepthBias(kvPlaneBias());
        });
    plane->setTriangles(
        planeTriangles(ResourceFiles::planeImage(ResourceFiles::folder() + QLatin1String("/Images"))));
    plane->setVisible(false);
}
