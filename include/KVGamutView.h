// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <platform/KVProblem.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QRectF>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtGui/QPalette>
#include <QtGui/QRgb>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QPainter;

/// @file
/// The second public class and its values: gamuts that the host computed, progress and failures of loads,
/// picking, looks, theme, camera, and the state of the view. The guide is docs/EMBEDDING.md.
///
/// Positions are (L*, a*, b*) in Lab units, angles are in degrees, durations in milliseconds. GUI thread
/// only.

/// The whole camera as one value. By default that of KVGamut3DViewer::Top. Views ignore a camera that is not
/// valid.
struct KV3DVIEWER_EXPORT KVCamera
{
    Q_GADGET
    Q_PROPERTY(QVector3D position MEMBER position)
    Q_PROPERTY(QVector3D interestPoint MEMBER interestPoint)
    Q_PROPERTY(float viewingAngle MEMBER viewingAngle)
    Q_PROPERTY(bool orthogonal MEMBER orthogonal)
public:
    QVector3D position{522.48712f, 0.0f, -1.1920929e-7f}; ///< of the eye
    QVector3D interestPoint{50.0f, 0.0f, 0.0f};           ///< what the eye looks at and rotates around
    float viewingAngle = 30.0f;                           ///< vertical field of view, degrees
    bool orthogonal = false;                              ///< parallel projection instead of perspective

    static constexpr float minAngle = 1.0f;   ///< smallest valid viewing angle
    static constexpr float maxAngle = 150.0f; ///< largest valid viewing angle
    /// Whether the positions are finite and different, and the viewing angle is from minAngle to maxAngle.
    [[nodiscard]] bool isValid() const;

    bool operator==(const KVCamera&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVCamera)

/// How one gamut is shown. The library and the program take their defaults from here.
struct KV3DVIEWER_EXPORT KVGamutLook
{
    Q_GADGET
    Q_PROPERTY(bool visible MEMBER visible)
    Q_PROPERTY(KVGamut3DViewer::DisplayMode mode MEMBER mode)
    Q_PROPERTY(QColor color MEMBER color)
    Q_PROPERTY(float opacity MEMBER opacity)
    Q_PROPERTY(float ambientStrength MEMBER ambientStrength)
    Q_PROPERTY(bool surface MEMBER surface)
    Q_PROPERTY(bool projection MEMBER projection)
    Q_PROPERTY(bool primaries MEMBER primaries)
    Q_PROPERTY(QColor outlineColor MEMBER outlineColor)
public:
    /// Opacity at which the inside of a gamut can be seen.
    static constexpr float translucentOpacity = 0.35f;

    bool visible = true;                                         ///< all of the gamut, or nothing
    KVGamut3DViewer::DisplayMode mode = KVGamut3DViewer::Smooth; ///< surface or wireframe
    QColor color;                                                ///< invalid: the gamut's own colours
    float opacity = 1.0f;                                        ///< of the surface, 0..1
    float ambientStrength = 0.55f; ///< shows the shape and keeps the colours recognisable
    bool surface = true;           ///< surface or wireframe
    bool projection = true;        ///< outline on the ab plane
    bool primaries = false;        ///< ramp of each colorant
    QColor outlineColor;           ///< of the projection; invalid: as the surface, which look() also returns

    bool operator==(const KVGamutLook&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVGamutLook)

/// Colours of what surrounds the gamuts.
struct KV3DVIEWER_EXPORT KVViewTheme
{
    Q_GADGET
    Q_PROPERTY(QColor background MEMBER background)
    Q_PROPERTY(QColor axes MEMBER axes)
    Q_PROPERTY(QColor labels MEMBER labels)
    Q_PROPERTY(QColor grid MEMBER grid)
    Q_PROPERTY(QColor section MEMBER section)
public:
    QColor background = Qt::gray;           ///< of the view
    QColor axes = Qt::black;                ///< L*, a* and b*
    QColor labels = Qt::black;              ///< of the axes
    QColor grid = QColor(180, 180, 180);    ///< on the ab plane
    QColor section = QColor(80, 80, 80, 1); ///< the alpha is not drawn: sections are opaque

    /// The window colour of @p palette as background, its text colour for axes, labels and sections, and a
    /// mixture of both for the grid.
    static KVViewTheme fromPalette(const QPalette& palette);

    bool operator==(const KVViewTheme&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVViewTheme)

/// A row of the legend.
struct KV3DVIEWER_EXPORT KVLegendEntry
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString details MEMBER details)
    Q_PROPERTY(QColor key MEMBER key)
public:
    QString id;      ///< of the gamut, see KVAnnotations::highlight
    QString name;    ///< what the gamut is called
    QString details; ///< what else is said of it, such as the rendering intent and the volume
    QColor key;      ///< colour by which the gamut is recognised

    bool operator==(const KVLegendEntry&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVLegendEntry)

/// What the colours of a surface mean: a bar with numbers and a title, at the top right.
struct KV3DVIEWER_EXPORT KVScaleBar
{
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QList<QColor> colors MEMBER colors)
    Q_PROPERTY(float low MEMBER low)
    Q_PROPERTY(float high MEMBER high)
public:
    QString title;        ///< above the bar
    QList<QColor> colors; ///< from the bottom to the top, each as high as the others; empty: there is no bar
    float low = 0.0f;     ///< the value at the bottom
    float high = 1.0f;    ///< the value at the top; there is no bar unless it is above low

    bool operator==(const KVScaleBar&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVScaleBar)

/// Texts and scales that explain the view. By default there are none.
///
/// They are drawn on top of everything else, in the window and in pictures, in black or white, whichever has
/// more contrast to the background. The text is as high as 2 % of the shorter side of the window or picture,
/// at least 10 pixels. What does not fit is shortened or left out.
struct KV3DVIEWER_EXPORT KVAnnotations
{
    Q_GADGET
    Q_PROPERTY(bool scales MEMBER scales)
    Q_PROPERTY(QList<KVLegendEntry> legend MEMBER legend)
    Q_PROPERTY(QString highlight MEMBER highlight)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(QString fontFamily MEMBER fontFamily)
    Q_PROPERTY(float textScale MEMBER textScale)
    Q_PROPERTY(KVScaleBar scaleBar MEMBER scaleBar)
public:
    /// Scales of L*, a* and b* with numbers, on the edges of a box around the visible gamuts. The axes of the
    /// viewer and their letters are not drawn then; KVGamut3DViewer::displayAxes() is not affected.
    bool scales = false;
    QList<KVLegendEntry> legend; ///< rows at the top left
    QString highlight;           ///< id of the row that is emphasised; empty: none
    QString caption;             ///< a line at the bottom
    QString fontFamily;          ///< empty: the font of the application
    float textScale = 1.0f;      ///< factor of the height of the text
    KVScaleBar scaleBar;         ///< of the colours of a surface; by default there is none

    bool operator==(const KVAnnotations&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVAnnotations)

/// Sections of the gamuts at one lightness or one hue, filled with their colours. By default there are none.
///
/// Colours that an sRGB screen cannot show appear as on the surfaces, see
/// KVColorConversionHelper::KVHLab2RGB(). They are not shaded, and do not follow KVGamutLook::color. They are
/// exact at the corners of cells of 1 Lab unit, or more if a section is wider than 200, and interpolated
/// between them: in 99.7 % of the places within 3 of 255, elsewhere within 15. The outline is exact. The
/// opacity is that of the gamut. Gamuts that are hidden, whose surface is hidden, or that are drawn as
/// wireframes have no filled section.
struct KV3DVIEWER_EXPORT KVSection
{
    Q_GADGET
    Q_PROPERTY(bool lids MEMBER lids)
public:
    bool lids = false; ///< close gamuts that the clipping cuts off
    std::optional<float>
        plane; ///< L* of a section that cuts nothing off: its outline is drawn on the surface
    /// Hue angle of a leaf, in degrees from +a* towards +b*: the half-plane that ends at the L* axis. It cuts
    /// nothing off, ends where the clipping is, and its outline is drawn on the surface.
    std::optional<float> hue = {};

    bool operator==(const KVSection&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVSection)

/// What a host saves and restores, as one value.
struct KV3DVIEWER_EXPORT KVViewState
{
    KVCamera camera;                     ///< see KVCamera
    KVViewTheme theme;                   ///< see KVViewTheme
    QVector3D light{300.0f, 0.0f, 0.0f}; ///< position, (L*, a*, b*); KVGamut3DViewer::lightPos() differs
    QColor lightColor = Qt::white;       ///< multiplies the lit part of a surface
    bool grid = true;                    ///< whether the grid is shown
    bool axes = true;                    ///< whether the axes and their labels are shown
    bool plane = false;                  ///< whether the coloured ab plane is shown
    std::optional<float> clipping;       ///< L* above which gamuts are cut off; nullopt: nothing is cut
    QHash<QString, KVGamutLook> looks;   ///< by gamut id
    QHash<QString, KVGamut::Settings> settings; ///< by gamut id

    /// Plain values (numbers, texts, lists, maps), which JSON, CBOR and QSettings store unchanged.
    QVariantMap toMap() const;
    /// Values that are missing or invalid keep their defaults.
    static KVViewState fromMap(const QVariantMap& map);

    bool operator==(const KVViewState&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVViewState)

/// What KVGamutView::framing() keeps inside a picture.
struct KV3DVIEWER_EXPORT KVFraming
{
    /// A text or a symbol of a fixed size in pixels.
    struct Label
    {
        QVector3D position; ///< (L*, a*, b*)
        QRectF box;         ///< pixels that it covers, relative to the projected position; y points down
    };
    QList<QVector3D> positions; ///< (L*, a*, b*)
    QList<Label> labels;        ///< see Label
    float margin = 0.04f;       ///< least distance from the edges; share of the width and of the height
    /// What is drawn at fixed places of the picture, such as a legend: pixels from the top left. Neither the
    /// outline of all positions nor a label covers any of it, unless what is shown would become smaller than
    /// the share minSize of its size without this rule.
    QList<QRectF> taken = {};
    static constexpr float minSize = 0.75f; ///< see taken
};

/// What to load, and how. If several sources are given, a saved gamut is preferred, then the first of
/// path, data and profile that can be opened.
struct KV3DVIEWER_EXPORT KVLoadRequest
{
    QString profilePath;        ///< an ICC profile file
    QByteArray profileData;     ///< or the bytes of one
    KVProfilePtr profile;       ///< or one that is open
    QVariantHash savedGamut;    ///< or the result of GamutObject::serialize(); settings do not apply to it
    KVGamut::Settings settings; ///< how the gamut is computed

    /// A request for profilePath.
    static KVLoadRequest fromFile(const QString& path, const KVGamut::Settings& settings = {});
    /// A request for profileData.
    static KVLoadRequest fromData(const QByteArray& bytes, const KVGamut::Settings& settings = {});
    /// A request for profile.
    static KVLoadRequest fromProfile(const KVProfilePtr& profile, const KVGamut::Settings& settings = {});
    /// A request for savedGamut.
    static KVLoadRequest fromSaved(const QVariantHash& saved);
    /// The request for a parameter hash of KVGamut3DViewer::load(). Nullopt and the problem UnknownSetting if
    /// a key is unknown; the viewer ignores such a key, so that a misspelt setting has no effect.
    static std::optional<KVLoadRequest> fromParams(const QVariantHash& params, KVProblem* problem = nullptr);
};

/// What is under the pointer, and the event that caused the query.
struct KV3DVIEWER_EXPORT KVHit
{
    Q_GADGET
    Q_PROPERTY(Kind kind MEMBER kind)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(int index MEMBER index)
    Q_PROPERTY(QVector3D lab MEMBER lab)
    Q_PROPERTY(float distance MEMBER distance)
    Q_PROPERTY(QVector3D rayOrigin MEMBER rayOrigin)
    Q_PROPERTY(QVector3D rayDirection MEMBER rayDirection)
    Q_PROPERTY(QPoint pixel MEMBER pixel)
    Q_PROPERTY(Qt::MouseButton button MEMBER button)
    Q_PROPERTY(Qt::KeyboardModifiers modifiers MEMBER modifiers)
    Q_PROPERTY(bool endsDrag MEMBER endsDrag)
public:
    /// What was hit first.
    enum class Kind
    {
        Nothing, ///< the ray meets nothing that can be picked
        Gamut,   ///< the visible surface of a gamut
        Marker,  ///< a marker of a marker set
        Point,   ///< a point of a point set
    };
    Q_ENUM(Kind)

    Kind kind = Kind::Nothing;             ///< see Kind
    QString id;                            ///< of the gamut, or name of the set; empty for Nothing
    int index = -1;                        ///< position in the set; -1 for a gamut and for Nothing
    QVector3D lab;                         ///< point of the surface, or position of the marker; 0 for Nothing
    float distance = 0.0f;                 ///< from the ray's origin, Lab units; 0 for Nothing
    QVector3D rayOrigin;                   ///< picking ray
    QVector3D rayDirection;                ///< not normalised
    QPoint pixel;                          ///< window coordinates
    Qt::MouseButton button = Qt::NoButton; ///< released button; NoButton for hovered()
    Qt::KeyboardModifiers modifiers;       ///< held during the event
    bool endsDrag = false; ///< the pointer moved farther than the system's drag distance since the press
};
Q_DECLARE_METATYPE(KVHit)

/// Attached to a viewer: loads and shows gamuts, reports what happens, and sets looks, theme and camera.
///
/// A gamut has the same id here and in KVGamut3DViewer, and both classes may be used at the same time.
/// Several views may be attached to one viewer: they share its gamuts, looks and theme, and each reports
/// all loads of the viewer that run in the background, whichever class started them.
///
/// A view may be destroyed before or after its viewer. Without a viewer, every call does nothing and every
/// query returns the default of its type. Slots of all signals of this class, and functions given to load()
/// and show(), may destroy the viewer and the view with delete.
class KV3DVIEWER_EXPORT KVGamutView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(KVCamera camera READ camera WRITE setCamera NOTIFY cameraChanged)
    Q_PROPERTY(KVViewTheme theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(bool themeFollowsPalette READ themeFollowsPalette WRITE setThemeFollowsPalette NOTIFY
                   themeFollowsPaletteChanged)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(bool drawable READ isDrawable NOTIFY drawableChanged)
public:
    explicit KVGamutView(KVGamut3DViewer* viewer, QObject* parent = nullptr); ///< attached to @p viewer
    ~KVGamutView() override;

    KVGamut3DViewer* viewer() const; ///< null after it was destroyed

    /// @name Drawing
    /// The viewer needs desktop OpenGL 2.1 with the compatibility profile. Without it the viewer is an empty
    /// window: pictures are null and isSettled() stays false, but everything else works, loading and picking
    /// included.
    ///
    /// The first call of one of these functions, or the first time that the window is exposed, makes an
    /// OpenGL context to find out. The check is repeated each time the window is exposed anew while nothing
    /// can be drawn; if there is OpenGL by then, the viewer uses it.
    ///
    /// Faulty shader files of the application (see "Resources" in KVGamut3DViewer) are found when the viewer
    /// makes its own context, before its first frame. Then pictures show the background alone.
    /// @{
    bool isDrawable() const; ///< whether the viewer can draw
    /// Why the viewer cannot draw: one of the codes from NoOpenGL on, or why a shader file cannot be read
    /// (FileNotFound, NotAFile, FileUnreadable). Nullopt if it can.
    std::optional<KVProblem> drawingProblem() const;
    /// @}

    /// @name Gamuts
    /// @{

    /// Called on the GUI thread when a load has ended: nullopt, or why it failed. At most once, and exactly
    /// once unless the context object, the view or the viewer is destroyed, or the gamut removed, before.
    /// The function and what it captures are only used and destroyed on the GUI thread. It is called from the
    /// event loop; if there is not enough memory to start a load, it may be called inside load() or show().
    using Done = std::function<void(const std::optional<KVProblem>& problem)>;

    /// Shows a gamut that is computed already, under @p id. It is neither serialized nor computed again; its
    /// geometry is built in the background. An empty gamut fails with its problem(), or with NoFaces.
    void show(const QString& id, const KVGamut::GamutObject& gamut);
    /// The same; calls @p done at the end. If @p context is null, the view is used.
    void show(const QString& id, const KVGamut::GamutObject& gamut, QObject* context, Done done);
    /// The same, with other colours of the surface: one for each vertex of GamutObject::mesh(), interpolated
    /// in between, such as those of a map of distances. Alpha is ignored. With another number of colours the
    /// surface has its own ones. Outline, wireframe and primaries keep theirs, and KVGamutLook::color
    /// replaces all. To change the colours, show the gamut again.
    void show(const QString& id, const KVGamut::GamutObject& gamut, const QList<QRgb>& vertexColors,
              QObject* context = nullptr, Done done = {});
    /// The same, with the surface in the colours of @p values, such as distances: one for each vertex of
    /// GamutObject::mesh(), linear within each triangle. With another number of values, or without stops, the
    /// surface has its own colours. NaN counts as the smallest value.
    ///
    /// @p stops are values with their colours, ascending. Colours in between are interpolated; beyond the
    /// first and the last stop they are those of that stop. Two stops with the same value are a sharp border.
    /// Triangles are split where the value is that of a stop, so that borders do not depend on their size.
    void showValues(const QString& id, const KVGamut::GamutObject& gamut, const std::vector<float>& values,
                    const QList<std::pair<float, QRgb>>& stops, QObject* context = nullptr, Done done = {});
    /// Computes a gamut in the background and shows it. A load of the same id that is in progress is
    /// replaced: its Done is called with the code Cancelled, from the event loop; failed() is not emitted for
    /// it. As with KVGamut3DViewer::load(), this call waits until the computation has noticed that.
    /// A failed load keeps what was shown before.
    void load(const QString& id, const KVLoadRequest& request);
    /// The same; calls @p done at the end. If @p context is null, the view is used.
    void load(const QString& id, const KVLoadRequest& request, QObject* context, Done done);

    bool isLoading() const;                  ///< whether any load is in progress
    bool isLoading(const QString& id) const; ///< whether a load of this gamut is in progress
    float progress(const QString& id) const; ///< of the load in progress, 0..1; 1 if there is none
    /// Cancels a load. It ends soon after with the code Cancelled, in Done and failed().
    void cancel(const QString& id);
    /// Removes a gamut with its look. A load in progress is cancelled silently: neither Done nor a signal
    /// reports it.
    void remove(const QString& id);

    KVGamut::GamutObject gamut(const QString& id) const; ///< as shown; empty if unknown
    /// @}

    /// @name Looks
    /// @{

    /// Applies a look. If the gamut is not loaded yet, it appears with this look.
    void setLook(const QString& id, const KVGamutLook& look);
    /// The present look, as set here or with KVGamut3DViewer. For a gamut that is not loaded: the look that
    /// it will have, or the default look. A gamut whose first load is started here begins with the default
    /// look.
    KVGamutLook look(const QString& id) const;

    void setTheme(const KVViewTheme& theme); ///< applied and shown at once, with every camera
    KVViewTheme theme() const;               ///< with the present background of the viewer
    /// Sets the theme from the palette of the application now and each time that the palette changes.
    void setThemeFollowsPalette(bool follow);
    bool themeFollowsPalette() const; ///< false at first

    /// Texts and scales on top of the view; shown at once.
    void setAnnotations(const KVAnnotations& annotations);
    KVAnnotations annotations() const; ///< as set last; none at first
    /// Draws the annotations of a picture of @p size pixels as vectors, texts as outlines: for SVG and PDF.
    /// KVGamut3DViewer::picture() contains them as pixels already.
    void paintAnnotations(QPainter& painter, const QSize& size) const;

    /// Cuts the gamuts off above a lightness; nullopt: nothing is cut off. NaN and infinity are ignored.
    void setClipping(const std::optional<float>& lightness);
    std::optional<float> clipping() const; ///< the lightness set last, here or with the viewer
    /// Filled sections; shown at once. A plane that is NaN or infinite is ignored. A plane above the clipping
    /// is not shown.
    void setSection(const KVSection& section);
    KVSection section() const; ///< as set last; none at first
    /// Position, (L*, a*, b*), and colour of the light. Unlike the setters of KVGamut3DViewer it shows at
    /// once.
    void setLight(const QVector3D& position, const QColor& color);

    /// Applies a state at once; a camera or clipping that is not valid is ignored. Looks of gamuts that are
    /// not loaded yet are kept for them. Nothing is loaded; the settings are only kept for state().
    void setState(const KVViewState& state);
    /// The present state: the looks of all gamuts, and the settings of those that load() was called for.
    KVViewState state() const;
    /// @}

    /// @name Camera
    /// @{
    KVCamera camera() const; ///< the present camera; during a move, as KVGamut3DViewer describes
    void setCamera(const KVCamera& camera) { setCamera(camera, 0); } ///< at once
    /// Does nothing if @p camera is not valid. A duration of 0 or less: at once, without moveFinished().
    void setCamera(const KVCamera& camera, int durationMs);
    /// Moves the eye, without turning it, so that the named gamuts fill the window; without names all visible
    /// ones. Does nothing if there are none.
    void frame(const QStringList& ids = {}, int durationMs = 0);
    /// @p camera moved, but not turned, so that all @p positions fit a view of the aspect ratio @p aspect
    /// (width divided by height). Unchanged if there are no positions; a camera that is not valid is replaced
    /// by the default.
    static KVCamera framing(const KVCamera& camera, const QList<QVector3D>& positions, float aspect);
    /// The vertices of everything that is shown, cut by the clipping, except the grid. With @p size also the
    /// annotations in a picture of that many pixels: the scales with their numbers, and as what is taken the
    /// legend, the caption and the scale bar.
    KVFraming shownFraming(const QSize& size = {}) const;
    /// @p camera moved, but not turned, so that all of @p shown fits a picture of @p size pixels as large as
    /// possible, in the middle: on the tighter axis the margins are those of @p shown. Unchanged without
    /// positions and labels, or for an empty size; a camera that is not valid is replaced by the default.
    ///
    /// The viewing angle changes only where the picture would otherwise be empty: it becomes wider if the eye
    /// would be too far away, as for tall pictures, and narrower if the eye would be inside. Positions that
    /// are not finite are ignored.
    static KVCamera framing(const KVCamera& camera, const KVFraming& shown, const QSize& size);
    /// @}

    /// The item in front at a pixel (window coordinates): the surface of a gamut that is visible, not fully
    /// transparent and not cut off there, or the lid of one that is cut off, or a visible marker or point, as
    /// a sphere of its size.
    KVHit hitAt(const QPoint& pixel) const;

    /// Frees memory that only the next frame needs, such as the sorted triangles of translucent gamuts: about
    /// 7 MB for each gamut at the default grid. The picture stays, and the next frame takes a little longer.
    /// For hosts that have little memory, when nothing has moved for a while.
    void releaseMemory();

Q_SIGNALS:
    void loaded(const QString& id);                           ///< the gamut is shown
    void failed(const QString& id, const KVProblem& problem); ///< a load ended without a gamut
    void progressChanged(const QString& id, float progress);  ///< 0..1, never decreasing within a load
    void loadingChanged();                                    ///< isLoading() changed
    /// camera() changed, whatever the cause. Emitted from the event loop, once for all changes in one
    /// iteration.
    void cameraChanged();
    void themeFollowsPaletteChanged(); ///< by setThemeFollowsPalette()
    void themeChanged();               ///< theme() changed
    /// The picture is up to date: KVGamut3DViewer::isSettled() became true. From the event loop.
    void settled();
    /// drawingProblem() changed; from the event loop. It counts as nullopt before the first check.
    void drawableChanged();
    void clicked(const KVHit& hit); ///< a button was released; from the event loop
    /// The pointer moved with no button held; from the event loop. Computed only while connected.
    void hovered(const KVHit& hit);

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
