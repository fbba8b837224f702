// SPDX-License-Identifier: Apache-2.0
#include "ColorSymbols.h"

#include <QtGui/QPainter>
#include <QtGui/QPolygonF>

#include <array>

QPixmap ColorSymbols::swatch(const KVGamut::LabPoint& lab, int height)
{
    const QSize size(2 * height, height);
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF patch(QRectF(QPointF(0.5, 0.5), QSizeF(size) - QSizeF(1.0, 1.0)));
    if (!isScreenColor(lab)) {
        const qreal cut = 0.6 * height;
        patch = QPolygonF({patch[0], patch[1] - QPointF(cut, 0.0), patch[1] + QPointF(0.0, cut), patch[2],
                           patch[3], patch[0]});
    }
    painter.setPen(QColor(128, 128, 128)); // visible on light and dark backgrounds
    painter.setBrush(screenColor(lab));
    painter.drawPolygon(patch);
    return picture;
}

QPixmap ColorSymbols::zone(Side side, int height)
{
    QPixmap picture(height, height);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal half = 0.5 * height;
    painter.translate(half, half);
    const qreal arm = half - 1.5;
    const QColor color = sideColor(side);
    switch (side) {
    case Side::Inside:
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(QPointF(), arm, arm);
        break;
    case Side::Edge: {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        const std::array corners{QPointF(0.0, -half), QPointF(half, 0.0), QPointF(0.0, half),
                                 QPointF(-half, 0.0)};
        painter.drawPolygon(corners.data(), static_cast<int>(corners.size()));
        break;
    }
    case Side::Outside:
        painter.setPen(QPen(color, 0.2 * height, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(-arm, -arm), QPointF(arm, arm));
        painter.drawLine(QPointF(-arm, arm), QPointF(arm, -arm));
        break;
    }
    return picture;
}
