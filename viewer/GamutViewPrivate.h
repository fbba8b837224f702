// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <viewer/GamutLoads.h>
#include <viewer/ViewerScene.h>

#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtCore/QPointer>

/// Also filters the events of the application while the theme follows its palette.
class Q_DECL_HIDDEN KVGamutView::Private : public QObject
{
public:
    explicit Private(KVGamutView& view) : m_view(view) {}
    ~Private() override
    {
        if (ViewerScene* attached = scene())
            attached->detachView();
    }
    Q_DISABLE_COPY_MOVE(Private)

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// What the viewer shares with its views; null once the viewer is being destroyed.
    ViewerScene* scene() const { return loads ? m_scene : nullptr; }
    void attach(ViewerScene& scene)
    {
        m_scene = &scene;
        loads = &scene.loads;
        scene.attachView();
    }

    QPointer<GamutLoads> loads;
    bool themeFollowsPalette = false;

    void onReleased(const QPoint& pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                    bool endsDrag);
    void onMoved(const QPoint& pixel, Qt::KeyboardModifiers modifiers);

    /// Starts a load of the request that @p prepare(request, params) fills in. @p done is moved.
    template <typename Prepare>
    void start(const QString& id, QObject* context, Done done, const Prepare& prepare);

private:
    class Report;

    void reportHover();

    KVGamutView& m_view;
    ViewerScene* m_scene = nullptr;
    QPoint m_hoverPixel;
    Qt::KeyboardModifiers m_hoverModifiers;
    bool m_hoverPosted = false;
};
