// SPDX-License-Identifier: Apache-2.0
// The item: drawing and input. What it offers to QML is in GamutQuickViewValues.cpp.

#include "GamutQuickViewPrivate.h"

#include <QtCore/QMetaMethod>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <cmath>
#include <memory>

KVGamutQuickView::KVGamutQuickView(QQuickItem* parent) : QQuickItem(parent), d(std::make_unique<Private>())
{
    setFlag(ItemHasContents);
    setAcceptedMouseButtons(Qt::AllButtons);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);

    const KVGamutView* view = d->canvas.view();
    connect(&d->canvas, &KVGamutCanvas::drawWanted, this, &QQuickItem::polish);
    connect(view, &KVGamutView::loaded, this, &KVGamutQuickView::loaded);
    connect(view, &KVGamutView::failed, this,
            [this](const QString& id, const KVProblem& problem) { Q_EMIT failed(id, problem.text()); });
    connect(view, &KVGamutView::loadingChanged, this, &KVGamutQuickView::loadingChanged);
    connect(view, &KVGamutView::cameraChanged, this, &KVGamutQuickView::cameraChanged);
    connect(view, &KVGamutView::themeChanged, this, &KVGamutQuickView::backgroundChanged);
    connect(view, &KVGamutView::drawableChanged, this, &KVGamutQuickView::drawingProblemChanged);
    connect(view, &KVGamutView::clicked, this, &KVGamutQuickView::clicked);
    connect(view, &KVGamutView::settled, this, [this] {
        d->settled = true;
        Q_EMIT settledChanged();
    });
    // not inside the frame: hosts may destroy the item in their slots
    connect(viewer(), &KVGamut3DViewer::moveFinished, this, &KVGamutQuickView::moveFinished,
            Qt::QueuedConnection);
}

KVGamutQuickView::~KVGamutQuickView() = default;

void KVGamutQuickView::connectNotify(const QMetaMethod& signal)
{
    // The view computes what is under the pointer only while somebody wants to know.
    if (signal == QMetaMethod::fromSignal(&KVGamutQuickView::hovered))
        connect(d->canvas.view(), &KVGamutView::hovered, this, &KVGamutQuickView::hovered,
                Qt::UniqueConnection);
}

// --- Drawing --------------------------------------------------------------------------------------

/// On the GUI thread, before the scene graph takes over what changed.
void KVGamutQuickView::updatePolish()
{
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    // Whole logical pixels that cover the item: the picture is not blurred by scaling.
    const QSize size(static_cast<int>(std::ceil(width())), static_cast<int>(std::ceil(height())));
    const bool isNewSize = size != d->canvas.size() || ratio != d->canvas.devicePixelRatio();
    d->canvas.setSize(size, ratio);
    if (!d->canvas.draw(isNewSize ? KVGamutCanvas::Pace::Now : KVGamutCanvas::Pace::Limited))
        return;
    d->frame = d->canvas.frame();
    d->hasNewFrame = true;
    update();
    if (d->settled) {
        d->settled = false;
        QMetaObject::invokeMethod(this, &KVGamutQuickView::settledChanged, Qt::QueuedConnection);
    }
}

/// On the thread of the scene graph, while the GUI thread waits.
QSGNode* KVGamutQuickView::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    auto* image = static_cast<QSGImageNode*>(node);
    if (d->frame.isNull() || width() <= 0 || height() <= 0) {
        delete image;
        d->hasNewFrame = !d->frame.isNull();
        return nullptr;
    }
    if (!image || d->hasNewFrame) {
        QSGTexture* texture = window()->createTextureFromImage(d->frame, QQuickWindow::TextureIsOpaque);
        if (!texture) // out of memory, or the graphics device was lost: tried again with the next frame
            return image;
        if (!image) {
            image = window()->createImageNode();
            image->setOwnsTexture(true);
        }
        image->setTexture(texture); // deletes the last one
        d->hasNewFrame = false;
    }
    image->setFiltering(smooth() ? QSGTexture::Linear : QSGTexture::Nearest);
    image->setRect(QRectF(QPointF(), d->frame.deviceIndependentSize()));
    return image;
}

void KVGamutQuickView::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        polish();
}

void KVGamutQuickView::itemChange(ItemChange change, const ItemChangeData& value)
{
    QQuickItem::itemChange(change, value);
    switch (change) {
    case ItemVisibleHasChanged:
    case ItemSceneChange:
        d->canvas.setShown(isVisible() && window());
        d->hasNewFrame = !d->frame.isNull(); // a new window needs a new texture
        polish();
        break;
    case ItemDevicePixelRatioHasChanged:
        polish();
        break;
    default:
        break;
    }
}

// --- Input ----------------------------------------------------------------------------------------

void KVGamutQuickView::mousePressEvent(QMouseEvent* event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    setKeepMouseGrab(isInteractive()); // a Flickable around the item must not take the drag over
    d->canvas.passOn(*event);
}

void KVGamutQuickView::mouseMoveEvent(QMouseEvent* event)
{
    d->canvas.passOn(*event);
}

void KVGamutQuickView::mouseReleaseEvent(QMouseEvent* event)
{
    setKeepMouseGrab(false);
    d->canvas.passOn(*event);
}

void KVGamutQuickView::mouseDoubleClickEvent(QMouseEvent* event)
{
    d->canvas.passOn(*event);
}

void KVGamutQuickView::hoverMoveEvent(QHoverEvent* event)
{
    d->canvas.passOn(*event);
    event->ignore(); // items below may want to know, too
}

void KVGamutQuickView::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(isInteractive() && d->canvas.passOn(*event));
}

void KVGamutQuickView::keyPressEvent(QKeyEvent* event)
{
    event->setAccepted(isInteractive() && d->canvas.passOn(*event));
}

void KVGamutQuickView::keyReleaseEvent(QKeyEvent* event)
{
    event->setAccepted(isInteractive() && d->canvas.passOn(*event));
}

void KVGamutQuickView::focusOutEvent(QFocusEvent* event)
{
    d->canvas.passOn(*event);
    QQuickItem::focusOutEvent(event);
}
