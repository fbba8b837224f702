#include "ViewArea.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

ViewArea::ViewArea(QWidget* parent)
    : QWidget(parent), m_viewer(new KVGamut3DViewer),
      m_container(QWidget::createWindowContainer(m_viewer, this))
{
    m_viewer->setTitle(QStringLiteral("view")); // names it among the windows of the screen
    m_container->setObjectName(QStringLiteral("view"));
    m_container->setAccessibleName(tr("Gamuts in Lab space"));
    m_container->setFocusPolicy(Qt::StrongFocus);
    m_container->setMinimumSize(200, 150);
    setFocusProxy(m_container);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_container);

    // input reaches the viewer or, once that was clicked, the window inside it
    m_viewer->installEventFilter(this);
    const auto inner = m_viewer->findChildren<QWindow*>();
    for (QWindow* window : inner)
        window->installEventFilter(this);
    connect(m_viewer, &KVGamut3DViewer::click, this, [this](QPoint p, QVector3D origin, QVector3D direction) {
        if ((p - m_pressed).manhattanLength() < QApplication::startDragDistance())
            Q_EMIT clicked(origin, direction);
    });
}

float ViewArea::aspect() const
{
    const QSize size = m_container->size();
    return size.isEmpty() ? 1.0f : static_cast<float>(size.width()) / static_cast<float>(size.height());
}

bool ViewArea::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        m_pressed = static_cast<QMouseEvent*>(event)->position().toPoint();
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab)
        return QWidget::eventFilter(watched, event);
    leave(key == Qt::Key_Tab);
    return true;
}

/// Gives the keyboard back to the widgets: to the one after, or before, the view.
void ViewArea::leave(bool forwards)
{
    const auto takesKeys = [](const QWidget* widget) {
        return (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled() && widget->isVisible();
    };
    QWidget* next = m_container;
    do {
        next = forwards ? next->nextInFocusChain() : next->previousInFocusChain();
    } while (next != m_container && (!takesKeys(next) || next->window() != window()));
    window()->activateWindow();
    next->setFocus(forwards ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}
