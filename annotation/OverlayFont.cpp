// SPDX-License-Identifier: Apache-2.0
#include <annotation/OverlayFont.h>

#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>

#include <algorithm>

QFont kvOverlayFont(const Overlay& overlay, bool bold)
{
    QFont font = QGuiApplication::font();
    if (!overlay.fontFamily.isEmpty())
        font.setFamilies({overlay.fontFamily});
    font.setPixelSize(std::max(1, overlay.textHeight));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QSizeF kvTextExtent(const Overlay& overlay, const QString& text, bool bold)
{
    const QFontMetricsF metrics(kvOverlayFont(overlay, bold));
    return {metrics.horizontalAdvance(text), metrics.height()};
}

int kvHaloWidth(const Overlay& overlay)
{
    return std::max(1, overlay.textHeight / 7);
}

QString kvElided(const Overlay& overlay, const QString& text, bool bold, double maxWidth)
{
    return QFontMetricsF(kvOverlayFont(overlay, bold)).elidedText(text, Qt::ElideMiddle, maxWidth);
}
