// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutQuickModel.h>
#include <KVGamutView.h>

#include <QtCore/QUrl>
#include <QtCore/QVariantMap>
#include <QtQuick/QQuickItem>

#include <memory>

/// A viewer as an item of Qt Quick, from the module KV3DViewer.Quick: other items may lie on top of it, and
/// it may be clipped, faded, scaled, rotated and grabbed like any other. The guide is docs/QML.md.
///
/// Vectors are (L*, a*, b*) in Lab units, as x, y and z; angles are in degrees, durations in milliseconds; 0
/// or less means at once. Positions of the pointer are those of the item.
///
/// Nothing is drawn while nothing changes. The item draws on the GUI thread with desktop OpenGL, and hands
/// pictures to the scene graph, which may use any graphics interface. GUI thread only.
class KV3DVIEWERQUICK_EXPORT KVGamutQuickView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(KVGamutQuickModel* gamuts READ gamuts CONSTANT)
    Q_PROPERTY(KVGamutView* view READ view CONSTANT)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool settled READ isSettled NOTIFY settledChanged)
    Q_PROPERTY(QString drawingProblem READ drawingProblem NOTIFY drawingProblemChanged)
    Q_PROPERTY(QVector3D cameraPosition READ cameraPosition WRITE setCameraPosition NOTIFY cameraChanged)
    Q_PROPERTY(QVector3D interestPoint READ interestPoint WRITE setInterestPoint NOTIFY cameraChanged)
    Q_PROPERTY(float viewingAngle READ viewingAngle WRITE setViewingAngle NOTIFY cameraChanged)
    Q_PROPERTY(bool orthogonal READ isOrthogonal WRITE setOrthogonal NOTIFY cameraChanged)
    Q_PROPERTY(QColor background READ background WRITE setBackground NOTIFY backgroundChanged)
    Q_PROPERTY(bool grid READ grid WRITE setGrid NOTIFY frameOfReferenceChanged)
    Q_PROPERTY(bool axes READ axes WRITE setAxes NOTIFY frameOfReferenceChanged)
    Q_PROPERTY(bool abPlane READ abPlane WRITE setAbPlane NOTIFY frameOfReferenceChanged)
    Q_PROPERTY(bool scales READ scales WRITE setScales NOTIFY frameOfReferenceChanged)
    Q_PROPERTY(float clipping READ clipping WRITE setClipping NOTIFY clippingChanged)
    Q_PROPERTY(bool interactive READ isInteractive WRITE setInteractive NOTIFY interactiveChanged)
    Q_PROPERTY(bool coarseWhileMoving READ coarseWhileMoving WRITE setCoarseWhileMoving NOTIFY
                   coarseWhileMovingChanged)
public:
    /// How a gamut is shown; the values of KVGamut3DViewer::DisplayMode.
    enum DisplayMode : int
    {
        Solid = 0,     ///< the surface; the same as Smooth
        Smooth = 1,    ///< the surface, with colours interpolated over the faces
        Flat = 2,      ///< the surface, one tone per face
        Wireframe = 3, ///< the edges of the surface
    };
    Q_ENUM(DisplayMode)

    /// Preset cameras; the values of KVGamut3DViewer::View.
    enum Preset : int
    {
        Top = 0,    ///< from above
        Bottom = 1, ///< from below
    };
    Q_ENUM(Preset)

    /// Rendering intents; for load().
    enum Intent : int
    {
        Perceptual = 0, ///< of ICC profiles, like the others
        Relative = 1,   ///< media-relative colorimetric
        Saturation = 2, ///< see ICC.1
        Absolute = 3,   ///< ICC-absolute colorimetric
    };
    Q_ENUM(Intent)

    explicit KVGamutQuickView(QQuickItem* parent = nullptr); ///< an empty view, seen from above
    ~KVGamutQuickView() override;

    KVGamut3DViewer* viewer() const;   ///< what is shown, for C++ code; never show this window
    KVGamutView* view() const;         ///< attached to viewer()
    KVGamutQuickModel* gamuts() const; ///< the gamuts as a list

    bool isLoading() const; ///< whether any load is in progress
    bool isSettled() const; ///< whether the picture is up to date; see KVGamut3DViewer::isSettled()
    /// Why nothing can be drawn, in English; empty if drawing is possible or was not tried yet.
    QString drawingProblem() const;

    QVector3D cameraPosition() const;                  ///< of the eye
    void setCameraPosition(const QVector3D& position); ///< at once; not if it is the interest point
    QVector3D interestPoint() const;                   ///< what the eye looks at and rotates around
    void setInterestPoint(const QVector3D& point);     ///< at once; not if it is the position
    float viewingAngle() const;                        ///< vertical field of view, 1..150; 30 at first
    void setViewingAngle(float degrees);               ///< at once; other values are ignored
    bool isOrthogonal() const;                         ///< parallel projection; false at first
    void setOrthogonal(bool orthogonal);               ///< at once

    QColor background() const;               ///< grey at first; drawn without transparency
    void setBackground(const QColor& color); ///< at once
    bool grid() const;                       ///< lines on the ab plane; true at first
    void setGrid(bool shown);                ///< shows or hides it
    bool axes() const;                       ///< L*, a* and b* with their letters; true at first
    void setAxes(bool shown);                ///< shows or hides them
    bool abPlane() const;                    ///< the coloured plane below L* 0; false at first
    void setAbPlane(bool shown);             ///< shows or hides it
    bool scales() const;                     ///< scales with numbers instead of the axes; false at first
    void setScales(bool shown);              ///< shows or hides them
    float clipping() const;            ///< L* above which gamuts are cut off; NaN: nothing is, as at first
    void setClipping(float lightness); ///< NaN or infinity: nothing is cut off

    /// Whether the pointer, the wheel and keys move the camera; true at first. If not, the wheel and keys go
    /// to other items; clicks and hovering are reported in any case.
    bool isInteractive() const;
    void setInteractive(bool interactive);  ///< see isInteractive()
    bool coarseWhileMoving() const;         ///< see KVGamutView::setCoarseWhileMoving()
    void setCoarseWhileMoving(bool coarse); ///< the same

    /// Loads the gamut of an ICC profile in the background. loaded() or failed() reports the end; a failed
    /// load keeps what was shown before.
    /// @param gamutId chosen by the host
    /// @param profile a local file, or a resource of the application ("qrc:")
    /// @param settings "intent" (Intent; Absolute if missing), "blackPointCompensation" (bool), "gridPoints"
    ///   (int); none is needed
    Q_INVOKABLE void load(const QString& gamutId, const QUrl& profile, const QVariantMap& settings = {});
    Q_INVOKABLE void cancel(const QString& gamutId); ///< ends a load, with failed()
    Q_INVOKABLE void remove(const QString& gamutId); ///< removes a gamut with its look
    /// Changes a part of a look: the members of KVGamutLook, such as {opacity: 0.4, color: "red"}. Members
    /// that do not exist are ignored. If the gamut is not loaded yet, it appears with this look.
    Q_INVOKABLE void setLook(const QString& gamutId, const QVariantMap& look);
    Q_INVOKABLE QVariantMap look(const QString& gamutId) const; ///< all members of KVGamutLook

    /// Moves the camera. Does nothing if the camera would not be valid.
    Q_INVOKABLE void setCamera(const QVector3D& position, const QVector3D& interestPoint, int durationMs = 0);
    Q_INVOKABLE void resetCamera(Preset preset = Top, int durationMs = 0); ///< moves to a preset camera
    /// Moves the eye so that the gamuts fill the item; without ids all visible ones.
    Q_INVOKABLE void frame(const QStringList& gamutIds = {}, int durationMs = 0);

    /// What is in front at a position of the item.
    Q_INVOKABLE KVHit hitAt(const QPointF& position) const;
    /// Whether the colour @p lab is inside a gamut.
    Q_INVOKABLE bool isInside(const QString& gamutId, const QVector3D& lab) const;
    /// Writes a picture of @p size pixels, drawn with full detail, in the format of the file's name.
    /// @return false if it could not be drawn or written
    Q_INVOKABLE bool savePicture(const QUrl& file, const QSize& size) const;

Q_SIGNALS:
    void loaded(const QString& gamutId);                      ///< the gamut is shown
    void failed(const QString& gamutId, const QString& text); ///< a load ended without a gamut; in English
    void clicked(const KVHit& hit);                           ///< a button was released
    void hovered(const KVHit& hit);  ///< the pointer moved with no button held; computed only while connected
    void moveFinished();             ///< a camera move has ended
    void loadingChanged();           ///< isLoading() changed
    void settledChanged();           ///< isSettled() changed
    void drawingProblemChanged();    ///< drawingProblem() changed
    void cameraChanged();            ///< any value of the camera changed, whatever the cause
    void backgroundChanged();        ///< background() changed
    void frameOfReferenceChanged();  ///< grid, axes, plane or scales were set here
    void clippingChanged();          ///< clipping() was set here
    void interactiveChanged();       ///< isInteractive() changed
    void coarseWhileMovingChanged(); ///< coarseWhileMoving() was set here

protected:
    /// @cond what Qt calls
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;
    /// @endcond

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
