#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <viewer/GroupNames.h>

namespace {

constexpr float axisWidth = 1.5f;
constexpr float labelWidth = 1.0f;
constexpr float gridWidth = 1.0f;
constexpr int lightnessEnd = 100;
constexpr int chromaEnd = 110;
constexpr int gridEnd = 120;
constexpr int gridStep = 10;
constexpr int gridReach = 128; // the lines go on a little past the outermost crossing ones

QList<ColoredSegment> axisSegments()
{
    const QColor black = Qt::black;
    const ColoredPoint origin{black, {0, 0, 0}};
    return {{origin, {black, {lightnessEnd, 0, 0}}},
            {origin, {black, {0, chromaEnd, 0}}},
            {origin, {black, {0, 0, chromaEnd}}}};
}

QList<ColoredSegment> gridSegments()
{
    const QColor grey(180, 180, 180);
    QList<ColoredSegment> segments;
    for (int i = -gridEnd; i <= gridEnd; i += gridStep) {
        const auto at = static_cast<float>(i);
        segments.append({{grey, QVector3D(0, at, -gridReach)}, {grey, QVector3D(0, at, gridReach)}});
        segments.append({{grey, QVector3D(0, -gridReach, at)}, {grey, QVector3D(0, gridReach, at)}});
    }
    return segments;
}

/// From the text path's (u, v, 0), v downwards, to host coordinates. Labels read along +a*; the flat
/// ones lie at L* 1, above the grid.
QMatrix4x4 labelPlacement(const QString& axis, int distance)
{
    const auto d = static_cast<float>(distance);
    if (axis == QLatin1String("X"))
        return {0, 0, 0, 1, /**/ 1, 0, 0, d, /**/ 0, -1, 0, 0, /**/ 0, 0, 0, 1};
    if (axis == QLatin1String("Y"))
        return {0, -1, 0, d, /**/ 1, 0, 0, 0, /**/ 0, 0, 0, 0, /**/ 0, 0, 0, 1};
    if (axis == QLatin1String("Z"))
        return {0, 0, 0, 1, /**/ 1, 0, 0, 0, /**/ 0, -1, 0, d, /**/ 0, 0, 0, 1};
    return {};
}

} // namespace

void KVGamut3DViewer::addAxesAndGrid()
{
    const ContextScope scope(m_widget);
    KV3DObject& root = m_widget->root();

    const auto axes = findOrCreate(root, GroupNames::axes(), GroupNames::axes(), false,
                                   [](KV3DObject& fresh) { fresh.setLineWidth(axisWidth); });
    axes->setSegments(axisSegments(), false, axes->lineWidth(), 0.0f);
    fillVertexBufferForText(axes.data(), QStringLiteral("X"), QStringLiteral("a"), chromaEnd, Qt::black);
    fillVertexBufferForText(axes.data(), QStringLiteral("Y"), QStringLiteral("L"), lightnessEnd, Qt::black);
    fillVertexBufferForText(axes.data(), QStringLiteral("Z"), QStringLiteral("b"), chromaEnd, Qt::black);

    const auto grid = findOrCreate(root, GroupNames::grid(), GroupNames::grid(), false,
                                   [](KV3DObject& fresh) { fresh.setLineWidth(gridWidth); });
    grid->setSegments(gridSegments(), false, grid->lineWidth(), 0.0f);
}

void KVGamut3DViewer::fillVertexBufferForText(KV3DObject* parent, const QString& axis, const QString& text,
                                              int distance, QColor colour)
{
    if (!parent)
        return;
    const ContextScope scope(m_widget);
    const QString id = QStringLiteral("Axis_") + axis;
    const auto label =
        findOrCreate(*parent, id, id, false, [](KV3DObject& fresh) { fresh.setLineWidth(labelWidth); });
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(12);
    label->setTextOutline(text, labelPlacement(axis, distance), font, colour);
}
