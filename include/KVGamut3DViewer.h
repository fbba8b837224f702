// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QSharedPointer>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtGui/QVector3D>
#include <QtGui/QWindow>

#include <functional>
#include <memory>
#include <utility>

#if defined(KV3DVIEWER_LIBRARY)
#define KV3DVIEWER_EXPORT Q_DECL_EXPORT
#else
#define KV3DVIEWER_EXPORT Q_DECL_IMPORT
#endif

class KV3DObject;
class KVGamutView;

/// A window that shows colour gamuts in CIE L*a*b* in 3D, for hosts to embed. See also KVGamutView.
///
/// **Coordinates.** All vectors of this class are (L*, a*, b*), D50, as x, y, z, except the light position
/// (see setLightPos()). L* points up in the oblique views. Distances are in Lab units, durations in
/// milliseconds; 0 or less means at once.
///
/// **Threads.** GUI thread only. Loads with a callback compute on a worker thread and report on the GUI
/// thread; everything else happens inside the call.
///
/// **Failure.** Nothing throws, and nothing is logged except one debug line that describes the OpenGL
/// context. With an unknown id or set name, setters do nothing and queries return the value that is
/// documented for it. Why a load failed is reported by KVGamutView.
///
/// **When.** All methods may be called before the window is shown, while it is shown, in the callback of
/// load() and in slots of the signals. A hidden viewer draws nothing; its camera moves end when it is shown
/// again. The same holds while a window above it is hidden or minimised. Slots of click() and doubleClick()
/// and the callback of load() may destroy the viewer. Slots of moveFinished(), which is emitted during a
/// paint event, must not: use deleteLater() there.
///
/// **OpenGL.** Without usable OpenGL the viewer is an empty window, and everything but drawing works. See
/// KVGamutView::isDrawable().
///
/// **Resources.** The library contains its two shaders and the image of the ab plane. Files of the
/// application in `<folder of the application's binary>/../Resources` replace them:
/// - `Shaders/simple.vert` and `Shaders/simple.frag` replace the shaders. If only one of them exists, they
///   are faulty.
/// - `Images/gamut.png` replaces the image. If there is a folder `Images` without a readable image, the
///   plane is grey, without a message.
///
/// With faulty shaders nothing is drawn, and one warning in the logging category "kv.viewer" names the file
/// and the first line of the compiler's log. Shaders are faulty if they do not compile, or if a file is not a
/// regular file, cannot be read or is larger than 1 MB. They are read when a context is made; a new context
/// tries them again. The viewer reads no settings and no environment.
///
/// Destroy the viewer before the QGuiApplication.
class KV3DVIEWER_EXPORT KVGamut3DViewer : public QWindow
{
    Q_OBJECT
public:
    /// Preset camera positions.
    enum View : int
    {
        Top = 0,    ///< from above (high L*), +a* to the right, +b* up; any other value does the same
        Bottom = 1, ///< from below, from a longer distance
    };

    /// Shapes of markers, all of radius size / 2. Other values draw spheres.
    enum MarkerType : int
    {
        Sphere = 1,        ///< sphere with smooth shading
        BracketedCube = 2, ///< the outer thirds of the edges of a cube
        Star = 3,          ///< solid with flat faces: a four-pointed star from above, a diamond from the side
    };

    /// How a gamut is shown.
    enum DisplayMode : int
    {
        Solid = 0,     ///< the surface; the same as Smooth
        Smooth = 1,    ///< the surface, with colours interpolated over the faces
        Flat = 2,      ///< the surface; a colour set by changeGamutColor() has one tone per face
        Wireframe = 3, ///< the edges of the surface
    };

    /// An item of a set: its colour and its position (L*, a*, b*). Inside the library this type is named
    /// ColoredPoint.
    using ColoredPosition = std::pair<QColor, QVector3D>;

    /// Creates a hidden viewer with axes and grid, seen from above; a child window if there is a @p parent.
    explicit KVGamut3DViewer(QWindow* parent = nullptr);
    ~KVGamut3DViewer() override;

    /// Forwards resizes, keys, wheel, moves, releases and double clicks to the GL window. If the viewer has
    /// the focus, Tab and Shift+Tab are also passed on to the parent window, whose widgets then take the
    /// focus.
    bool event(QEvent* e) override;

    /// @name Marker, point and segment sets
    /// Names are unique within each kind of set. Adding a set whose name is in use replaces its items and
    /// keeps its visibility and width. Segments with a position that is NaN or infinite are skipped.
    /// @{

    /// Solids of diameter @p size1 at positions. @p size2 is the ambient strength of spheres and stars, 0..1:
    /// 1, and every value that is not above 0, shows the pure colours; lower values add shading. It has no
    /// effect on cubes, which show their pure colours. Spheres are coarser in large sets, where they are
    /// small: above 2,232 spheres, or 744 of a diameter of 2 or less. An empty list creates a set without
    /// geometry; an empty name is valid.
    void addMarkerSet(const QString& name, MarkerType type, const QList<ColoredPosition>& markers,
                      float size1, float size2);
    /// Small spheres in the present point size. Does nothing if the list or the name is empty.
    void addPointSet(const QString& name, const QList<ColoredPosition>& points);
    /// Straight segments with colours interpolated from start to end, of width 2 at first (see
    /// setSegmentSetWidth()). Of several segments between the same two points the last is shown, or the first
    /// if the width is 0. Does nothing if the list or the name is empty.
    void addSegmentSet(const QString& name,
                       const QList<std::pair<ColoredPosition, ColoredPosition>>& segments);

    void removeMarkerSet(const QString& name);  ///< removes one set with its markers
    void removePointSet(const QString& name);   ///< removes one set with its points
    void removeSegmentSet(const QString& name); ///< removes one set with its segments
    void clearMarkerSet();                      ///< removes all marker sets
    void clearPointSet();                       ///< removes all point sets
    void clearSegmentSet();                     ///< removes all segment sets
    QStringList markerSet() const;              ///< names of the marker sets, in no particular order
    QStringList pointSet() const;               ///< names of the point sets, in no particular order
    QStringList segmentSet() const;             ///< names of the segment sets, in no particular order

    /// Diameter of the points of all point sets, present and future. 4 at first.
    void setPointSize(float size);
    float pointSize() const; ///< of new point sets
    /// Diameter of the points of one set, until its items are replaced or setPointSize() is called.
    void setPointSetSize(const QString& name, int size);
    /// Width of a segment set, used when its items are next replaced. Segments are bars that are
    /// width / 1.5 Lab units thick. A segment that starts where the previous one ends is joined to it by a
    /// mitre; at a turn of more than 120 degrees both are extended instead. Width 0 draws lines of 1 pixel.
    void setSegmentSetWidth(const QString& name, float width);
    /// @}

    /// @name Frame of reference
    /// @{
    void setDisplayGrid(bool display); ///< lines on the ab plane, every 10 a*, b*
    bool displayGrid() const;          ///< true at first
    void setDisplayAxes(bool display); ///< L*, a* and b* with their labels
    bool displayAxes() const;          ///< true at first
    /// The coloured plane just below L* 0: a*, b* from -128 to 128 in their colours at L* 72, mapped into
    /// sRGB with constant hue. Not drawn while the camera is below it.
    void setabPlane(bool display);
    bool abPlane() const; ///< false at first

    /// Builds axes, labels and grid again, in place. The constructor calls it.
    void addAxesAndGrid();
    /// Builds the ab plane from its image again and hides it. The constructor calls it.
    void addabPlane();
    /// Draws the outline of @p text as the child "Axis_" + @p axis of @p parent, at @p distance along the
    /// axis "X" (a*), "Y" (L*) or "Z" (b*). With any other axis it is drawn at the origin.
    void fillVertexBufferForText(KV3DObject* parent, const QString& axis, const QString& text, int distance,
                                 QColor colour);
    /// @}

    /// @name Gamuts
    /// @{

    /// Loads a gamut. If @p id is loaded already, its scene object and all settings of it are kept.
    ///
    /// @param id chosen by the host
    /// @param params what to load, the first of these that works:
    ///   - a hash from save(), or one that holds such a hash under "Gamut";
    ///   - "ProfilePath" (QString): an ICC profile file;
    ///   - "ProfileData" (QByteArray): the bytes of one;
    ///   - "Profile" (KVProfilePtr): an open profile;
    ///
    ///   and how, in "AdditionnalParam" (QHash<QString, QVariant>): "Link_ICCRendering" (int, 0
    ///   perceptual, 1 relative, 2 saturation, 3 absolute colorimetric; default 3),
    ///   "Link_blackPointCompensation" (bool, default false), "Link_GridPointNumber" (int, samples
    ///   along each device axis, default -1: chosen by the engine), "Link_adaptation" (int, a value of
    ///   KVGamut::Adaptation, default 0: a display's colours are adapted to D50).
    /// @param callback called once on the GUI thread with the id and whether the load succeeded, whatever
    ///   fails; not called if the gamut is removed or loaded in the background again, or the viewer
    ///   destroyed, before. It is called from the event loop; if there is not enough memory to start a load,
    ///   it may be called inside this call. It is only used and destroyed on the GUI thread. Without a
    ///   callback the load is finished inside the call; volume() tells whether it succeeded, and the clipping
    ///   is not applied to it.
    ///
    /// A failed load keeps what was shown before. A new load of an id waits until the computation in
    /// progress has noticed that it was cancelled. That takes milliseconds, also if the profile is a file on
    /// a drive that does not answer; a load without a callback waits for such a file. Unknown keys are
    /// ignored; see KVLoadRequest::fromParams().
    void load(QString id, const QHash<QString, QVariant>& params,
              std::function<void(QString, bool)> callback);
    /// Removes a gamut. A load in progress is cancelled, and its callback not called, even if the host holds
    /// the result of getGamut().
    void removeGamut(QString id);
    QStringList gamuts() const;    ///< ids, in no particular order
    bool exists(QString id) const; ///< true after load() was called, even before its end
    /// The scene object of a gamut; null if unknown.
    QSharedPointer<KV3DObject> getGamut(QString id) const;

    void setGamutVisible(QString id, bool visible); ///< shows or hides all parts of a gamut
    bool gamutVisible(QString id) const;            ///< unknown: false
    /// Shows the surface or wireframe if the gamut is visible. Unknown: false.
    void setDisplayGamut(QString id, bool display);
    bool displayGamut(QString id) const; ///< what setDisplayGamut() set
    /// Shows the outline of the projection onto the ab plane. True at first. Unknown: false.
    void setDisplayProjection(QString id, bool display);
    bool displayProjection(QString id) const; ///< what setDisplayProjection() set
    /// Shows the ramp of each colorant, starting at the colour without colorants. False at first. Unknown:
    /// false.
    void setDisplayPrimaries(QString id, bool display);
    bool displayPrimaries(QString id) const; ///< what setDisplayPrimaries() set
    /// A mode set before the first load is applied by that load. Unknown: Smooth.
    void setDisplayMode(QString id, DisplayMode mode);
    DisplayMode displayMode(QString id) const; ///< the mode set last
    /// Opacity of the surface, 0..1, reached after @p duration milliseconds. Ignored before the first load.
    /// Unknown: 1.
    void changeGamutAlpha(QString id, float alpha, int duration);
    float gamutAlpha(QString id) const; ///< the opacity; during a change the one reached so far
    /// One colour for the whole gamut: lighter or darker on the surface according to its lightness,
    /// unchanged for lines and points. An invalid colour restores the gamut's own colours. Unknown: an
    /// invalid colour.
    void changeGamutColor(QString id, QColor color);
    QColor gamutColor(QString id) const; ///< the colour set last
    /// Strength of the ambient light, 0..1. 1, at first, shows the pure colours; lower values shade the
    /// surface. Ignored before the first load. Unknown: 1.
    void setGamutAmbientStrength(QString id, float strength);
    float gamutAmbientStrength(QString id) const; ///< the strength set last

    /// Volume in cubic dE76; 0 if unknown or not loaded.
    float volume(QString id) const;
    /// Parameters of the last load that succeeded; empty if unknown.
    QHash<QString, QVariant> params(QString id) const;
    /// The gamut as plain values that load() accepts; empty if unknown.
    QHash<QString, QVariant> save(QString id) const;
    /// Whether the colour @p p (L*, a*, b*) is inside; false if unknown.
    bool isInsideGamut(QString id, const QVector3D& p);
    /// Vertices of each triangle of the surface, counter-clockwise seen from outside; empty if unknown.
    QList<QList<QVector3D>> faceList(QString id);
    /// Compares two gamuts: f1, f2 the volumes of the first and the second, f3 of their intersection,
    /// f4 of their union (cubic dE76), f5 the share of the second that the first covers, f6 the share of the
    /// first that the second covers (0..1).
    /// @return false if either is unknown; f1 to f6 are unchanged then
    bool gamutSetProperties(QString id1, QString id2, float& f1, float& f2, float& f3, float& f4, float& f5,
                            float& f6) const;

    /// Hides what is above the lightness @p clipping of all gamuts and shows their sections there. Also
    /// applied at the end of each later load in the background. 1000000 at first: nothing is cut off, as with
    /// NaN.
    void setClipping(float clipping);
    float clipping() const; ///< the lightness set last
    /// @}

    /// @name Camera
    /// A change with a duration is a move; moveFinished() is emitted at its end. It is not emitted for
    /// immediate changes or for moves that a newer change replaces. During a move, position and interest
    /// point are the current values; projection and viewing angle are those at the start of the move.
    /// @{

    /// Moves the eye to @p position, looking at @p interestPt. Not checked: with positions that are equal,
    /// NaN or infinite, nothing can be seen, and with NaN isSettled() remains false, until the next valid
    /// camera.
    void setCamera(const QVector3D& position, int duration, const QVector3D& interestPt);
    QVector3D camera() const;                  ///< position of the eye
    QVector3D interestPt() const;              ///< the point that the eye looks at and rotates around
    void resetCamera(View view, int duration); ///< moves to a preset position
    /// Orthogonal instead of perspective projection. The visible height at the interest point is kept.
    void setOrthogonalProjection(bool on, int duration);
    bool orthogonalProjection() const; ///< false at first
    /// Vertical field of view in degrees; 30 at first. Useful from 1 to 150. Not checked: the picture is
    /// empty or distorted with other values.
    void setViewingAngle(float degrees, int duration);
    float viewingAngle() const; ///< degrees
    /// Picking ray of a pixel (window coordinates): origin, then direction, not normalised.
    std::pair<QVector3D, QVector3D> rayToPoint(const QPoint& p) const;
    /// Squared distance of @p point from the line of a ray; NaN for a zero direction.
    static float squaredDistanceToRay(const QVector3D& point, const std::pair<QVector3D, QVector3D>& ray);
    /// Whether keys, wheel and drags move the camera. Clicks are reported in any case. True at first.
    void setEnableInteraction(bool enabled);
    bool enableInteraction() const; ///< what setEnableInteraction() set
    /// @}

    /// @name Look
    /// @{

    /// Only stored (30 at first): frames are drawn at most every 33 ms.
    void setFramerate(int framesPerSecond);
    int framerate() const; ///< what setFramerate() set
    /// Position of the light in scene coordinates (-a*, L*, b*); (0, 300, 0) at first. Changes of the light
    /// alone do not cause a new frame.
    void setLightPos(const QVector3D& position);
    QVector3D lightPos() const;              ///< in scene coordinates
    void setLightColor(const QColor& color); ///< white at first
    QColor lightColor() const;               ///< the colour set last
    /// Qt::gray at first. Causes a new frame, except in a window as wide as high whose camera is at (0, 0,
    /// -350), looks at (0, 0, 0) in perspective and has a viewing angle of 30. There the colour is shown by
    /// the next frame that another change causes. KVGamutView::setTheme() has no exception.
    void setBackground(QColor color);
    QColor background() const; ///< the colour set last

    /// The last drawn frame in device pixels, even if the window is covered. Null before the first frame of
    /// an OpenGL context. A window that is larger than OpenGL's framebuffers (16,384 pixels or more) does not
    /// draw; picture(QSize) has no such limit.
    QImage picture() const;
    /// The present view rendered at @p size pixels, independent of window and screen. In the size of the
    /// window it equals picture(); in twice that size it shows the same view with more detail, but lines of
    /// 1 pixel stay 1 pixel wide. It is rendered in tiles, so it needs little more memory than the picture.
    /// The window does not change. Call it when isSettled(): during a move, tiles may show different
    /// moments. Null before the first frame, for an empty size and if there is not enough memory, also of the
    /// graphics processor.
    QImage picture(const QSize& size) const;
    /// Whether the picture is up to date: there is no camera move or opacity change, and nothing changed
    /// since the last frame. Loads in progress and changes of the light do not count.
    bool isSettled() const;
    /// @}

Q_SIGNALS:
    /// A camera move has ended; key presses start moves, too.
    void moveFinished();
    /// Never emitted by the viewer, which reports the end of a load through the callback. Hosts may emit it.
    void loadingFinished(QString gamutId);
    /// A mouse button was released at pixel @p p, also at the end of a drag; with the picking ray there.
    void click(QPoint p, QVector3D origin, QVector3D direction);
    /// A double click; emitted between its two clicks.
    void doubleClick(QPoint p, QVector3D origin, QVector3D direction);

private:
    friend class KVGamutCanvas;
    friend class KVGamutView;
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
