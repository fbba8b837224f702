// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <platform/KVProblem.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtGui/QPalette>

#include <memory>
#include <optional>

/// @file
/// The second public class: what a host needs beside KVGamut3DViewer to show gamuts that it computed, to
/// follow loads, to pick, and to keep and restore what is shown.
///
/// Positions are (L*, a*, b*) in Lab units, angles are in degrees, durations in milliseconds. GUI thread
/// only.

/// From where the scene is looked at: the whole camera as one value.
struct KV3DVIEWER_EXPORT KVCamera
{
    Q_GADGET
    Q_PROPERTY(QVector3D position MEMBER position)
    Q_PROPERTY(QVector3D interestPoint MEMBER interestPoint)
    Q_PROPERTY(float viewingAngle MEMBER viewingAngle)
    Q_PROPERTY(bool orthogonal MEMBER orthogonal)
public:
    QVector3D position{522.48712f, 0.0f,
                       -1.1920929e-7f};         ///< of the eye; that of KVGamut3DViewer::Top at first
    QVector3D interestPoint{50.0f, 0.0f, 0.0f}; ///< what the eye looks at and turns around
    float viewingAngle = 30.0f;                 ///< vertical field of view, degrees
    bool orthogonal = false;                    ///< parallel projection instead of perspective

    bool operator==(const KVCamera&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVCamera)

/// How one gamut is shown. The defaults of the whole product stand here and nowhere else.
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
public:
    /// Opacity that lets a gamut show what lies inside it.
    static constexpr float translucentOpacity = 0.35f;

    bool visible = true;                                         ///< all of the gamut, or nothing
    KVGamut3DViewer::DisplayMode mode = KVGamut3DViewer::Smooth; ///< surface or wireframe
    QColor color;                                                ///< invalid: the gamut's own colours
    float opacity = 1.0f;                                        ///< of the surface, 0..1
    float ambientStrength = 0.55f; ///< low enough that light models the surface, high enough for its colours
    bool surface = true;           ///< surface or wireframe
    bool projection = true;        ///< outline on the ab plane
    bool primaries = false;        ///< ramp of each colorant

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

    /// Colours that go with a host's palette: its window colour behind, its text colour for axes, labels and
    /// section, a mixture for the grid.
    static KVViewTheme fromPalette(const QPalette& palette);

    bool operator==(const KVViewTheme&) const = default; ///< all members are equal
};
Q_DECLARE_METATYPE(KVViewTheme)

/// Everything about the view that is worth keeping, as one value.
struct KV3DVIEWER_EXPORT KVViewState
{
    KVCamera camera;                     ///< see KVCamera
    KVViewTheme theme;                   ///< see KVViewTheme
    QVector3D light{300.0f, 0.0f, 0.0f}; ///< position, (L*, a*, b*); KVGamut3DViewer::lightPos() differs
    QColor lightColor = Qt::white;       ///< multiplies the lit part of a surface
    bool grid = true;                    ///< whether the grid is shown
    bool axes = true;                    ///< whether the axes and their labels are shown
    bool plane = false;                  ///< the coloured floor
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

/// What to load, and how.
struct KV3DVIEWER_EXPORT KVLoadRequest
{
    QString profilePath;        ///< an ICC profile file
    QByteArray profileData;     ///< or the bytes of one
    KVProfilePtr profile;       ///< or one that is open
    QVariantHash savedGamut;    ///< or what GamutObject::serialize() gave; settings do not apply to it
    KVGamut::Settings settings; ///< how the gamut is computed

    /// A request for profilePath.
    static KVLoadRequest fromFile(const QString& path, const KVGamut::Settings& settings = {});
    /// A request for profileData.
    static KVLoadRequest fromData(const QByteArray& bytes, const KVGamut::Settings& settings = {});
    /// A request for profile.
    static KVLoadRequest fromProfile(const KVProfilePtr& profile, const KVGamut::Settings& settings = {});
    /// A request for savedGamut.
    static KVLoadRequest fromSaved(const QVariantHash& saved);
    /// The request that the parameter hash of KVGamut3DViewer::load() stands for. Problem UnknownSetting
    /// for a key that is not known there: a misspelt one would silently give another volume.
    static std::optional<KVLoadRequest> fromParams(const QVariantHash& params, KVProblem* problem = nullptr);
};

/// What lies under the pointer, and how it was asked for.
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

    Kind kind = Kind::Nothing; ///< what was hit first
    QString id;                ///< of the gamut, or name of the set; empty for Nothing
    int index = -1;            ///< position in the set; -1 for a gamut and for Nothing
    QVector3D lab;             ///< the point of the surface, or the marker's position; 0 for Nothing
    float distance = 0.0f;     ///< from the ray's origin, Lab units; 0 for Nothing
    QVector3D rayOrigin;       ///< picking ray
    QVector3D rayDirection;    ///< not normalised
    QPoint pixel;              ///< window coordinates
    Qt::MouseButton button = Qt::NoButton; ///< released button; NoButton for hovered()
    Qt::KeyboardModifiers modifiers;       ///< held at that moment
    bool endsDrag = false; ///< the pointer moved farther than the system's drag distance since the press
};
Q_DECLARE_METATYPE(KVHit)

/// A companion of one viewer. Gamuts are known by the ids that the viewer uses: what is loaded here is
/// answered by KVGamut3DViewer::gamuts() and the other way round.
///
/// It may be destroyed before or after the viewer; without its viewer every call does nothing and every
/// query gives its neutral answer.
class KV3DVIEWER_EXPORT KVGamutView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(KVCamera camera READ camera WRITE setCamera NOTIFY cameraChanged)
    Q_PROPERTY(KVViewTheme theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(bool themeFollowsPalette READ themeFollowsPalette WRITE setThemeFollowsPalette)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
public:
    explicit KVGamutView(KVGamut3DViewer* viewer, QObject* parent = nullptr); ///< attached to @p viewer
    ~KVGamutView() override;

    KVGamut3DViewer* viewer() const; ///< null once it is gone

    /// @name Gamuts
    /// @{

    /// Called once on the GUI thread when a load has ended: nullopt, or why it failed.
    using Done = std::function<void(const std::optional<KVProblem>& problem)>;

    /// Shows a gamut that is computed already, under @p id. Nothing is serialized and nothing computed
    /// twice; its geometry is built in the background. An empty gamut fails with its problem().
    void show(const QString& id, const KVGamut::GamutObject& gamut);
    /// The same, and calls @p done, unless @p context was destroyed before.
    void show(const QString& id, const KVGamut::GamutObject& gamut, QObject* context, Done done);
    /// Computes and shows a gamut in the background.
    void load(const QString& id, const KVLoadRequest& request);
    /// The same, and calls @p done, unless @p context was destroyed before.
    void load(const QString& id, const KVLoadRequest& request, QObject* context, Done done);

    bool isLoading() const;                  ///< whether anything is on its way
    bool isLoading(const QString& id) const; ///< whether this gamut is
    float progress(const QString& id) const; ///< 0..1; 1 when nothing is on its way
    /// Gives up a load. Its Done and failed() come with the code Cancelled; what was shown before stays.
    void cancel(const QString& id);
    /// Removes a gamut and gives up its load silently.
    void remove(const QString& id);

    KVGamut::GamutObject gamut(const QString& id) const; ///< as shown; empty when unknown
    /// @}

    /// @name Looks
    /// @{

    /// Applies a look; also to a gamut that is on its way, which then appears with it.
    void setLook(const QString& id, const KVGamutLook& look);
    KVGamutLook look(const QString& id) const; ///< as set last; the default look when unknown

    void setTheme(const KVViewTheme& theme); ///< applied at once
    KVViewTheme theme() const;               ///< the theme set last
    /// Whether the theme is made anew from the application's palette whenever that changes.
    void setThemeFollowsPalette(bool follow);
    bool themeFollowsPalette() const; ///< false at first

    /// Applies camera, theme, light, surroundings and clipping at once, and the looks of the gamuts that it
    /// names, present or to come. Loads nothing.
    void setState(const KVViewState& state);
    KVViewState state() const; ///< the present state, with the looks of all gamuts
    /// @}

    /// @name Camera
    /// @{
    KVCamera camera() const; ///< the present one; see the queries of KVGamut3DViewer about moves
    void setCamera(const KVCamera& camera) { setCamera(camera, 0); } ///< at once
    void setCamera(const KVCamera& camera, int durationMs);          ///< 0 or less: at once, and silently
    /// Moves the eye along its line of sight so that the named gamuts, or all that are visible, fill the
    /// window. Nothing happens when there is nothing to frame.
    void frame(const QStringList& ids = {}, int durationMs = 0);
    /// @p camera, looking the same way, so that everything at @p positions fits a view of @p aspect (width by
    /// height). Without positions it stays as it is.
    static KVCamera framing(const KVCamera& camera, const QList<QVector3D>& positions, float aspect);
    /// @}

    /// What lies under a pixel (window coordinates).
    KVHit hitAt(const QPoint& pixel) const;

Q_SIGNALS:
    void loaded(const QString& id);                           ///< the gamut is shown
    void failed(const QString& id, const KVProblem& problem); ///< a load ended without a gamut
    void progressChanged(const QString& id, float progress);  ///< 0..1, never decreasing within a load
    void loadingChanged();                                    ///< isLoading() answers anew
    void cameraChanged();                                     ///< by anybody: host, key, pointer, or a move
    void themeChanged();                                      ///< theme() answers anew
    void settled();                 ///< the picture is up to date: KVGamut3DViewer::isSettled() became true
    void clicked(const KVHit& hit); ///< a button was released over the view
    void hovered(const KVHit& hit); ///< the pointer moved with no button held; computed only when connected

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
