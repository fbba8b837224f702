// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/BackToFront.h>
#include <scene/DepthBias.h>
#include <scene/GeometryData.h>
#include <scene/ResourceFiles.h>
#include <scene/VertexBindings.h>
#include <scene/VertexRecords.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QMatrix4x4>
#include <QtGui/QVector3D>
#include <QtOpenGL/QOpenGLBuffer>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <optional>

struct CameraState;
class QOpenGLContext;
class QOpenGLFunctions_1_2;

/// The two passes of a frame.
enum KVPass : int
{
    KVPassOpaque = 1,      ///< depth written, no blending
    KVPassTranslucent = 2, ///< blending, depth tested only
};

/// An animated change of opacity.
struct AlphaTransition
{
    float from = 1.0f;
    float to = 1.0f;
    QElapsedTimer timer;
    int durationMs = 0;
    QEasingCurve curve{QEasingCurve::InOutSine};
    /// The opaque pass of this frame has already advanced it. Both passes of a frame must use the same
    /// alpha: an object that became opaque between them would be drawn in neither.
    bool movedThisFrame = false;
};

/// A drawable object: a node of the scene tree with its vertices, the GPU objects made from them, its shader
/// program and its children.
///
/// Held by QSharedPointer; a parent owns its children. Children are keyed by id and drawn in the order of
/// insertion. Construction needs no GL: objects may be created before a context exists, and without one
/// every operation works except drawing.
///
/// GUI thread only. If the window has a context, it must be current for everything that touches GPU objects.
/// This includes changes of data, which destroy GPU objects.
///
/// No operation reports an error: lookups of unknown ids return a null pointer or an invalid variant.
class KV3DObject
{
public:
    /// Decides in every frame whether a subtree is drawn, and with which model matrix.
    class IDrawCheckFunctor
    {
    public:
        virtual ~IDrawCheckFunctor();
        /// Whether to draw the object and its whole subtree in the pass @p flags. Default: true.
        virtual bool accept(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                            const QMatrix4x4& model, const CameraState& camera, int flags);
        /// The model matrix for the object itself; its children still get the incoming one.
        /// Default: @p model unchanged.
        virtual QMatrix4x4 adjustModel(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                                       const QMatrix4x4& model, const CameraState& camera);
    };

    /// @param name kind of the object
    /// @param id key in its parent; if empty, a new UUID in braces (setId() allows an empty id)
    explicit KV3DObject(const QString& name, const QString& id = QString());
    virtual ~KV3DObject();
    Q_DISABLE_COPY_MOVE(KV3DObject)

    /// @name Appearance
    /// Each setter except setAlpha() also calls the same (virtual) setter of every child.
    /// @{

    /// Changes the opacity (0..1) within @p durationMs milliseconds, eased by an in-out sine, starting from
    /// the present opacity. A duration of 0 or less applies it at once and cancels a running change. The
    /// change advances while frames are drawn and the object is visible; each frame applies it to the subtree
    /// by applyAlpha().
    virtual void setAlpha(float alpha, int durationMs);
    /// Sets the opacity at once. A running change continues.
    virtual void applyAlpha(float alpha);
    [[nodiscard]] virtual float alpha() const;

    /// Display mode (0 or 1 smooth, 2 flat, 3 wireframe). Here it only affects how a colour is applied.
    virtual void setDisplayMode(int mode);
    virtual int displayMode() const;

    /// Colours the object. An invalid colour keeps the present colours of the vertices.
    virtual void setColor(const QColor& color);
    virtual QColor color() const;
    /// Undoes setColor(): the subtree shows the colours of its geometry again.
    void restoreColors();

    /// Width passed to glLineWidth, in pixels. 0, negative values and NaN draw lines of 1 pixel.
    virtual void setLineWidth(float width);
    virtual float lineWidth() const;

    /// Regenerates marker geometry in a new size. An object without markers only stores the size.
    virtual void setMarkerSize(float size);
    virtual float markerSize() const;

    /// Scene height (L*) above which fragments are discarded; 1000000 keeps everything.
    virtual void setClip(float clip);
    virtual float clip() const;

    /// Fraction of ambient light, 0..1: 1 shows the unshaded colours.
    virtual void setAmbientStrength(float strength);
    virtual float ambientStrength() const;

    /// Sets the current colour of every vertex. Surfaces (id "Front" or "Wireframe") are shaded by lightness:
    /// the unchanged colour at L* 50, towards white above, towards black below; in mode 2 with one lightness
    /// per triangle. Does nothing if colour and mode are the present ones.
    virtual void applyColor(const QColor& color, int mode);
    /// @}

    /// @name Identity, visibility, tree
    /// @{
    QString name() const { return m_name; }
    QString id() const { return m_id; }
    /// Replaces the id. Call it only before the object is added to a parent. Unlike the constructor it keeps
    /// an empty id.
    void setId(const QString& id) { m_id = id; }

    bool isVisible() const { return m_visible; }
    /// A hidden object hides its whole subtree.
    void setVisible(bool visible);

    /// Adds @p child under its id, drawn last, or first if @p atFront. It replaces a child with the same id
    /// at that child's place in the order.
    void addChild(const QSharedPointer<KV3DObject>& child, bool atFront = false);
    [[nodiscard]] QSharedPointer<KV3DObject> child(const QString& id) const;
    /// The descendant at a path of ids.
    [[nodiscard]] QSharedPointer<KV3DObject> childAt(std::initializer_list<QString> path) const;
    [[nodiscard]] bool hasChild(const QString& id) const;
    /// Removes and returns a child; null for an unknown id.
    QSharedPointer<KV3DObject> takeChild(const QString& id);
    /// All children, in the order of their ids (not the drawing order).
    [[nodiscard]] QList<QSharedPointer<KV3DObject>> children() const;
    /// Ids of the children in drawing order.
    QStringList childOrder() const { return m_childOrder; }

    void setProperty(const QString& key, const QVariant& value);
    [[nodiscard]] QVariant property(const QString& key) const;

    void setDrawCheck(const QSharedPointer<IDrawCheckFunctor>& check) { m_drawCheck = check; }

    /// Depth of the object itself in relation to objects in almost the same place. Its children keep their
    /// own. Not applied to translucent triangles.
    void setDepthBias(const KVDepthBias& bias);
    const KVDepthBias& depthBias() const { return m_depthBias; }
    /// @}

    /// @name Geometry
    /// @{

    /// Applies the result of a generator. For markers of type 1 the marker parameter is the ambient strength.
    void setGeometry(const GeometryData& geometry);
    /// Replaces the vertices by those of @p geometry, and nothing else: line width and markers stay.
    void setVerticesOf(const GeometryData& geometry);
    /// Replaces the vertices by @p generated (GeometryData::floatsPerVertex floats each) and applies the
    /// present colour, opacity and clip value.
    void setVertices(const QList<float>& generated);

    /// Generate and apply in one call. For the arguments see the generators.
    void setTriangles(const QList<ColoredTriangle>& triangles);
    void setSegments(const QList<ColoredSegment>& segments, bool closedHint, float width,
                     float trailing = 0.0f);
    /// Does nothing if all four arguments equal the stored ones.
    void setMarkers(int type, const QList<ColoredPoint>& markers, float size, float param);
    /// Uses the line width of the object, truncated to an integer.
    void setTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                        const QColor& color);

    /// Triangles that are drawn instead of the vertices while the root shows coarse ones. They have the style
    /// of the vertices, and last until these are replaced. Changes nothing that is shown now.
    void setCoarseVertices(const QList<float>& generated);
    bool hasCoarseVertices() const { return m_coarse.has_value(); }

    /// Vertex records of kvVertexFloats floats each.
    [[nodiscard]] const QList<float>& vertices() const { return m_vertices.list(); }
    /// Colours, opacity and clip value of the vertices.
    [[nodiscard]] const VertexStyle& vertexStyle() const { return m_vertices.style(); }
    /// Whether the vertices are still being made elsewhere. A visible object is then not settled.
    void setAwaitingVertices(bool awaiting) { m_awaitingVertices = awaiting; }
    bool isAwaitingVertices() const { return m_awaitingVertices; }
    int primitiveMode() const { return m_primitiveMode; }
    int markerType() const { return m_markerType; }
    const QList<ColoredPoint>& markers() const { return m_markers; }
    float markerParam() const { return m_markerParam; }
    /// @}

    /// @name GL
    /// @{

    /// Makes the shader programs of the subtree for the current context. Those of visible objects with
    /// vertices are linked and bound at once; each other one is linked when its object first draws something,
    /// because most of them never do, and a linked program takes more than a MB. Call it again for a new
    /// context. Buffers are not changed. Without a current context it does nothing. An object whose shaders
    /// do not build is not drawn; see ShaderPrograms.
    void initializeGL(QOpenGLContext* owner);
    /// Destroys the GPU objects and programs of the subtree and removes all children.
    void releaseGL();
    /// The same without removing the children: the subtree is drawn again after the next initializeGL().
    void releaseGpuObjects();
    /// Frees the batch of the root, which keeps its memory from frame to frame. The next frame that is drawn
    /// gathers again.
    void releaseBatch();
    /// For a lost context, before it is replaced: the vertex array objects of this object and those below it
    /// ended with it. Other objects are released later, in the new context.
    void abandonBindings();
    /// Argument of the last initializeGL(); null before it, after releaseGL() and after releaseGpuObjects().
    QOpenGLContext* glOwner() const { return m_glOwner; }
    bool hasProgram() const { return !m_program.isNull(); }
    bool hasBuffer() const { return m_gpu.buffer.isCreated(); }

    /// Draws the subtree in the pass @p flags and advances its opacity changes.
    ///
    /// Without a program nothing is drawn, and @p gl may be null. Visibility, draw checks, transitions and
    /// gathering work all the same.
    /// In the translucent pass the root (name "root", id not "root") gathers the translucent triangles of the
    /// whole tree, sorts them back to front and draws them in one batch.
    void draw(QOpenGLFunctions_1_2* gl, const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
              const QMatrix4x4& model, const CameraState& camera, const QVector3D& lightPos,
              const QColor& lightColor, int flags);

    /// From the next frame on: whether objects of the subtree that have coarse vertices draw them. Call it
    /// for the root.
    /// @return whether anything that is visible does
    bool showCoarse(bool show);

    /// Whether the picture of the subtree is up to date: everything was drawn after its last change, no
    /// opacity change is running, and nothing visible awaits its vertices. Whether coarse vertices are shown
    /// does not matter.
    [[nodiscard]] bool isSettled() const;

    bool isChanged() const { return m_changed; }
    bool isDrawnSinceChange() const { return m_drawnSinceChange; }
    bool hasTransition() const { return !m_transition.isNull(); }
    /// The translucent triangles of the tree, back to front. Empty except on the root.
    const QList<float>& sortedVertices() const { return m_sortedVertices; }
    /// Number of uploads to the GPU and number of sorts so far, for tests and benchmarks.
    int uploadCount() const { return m_uploadCount; }
    int sortCount() const { return m_sortCount; }
    /// @}

protected:
    /// Stores the mode without any other effect, for overrides of setDisplayMode().
    void storeDisplayMode(int mode) { m_displayMode = mode; }

private:
    struct Locations
    {
        int attributes[4] = {0, 0, 0, 0}; ///< in the order of kvVertexAttributes
        int modelToWorld = 0;
        int worldToCamera = 0;
        int cameraToView = 0;
        int lightPos = 0;
        int lightColor = 0;
        int ambientStrength = 0;
    };

    /// What the GPU has of a vertex list.
    struct GpuList
    {
        QOpenGLBuffer buffer;
        VertexBindings attributes;

        void destroy();
    };
    struct Coarse
    {
        VertexRecords vertices;
        GpuList gpu;
    };

    bool isRoot() const;
    void markDataChanged();
    void markMoved();
    void restyleVertices();
    void destroyBuffers();
    bool linkProgram();
    void findLocations();
    void upload(const QList<float>& list, GpuList& to);
    bool drawsCoarse() const { return m_showsCoarse && m_coarse; }
    const QList<float>& drawnVertices() const
    {
        return drawsCoarse() ? m_coarse->vertices.list() : m_vertices.list();
    }
    GpuList& drawnGpuList() { return drawsCoarse() ? m_coarse->gpu : m_gpu; }
    template <typename Setter>
    void forEachChild(Setter setter);

    void advanceTransition(int flags);
    bool needsGathering() const;
    qsizetype gatheredSize() const;
    void gather(QList<float>& batch);
    void settleAfterGathering();
    void markSubtreeDrawn();
    /// Whether the draw check refuses the pass @p flags.
    bool isRefused(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView, const QMatrix4x4& model,
                   const CameraState& camera, int flags);
    /// The list to draw in the pass @p flags; null if there is none.
    const QList<float>* listFor(int flags, const QVector3D& eye, QList<float>& sorted);
    /// The list that the object draws itself in the translucent pass: points unsorted, lines sorted (into
    /// @p sorted if necessary). Null for triangles, which the root draws.
    const QList<float>* translucentList(const QVector3D& eye, QList<float>& sorted);
    /// The translucent triangles of the whole tree, back to front from @p eye.
    const QList<float>* batchFrom(const QVector3D& eye);
    void drawList(QOpenGLFunctions_1_2* gl, const QList<float>& list, const QMatrix4x4& worldToCamera,
                  const QMatrix4x4& cameraToView, const QMatrix4x4& model, const QVector3D& lightPos,
                  const QColor& lightColor);

    QOpenGLContext* m_glOwner = nullptr;
    int m_displayMode = 1;
    QString m_name;
    QString m_id;
    bool m_visible = true;
    bool m_changed = false;
    bool m_drawnSinceChange = false;
    QStringList m_childOrder;
    // Maps, because insertion into a QHash ends the process if there is not enough memory.
    QMap<QString, QSharedPointer<KV3DObject>> m_children;
    int m_markerType = 1;
    QList<ColoredPoint> m_markers;
    float m_markerSize = -1.0f;
    float m_markerParam = 0.0f;
    QSharedPointer<IDrawCheckFunctor> m_drawCheck;
    KVDepthBias m_depthBias;
    VertexRecords m_vertices;
    QList<float> m_sortedVertices;
    QList<float> m_sortSource; ///< input of the sort: the triangles as gathered, or in their previous order
    BackToFront m_backToFront;
    GpuList m_gpu;
    std::optional<Coarse> m_coarse;
    bool m_showsCoarse = false;
    QSharedPointer<QOpenGLShaderProgram> m_program;
    std::optional<ShaderSources> m_sources; ///< of the program, until it is linked
    QString m_vertexShaderPath;
    QString m_fragmentShaderPath;
    int m_primitiveMode = KVPrimitiveTriangles;
    Locations m_locations;
    float m_alpha = 1.0f;
    QColor m_color;
    float m_lineWidth = 1.0f;
    float m_clip = 1000000.0f;
    float m_ambientStrength = 1.0f;
    QVector3D m_lastEye;
    QMap<QString, QVariant> m_properties;
    QSharedPointer<AlphaTransition> m_transition;
    bool m_refused = false;       ///< the draw check refused the last translucent pass
    bool m_gatherNext = false;    ///< the next translucent pass must gather again
    bool m_batchReleased = false; ///< the next translucent pass must gather, although nothing changed
    bool m_awaitingVertices = false;
    int m_uploadCount = 0;
    int m_sortCount = 0;
};
