// SPDX-License-Identifier: Apache-2.0
#include "FileDrop.h"

#include <QtCore/QChildEvent>
#include <QtCore/QList>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace {

QStringList filesOf(const QDropEvent& event)
{
    QStringList files;
    const QList<QUrl> urls = event.mimeData()->urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    return files;
}

} // namespace

void FileDrop::watch(QObject* target)
{
    target->installEventFilter(this);
    if (auto* widget = qobject_cast<QWidget*>(target))
        widget->setAcceptDrops(true);
    if (qobject_cast<QWindow*>(target)) {
        const QList<QWindow*> children = target->findChildren<QWindow*>();
        for (QWindow* child : children)
            child->installEventFilter(this);
    }
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    case QEvent::DragLeave:
        Q_EMIT hovered(false);
        return QObject::eventFilter(watched, event);
    default:
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event); // base class of the enter and move events
    const QStringList files = filesOf(*drop);
    if (files.isEmpty())
        return false;
    drop->setDropAction(Qt::CopyAction); // copy, not move: the source must not delete the file
    drop->accept();
    Q_EMIT hovered(event->type() != QEvent::Drop);
    if (event->type() == QEvent::Drop)
        Q_EMIT dropped(files);
    return true;
}
