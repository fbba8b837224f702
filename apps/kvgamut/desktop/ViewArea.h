#pragma once

#include <KVGamut3DViewer.h>

#include <QtWidgets/QWidget>

/// The viewer as a part of a window of widgets: its container, and what lies between the two worlds -
/// clicks told from drags, and the Tab key, which leads on to the next widget.
class ViewArea : public QWidget
{
    Q_OBJECT
public:
    explicit ViewArea(QWidget* parent = nullptr);

    KVGamut3DViewer& viewer() { return *m_viewer; }
    const KVGamut3DViewer& viewer() const { return *m_viewer; }
    float aspect() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The scene was clicked, not dragged: the ray under the pointer, as KVGamut3DViewer::click() has it.
    void clicked(QVector3D origin, QVector3D direction);

private:
    void leave(bool forwards);

    KVGamut3DViewer* m_viewer; ///< owned by its container
    QWidget* m_container;
    QPoint m_pressed;
};
