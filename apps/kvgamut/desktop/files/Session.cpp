// SPDX-License-Identifier: Apache-2.0
#include "Session.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/pictures/ObliqueView.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr int version = 1;
constexpr const char* versionKey = "kvgamutSession";

using Words = QList<std::pair<QString, int>>;

const Words& intentWords()
{
    static const Words words{{QStringLiteral("perceptual"), KVVMRenderPerceptual},
                             {QStringLiteral("relative"), KVVMRenderRelativeColorimetric},
                             {QStringLiteral("saturation"), KVVMRenderSaturation},
                             {QStringLiteral("absolute"), KVVMRenderAbsoluteColorimetric}};
    return words;
}

const Words& modeWords()
{
    static const Words words{{QStringLiteral("solid"), KVGamut3DViewer::Solid},
                             {QStringLiteral("smooth"), KVGamut3DViewer::Smooth},
                             {QStringLiteral("flat"), KVGamut3DViewer::Flat},
                             {QStringLiteral("wireframe"), KVGamut3DViewer::Wireframe}};
    return words;
}

QString wordOf(const Words& words, int value)
{
    for (const auto& [word, meaning] : words)
        if (meaning == value)
            return word;
    return {};
}

QJsonArray arrayOf(const QVector3D& v)
{
    return {v.x(), v.y(), v.z()};
}

QString fromFolder(const QString& file, const QDir& folder)
{
    if (QDir::isRelativePath(file)) // a built-in name
        return file;
    const QString relative = folder.relativeFilePath(file);
    return relative.startsWith(QLatin1String("../")) || QDir::isAbsolutePath(relative)
               ? file
               : QStringLiteral("./") + relative;
}

QString intoFolder(const QString& name, const QDir& folder)
{
    return BuiltInProfiles::names().contains(name) ? name : QDir::cleanPath(folder.absoluteFilePath(name));
}

/// Reads the members of one JSON object. The first value that is not right is remembered as the
/// problem; after it everything answers its default.
class Reader
{
public:
    Reader(const QJsonObject& object, QString place, QString& problem)
        : m_object(object), m_place(std::move(place)), m_problem(problem)
    {
    }

    void read(const char* key, bool& target) const
    {
        const QJsonValue value = take(key);
        if (value.isBool())
            target = value.toBool();
        else
            refuseUnlessMissing(key, value, QStringLiteral("true or false"));
    }

    template <typename Number>
    void read(const char* key, Number& target, double least, double most) const
    {
        const QJsonValue value = take(key);
        const double number = value.toDouble(std::nan(""));
        if (number >= least && number <= most)
            target = static_cast<Number>(number);
        else
            refuseUnlessMissing(key, value, QStringLiteral("a number from %1 to %2").arg(least).arg(most));
    }

    void read(const char* key, QString& target) const
    {
        const QJsonValue value = take(key);
        if (value.isString() && !value.toString().isEmpty())
            target = value.toString();
        else
            refuseUnlessMissing(key, value, QStringLiteral("a name"));
    }

    void read(const char* key, QColor& target) const
    {
        const QJsonValue value = take(key);
        const QColor color(value.toString());
        if (value.isString() && color.isValid())
            target = color;
        else
            refuseUnlessMissing(key, value, QStringLiteral("a colour like \"#40c0ff\""));
    }

    void read(const char* key, QVector3D& target) const
    {
        const QJsonValue value = take(key);
        const QJsonArray parts = value.toArray();
        bool right = parts.size() == 3;
        for (const auto& part : parts)
            right = right && part.isDouble();
        if (right)
            target =
                QVector3D(static_cast<float>(parts[0].toDouble()), static_cast<float>(parts[1].toDouble()),
                          static_cast<float>(parts[2].toDouble()));
        else
            refuseUnlessMissing(key, value, QStringLiteral("three numbers"));
    }

    template <typename Value>
    void read(const char* key, Value& target, const Words& words) const
    {
        const QJsonValue value = take(key);
        QStringList known;
        for (const auto& [word, meaning] : words) {
            known.append(word);
            if (value.toString() == word) {
                target = static_cast<Value>(meaning);
                return;
            }
        }
        refuseUnlessMissing(key, value, QStringLiteral("one of %1").arg(known.join(QStringLiteral(", "))));
    }

    void refuse(const char* key, const QString& expected) const
    {
        if (m_problem.isEmpty())
            m_problem = QStringLiteral("%1\"%2\" should be %3").arg(m_place, QLatin1String(key), expected);
    }

    QJsonArray array(const char* key) const
    {
        const QJsonValue value = take(key);
        if (!value.isArray())
            refuseUnlessMissing(key, value, QStringLiteral("a list"));
        return value.toArray();
    }

    bool has(const char* key) const { return m_object.contains(QLatin1String(key)); }

    Reader inside(const char* key) const
    {
        const QJsonValue value = take(key);
        if (!value.isObject())
            refuseUnlessMissing(key, value, QStringLiteral("a group of values"));
        return Reader(value.toObject(), QStringLiteral("%1%2: ").arg(m_place, QLatin1String(key)), m_problem);
    }

private:
    QJsonValue take(const char* key) const { return m_object.value(QLatin1String(key)); }

    void refuseUnlessMissing(const char* key, const QJsonValue& value, const QString& expected) const
    {
        if (!value.isUndefined())
            refuse(key, expected);
    }

    const QJsonObject m_object;
    const QString m_place;
    QString& m_problem;
};

QJsonObject jsonOf(const Session::Gamut& gamut, const QDir& folder)
{
    QJsonObject json{
        {QStringLiteral("input"), fromFolder(gamut.input, folder)},
        {QStringLiteral("intent"), wordOf(intentWords(), gamut.settings.intent)},
        {QStringLiteral("blackPointCompensation"), gamut.settings.blackPointCompensation},
        {QStringLiteral("gridPoints"), gamut.settings.gridPoints},
        {QStringLiteral("visible"), gamut.look.visible},
        {QStringLiteral("mode"), wordOf(modeWords(), gamut.look.mode)},
        {QStringLiteral("opacity"), gamut.look.opacity},
        {QStringLiteral("ambient"), gamut.look.ambientStrength},
        {QStringLiteral("surface"), gamut.look.surface},
        {QStringLiteral("projection"), gamut.look.projection},
        {QStringLiteral("primaries"), gamut.look.primaries},
    };
    if (gamut.look.color.isValid())
        json.insert(QStringLiteral("color"), gamut.look.color.name());
    return json;
}

Session::Gamut gamutOf(const Reader& reader, const QDir& folder)
{
    constexpr double mostGridPoints = 129;
    Session::Gamut gamut;
    reader.read("input", gamut.input);
    if (gamut.input.isEmpty())
        reader.refuse("input", QStringLiteral("a name"));
    gamut.input = intoFolder(gamut.input, folder);
    reader.read("intent", gamut.settings.intent, intentWords());
    reader.read("blackPointCompensation", gamut.settings.blackPointCompensation);
    reader.read("gridPoints", gamut.settings.gridPoints, -1, mostGridPoints);
    reader.read("visible", gamut.look.visible);
    reader.read("mode", gamut.look.mode, modeWords());
    reader.read("opacity", gamut.look.opacity, 0, 1);
    reader.read("ambient", gamut.look.ambientStrength, 0, 1);
    reader.read("surface", gamut.look.surface);
    reader.read("projection", gamut.look.projection);
    reader.read("primaries", gamut.look.primaries);
    reader.read("color", gamut.look.color);
    return gamut;
}

QJsonObject jsonOf(const ViewState& view)
{
    QJsonObject json{
        {QStringLiteral("eye"), arrayOf(view.camera.eye)},
        {QStringLiteral("lookAt"), arrayOf(view.camera.interest)},
        {QStringLiteral("orthogonal"), view.camera.orthogonal},
        {QStringLiteral("angle"), view.camera.angle},
        {QStringLiteral("background"), view.background.name()},
        {QStringLiteral("grid"), view.grid},
        {QStringLiteral("axes"), view.axes},
        {QStringLiteral("plane"), view.plane},
        {QStringLiteral("light"), arrayOf(view.light)},
        {QStringLiteral("lightColor"), view.lightColor.name()},
    };
    if (view.clip)
        json.insert(QStringLiteral("clip"), *view.clip);
    return json;
}

ViewState viewOf(const Reader& reader)
{
    ViewState view;
    view.camera.eye = ObliqueView().eye;
    view.camera.interest = ObliqueView().lookAt;
    view.background = Qt::gray;
    view.light = QVector3D(0, 300, 0);
    view.lightColor = Qt::white;
    reader.read("eye", view.camera.eye);
    reader.read("lookAt", view.camera.interest);
    if (view.camera.eye == view.camera.interest)
        reader.refuse("eye", QStringLiteral("another point than \"lookAt\""));
    reader.read("orthogonal", view.camera.orthogonal);
    reader.read("angle", view.camera.angle, 1, 150);
    reader.read("background", view.background);
    reader.read("grid", view.grid);
    reader.read("axes", view.axes);
    reader.read("plane", view.plane);
    reader.read("light", view.light);
    reader.read("lightColor", view.lightColor);
    if (reader.has("clip")) {
        view.clip = 0.0f;
        reader.read("clip", *view.clip, -1000, 1000);
    }
    return view;
}

} // namespace

QByteArray Session::toJson(const QDir& folder) const
{
    QJsonArray gamutList;
    for (const Gamut& gamut : gamuts)
        gamutList.append(jsonOf(gamut, folder));
    QJsonArray pointList;
    for (const QString& file : points)
        pointList.append(fromFolder(file, folder));
    const QJsonObject json{
        {QLatin1String(versionKey), version},  {QStringLiteral("gamuts"), gamutList},
        {QStringLiteral("active"), active},    {QStringLiteral("view"), jsonOf(view)},
        {QStringLiteral("points"), pointList}, {QStringLiteral("tolerance"), tolerance},
    };
    return QJsonDocument(json).toJson(QJsonDocument::Indented);
}

std::optional<Session> Session::fromJson(const QByteArray& json, const QDir& folder, QString& problem)
{
    problem.clear();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject() || !document.object().contains(QLatin1String(versionKey))) {
        problem = QStringLiteral("it is no session of this program");
        return {};
    }
    const Reader reader(document.object(), {}, problem);
    int found = 0;
    reader.read(versionKey, found, version, version);

    Session session;
    const QJsonArray gamutList = reader.array("gamuts");
    for (const auto& gamut : gamutList) {
        const QString place = QStringLiteral("gamut %1: ").arg(session.gamuts.size() + 1);
        session.gamuts.append(gamutOf(Reader(gamut.toObject(), place, problem), folder));
    }
    reader.read("active", session.active, 0, std::max<double>(0, session.gamuts.size() - 1.0));
    session.view = viewOf(reader.inside("view"));
    const QJsonArray pointList = reader.array("points");
    for (const auto& file : pointList) {
        if (file.toString().isEmpty())
            reader.refuse("points", QStringLiteral("a list of files"));
        session.points.append(QDir::cleanPath(folder.absoluteFilePath(file.toString())));
    }
    reader.read("tolerance", session.tolerance, 0, 100);
    if (!problem.isEmpty())
        return {};
    return session;
}
