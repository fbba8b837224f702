// SPDX-License-Identifier: Apache-2.0
#include "Session.h"

#include "model/inputs/BuiltInNames.h"
#include "model/inputs/InputLimits.h"
#include "model/pictures/ObliqueView.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr int version = 1;
constexpr const char* versionKey = "kvgamutSession";

using WordValues = QList<std::pair<QString, int>>;

const WordValues& intentWords()
{
    static const WordValues words{{QStringLiteral("perceptual"), KVVMRenderPerceptual},
                                  {QStringLiteral("relative"), KVVMRenderRelativeColorimetric},
                                  {QStringLiteral("saturation"), KVVMRenderSaturation},
                                  {QStringLiteral("absolute"), KVVMRenderAbsoluteColorimetric}};
    return words;
}

const WordValues& adaptationWords()
{
    static const WordValues words{
        {QStringLiteral("full"), static_cast<int>(KVGamut::Adaptation::Full)},
        {QStringLiteral("none"), static_cast<int>(KVGamut::Adaptation::None)},
        {QStringLiteral("none-d65"), static_cast<int>(KVGamut::Adaptation::NoneD65)}};
    return words;
}

const WordValues& modeWords()
{
    static const WordValues words{{QStringLiteral("solid"), KVGamut3DViewer::Solid},
                                  {QStringLiteral("smooth"), KVGamut3DViewer::Smooth},
                                  {QStringLiteral("flat"), KVGamut3DViewer::Flat},
                                  {QStringLiteral("wireframe"), KVGamut3DViewer::Wireframe}};
    return words;
}

const WordValues& sectionWords()
{
    static const WordValues words{{QStringLiteral("lightness"), static_cast<int>(SectionKind::Lightness)},
                                  {QStringLiteral("hue"), static_cast<int>(SectionKind::Hue)},
                                  {QStringLiteral("rings"), static_cast<int>(SectionKind::Rings)}};
    return words;
}

QString wordOf(const WordValues& words, int value)
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
    return BuiltInNames::all().contains(name) ? name : QDir::cleanPath(folder.absoluteFilePath(name));
}

/// Reads the members of one JSON object. Stores the first invalid value as the problem; after it, all values
/// keep their defaults.
class Reader
{
public:
    Reader(const QJsonObject& object, QString place, std::optional<Problem>& problem)
        : m_object(object), m_place(std::move(place)), m_problem(problem)
    {
    }

    void read(const char* key, bool& target) const
    {
        const QJsonValue value = take(key);
        if (value.isBool())
            target = value.toBool();
        else
            refuse(key, value, ProblemCode::SessionNotBool);
    }

    template <typename Number>
    void read(const char* key, Number& target, double min, double max) const
    {
        const QJsonValue value = take(key);
        const double number = value.toDouble(std::nan(""));
        if (number >= min && number <= max)
            target = static_cast<Number>(number);
        else
            refuse(key, value, ProblemCode::SessionNotInRange, {QString::number(min), QString::number(max)});
    }

    void read(const char* key, QString& target) const
    {
        const QJsonValue value = take(key);
        if (value.isString() && !value.toString().isEmpty())
            target = value.toString();
        else
            refuse(key, value, ProblemCode::SessionNotName);
    }

    void read(const char* key, QColor& target) const
    {
        const QJsonValue value = take(key);
        const QColor color(value.toString());
        if (value.isString() && color.isValid())
            target = QColor(color.rgb()); // as it is written: opaque, with 8 bits for each channel
        else
            refuse(key, value, ProblemCode::SessionNotColor);
    }

    void read(const char* key, QVector3D& target) const
    {
        const QJsonValue value = take(key);
        const QJsonArray parts = value.toArray();
        bool valid = parts.size() == 3;
        QVector3D numbers;
        for (int i = 0; i < 3; ++i) {
            numbers[i] = static_cast<float>(parts.at(i).toDouble(std::nan("")));
            valid = valid && std::isfinite(numbers[i]); // a float, which is smaller than the numbers of JSON
        }
        if (valid)
            target = numbers;
        else
            refuse(key, value, ProblemCode::SessionNotThreeValues);
    }

    template <typename Value>
    void read(const char* key, Value& target, const WordValues& words) const
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
        refuse(key, value, ProblemCode::SessionNotOneOf, {known.join(QStringLiteral(", "))});
    }

    /// The strings of a list.
    QStringList strings(const char* key) const
    {
        QStringList result;
        const QJsonArray values = array(key);
        for (const auto& value : values) {
            if (value.toString().isEmpty())
                fail(key, ProblemCode::SessionNotFileList);
            result.append(value.toString());
        }
        return result;
    }

    QJsonArray array(const char* key) const
    {
        const QJsonValue value = take(key);
        if (!value.isArray())
            refuse(key, value, ProblemCode::SessionNotList);
        if (value.toArray().size() <= InputLimits::maxSessionFiles)
            return value.toArray();
        fail(key, ProblemCode::SessionTooLong, {QString::number(InputLimits::maxSessionFiles)});
        return {};
    }

    Reader group(const char* key) const
    {
        const QJsonValue value = take(key);
        if (!value.isObject())
            refuse(key, value, ProblemCode::SessionNotGroup);
        return Reader(value.toObject(), placeOf(key) + QLatin1Char('.'), m_problem);
    }

    bool has(const char* key) const { return m_object.contains(QLatin1String(key)); }

    /// The path of the value in the file, such as "gamuts[0].opacity".
    QString placeOf(const char* key) const { return m_place + QLatin1String(key); }

    void fail(const char* key, ProblemCode code, const QStringList& arguments = {}) const
    {
        if (!m_problem)
            m_problem = Problem(code, QStringList(placeOf(key)) + arguments);
    }

private:
    QJsonValue take(const char* key) const { return m_object.value(QLatin1String(key)); }

    /// Records a problem unless the value is missing.
    void refuse(const char* key, const QJsonValue& value, ProblemCode code,
                const QStringList& arguments = {}) const
    {
        if (!value.isUndefined())
            fail(key, code, arguments);
    }

    const QJsonObject m_object;
    const QString m_place;
    std::optional<Problem>& m_problem;
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
    if (gamut.settings.adaptation !=
        KVGamut::Adaptation::Full) // versions before the setting open the file, too
        json.insert(QStringLiteral("adaptation"),
                    wordOf(adaptationWords(), static_cast<int>(gamut.settings.adaptation)));
    if (gamut.automaticOpacity)
        json.insert(QStringLiteral("automaticOpacity"), true);
    if (gamut.look.color.isValid())
        json.insert(QStringLiteral("color"), gamut.look.color.name());
    return json;
}

Session::Gamut gamutOf(const Reader& reader, const QDir& folder)
{
    constexpr double maxGridPoints = 129;
    Session::Gamut gamut;
    reader.read("input", gamut.input);
    if (gamut.input.isEmpty())
        reader.fail("input", ProblemCode::SessionNotName);
    gamut.input = intoFolder(gamut.input, folder);
    reader.read("intent", gamut.settings.intent, intentWords());
    reader.read("blackPointCompensation", gamut.settings.blackPointCompensation);
    reader.read("adaptation", gamut.settings.adaptation, adaptationWords());
    reader.read("gridPoints", gamut.settings.gridPoints, -1, maxGridPoints);
    reader.read("visible", gamut.look.visible);
    reader.read("mode", gamut.look.mode, modeWords());
    reader.read("opacity", gamut.look.opacity, 0, 1);
    reader.read("automaticOpacity", gamut.automaticOpacity);
    reader.read("ambient", gamut.look.ambientStrength, 0, 1);
    reader.read("surface", gamut.look.surface);
    reader.read("projection", gamut.look.projection);
    reader.read("primaries", gamut.look.primaries);
    reader.read("color", gamut.look.color);
    return gamut;
}

// Session files store the position of the light as (-a*, L*, b*).

QVector3D storedLight(const QVector3D& lab)
{
    return {0.0f - lab.y(), lab.x(), lab.z()}; // -lab.y() would turn 0 into -0
}

QVector3D lightOf(const QVector3D& stored)
{
    return {stored.y(), 0.0f - stored.x(), stored.z()};
}

QJsonObject jsonOf(const KVViewState& view)
{
    QJsonObject json{
        {QStringLiteral("eye"), arrayOf(view.camera.position)},
        {QStringLiteral("lookAt"), arrayOf(view.camera.interestPoint)},
        {QStringLiteral("orthogonal"), view.camera.orthogonal},
        {QStringLiteral("angle"), view.camera.viewingAngle},
        {QStringLiteral("background"), view.theme.background.name()},
        {QStringLiteral("grid"), view.grid},
        {QStringLiteral("axes"), view.axes},
        {QStringLiteral("plane"), view.plane},
        {QStringLiteral("light"), arrayOf(storedLight(view.light))},
        {QStringLiteral("lightColor"), view.lightColor.name()},
    };
    if (view.clipping)
        json.insert(QStringLiteral("clip"), *view.clipping);
    return json;
}

KVViewState viewOf(const Reader& reader)
{
    KVViewState view;
    view.camera.position = ObliqueView().eye;
    view.camera.interestPoint = ObliqueView().lookAt;
    reader.read("eye", view.camera.position);
    reader.read("lookAt", view.camera.interestPoint);
    if (view.camera.position == view.camera.interestPoint)
        reader.fail("eye", ProblemCode::SessionSamePoint, {reader.placeOf("lookAt")});
    reader.read("orthogonal", view.camera.orthogonal);
    reader.read("angle", view.camera.viewingAngle, 1, 150);
    reader.read("background", view.theme.background);
    reader.read("grid", view.grid);
    reader.read("axes", view.axes);
    reader.read("plane", view.plane);
    QVector3D light = storedLight(view.light);
    reader.read("light", light);
    view.light = lightOf(light);
    reader.read("lightColor", view.lightColor);
    if (reader.has("clip")) {
        view.clipping = 0.0f;
        reader.read("clip", *view.clipping, -1000, 1000);
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
    QJsonObject viewObject = jsonOf(view);
    viewObject.insert(QStringLiteral("lightness"), lightness);
    viewObject.insert(QStringLiteral("sectionColors"), sectionColors);
    viewObject.insert(QStringLiteral("sectionKind"), wordOf(sectionWords(), static_cast<int>(sectionKind)));
    viewObject.insert(QStringLiteral("sectionHue"), sectionHue);
    viewObject.insert(QStringLiteral("sectionFixed"), sectionFixed);
    if (hueLeaf)
        viewObject.insert(QStringLiteral("hueLeaf"), *hueLeaf);
    if (section)
        viewObject.insert(QStringLiteral("section"), *section);
    const QJsonObject json{
        {QLatin1String(versionKey), version},  {QStringLiteral("gamuts"), gamutList},
        {QStringLiteral("active"), active},    {QStringLiteral("view"), viewObject},
        {QStringLiteral("points"), pointList}, {QStringLiteral("tolerance"), tolerance},
    };
    return QJsonDocument(json).toJson(QJsonDocument::Indented);
}

Result<Session> Session::fromJson(const QByteArray& json, const QDir& folder)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (!object.contains(QLatin1String(versionKey)))
        return failure(ProblemCode::NotASession);
    std::optional<Problem> problem;
    const Reader reader(object, {}, problem);
    int found = 0;
    reader.read(versionKey, found, 1, std::numeric_limits<int>::max());
    if (found > version)
        return failure(
            Problem(ProblemCode::SessionNewer, {QString::number(found), QString::number(version)}));

    Session session;
    const QJsonArray gamutList = reader.array("gamuts");
    for (const auto& gamut : gamutList) {
        const QString place = QStringLiteral("gamuts[%1].").arg(session.gamuts.size());
        session.gamuts.append(gamutOf(Reader(gamut.toObject(), place, problem), folder));
    }
    reader.read("active", session.active, 0, std::max<double>(0, session.gamuts.size() - 1.0));
    const Reader view = reader.group("view");
    session.view = viewOf(view);
    view.read("sectionColors", session.sectionColors);
    view.read("sectionKind", session.sectionKind, sectionWords());
    view.read("sectionHue", session.sectionHue, 0, 360);
    view.read("sectionFixed", session.sectionFixed);
    if (view.has("hueLeaf"))
        view.read("hueLeaf", session.hueLeaf.emplace(), 0, 360);
    if (view.has("section"))
        view.read("section", session.section.emplace(), 0, 100);
    if (view.has("lightness")) // earlier versions wrote it only where it cut or was shown
        view.read("lightness", session.lightness, 0, 100);
    else
        session.lightness =
            std::clamp(session.view.clipping.value_or(session.section.value_or(50.0f)), 0.0f, 100.0f);
    const QStringList files = reader.strings("points");
    for (const QString& file : files)
        session.points.append(QDir::cleanPath(folder.absoluteFilePath(file)));
    reader.read("tolerance", session.tolerance, 0, 100);
    if (problem)
        return failure(*problem);
    return session;
}
