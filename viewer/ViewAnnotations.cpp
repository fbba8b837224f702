// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <annotation/AnnotationLayout.h>
#include <annotation/OverlayPainter.h>

#include <algorithm>

namespace {

Overlay overlayOf(const ViewerScene& scene, const KVAnnotations& annotations, const QMatrix4x4& toClip,
                  const QSize& size)
{
    return kvAnnotationOverlay(
        annotations, {annotations.scales ? scene.scaleBox() : LabBox(), toClip, scene.widget->background()},
        size);
}

} // namespace

LabBox ViewerScene::scaleBox() const
{
    QVector3D low, high;
    const QStringList ids = viewer.gamuts();
    for (const QString& id : ids) {
        const auto object = gamut(id);
        if (!object || !object->isVisible())
            continue;
        const auto& [gamutLow, gamutHigh] = object->bounds();
        for (int i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], gamutLow[i]);
            high[i] = std::max(high[i], gamutHigh[i]);
        }
    }
    return kvScaleBox(low, high);
}

void ViewerScene::setAnnotations(const KVAnnotations& annotations)
{
    if (annotations == m_annotations)
        return;
    m_annotations = annotations;
    *hidesAxes = annotations.scales;
    if (annotations == KVAnnotations())
        widget->setOverlaySource({});
    else
        widget->setOverlaySource([this](const QMatrix4x4& toClip, const QSize& size) {
            return overlayOf(*this, m_annotations, toClip, size);
        });
}

void KVGamutView::setAnnotations(const KVAnnotations& annotations)
{
    if (ViewerScene* scene = d->scene())
        scene->setAnnotations(annotations);
}

KVAnnotations KVGamutView::annotations() const
{
    const ViewerScene* scene = d->scene();
    return scene ? scene->annotations() : KVAnnotations();
}

void KVGamutView::paintAnnotations(QPainter& painter, const QSize& size) const
{
    if (const ViewerScene* scene = d->scene())
        kvDrawOverlay(painter, scene->widget->overlay(size));
}
