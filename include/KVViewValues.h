// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <platform/KVProblem.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtCore/QVariantMap>
#include <QtGui/QColor>
#include <QtGui/QPalette>
#include <QtGui/QVector3D>

#include <optional>

/// @file
/// The values of KVGamutView: camera, looks, theme, annotations, sections, the state of the view, requests,
/// and what is under the pointer.
///
/// Positions are (L*, a*, b*) in Lab units, angles are in degrees, durations in milliseconds.

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
