// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/BackToFront.h>
#include <scene/GeometryData.h>
#include <scene/VertexRecords.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QList>
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
#include <QtOpenGL/QOpenGLVertexArrayObject>

struct CameraState;
class QOpenGLContext;
class QOpenGLFunctions_1_2;

/// Which half of a frame is being drawn.
enum KVPass : int
{
    KVPassOpaque = 1,      ///< depth written, no blending
    KVPassTranslucent = 2, ///< blending, depth tested only
};

/// An opacity change in progress.
struct AlphaTransition
{
    float from = 1.0f;
    float to = 1.0f;
    QElapsedTimer timer;
    int durationMs = 0;
    QEasingCurve curve{QEasingCurve::InOutSine};
    /// The opaque pass of this frame has moved it already: both passes of a frame must see one alpha,
    /// else an object that becomes opaque between them is drawn in neither.
    bool movedThisFrame = false;
};

/// The one kind of drawable thing: a node of the scene tree with its vertices, the GPU objects that
/// mirror them, its shader program and its children.
///
/// Held by QSharedPointer; a parent keeps its children alive. Children are keyed by id and drawn in
/// the order of insertion. Construction needs no GL: objects may exist long before a context does,
/// and without one every operation works except drawing.
///
/// GUI thread only. Everything that touches GPU objects (changing data included, which destroys
/// them) wants the window's context current when there is one.
///
/// No operation fails: an unknown id answers a null pointer or an invalid variant.
class KV3DObject
{
public:
    /// Decides per frame whether a subtree is drawn and where.
    class IDrawCheckFunctor
    {
    public:
        virtual ~IDrawCheckFunctor();
        /// Whether the object and its whole subtree are drawn in the pass @p flags. Default: true.
        virtual bool accept(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                            const QMatrix4x4& model, const CameraState& camera, int flags);
        /// The model matrix for the object alone; its children still get the incoming one.
        /// Default: @p model unchanged.
        virtual QMatrix4x4 adjustModel(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                                       const QMatrix4x4& model, const CameraState& camera);
    };

    /// @param name kind of the object
    /// @param id key in its parent; empty makes a new UUID in braces (setId() can make it empty)
    explicit KV3DObject(const QString& name, const QString& id = QString());
    virtual ~KV3DObject();
    Q_DISABLE_COPY_MOVE(KV3DObject)

    /// @name Appearance
    /// Each reaches the whole subtree through the children's own overrides, setAlpha() excepted.
    /// @{

    /// Changes the opacity (0..1) in @p durationMs milliseconds along an in-out sine, from the opacity
    /// reached so far; 0 or less applies it at once and drops a running change. The change moves while
    /// frames are drawn and the object is visible; each frame then sets the subtree by applyAlpha().
    virtual void setAlpha(float alpha, int durationMs);
    /// Sets the opacity at once, without touching a running change.
    virtual void applyAlpha(float alpha);
    virtual float alpha() const;

    /// Display mode (0, 1 smooth, 2 flat, 3 wireframe); here it only decides how a colour is applied.
    virtual void setDisplayMode(int mode);
    virtual int displayMode() const;

    /// Colours the object; an invalid colour keeps the colours that the vertices have.
    virtual void setColor(const QColor& color);
    virtual QColor color() const;

    /// Width passed to glLineWidth, in pixels; not above 0 draws the thinnest line, 1 pixel.
    virtual void setLineWidth(float width);
    virtual float lineWidth() const;

    /// Regenerates marker geometry in a new size; an object without markers only remembers the size.
    virtual void setMarkerSize(float size);
    virtual float markerSize() const;

    /// Scene height (L*) above which fragments are discarded; 1000000 keeps everything.
    virtual void setClip(float clip);
    virtual float clip() const;

    /// Share of light that comes from everywhere, 0..1: 1 shows the pure colours, less shades them.
    virtual void setAmbientStrength(float strength);
    virtual float ambientStrength() const;

    /// Rewrites the current colour of every vertex. A surface ("Front", "Wireframe") is shaded by its
    /// lightness: the colour itself at L* 50, towards white above, towards black below; in mode 2 with
    /// one lightness per triangle. Nothing happens when colour and mode are the present ones.
    virtual void applyColor(const QColor& color, int mode);
    /// @}

    /// @name Identity, visibility, tree
    /// @{
    QString name() const { return m_name; }
    QString id() const { return m_id; }
    /// Replaces the id; only before the object is added to a parent. Unlike the constructor it takes
    /// an empty id as it stands.
    void setId(const QString& id) { m_id = id; }

    bool isVisible() const { return m_visible; }
    /// A hidden object hides its whole subtree.
    void setVisible(bool visible);

    /// Adds @p child under its id, drawn last, or first when @p atFront. A child of the same id is
    /// replaced and keeps its place in the order.
    void addChild(const QSharedPointer<KV3DObject>& child, bool atFront = false);
    QSharedPointer<KV3DObject> child(const QString& id) const;
    /// Follows ids downwards from here.
    QSharedPointer<KV3DObject> childAt(std::initializer_list<QString> path) const;
    bool hasChild(const QString& id) const;
    /// Removes and returns a child; null when there is none.
    QSharedPointer<KV3DObject> takeChild(const QString& id);
    /// In the order of the id-keyed table, not of drawing.
    QList<QSharedPointer<KV3DObject>> children() const;
    /// In drawing order.
    QStringList childOrder() const { return m_childOrder; }

    void setProperty(const QString& key, const QVariant& value);
    QVariant property(const QString& key) const;

    void setDrawCheck(const QSharedPointer<IDrawCheckFunctor>& check) { m_drawCheck = check; }
    /// @}

    /// @name Geometry
    /// @{

    /// Applies a generator's result. Markers of type 1 bring their ambient strength as the parameter.
    void setGeometry(const GeometryData& geometry);
    /// Replaces the vertices by @p generated (ten floats each), with the present colour, opacity and
    /// clip value applied.
    void setVertices(const QList<float>& generated);

    /// Generate and apply in one call; the arguments are those of the generators.
    void setTriangles(const QList<ColoredTriangle>& triangles);
    void setSegments(const QList<ColoredSegment>& segments, bool closedHint, float width,
                     float trailing = 0.0f);
    /// Does nothing when all four equal those of the last call.
    void setMarkers(int type, const QList<ColoredPoint>& markers, float size, float param);
    /// Traces @p text in the object's line width, cut down to a whole number.
    void setTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                        const QColor& color);

    const QList<float>& vertices() const { return m_vertices.list(); } ///< kvVertexFloats floats each
    int primitiveMode() const { return m_primitiveMode; }
    int markerType() const { return m_markerType; }
    const QList<ColoredPoint>& markers() const { return m_markers; }
    float markerParam() const { return m_markerParam; }
    /// @}

    /// @name GL
    /// @{

    /// Builds the shader program of the subtree in the current context. May run again for a new
    /// context; buffers stay as they are.
    void initializeGL(QOpenGLContext* owner);
    /// Destroys GPU objects and program of the subtree and drops all children.
    void releaseGL();
    /// What initializeGL() was last called with; null before, and after releaseGL().
    QOpenGLContext* glOwner() const { return m_glOwner; }
    bool hasProgram() const { return !m_program.isNull(); }
    bool hasBuffer() const { return m_vbo.isCreated(); }

    /// Draws the subtree's share of the pass @p flags and advances its opacity changes.
    ///
    /// An object draws itself only with a program; the rest of the contract (visibility, draw checks,
    /// transitions, gathering) holds without one, so @p gl may be null then.
    /// The object named "root" whose id is not "root" gathers the translucent triangles of the whole
    /// tree, sorts them from the eye and draws them as one batch in the translucent pass.
    void draw(QOpenGLFunctions_1_2* gl, const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
              const QMatrix4x4& model, const CameraState& camera, const QVector3D& lightPos,
              const QColor& lightColor, int flags);

    /// Whether the picture of the subtree is up to date: everything drawn since its last change and no
    /// opacity change running.
    bool isSettled() const;

    bool isChanged() const { return m_changed; }
    bool isDrawnSinceChange() const { return m_drawnSinceChange; }
    bool hasTransition() const { return !m_transition.isNull(); }
    /// The gathered translucent triangles of the tree, back to front; only filled on the root.
    const QList<float>& sortedVertices() const { return m_sortedVertices; }
    /// How often vertex data was sent to the GPU and how often a batch was sorted; for measurements.
    int uploadCount() const { return m_uploadCount; }
    int sortCount() const { return m_sortCount; }
    /// @}

protected:
    /// Only stores the mode; for overrides of setDisplayMode().
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

    bool isRoot() const;
    void markDataChanged();
    void markMoved();
    void destroyBuffers();
    void upload(const QList<float>& list);
    template <typename Setter>
    void forEachChild(Setter setter);

    void advanceTransition(int flags);
    bool needsGathering() const;
    void gather(QList<float>& batch);
    void settleAfterGathering();
    void markSubtreeDrawn();
    /// Points as they are, lines sorted (into @p sorted when they have to be), triangles not at all.
    const QList<float>* translucentList(const QVector3D& eye, QList<float>& sorted);
    /// The translucent triangles of the whole tree, back to front.
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
    QHash<QString, QSharedPointer<KV3DObject>> m_children;
    int m_markerType = 1;
    QList<ColoredPoint> m_markers;
    float m_markerSize = -1.0f;
    float m_markerParam = 0.0f;
    QSharedPointer<IDrawCheckFunctor> m_drawCheck;
    VertexRecords m_vertices;
    QList<float> m_sortedVertices;
    QList<float> m_sortSource; ///< what the batch is ordered from: as gathered, or in its last order
    BackToFront m_backToFront;
    QOpenGLBuffer m_vbo;
    QOpenGLVertexArrayObject m_vao;
    QSharedPointer<QOpenGLShaderProgram> m_program;
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
    QHash<QString, QVariant> m_properties;
    QSharedPointer<AlphaTransition> m_transition;
    bool m_refused = false; ///< by the draw check, in the last translucent pass
    bool m_gatherNext = false;
    int m_uploadCount = 0;
    int m_sortCount = 0;
};
