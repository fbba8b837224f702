// SPDX-License-Identifier: Apache-2.0
#include "ViewerCase.h"

#include "support/MessageCheck.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

using kvtest::Vertex;
using kvtest::verticesOf;

using ViewerPlane = ViewerCase;

constexpr float kHeight = -0.3f;

/// The (a*, b*) of every vertex of the plane, in order.
QList<QPoint> planeVertices()
{
    QList<QPoint> points;
    for (int a = -128; a <= 120; a += 8)
        for (int b = -128; b <= 120; b += 8)
            points.append({QPoint(a, b), QPoint(a, b + 8), QPoint(a + 8, b + 8), //
                           QPoint(a + 8, b + 8), QPoint(a + 8, b), QPoint(a, b)});
    return points;
}

/// Builds the plane with a viewer in a temporary application folder.
class PlaneImage : public testing::Test
{
protected:
    PlaneImage()
    {
        EXPECT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("bin")));
        EXPECT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("Resources/Images")));
        EXPECT_TRUE(QFile::copy(QStringLiteral(KV_PLANE_PROBE), probe()));
    }

    QString imageFile() const { return m_dir.filePath(QStringLiteral("Resources/Images/gamut.png")); }

    /// Vertices of the plane built with the files in the folder, 15 floats each. Fails if there are not 6144
    /// vertices.
    QList<float> build()
    {
        const QString output = m_dir.filePath(QStringLiteral("vertices"));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir.path());
        process.setProcessEnvironment(environment);
        process.start(probe(), {output});
        EXPECT_TRUE(process.waitForFinished(300000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        const QByteArray said = process.readAllStandardError();
        EXPECT_TRUE(kvtest::isOfThePlatform(QString::fromUtf8(said))) << said.toStdString();

        QFile file(output);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QList<float> floats(bytes.size() / static_cast<qsizetype>(sizeof(float)));
        std::memcpy(floats.data(), bytes.constData(), static_cast<size_t>(bytes.size()));
        EXPECT_EQ(floats.size(), 6144 * 15);
        return floats;
    }

    /// Every vertex has the colour of @p image at its own (a*, b*).
    void expectColoursOf(const QImage& image)
    {
        const QList<float> floats = build();
        ASSERT_EQ(floats.size(), 6144 * 15);
        const QList<QPoint> points = planeVertices();
        for (qsizetype i = 0; i < points.size(); ++i) {
            // The image is the square from (-128, 128) at its upper left to (128, -128).
            const double row = image.height() * (128 - points[i].y()) / 256.0;
            const double column = image.width() * (128 + points[i].x()) / 256.0;
            const QColor color =
                image.pixelColor(std::min(image.width() - 1, static_cast<int>(std::floor(column))),
                                 std::min(image.height() - 1, static_cast<int>(std::floor(row))));
            const float* base = floats.constData() + 15 * i + 10;
            ASSERT_EQ(base[0], color.redF()) << "a* " << points[i].x() << " b* " << points[i].y();
            ASSERT_EQ(base[1], color.greenF()) << "a* " << points[i].x() << " b* " << points[i].y();
            ASSERT_EQ(base[2], color.blueF()) << "a* " << points[i].x() << " b* " << points[i].y();
            ASSERT_EQ(base[3], color.alphaF());
        }
    }

    void expectGrey()
    {
        const QList<float> floats = build();
        const QColor grey(Qt::gray);
        for (qsizetype i = 0; i < floats.size(); i += 15) {
            ASSERT_EQ(floats[i + 6], grey.redF());
            ASSERT_EQ(floats[i + 7], grey.greenF());
            ASSERT_EQ(floats[i + 8], grey.blueF());
            ASSERT_EQ(floats[i + 9], 1.0f);
        }
    }

    /// An image in which all pixels that are read have different colours.
    static QImage distinct(int width, int height, QImage::Format format = QImage::Format_RGB32)
    {
        QImage image(width, height, format);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image.setPixelColor(x, y,
                                    QColor(x & 255, y & 255, (x / 256) * 16 + y / 256,
                                           format == QImage::Format_ARGB32 ? 255 - (x & 127) : 255));
        return image;
    }

private:
    QString probe() const
    {
        return m_dir.filePath(QLatin1String("bin/") + QFileInfo(QStringLiteral(KV_PLANE_PROBE)).fileName());
    }

    QTemporaryDir m_dir;
};

/// Counts its calls.
class Counter : public KV3DObject::IDrawCheckFunctor
{
public:
    bool accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&, const CameraState&,
                int flags) override
    {
        passes.append(flags);
        return true;
    }

    QList<int> passes;
};

} // namespace

// --- Shape ---------------------------------------------------------------------------------------

TEST_F(ViewerPlane, is2048TrianglesJustBelowTheOrigin)
{
    const auto vertices = verticesOf(*group("Plane"));
    const QList<QPoint> points = planeVertices();
    ASSERT_EQ(vertices.size(), 6144);
    ASSERT_EQ(points.size(), 6144);
    for (qsizetype i = 0; i < vertices.size(); ++i) {
        ASSERT_EQ(vertices[i].position,
                  QVector3D(static_cast<float>(-points[i].x()), kHeight, static_cast<float>(points[i].y())));
        ASSERT_EQ(std::abs(vertices[i].normal.x()), 1.0f) << "flat, along L*";
        ASSERT_EQ(vertices[i].clip, 1000000.0f);
        ASSERT_EQ(vertices[i].color[3], 1.0f);
    }
    EXPECT_EQ(group("Plane")->primitiveMode(), 4);
    EXPECT_EQ(group("Plane")->name(), QStringLiteral("Plane"));
    EXPECT_TRUE(group("Plane")->children().isEmpty());
}

TEST_F(ViewerPlane, startsHiddenAndIsShownOnRequest)
{
    EXPECT_FALSE(viewer->abPlane());
    viewer->setabPlane(true);
    EXPECT_TRUE(viewer->abPlane());
    EXPECT_TRUE(group("Plane")->isVisible());
    viewer->setabPlane(false);
    EXPECT_FALSE(viewer->abPlane());
}

TEST_F(ViewerPlane, isBuiltAgainInPlaceAndHidden)
{
    const auto plane = group("Plane");
    const QList<float> before = plane->vertices();
    plane->setTriangles({});
    viewer->setabPlane(true);
    viewer->addabPlane();
    EXPECT_EQ(group("Plane"), plane);
    EXPECT_EQ(plane->vertices(), before);
    EXPECT_FALSE(viewer->abPlane());
    EXPECT_EQ(root().childOrder().size(), 3);
}

TEST_F(ViewerPlane, isCreatedAgainAtTheEndAfterRemoval)
{
    root().takeChild(QStringLiteral("Plane"));
    viewer->addabPlane();
    EXPECT_EQ(root().childOrder().last(), QStringLiteral("Plane"));
    EXPECT_FALSE(viewer->abPlane());
    EXPECT_EQ(group("Plane")->vertices().size(), 6144 * 15);
}

TEST_F(ViewerPlane, doesNotMoveWithTheClipping)
{
    const QList<float> before = group("Plane")->vertices();
    viewer->setClipping(50);
    EXPECT_EQ(group("Plane")->vertices(), before);
    EXPECT_EQ(group("Plane")->clip(), 1000000.0f);
}

// --- Visibility from above and below -------------------------------------------------------------

TEST_F(ViewerPlane, isNotDrawnFromBelow)
{
    // The draw check of a child of the plane is called exactly when the plane itself is drawn.
    const auto probe = QSharedPointer<KV3DObject>::create(QStringLiteral("probe"));
    const auto counter = QSharedPointer<Counter>::create();
    probe->setDrawCheck(counter);
    group("Plane")->addChild(probe);
    viewer->setabPlane(true);

    const auto passesFrom = [&](const CameraState& camera) {
        counter->passes.clear();
        for (const int pass : {KVPassOpaque, KVPassTranslucent})
            root().draw(nullptr, camera.viewMatrix(), camera.projectionMatrix(), {}, camera, {}, Qt::white,
                        pass);
        return std::vector<int>(counter->passes.cbegin(), counter->passes.cend());
    };
    const auto fromHeight = [](float y) { return CameraState(QVector3D(30, y, 200), QVector3D(0, 50, 0)); };
    const std::vector<int> both{KVPassOpaque, KVPassTranslucent};
    EXPECT_EQ(passesFrom(fromHeight(100.0f)), both);
    EXPECT_EQ(passesFrom(fromHeight(0.0f)), both) << "level with it";
    EXPECT_EQ(passesFrom(fromHeight(-0.0f)), both);
    EXPECT_EQ(passesFrom(fromHeight(-0.001f)), std::vector<int>());
    EXPECT_EQ(passesFrom(fromHeight(-100.0f)), std::vector<int>());

    viewer->resetCamera(KVGamut3DViewer::Top, 0);
    EXPECT_EQ(passesFrom(widget().cameraState()), both);
    viewer->resetCamera(KVGamut3DViewer::Bottom, 0);
    EXPECT_EQ(passesFrom(widget().cameraState()), std::vector<int>());
    EXPECT_TRUE(viewer->abPlane()) << "skipped, not hidden";
    viewer->resetCamera(KVGamut3DViewer::Top, 0);
    EXPECT_EQ(passesFrom(widget().cameraState()), both);
    viewer->setabPlane(false);
    EXPECT_EQ(passesFrom(widget().cameraState()), std::vector<int>());
}

// --- Colours -------------------------------------------------------------------------------------

TEST_F(PlaneImage, of256PixelsGivesEachVertexItsPixel)
{
    const QImage image = distinct(256, 256);
    ASSERT_TRUE(image.save(imageFile()));
    expectColoursOf(image);

    // The corners and the centre again, as numbers: the colour contains the column and the row.
    const QList<float> floats = build();
    const QList<QPoint> points = planeVertices();
    const auto pixelAt = [&](int a, int b) {
        const qsizetype i = points.indexOf(QPoint(a, b));
        return QPoint(static_cast<int>(std::lround(floats[15 * i + 10] * 255)),
                      static_cast<int>(std::lround(floats[15 * i + 11] * 255)));
    };
    EXPECT_EQ(pixelAt(-128, 128), QPoint(0, 0));
    EXPECT_EQ(pixelAt(0, 0), QPoint(128, 128));
    EXPECT_EQ(pixelAt(128, -128), QPoint(255, 255));
    EXPECT_EQ(pixelAt(128, 128), QPoint(255, 0));
    EXPECT_EQ(pixelAt(-128, -128), QPoint(0, 255));
    EXPECT_EQ(pixelAt(8, -16), QPoint(136, 144));
}

TEST_F(PlaneImage, mayHaveAnySizeAndShape)
{
    for (const QSize& size : {QSize(1, 1), QSize(100, 37), QSize(37, 100), QSize(512, 256), QSize(1000, 3)}) {
        const QImage image = distinct(size.width(), size.height());
        ASSERT_TRUE(image.save(imageFile()));
        expectColoursOf(image);
    }
}

TEST_F(PlaneImage, isReadByItsContentNotItsExtension)
{
    const QImage image = distinct(64, 64);
    ASSERT_TRUE(image.save(imageFile(), "BMP"));
    expectColoursOf(image);
}

TEST_F(PlaneImage, keepsItsOpacityInTheBaseColours)
{
    const QImage image = distinct(256, 256, QImage::Format_ARGB32);
    ASSERT_TRUE(image.save(imageFile()));
    expectColoursOf(image);
    const QList<float> floats = build();
    for (qsizetype i = 0; i < floats.size(); i += 15)
        ASSERT_EQ(floats[i + 9], 1.0f);
}

TEST_F(PlaneImage, thatIsMissingGivesAGreyPlane)
{
    ASSERT_FALSE(QFile::exists(imageFile()));
    expectGrey();
}

TEST_F(PlaneImage, thatCannotBeReadGivesAGreyPlane)
{
    QFile file(imageFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture at all");
    file.close();
    expectGrey();
}
