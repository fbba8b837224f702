// SPDX-License-Identifier: Apache-2.0
#include "TransparentPicture.h"

#include "model/pictures/BackgroundRemoval.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QPainter>

QImage transparentPicture(KVGamutView& view, const QSize& size)
{
    const QSignalBlocker quiet(view); // key colours follow the ground that the user chose
    KVGamut3DViewer& viewer = *view.viewer();
    const KVViewTheme theme = view.theme();
    const KVAnnotations annotations = view.annotations();
    const bool axes = viewer.displayAxes();
    const auto pictureOn = [&](const QColor& ground) {
        KVViewTheme changed = theme;
        changed.background = ground;
        view.setTheme(changed);
        return viewer.picture(size);
    };
    // annotations are drawn last: their colours would change with the ground
    viewer.setDisplayAxes(axes && !annotations.scales);
    view.setAnnotations({});
    QImage onBlack = pictureOn(Qt::black);
    QImage picture = withoutBackground(std::move(onBlack), pictureOn(Qt::white));
    viewer.setDisplayAxes(axes);
    view.setTheme(theme);
    view.setAnnotations(annotations);
    if (!picture.isNull()) {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        view.paintAnnotations(painter, size);
    }
    return picture;
}
