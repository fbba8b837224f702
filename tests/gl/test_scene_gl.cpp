// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"

#include <glwindow/CameraState.h>
#include <scene/Generators.h>
#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLFunctions_1_2>

namespace {

constexpr int side = 64;

/// Draws frames of a root object into a square framebuffer, with a context like that of the window. No
/// window, no event loop.
class SceneGL : public testing::Test
{
protected:
    void SetUp() override
    {
        QSurfaceFormat format;
        format.setDepthBufferSize(24);
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setProfile(QSurfaceFormat::CoreProfile);
        format.setVersion(1, 2);
        surface.setFormat(format);
        surface.create();
        context.setFormat(format);
        ASSERT_TRUE(context.create());
        ASSERT_TRUE(context.makeCurrent(&surface));
        ASSERT_TRUE(gl.initializeOpenGLFunctions());
        target.reset(new QOpenGLFramebufferObject(side, side, QOpenGLFramebufferObject::Depth));
        target->bind();
        context.functions()->glViewport(0, 0, side, side);
        root.initializeGL(&context);
    }

    void TearDown() override
    {
        root.releaseGL();
        target.reset();
        context.doneCurrent();
    }

    /// A square centred on the viewing axis, with half width @p half at scene depth @p z (the eye is at
    /// -350).
    QSharedPointer<KV3DObject> add(const QColor& color, float z, float half = 40, const char* id = "")
    {
        QSharedPointer<KV3DObject> object(new KV3DObject(QStringLiteral("Square"), QString::fromLatin1(id)));
        object->initializeGL(&context);
        object->setTriangles(square(color, z, half));
        root.addChild(object);
        return object;
    }

    static QList<ColoredTriangle> square(const QColor& color, float z, float half)
    {
        const auto corner = [&](float x, float y) { return ColoredPoint{color, QVector3D(y, -x, z)}; };
        return {ColoredTriangle{corner(-half, -half), corner(half, -half), corner(half, half)},
                ColoredTriangle{corner(-half, -half), corner(half, half), corner(-half, half)}};
    }

    QImage frame(const CameraState& camera = CameraState())
    {
        auto* functions = context.functions();
        functions->glEnable(GL_DEPTH_TEST);
        functions->glDepthMask(GL_TRUE);
        functions->glClearColor(0, 0, 0, 1);
        functions->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        functions->glDisable(GL_BLEND);
        pass(camera, KVPassOpaque);
        functions->glEnable(GL_BLEND);
        functions->glDepthMask(GL_FALSE);
        functions->glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        pass(camera, KVPassTranslucent);
        functions->glDepthMask(GL_TRUE);
        functions->glDisable(GL_BLEND);
        QImage image = target->toImage();
        image.reinterpretAsFormat(QImage::Format_RGB32);
        EXPECT_EQ(functions->glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return image;
    }

    void pass(const CameraState& camera, int flags)
    {
        root.draw(&gl, camera.viewMatrix(), camera.projectionMatrix(), QMatrix4x4(), camera, lightPos,
                  lightColor, flags);
    }

    static QColor middle(const QImage& image) { return image.pixelColor(side / 2, side / 2); }

    QOffscreenSurface surface;
    QOpenGLContext context;
    QOpenGLFunctions_1_2 gl;
    QScopedPointer<QOpenGLFramebufferObject> target;
    QVector3D lightPos{0, 0, -350};
    QColor lightColor = Qt::white;
    KV3DObject root{QStringLiteral("root")};
};

testing::AssertionResult near(const QColor& got, double r, double g, double b)
{
    const double worst =
        std::max({std::abs(got.redF() - r), std::abs(got.greenF() - g), std::abs(got.blueF() - b)});
    if (worst <= 2.0 / 255) // one step of rounding in blending and one in storing
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "got " << got.redF() << ", " << got.greenF() << ", " << got.blueF()
                                       << ", wanted " << r << ", " << g << ", " << b;
}

/// Names declared with @p keyword in a shader, with their types.
QMap<QString, QString> declared(const QString& file, const QString& keyword)
{
    QFile source(QCoreApplication::applicationDirPath() + QStringLiteral("/../Resources/Shaders/") + file);
    EXPECT_TRUE(source.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(source.readAll());
    const QRegularExpression declaration(QStringLiteral("\\b%1\\s+(\\w+)\\s+(\\w+)\\s*;").arg(keyword));
    QMap<QString, QString> found;
    auto matches = declaration.globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        found.insert(match.captured(2), match.captured(1));
    }
    return found;
}

} // namespace

// --- Shader interface --------------------------------------------------------------

TEST(Shaders, declareTheBoundAttributes)
{
    const auto attributes = declared(QStringLiteral("simple.vert"), QStringLiteral("attribute"));
    EXPECT_EQ(attributes.size(), std::ssize(kvVertexAttributes));
    const QString types[] = {QStringLiteral("float"), QString(), QStringLiteral("vec3"),
                             QStringLiteral("vec4")};
    for (const auto& attribute : kvVertexAttributes)
        EXPECT_EQ(attributes.value(QString::fromLatin1(attribute.name)), types[attribute.components - 1])
            << attribute.name;
}

TEST(Shaders, declareTheSixUniforms)
{
    auto uniforms = declared(QStringLiteral("simple.vert"), QStringLiteral("uniform"));
    uniforms.insert(declared(QStringLiteral("simple.frag"), QStringLiteral("uniform")));
    const QMap<QString, QString> expected = {
        {QStringLiteral("modelToWorld"), QStringLiteral("mat4")},
        {QStringLiteral("worldToCamera"), QStringLiteral("mat4")},
        {QStringLiteral("cameraToView"), QStringLiteral("mat4")},
        {QStringLiteral("lightPos"), QStringLiteral("vec3")},
        {QStringLiteral("lightColor"), QStringLiteral("vec4")},
        {QStringLiteral("ambientStrenght"), QStringLiteral("float")},
    };
    EXPECT_EQ(uniforms, expected);
}

// --- Buffers ------------------------------------------------------------------------------------------

TEST_F(SceneGL, emptyObjectNeverCreatesABuffer)
{
    QSharedPointer<KV3DObject> empty(new KV3DObject(QStringLiteral("x")));
    empty->initializeGL(&context);
    root.addChild(empty);
    frame();
    empty->setAlpha(0.5f, 0);
    frame();
    EXPECT_FALSE(empty->hasBuffer());
    EXPECT_EQ(empty->uploadCount(), 0);
}

TEST_F(SceneGL, buffersAreCreatedByTheFirstDrawAndReused)
{
    auto object = add(Qt::red, 0);
    EXPECT_FALSE(object->hasBuffer());
    frame();
    EXPECT_TRUE(object->hasBuffer());
    frame();
    frame();
    EXPECT_EQ(object->uploadCount(), 1);
}

TEST_F(SceneGL, changesBetweenTwoFramesCauseOneUpload)
{
    auto object = add(Qt::red, 0);
    frame();
    object->setClip(50);
    object->setColor(Qt::blue);
    object->applyAlpha(1.0f);
    object->setTriangles(square(Qt::green, 0, 30));
    EXPECT_FALSE(object->hasBuffer());
    frame();
    EXPECT_EQ(object->uploadCount(), 2);
}

TEST_F(SceneGL, lineWidthAndAmbientStrengthNeedNoUpload)
{
    auto object = add(Qt::red, 0);
    frame();
    object->setLineWidth(3);
    object->setAmbientStrength(0.5f);
    EXPECT_FALSE(root.isSettled());
    frame();
    EXPECT_TRUE(root.isSettled());
    EXPECT_EQ(object->uploadCount(), 1);
}

TEST_F(SceneGL, secondInitializeGLKeepsTheBuffers)
{
    auto object = add(Qt::red, 0);
    const QColor before = middle(frame());
    root.initializeGL(&context);
    EXPECT_TRUE(object->hasBuffer());
    EXPECT_EQ(middle(frame()), before);
    EXPECT_EQ(object->uploadCount(), 1);
}

TEST_F(SceneGL, releaseGLRemovesChildrenAndTheirGLObjects)
{
    auto object = add(Qt::red, 0);
    frame();
    root.releaseGL();
    EXPECT_TRUE(root.children().isEmpty());
    EXPECT_TRUE(root.childOrder().isEmpty());
    EXPECT_FALSE(object->hasProgram());
    EXPECT_FALSE(object->hasBuffer());
    EXPECT_EQ(middle(frame()), QColor(Qt::black).toRgb()); // a frame without programs must not crash
}

TEST_F(SceneGL, initializeGLOfTheRootInitialisesItsChildren)
{
    KV3DObject parent{QStringLiteral("root")};
    QSharedPointer<KV3DObject> object(new KV3DObject(QStringLiteral("x")));
    object->setTriangles(square(Qt::red, 0, 40));
    parent.addChild(object);
    EXPECT_EQ(object->glOwner(), nullptr);
    parent.initializeGL(&context);
    EXPECT_TRUE(object->hasProgram());
    EXPECT_EQ(object->glOwner(), &context);
    parent.releaseGL();
    EXPECT_EQ(object->glOwner(), nullptr);
}

TEST_F(SceneGL, initializeGLLinksAndBindsTheProgramOfWhatIsToBeDrawn)
{
    const auto boundProgram = [this] {
        GLint program = 0;
        context.functions()->glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        return program;
    };
    KV3DObject object(QStringLiteral("object"));
    object.setTriangles(square(Qt::red, 0, 40));
    context.functions()->glUseProgram(0);
    object.initializeGL(&context);
    const GLint first = boundProgram();
    EXPECT_NE(first, 0);
    GLint isLinked = 0;
    context.functions()->glGetProgramiv(static_cast<GLuint>(first), GL_LINK_STATUS, &isLinked);
    EXPECT_EQ(isLinked, GL_TRUE);
    object.releaseGL();

    KV3DObject hidden(QStringLiteral("hidden")); // its program waits until something is drawn
    hidden.setTriangles(square(Qt::red, 0, 40));
    hidden.setVisible(false);
    context.functions()->glUseProgram(0);
    hidden.initializeGL(&context);
    EXPECT_EQ(boundProgram(), 0);
    EXPECT_TRUE(hidden.hasProgram());
    hidden.releaseGL();
}

TEST_F(SceneGL, objectWithoutAUsableProgramIsNotDrawn)
{
    const QString file =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../Resources/Shaders/simple.frag");
    kvtest::expectMessage(QStringLiteral("simple.frag': no such file"));
    QSharedPointer<KV3DObject> object(new KV3DObject(QStringLiteral("x")));
    object->setTriangles(square(Qt::red, 0, 40));
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".away")));
    object->initializeGL(&context);
    ASSERT_TRUE(QFile::rename(file + QStringLiteral(".away"), file));
    add(Qt::green, 10, 20); // the program of an object drawn before must not be used for it
    root.addChild(object);
    const QImage image = frame();
    EXPECT_EQ(middle(image), QColor(Qt::green).toRgb());
    EXPECT_EQ(image.pixelColor(side / 2 + 12, side / 2), QColor(Qt::black).toRgb());
}

// --- Passes -------------------------------------------------------------------------------------------

TEST_F(SceneGL, onlyTranslucentObjectsAreDrawnInTheBatch)
{
    auto object = add(Qt::red, 0);
    frame();
    EXPECT_TRUE(object->hasBuffer());
    EXPECT_TRUE(root.sortedVertices().isEmpty());
    object->setAlpha(0.999f, 0);
    const QImage image = frame();
    EXPECT_FALSE(object->hasBuffer());
    EXPECT_EQ(root.sortedVertices().size(), 6 * kvVertexFloats);
    EXPECT_TRUE(near(middle(image), 0.999, 0, 0));
}

TEST_F(SceneGL, nearerOpaqueObjectHidesTheFartherOne)
{
    add(Qt::red, -10);
    add(Qt::green, 10);
    EXPECT_EQ(middle(frame()), QColor(Qt::red).toRgb());
}

TEST_F(SceneGL, translucentSurfacesAreBlendedBackToFront)
{
    auto nearOne = add(QColor(255, 0, 0), -10);
    auto farOne = add(QColor(0, 255, 0), 10);
    nearOne->setAlpha(0.5f, 0);
    farOne->setAlpha(0.5f, 0);
    EXPECT_TRUE(near(middle(frame()), 0.5, 0.25, 0)); // red over green over black
    // from behind: green over red
    EXPECT_TRUE(near(middle(frame(CameraState(QVector3D(0, 0, 350), QVector3D()))), 0.25, 0.5, 0));
}

TEST_F(SceneGL, opaqueObjectHidesATranslucentOneBehindIt)
{
    add(Qt::red, -10);
    add(Qt::green, 10)->setAlpha(0.5f, 0);
    EXPECT_EQ(middle(frame()), QColor(Qt::red).toRgb());
}

TEST_F(SceneGL, translucentObjectIsBlendedWithAnOpaqueOneBehindIt)
{
    add(QColor(255, 0, 0), -10)->setAlpha(0.25f, 0);
    add(QColor(0, 0, 255), 10);
    EXPECT_TRUE(near(middle(frame()), 0.25, 0, 0.75));
}

TEST_F(SceneGL, alphaZeroDoesNotHideChildren)
{
    auto parent = add(Qt::red, 0);
    QSharedPointer<KV3DObject> child(new KV3DObject(QStringLiteral("c")));
    child->initializeGL(&context);
    child->setTriangles(square(Qt::green, 10, 40));
    parent->setAlpha(0.0f, 0);
    parent->addChild(child);
    EXPECT_EQ(middle(frame()), QColor(Qt::green).toRgb());
}

TEST_F(SceneGL, hiddenObjectHidesItsSubtree)
{
    auto parent = add(Qt::red, 0);
    QSharedPointer<KV3DObject> child(new KV3DObject(QStringLiteral("c")));
    child->initializeGL(&context);
    child->setTriangles(square(Qt::green, 10, 40));
    parent->addChild(child);
    parent->setVisible(false);
    EXPECT_EQ(middle(frame()), QColor(Qt::black).toRgb());
    EXPECT_TRUE(root.isSettled());
}

TEST_F(SceneGL, objectThatBecomesOpaqueLeavesTheBatch)
{
    auto object = add(QColor(255, 0, 0), 0);
    object->setAlpha(0.5f, 0);
    frame();
    ASSERT_FALSE(root.sortedVertices().isEmpty());
    object->setAlpha(1.0f, 0);
    frame();
    EXPECT_TRUE(root.sortedVertices().isEmpty());
}

TEST_F(SceneGL, steadySceneIsNeitherSortedNorUploadedAgain)
{
    auto translucent = add(Qt::red, 0);
    translucent->setAlpha(0.5f, 0);
    add(Qt::green, 20);
    auto hidden = add(Qt::blue, 40);
    hidden->setVisible(false);
    frame();
    const int sorts = root.sortCount(), uploads = root.uploadCount();
    frame();
    frame();
    EXPECT_EQ(root.sortCount(), sorts);
    EXPECT_EQ(root.uploadCount(), uploads);
    frame(CameraState(QVector3D(10, 0, -350), QVector3D()));
    EXPECT_EQ(root.sortCount(), sorts + 1);
    EXPECT_EQ(root.uploadCount(), uploads + 1);
}

TEST_F(SceneGL, linesAreDrawnInBothPassesAndSortedOnce)
{
    QSharedPointer<KV3DObject> lines(new KV3DObject(QStringLiteral("lines")));
    lines->initializeGL(&context);
    const QColor c = Qt::white;
    lines->setSegments({{{c, {0, -50, 0}}, {c, {0, 50, 0}}}, {{c, {-50, 0, 20}}, {c, {50, 0, 20}}}}, false,
                       0.0f);
    ASSERT_EQ(lines->primitiveMode(), KVPrimitiveLines);
    root.addChild(lines);
    frame();
    EXPECT_EQ(lines->uploadCount(), 2); // unsorted for the opaque pass, then sorted
    EXPECT_EQ(lines->sortCount(), 1);
    frame();
    EXPECT_EQ(lines->uploadCount(), 2);
    EXPECT_EQ(lines->sortCount(), 1);
}

TEST_F(SceneGL, translucentLinesAreDrawn)
{
    QSharedPointer<KV3DObject> lines(new KV3DObject(QStringLiteral("lines")));
    lines->initializeGL(&context);
    const QColor c = Qt::white;
    lines->setSegments({{{c, {0, -50, 0}}, {c, {0, 50, 0}}}}, false, 0.0f);
    lines->setLineWidth(5);
    lines->setAlpha(0.5f, 0);
    root.addChild(lines);
    EXPECT_TRUE(near(middle(frame()), 0.5, 0.5, 0.5));
}

// --- Light and clip -----------------------------------------------------------------------------------

TEST_F(SceneGL, ambientStrengthOneShowsTheUnshadedColour)
{
    add(QColor(200, 100, 50), 0);
    lightPos = QVector3D(500, 0, 0); // grazing incidence
    EXPECT_TRUE(near(middle(frame()), 200 / 255.0, 100 / 255.0, 50 / 255.0));
}

TEST_F(SceneGL, ambientStrengthZeroShadesByTheAngleOfTheLight)
{
    auto object = add(QColor(200, 100, 50), 0);
    object->setAmbientStrength(0.0f);
    lightPos = QVector3D(0, 0, -350); // perpendicular
    const QColor bright = middle(frame());
    EXPECT_TRUE(near(bright, 200 / 255.0, 100 / 255.0, 50 / 255.0)); // never over-exposed
    lightPos = QVector3D(0, 350, -350);                              // at 45 degrees
    object->setAlpha(1.0f, 0);
    const QColor middling = middle(frame());
    lightPos = QVector3D(0, 350, 0); // edge-on
    object->setAlpha(1.0f, 0);
    const QColor dim = middle(frame());
    EXPECT_LT(middling.red(), bright.red());
    EXPECT_LT(dim.red(), middling.red());
    EXPECT_GT(dim.red(), 30);
    // shading preserves the hue
    EXPECT_NEAR(dim.redF() / dim.greenF(), 2.0, 0.1);
}

TEST_F(SceneGL, bothSidesOfASurfaceAreLit)
{
    auto object = add(QColor(200, 100, 50), 0);
    object->setAmbientStrength(0.2f);
    lightPos = QVector3D(0, 200, -300);
    const QColor front = middle(frame());
    lightPos = QVector3D(0, 200, 300);
    const QColor back = middle(frame(CameraState(QVector3D(0, 0, 350), QVector3D())));
    EXPECT_TRUE(near(back, front.redF(), front.greenF(), front.blueF()));
}

TEST_F(SceneGL, sideFacingAwayFromTheLightIsDarker)
{
    auto object = add(QColor(200, 100, 50), 0);
    object->setAmbientStrength(0.0f);
    lightPos = QVector3D(0, 0, -350);
    const QColor towards = middle(frame());
    const QColor away = middle(frame(CameraState(QVector3D(0, 0, 350), QVector3D())));
    EXPECT_TRUE(near(towards, 200 / 255.0, 100 / 255.0, 50 / 255.0));
    EXPECT_TRUE(near(away, 0.25 * 200 / 255.0, 0.25 * 100 / 255.0, 0.25 * 50 / 255.0));
}

TEST_F(SceneGL, degenerateNormalGivesTheUnshadedColour)
{
    auto object = add(Qt::white, 0);
    GeometryData data = kvTriangles(square(QColor(200, 100, 50), 0, 40));
    for (qsizetype i = 0; i < data.vertices.size(); i += GeometryData::floatsPerVertex)
        for (int k = 3; k < 6; ++k)
            data.vertices[i + k] = 0.0f;
    object->setGeometry(data);
    object->setAmbientStrength(0.0f);
    lightPos = QVector3D(0, 350, 0);
    EXPECT_TRUE(near(middle(frame()), 200 / 255.0, 100 / 255.0, 50 / 255.0));
}

TEST_F(SceneGL, normalsAreConvertedToSceneCoordinates)
{
    // A square of constant a* has a host normal along a* and a scene normal along -X. Light from the scene's
    // X direction is perpendicular to it, light from the scene's Y direction grazes it.
    const auto corner = [](float L, float b) { return ColoredPoint{Qt::white, QVector3D(L, 0, b)}; };
    QSharedPointer<KV3DObject> wall(new KV3DObject(QStringLiteral("wall")));
    wall->initializeGL(&context);
    wall->setTriangles({ColoredTriangle{corner(-40, -40), corner(40, -40), corner(40, 40)},
                        ColoredTriangle{corner(-40, -40), corner(40, 40), corner(-40, 40)}});
    wall->setAmbientStrength(0.0f);
    root.addChild(wall);
    const CameraState fromX(QVector3D(350, 0, -1), QVector3D());
    lightPos = QVector3D(500, 0, 0);
    EXPECT_TRUE(near(middle(frame(fromX)), 1, 1, 1));
    lightPos = QVector3D(0, 5000, 0);
    wall->setAlpha(1.0f, 0);
    // grazing incidence: a quarter of fill light and half of the rest
    EXPECT_TRUE(near(middle(frame(fromX)), 0.625, 0.625, 0.625));
}

TEST_F(SceneGL, lightColourTintsDiffuseLight)
{
    auto object = add(Qt::white, 0);
    object->setAmbientStrength(0.0f);
    lightColor = QColor(255, 0, 0);
    const QColor got = middle(frame());
    EXPECT_EQ(got.red(), 255);
    EXPECT_LT(got.green(), 80);
    EXPECT_EQ(got.green(), got.blue());
}

TEST_F(SceneGL, fragmentsAboveTheClipHeightAreDiscarded)
{
    auto object = add(Qt::red, 0);
    object->setClip(0.0f); // scene Y, which is L*
    const QImage image = frame();
    // at a distance of 350 and an angle of 30 degrees, 40 units are 14 pixels
    EXPECT_EQ(image.pixelColor(side / 2, side / 2 - 6), QColor(Qt::black).toRgb());
    EXPECT_EQ(image.pixelColor(side / 2, side / 2 + 6), QColor(Qt::red).toRgb());
    object->setClip(1000000.0f);
    EXPECT_EQ(frame().pixelColor(side / 2, side / 2 - 6), QColor(Qt::red).toRgb());
}

TEST_F(SceneGL, clipHeightAppliesToItsObjectOnly)
{
    add(Qt::red, 10, 40)->setClip(-1000.0f);
    add(Qt::green, 20, 40);
    EXPECT_EQ(middle(frame()), QColor(Qt::green).toRgb());
}

TEST_F(SceneGL, drawCheckMovesItsObjectAndRefusesAPass)
{
    struct Check : KV3DObject::IDrawCheckFunctor
    {
        bool accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&, const CameraState&,
                    int flags) override
        {
            return flags != refused;
        }
        QMatrix4x4 adjustModel(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4& model,
                               const CameraState&) override
        {
            QMatrix4x4 moved = model;
            moved.translate(1000, 0, 0);
            return moved;
        }
        int refused = 0;
    };
    auto parent = add(Qt::red, 0);
    QSharedPointer<KV3DObject> child(new KV3DObject(QStringLiteral("c")));
    child->initializeGL(&context);
    child->setTriangles(square(Qt::green, 10, 40));
    parent->addChild(child);
    QSharedPointer<Check> check(new Check);
    parent->setDrawCheck(check);
    EXPECT_EQ(middle(frame()),
              QColor(Qt::green).toRgb()); // the parent is moved out of view, the child is not
    check->refused = KVPassOpaque;
    EXPECT_EQ(middle(frame()), QColor(Qt::black).toRgb());
}

TEST_F(SceneGL, refusalInTheTranslucentPassExcludesFromTheBatch)
{
    struct Check : KV3DObject::IDrawCheckFunctor
    {
        bool accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&, const CameraState&, int) override
        {
            return accepted;
        }
        bool accepted = false;
    };
    auto object = add(QColor(255, 0, 0), 0);
    QSharedPointer<Check> check(new Check);
    object->setDrawCheck(check);
    object->setAlpha(0.5f, 0);
    EXPECT_EQ(middle(frame()), QColor(Qt::black).toRgb());
    check->accepted = true;
    EXPECT_TRUE(near(middle(frame()), 0.5, 0, 0));
    check->accepted = false;
    EXPECT_EQ(middle(frame()), QColor(Qt::black).toRgb());
}

TEST_F(SceneGL, lineWidthZeroDrawsLinesOfOnePixel)
{
    QSharedPointer<KV3DObject> thick(new KV3DObject(QStringLiteral("thick")));
    QSharedPointer<KV3DObject> thin(new KV3DObject(QStringLiteral("thin")));
    const QColor c = Qt::white;
    for (const auto& object : {thick, thin}) {
        object->initializeGL(&context);
        root.addChild(object);
    }
    thick->setSegments({{{c, {60, -100, 0}}, {c, {60, 100, 0}}}}, false, 0.0f);
    thick->setLineWidth(9);
    thin->setSegments({{{c, {0, -100, 0}}, {c, {0, 100, 0}}}}, false, 0.0f);
    const QImage image = frame(); // frame() also checks for GL errors
    int lit = 0;
    for (int y = side / 2 - 8; y < side / 2 + 8; ++y)
        lit += image.pixelColor(side / 2, y).red() > 60;
    EXPECT_GE(lit, 1);
    EXPECT_LE(lit, 2);
}
