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

/// An interactive 3D view of colour gamuts in CIE L*a*b*, as a window that a host embeds.
///
/// **Coordinates.** Every vector of this class is (L*, a*, b*), D50, in that order as x, y, z; the one
/// exception is the light position (see setLightPos()). L* runs up the screen in the oblique views.
/// Distances are Lab units. Durations are milliseconds; 0 or less means at once.
///
/// **Threads.** GUI thread only. Loading computes on a worker thread of its own and reports back on the
/// GUI thread; everything else happens inside the call.
///
/// **Failure.** Nothing throws and nothing is logged (but one debug line that describes the GL
/// context). An unknown id or set name makes a setter do nothing and a query answer the value stated
/// with it. Why a profile gives no gamut can be asked of the colour engine (KVGamut::GamutObject).
///
/// **When.** Every method may be called before the window is shown, while it is, from inside the
/// callback of load() and from slots connected to the signals. A hidden viewer draws nothing; moves that
/// it makes end when it is shown again. Only destroying the viewer inside a
/// slot of moveFinished() is not allowed (it is emitted while a frame is painted): use deleteLater().
///
/// **Resources.** The shaders and the plane image are read from
/// `<folder of the application>/../Resources`. The viewer reads no settings and no environment.
///
/// Destroy the viewer before the QGuiApplication.
class KV3DVIEWER_EXPORT KVGamut3DViewer : public QWindow
{
    Q_OBJECT
public:
    /// Preset camera positions.
    enum View : int
    {
        Top = 0,    ///< from above (high L*) onto the ab plane, +a* to the right, +b* up; any other value too
        Bottom = 1, ///< from below; a little farther away
    };

    /// Shapes of markers; every other value draws spheres. All have radius size / 2.
    enum MarkerType : int
    {
        Sphere = 1,        ///< smoothly lit ball
        BracketedCube = 2, ///< cube of which each edge shows its outer thirds
        Star = 3,          ///< faceted solid: a four-pointed star seen from above, a diamond from the side
    };

    /// How a gamut is shown.
    enum DisplayMode : int
    {
        Solid = 0,     ///< the surface; the same as Smooth
        Smooth = 1,    ///< the surface, its colours blending over the faces
        Flat = 2,      ///< the surface; a colour set by changeGamutColor() is one tone per face
        Wireframe = 3, ///< the edges of the surface
    };

    /// An item of a set: its colour and its position (L*, a*, b*). Inside the library this type is named
    /// ColoredPoint.
    using ColoredPosition = std::pair<QColor, QVector3D>;

    /// A viewer with axes and grid, seen from above, not shown yet; with @p parent as part of that window.
    explicit KVGamut3DViewer(QWindow* parent = nullptr);
    ~KVGamut3DViewer() override;

    /// Forwards resizes, keys, wheel, moves, releases and double clicks to the GL window.
    bool event(QEvent* e) override;

    /// @name Marker, point and segment sets
    /// A set is known by its name within its kind; a marker set and a point set may share a name.
    /// Adding under a name in use refills that set and keeps its visibility and width. Items whose
    /// position is not finite are the host's mistake: segments of that kind are left out.
    /// @{

    /// Solids of diameter @p size1 around positions. @p size2 is their ambient strength (0..1; not above 0
    /// means 1): less shows their shape, 1 the pure colours. An empty list gives a set without geometry; an
    /// empty name is a name.
    void addMarkerSet(const QString& name, MarkerType type, const QList<ColoredPosition>& markers,
                      float size1, float size2);
    /// Dots (small spheres) in the present point size. An empty list or name does nothing.
    void addPointSet(const QString& name, const QList<ColoredPosition>& points);
    /// Straight segments, colour blending from start to end, 2 wide at first (see setSegmentSetWidth()).
    /// An empty list or name does nothing.
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

    /// Diameter of the dots of all point sets, present and future. 4 at first.
    void setPointSize(float size);
    float pointSize() const; ///< of sets to come
    /// Diameter of the dots of one point set, until it is refilled or setPointSize() is called.
    void setPointSetSize(const QString& name, int size);
    /// Width of a segment set. Segments are bars width / 1.5 Lab units thick, seen alike from every side;
    /// one that starts where the one before it ends meets it in a mitre (both reach over a corner sharper
    /// than 120 degrees). A new width shows when the set is next refilled; 0 draws lines 1 pixel thin.
    void setSegmentSetWidth(const QString& name, float width);
    /// @}

    /// @name Frame of reference
    /// @{
    void setDisplayGrid(bool display); ///< lines on the ab plane, every 10 a*, b*
    bool displayGrid() const;          ///< true at first
    void setDisplayAxes(bool display); ///< L*, a* and b* with their labels
    bool displayAxes() const;          ///< true at first
    /// The coloured floor just below L* 0: each a*, b* from -128 to 128 in its colour at L* 72, brought
    /// onto the screen in its hue. Not drawn while the camera is below it.
    void setabPlane(bool display);
    bool abPlane() const; ///< false at first

    /// Builds axes, labels and grid; the constructor has done so. Again, it refills them in place.
    void addAxesAndGrid();
    /// Builds the ab plane from its image and hides it; the constructor has done so.
    void addabPlane();
    /// Traces @p text as the child "Axis_" + @p axis of @p parent, at @p distance along the axis "X"
    /// (a*), "Y" (L*) or "Z" (b*); any other axis leaves it unplaced at the origin.
    void fillVertexBufferForText(KV3DObject* parent, const QString& axis, const QString& text, int distance,
                                 QColor colour);
    /// @}

    /// @name Gamuts
    /// @{

    /// Loads gamut @p id, or reloads it: the object and what the host set on it stay.
    ///
    /// @param id the host's name for it
    /// @param params what to load, the first of these that works:
    ///   - a hash from save(), or one that holds such a hash under "Gamut";
    ///   - "ProfilePath" (QString): an ICC profile file;
    ///   - "ProfileData" (QByteArray): the bytes of one;
    ///   - "Profile" (KVProfilePtr): one opened with the colour engine;
    ///
    ///   and how, in "AdditionnalParam" (QHash<QString, QVariant>): "Link_ICCRendering" (int, 0
    ///   perceptual, 1 relative, 2 saturation, 3 absolute colorimetric; default 3),
    ///   "Link_blackPointCompensation" (bool, default false), "Link_GridPointNumber" (int, samples
    ///   along each device axis, default -1: chosen by the engine).
    /// @param callback called once on the GUI thread with id and success. Not called when the gamut is
    ///   removed, reloaded with a callback or destroyed with the viewer before. Without a callback the load
    ///   runs to its end inside the call and says nothing (exists() and volume() do), and setClipping() is
    ///   not applied to it.
    ///
    /// A failed load keeps what was shown before. A reload waits until the computation in progress has
    /// noticed that it was cancelled.
    void load(QString id, const QHash<QString, QVariant>& params,
              std::function<void(QString, bool)> callback);
    /// Removes a gamut; of a load in progress its callback is not called.
    void removeGamut(QString id);
    QStringList gamuts() const;    ///< ids, in no particular order
    bool exists(QString id) const; ///< true from load() on, loaded or not
    /// The gamut's scene object; null when unknown.
    QSharedPointer<KV3DObject> getGamut(QString id) const;

    void setGamutVisible(QString id, bool visible); ///< all of it, or nothing
    bool gamutVisible(QString id) const;            ///< unknown: false
    /// Shows the surface or wireframe, as far as the gamut itself is visible. Unknown: false.
    void setDisplayGamut(QString id, bool display);
    bool displayGamut(QString id) const; ///< what setDisplayGamut() set
    /// Shows the outline of the gamut's projection onto the ab plane. Shown at first. Unknown: false.
    void setDisplayProjection(QString id, bool display);
    bool displayProjection(QString id) const; ///< what setDisplayProjection() set
    /// Shows each colorant's ramp from the colour without colorants. Hidden at first. Unknown: false.
    void setDisplayPrimaries(QString id, bool display);
    bool displayPrimaries(QString id) const; ///< what setDisplayPrimaries() set
    /// Set before the first load it takes effect with that load. Unknown: Smooth.
    void setDisplayMode(QString id, DisplayMode mode);
    DisplayMode displayMode(QString id) const; ///< the mode set last
    /// Opacity 0..1 of the surface, reached in @p duration milliseconds. A gamut that was never loaded
    /// ignores it. Unknown: 1.
    void changeGamutAlpha(QString id, float alpha, int duration);
    float gamutAlpha(QString id) const; ///< the opacity that a change leads to
    /// One colour for the gamut: the surface is shaded from it by lightness, lines and points take it as
    /// it is. An invalid colour restores the gamut's own colours. Unknown: an invalid colour.
    void changeGamutColor(QString id, QColor color);
    QColor gamutColor(QString id) const; ///< the colour set last
    /// Share of light that comes from everywhere, 0..1. 1 (at first) shows pure colours, less shades the
    /// surface by the light. A gamut that was never loaded ignores it. Unknown: 1.
    void setGamutAmbientStrength(QString id, float strength);
    float gamutAmbientStrength(QString id) const; ///< the share set last

    /// Volume in dE76 cubed; 0 when unknown or not loaded.
    float volume(QString id) const;
    /// Parameters of the last load that succeeded; empty when unknown.
    QHash<QString, QVariant> params(QString id) const;
    /// The gamut as plain values that load() restores; empty when unknown.
    QHash<QString, QVariant> save(QString id) const;
    /// Whether the colour @p p (L*, a*, b*) lies inside; false when unknown.
    bool isInsideGamut(QString id, const QVector3D& p);
    /// Corners of the surface's triangles, counter-clockwise from outside; empty when unknown.
    QList<QList<QVector3D>> faceList(QString id);
    /// Compares two gamuts: f1, f2 the volumes of the first and the second, f3 of their intersection,
    /// f4 of their union (dE76 cubed), f5 the share of the second covered by the first, f6 of the first
    /// covered by the second (0..1).
    /// @return false, with f1..f6 untouched, when either is unknown
    bool gamutSetProperties(QString id1, QString id2, float& f1, float& f2, float& f3, float& f4, float& f5,
                            float& f6) const;

    /// Cuts all gamuts off above lightness @p clipping and shows the section there; also applied to each
    /// gamut whose load with a callback ends later. 1000000 at first: nothing is cut.
    void setClipping(float clipping);
    float clipping() const; ///< the lightness set last
    /// @}

    /// @name Camera
    /// A change with a duration is a move, and moveFinished() follows when it ends; a change at once,
    /// or a move that a newer change replaces, ends without it. Until a move ends the queries answer
    /// where it is, and the flag and angle where it began.
    /// @{

    /// Moves the eye to @p position, looking at @p interestPt.
    void setCamera(const QVector3D& position, int duration, const QVector3D& interestPt);
    QVector3D camera() const;                  ///< where the eye is
    QVector3D interestPt() const;              ///< the point that it looks at and turns about
    void resetCamera(View view, int duration); ///< moves to a preset position
    /// Orthogonal instead of perspective; the height seen at the interest point stays.
    void setOrthogonalProjection(bool on, int duration);
    bool orthogonalProjection() const; ///< false at first
    /// Vertical field of view in degrees; 30 at first.
    void setViewingAngle(float degrees, int duration);
    float viewingAngle() const; ///< degrees
    /// Ray under a pixel (window coordinates): origin, then direction (not normalised).
    std::pair<QVector3D, QVector3D> rayToPoint(const QPoint& p) const;
    /// Squared distance of @p point from a ray's line; not a number for a zero direction.
    static float squaredDistanceToRay(const QVector3D& point, const std::pair<QVector3D, QVector3D>& ray);
    /// Whether keys, wheel and drags move the camera; clicks are reported all the same. True at first.
    void setEnableInteraction(bool enabled);
    bool enableInteraction() const; ///< what setEnableInteraction() set
    /// @}

    /// @name Look
    /// @{

    /// Kept and answered (30 at first); frames are drawn at most every 33 ms whatever it says.
    void setFramerate(int framesPerSecond);
    int framerate() const; ///< what setFramerate() set
    /// Light position in scene coordinates (-a*, L*, b*), not converted; (0, 300, 0) at first. Light
    /// changes show with the next frame that is drawn because something else changed.
    void setLightPos(const QVector3D& position);
    QVector3D lightPos() const;              ///< in scene coordinates, too
    void setLightColor(const QColor& color); ///< white at first
    QColor lightColor() const;               ///< the colour set last
    void setBackground(QColor color);        ///< Qt::gray at first; shows at once
    QColor background() const;               ///< the colour set last

    /// The picture as last drawn, antialiased, in device pixels; null before the first frame. Also of
    /// a window that is covered. A window with a side longer than OpenGL's largest framebuffer (16,384
    /// pixels or more) draws nothing new until it is smaller; picture(QSize) has no such limit.
    QImage picture() const;
    /// The present view drawn anew at @p size pixels, whatever the window's size and the screen's; in the
    /// window's size it is picture(), at twice the size the same view with twice the detail. Lines that
    /// are a pixel thin stay so. Drawn piece by piece: memory is needed for little more than the picture.
    /// The window keeps what it shows. Take it when isSettled(): of a move in progress the pieces may
    /// show different moments. Null before the first frame and for an empty size.
    QImage picture(const QSize& size) const;
    /// Whether the picture is up to date: no camera move, no opacity change, nothing changed since the
    /// last frame. Says nothing of loads in progress.
    bool isSettled() const;
    /// @}

Q_SIGNALS:
    /// A camera move has ended (a key press makes one, too).
    void moveFinished();
    /// Declared for hosts that emit it; the viewer reports the end of a load through the callback only.
    void loadingFinished(QString gamutId);
    /// A mouse button was released at pixel @p p (a drag ends with it, too): the picking ray there.
    void click(QPoint p, QVector3D origin, QVector3D direction);
    /// A double click, between its two clicks.
    void doubleClick(QPoint p, QVector3D origin, QVector3D direction);

private:
    friend class KVGamutView;
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
