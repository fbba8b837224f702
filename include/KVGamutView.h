// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <KVViewValues.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtGui/QRgb>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QPainter;

/// @file
/// The second public class: gamuts that the host computed, progress and failures of loads, picking, looks,
/// theme and camera. The guide is docs/EMBEDDING.md.
///
/// Positions are (L*, a*, b*) in Lab units, angles are in degrees, durations in milliseconds. GUI thread
/// only.

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
    Q_PROPERTY(bool coarseWhileMoving READ coarseWhileMoving WRITE setCoarseWhileMoving)
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

    /// @name Speed and memory
    /// @{

    /// Whether the view may show coarse surfaces while it moves: false at first.
    ///
    /// If so, it shows them once a frame with the exact ones took more than 40 ms: while the user or an
    /// animation moves the camera, and after the second of several calls that change it with less than 150 ms
    /// in between. When it has not moved for 150 ms, the exact ones return; until then
    /// KVGamut3DViewer::isSettled() is false. A coarse surface has at most 800 triangles, and edges are not
    /// smoothed meanwhile. Pictures always show the exact ones, and so do wireframes, outlines and sections.
    void setCoarseWhileMoving(bool coarse);
    bool coarseWhileMoving() const; ///< shared by all views of the viewer

    /// Frees memory that only the next frame needs, such as the sorted triangles of translucent gamuts: about
    /// 7 MB for each gamut at the default grid; and what software renderers keep of the last frames. The
    /// picture stays, and the next frame takes a little longer. For hosts that have little memory, when
    /// nothing has moved for a while.
    void releaseMemory();
    /// @}

    /// The item in front at a pixel (window coordinates): the surface of a gamut that is visible, not fully
    /// transparent and not cut off there, or the lid of one that is cut off, or a visible marker or point, as
    /// a sphere of its size.
    KVHit hitAt(const QPoint& pixel) const;

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
