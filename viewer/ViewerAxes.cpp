// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <viewer/GroupNames.h>
#include <viewer/ViewerPrivate.h>

#include <memory>
#include <utility>

namespace {

constexpr float axisWidth = 1.5f;
constexpr float labelWidth = 1.0f;
constexpr float gridWidth = 1.0f;
constexpr int lightnessEnd = 100;
constexpr int chromaEnd = 110;
constexpr int gridEnd = 120;
constexpr int gridStep = 10;
constexpr int gridReach = 128; // end of the lines, beyond the outermost crossing line

QList<ColoredSegment> axisSegments(const QColor& color)
{
    const ColoredPoint origin{color, {0, 0, 0}};
    return {{origin, {color, {lightnessEnd, 0, 0}}},
            {origin, {color, {0, chromaEnd, 0}}},
            {origin, {color, {0, 0, chromaEnd}}}};
}

QList<ColoredSegment> gridSegments(const QColor& color)
{
    QList<ColoredSegment> segments;
    for (int i = -gridEnd; i <= gridEnd; i += gridStep) {
        const auto at = static_cast<float>(i);
        segments.append({{color, QVector3D(0, at, -gridReach)}, {color, QVector3D(0, at, gridReach)}});
        segments.append({{color, QVector3D(0, -gridReach, at)}, {color, QVector3D(0, gridReach, at)}});
    }
    return segments;
}

/// Hides the axes and their letters while scales are drawn instead.
class AxesCheckFunctor : public KV3DObject::IDrawCheckFunctor
{
public:
    explicit AxesCheckFunctor(std::shared_ptr<const bool> hidden) : m_hidden(std::move(hidden)) {}

    bool accept(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4&, const CameraState&, int) override
    {
        return !*m_hidden;
    }

private:
    std::shared_ptr<const bool> m_hidden;
};

/// Flattens the bars of the grid to ribbons in the plane L* 0. At low angles square bars would hide what is
/// between them.
class GridCheckFunctor : public KV3DObject::IDrawCheckFunctor
{
public:
    QMatrix4x4 adjustModel(const QMatrix4x4&, const QMatrix4x4&, const QMatrix4x4& model,
                           const CameraState&) override
    {
        QMatrix4x4 flat = model;
        flat.scale(1.0f, 0.1f, 1.0f);
        return flat;
    }
};

/// From the coordinates of the text path, (u, v, 0) with v downwards, to host coordinates. Labels are
/// readable along +a*; those of a* and b* lie at L* 1, above the grid.
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
    const ContextScope scope(d->widget);
    KV3DObject& root = d->widget->root();
    const KVViewTheme theme = d->theme();

    const auto axes =
        d->findOrCreate(root, GroupNames::axes(), GroupNames::axes(), false, [this](KV3DObject& fresh) {
            fresh.setLineWidth(axisWidth);
            fresh.setDrawCheck(QSharedPointer<AxesCheckFunctor>::create(d->hidesAxes));
            fresh.setDepthBias(kvAxesBias());
        });
    axes->setSegments(axisSegments(theme.axes), false, axes->lineWidth(), 0.0f);
    fillVertexBufferForText(axes.data(), QStringLiteral("X"), QStringLiteral("a"), chromaEnd, theme.labels);
    fillVertexBufferForText(axes.data(), QStringLiteral("Y"), QStringLiteral("L"), lightnessEnd,
                            theme.labels);
    fillVertexBufferForText(axes.data(), QStringLiteral("Z"), QStringLiteral("b"), chromaEnd, theme.labels);

    const auto grid =
        d->findOrCreate(root, GroupNames::grid(), GroupNames::grid(), false, [](KV3DObject& fresh) {
            fresh.setLineWidth(gridWidth);
            fresh.setDrawCheck(QSharedPointer<GridCheckFunctor>::create());
            fresh.setDepthBias(kvGridBias());
        });
    grid->setSegments(gridSegments(theme.grid), false, grid->lineWidth(), 0.0f);
}

void KVGamut3DViewer::fillVertexBufferForText(KV3DObject* parent, const QString& axis, const QString& text,
                                              int distance, QColor colour)
{
    if (!parent)
        return;
    const ContextScope scope(d->widget);
    const QString id = QStringLiteral("Axis_") + axis;
    const auto label =
        d->findOrCreate(*parent, id, id, false, [](KV3DObject& fresh) { fresh.setLineWidth(labelWidth); });
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(12);
    label->setTextOutline(text, labelPlacement(axis, distance), font, colour);
}
