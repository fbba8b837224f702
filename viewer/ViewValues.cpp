// SPDX-License-Identifier: Apache-2.0
#include <KVGamutView.h>

#include <scene/Finite.h>

#include <QtCore/QVariantList>

#include <cmath>

namespace {

// Each read() keeps its target unchanged if the value is missing or invalid.

void read(const QVariantMap& map, const QString& key, bool& target)
{
    const QVariant value = map.value(key);
    if (value.typeId() == QMetaType::Bool)
        target = value.toBool();
}

void read(const QVariantMap& map, const QString& key, float& target, float min, float max)
{
    bool ok = false;
    const float value = map.value(key).toFloat(&ok);
    if (ok && value >= min && value <= max)
        target = value;
}

template <typename Integer>
void readInteger(const QVariantMap& map, const QString& key, Integer& target, int min, int max)
{
    bool ok = false;
    const double value = map.value(key).toDouble(&ok);
    if (ok && value >= min && value <= max && value == std::floor(value))
        target = static_cast<Integer>(static_cast<int>(value));
}

void read(const QVariantMap& map, const QString& key, QVector3D& target)
{
    const QVariantList values = map.value(key).toList();
    QVector3D v;
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        v[i] = values.value(i).toFloat(&ok);
        if (!ok)
            return;
    }
    if (values.size() == 3 && kvIsFinite(v))
        target = v;
}

/// If @p optional, an empty text is read as an invalid colour.
void read(const QVariantMap& map, const QString& key, QColor& target, bool optional = false)
{
    const QVariant value = map.value(key);
    if (value.typeId() != QMetaType::QString)
        return;
    const QColor color(value.toString());
    if (color.isValid() || (optional && value.toString().isEmpty()))
        target = color;
}

QVariantList listOf(const QVector3D& v)
{
    return {static_cast<double>(v.x()), static_cast<double>(v.y()), static_cast<double>(v.z())};
}

QString textOf(const QColor& color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QString();
}

QString key(const char* name)
{
    return QLatin1String(name);
}

QVariantMap mapOf(const KVCamera& camera)
{
    return {{key("position"), listOf(camera.position)},
            {key("interestPoint"), listOf(camera.interestPoint)},
            {key("viewingAngle"), static_cast<double>(camera.viewingAngle)},
            {key("orthogonal"), camera.orthogonal}};
}

KVCamera cameraOf(const QVariantMap& map, const KVCamera& otherwise)
{
    KVCamera camera = otherwise;
    read(map, key("position"), camera.position);
    read(map, key("interestPoint"), camera.interestPoint);
    read(map, key("viewingAngle"), camera.viewingAngle, KVCamera::minAngle, KVCamera::maxAngle);
    read(map, key("orthogonal"), camera.orthogonal);
    return camera.isValid() ? camera : otherwise;
}

QVariantMap mapOf(const KVViewTheme& theme)
{
    return {{key("background"), textOf(theme.background)},
            {key("axes"), textOf(theme.axes)},
            {key("labels"), textOf(theme.labels)},
            {key("grid"), textOf(theme.grid)},
            {key("section"), textOf(theme.section)}};
}

KVViewTheme themeOf(const QVariantMap& map)
{
    KVViewTheme theme;
    read(map, key("background"), theme.background);
    read(map, key("axes"), theme.axes);
    read(map, key("labels"), theme.labels);
    read(map, key("grid"), theme.grid);
    read(map, key("section"), theme.section);
    return theme;
}

QVariantMap mapOf(const KVGamutLook& look)
{
    return {{key("visible"), look.visible},
            {key("mode"), static_cast<int>(look.mode)},
            {key("color"), textOf(look.color)},
            {key("opacity"), static_cast<double>(look.opacity)},
            {key("ambientStrength"), static_cast<double>(look.ambientStrength)},
            {key("surface"), look.surface},
            {key("projection"), look.projection},
            {key("primaries"), look.primaries},
            {key("outlineColor"), textOf(look.outlineColor)}};
}

KVGamutLook lookOf(const QVariantMap& map)
{
    KVGamutLook look;
    read(map, key("visible"), look.visible);
    readInteger(map, key("mode"), look.mode, KVGamut3DViewer::Solid, KVGamut3DViewer::Wireframe);
    read(map, key("color"), look.color, true);
    read(map, key("opacity"), look.opacity, 0.0f, 1.0f);
    read(map, key("ambientStrength"), look.ambientStrength, 0.0f, 1.0f);
    read(map, key("surface"), look.surface);
    read(map, key("projection"), look.projection);
    read(map, key("primaries"), look.primaries);
    read(map, key("outlineColor"), look.outlineColor, true);
    return look;
}

QVariantMap mapOf(const KVGamut::Settings& settings)
{
    return {{key("intent"), static_cast<int>(settings.intent)},
            {key("blackPointCompensation"), settings.blackPointCompensation},
            {key("gridPoints"), settings.gridPoints},
            {key("adaptation"), static_cast<int>(settings.adaptation)}};
}

KVGamut::Settings settingsOf(const QVariantMap& map)
{
    constexpr int maxGridPoints = 129;
    KVGamut::Settings settings;
    readInteger(map, key("intent"), settings.intent, KVVMRenderPerceptual, KVVMRenderAbsoluteColorimetric);
    read(map, key("blackPointCompensation"), settings.blackPointCompensation);
    readInteger(map, key("gridPoints"), settings.gridPoints, KVGamut::Settings::engineChoosesGrid,
                maxGridPoints);
    readInteger(map, key("adaptation"), settings.adaptation, static_cast<int>(KVGamut::Adaptation::Full),
                static_cast<int>(KVGamut::Adaptation::NoneD65));
    return settings;
}

template <typename Value>
QVariantMap mapOf(const QHash<QString, Value>& values)
{
    QVariantMap map;
    for (auto at = values.begin(); at != values.end(); ++at)
        map.insert(at.key(), mapOf(at.value()));
    return map;
}

} // namespace

bool KVCamera::isValid() const
{
    return kvIsFinite(position) && kvIsFinite(interestPoint) && position != interestPoint &&
           viewingAngle >= minAngle && viewingAngle <= maxAngle;
}

KVViewTheme KVViewTheme::fromPalette(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const auto mixed = [&](float share) {
        const auto channel = [share](float from, float to) { return from + (to - from) * share; };
        return QColor::fromRgbF(channel(window.redF(), text.redF()), channel(window.greenF(), text.greenF()),
                                channel(window.blueF(), text.blueF()));
    };
    constexpr float gridShare = 0.35f; // visible, and weaker than the axes
    return {window, text, text, mixed(gridShare), text};
}

QVariantMap KVViewState::toMap() const
{
    QVariantMap map{{key("camera"), mapOf(camera)},
                    {key("theme"), mapOf(theme)},
                    {key("light"), listOf(light)},
                    {key("lightColor"), textOf(lightColor)},
                    {key("grid"), grid},
                    {key("axes"), axes},
                    {key("plane"), plane},
                    {key("looks"), mapOf(looks)},
                    {key("settings"), mapOf(settings)}};
    if (clipping)
        map.insert(key("clipping"), static_cast<double>(*clipping));
    return map;
}

KVViewState KVViewState::fromMap(const QVariantMap& map)
{
    KVViewState state;
    state.camera = cameraOf(map.value(key("camera")).toMap(), state.camera);
    state.theme = themeOf(map.value(key("theme")).toMap());
    read(map, key("light"), state.light);
    read(map, key("lightColor"), state.lightColor);
    read(map, key("grid"), state.grid);
    read(map, key("axes"), state.axes);
    read(map, key("plane"), state.plane);
    bool cut = false;
    const float clipping = map.value(key("clipping")).toFloat(&cut);
    if (cut && std::isfinite(clipping))
        state.clipping = clipping;
    const QVariantMap looks = map.value(key("looks")).toMap();
    for (auto at = looks.begin(); at != looks.end(); ++at)
        state.looks.insert(at.key(), lookOf(at.value().toMap()));
    const QVariantMap settings = map.value(key("settings")).toMap();
    for (auto at = settings.begin(); at != settings.end(); ++at)
        state.settings.insert(at.key(), settingsOf(at.value().toMap()));
    return state;
}
