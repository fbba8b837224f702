// SPDX-License-Identifier: Apache-2.0
// Gamuts of files, bytes, measured colours and surfaces.

#include "Arrays.h"
#include "Failures.h"
#include "GamutValue.h"
#include "Running.h"
#include "Texts.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/FileName.h"
#include "model/inputs/InputLimits.h"
#include "model/points/PointWhite.h"
#include "model/reports/GamutWords.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace py = pybind11;

namespace {

using KVGamut::Settings;
using Task = KVCompletionProtocolPtr;

/// What a caller expects of an input.
enum class Expected
{
    Any,
    Profile,
    Measurements,
};

/// How a gamut is computed, and how its input is read.
struct Request
{
    Settings settings;
    KVGamut::Construction construction = KVGamut::Construction::Accurate;
    PointOptions reading;
    Expected expected = Expected::Any;
};

[[noreturn]] void refuseWord(const char* what, const std::string& word, const std::string& known)
{
    throw std::invalid_argument(std::string(what) + " must be one of " + known + ", not '" + word + "'");
}

KVVMRenderType intentOf(const std::string& word, const char* what = "intent")
{
    for (const auto intent : {KVVMRenderPerceptual, KVVMRenderRelativeColorimetric, KVVMRenderSaturation,
                              KVVMRenderAbsoluteColorimetric})
        if (GamutWords::intent(intent).toStdString() == word)
            return intent;
    refuseWord(what, word, "perceptual, relative, saturation, absolute");
}

KVGamut::Adaptation adaptationOf(const std::string& word)
{
    for (const auto value :
         {KVGamut::Adaptation::Full, KVGamut::Adaptation::None, KVGamut::Adaptation::NoneD65})
        if (GamutWords::adaptation(value).toStdString() == word)
            return value;
    refuseWord("adaptation", word, "full, none, none-d65");
}

KVGamut::Construction constructionOf(const std::string& word)
{
    if (word == "accurate")
        return KVGamut::Construction::Accurate;
    if (word == "11-grid")
        return KVGamut::Construction::Grid11Falling;
    if (word == "11-grid-rising")
        return KVGamut::Construction::Grid11Rising;
    refuseWord("method", word, "accurate, 11-grid, 11-grid-rising");
}

Expected expectedOf(const std::string& word)
{
    return word == "profile"        ? Expected::Profile
           : word == "measurements" ? Expected::Measurements
                                    : Expected::Any;
}

QString whiteOf(const std::string& word)
{
    if (word.empty())
        return {};
    const QString known = PointWhite::known(QString::fromStdString(word));
    if (known.isEmpty())
        refuseWord("white", word, PointWhite::names().join(QStringLiteral(", ")).toStdString());
    return known;
}

/// @param options the values of every key that _opening.py documents
Request requestOf(const py::dict& options)
{
    const auto word = [&options](const char* key) { return options[key].cast<std::string>(); };
    Request request;
    request.settings.intent = intentOf(word("intent"));
    request.settings.blackPointCompensation = options["bpc"].cast<bool>();
    request.settings.gridPoints = options["grid"].cast<int>();
    request.settings.adaptation = adaptationOf(word("adaptation"));
    request.construction = constructionOf(word("method"));
    request.reading.space = FileName::decoded(Texts::qt(options["space"].cast<py::bytes>()));
    request.reading.intent = intentOf(word("space_intent"), "space_intent");
    request.reading.white = whiteOf(word("white"));
    request.reading.whiteY = options["white_y"].cast<double>();
    request.expected = expectedOf(word("expected"));
    return request;
}

void checkKind(const GamutSource& source, Expected expected)
{
    const bool isProfile = source.profile() && !source.chart();
    if (expected == Expected::Profile && !isProfile)
        throw std::invalid_argument("the input is no profile, but a " + source.kind().toStdString() +
                                    "; use Gamut.open");
    if (expected == Expected::Measurements && (isProfile || source.isSaved()))
        throw std::invalid_argument("the input is no measurement, but a " + source.kind().toStdString() +
                                    "; use Gamut.open");
}

/// The gamut of a source, or the exception of its problem.
GamutPtr computed(const Result<GamutSource>& source, const Request& request, Task task)
{
    if (!source)
        throw Failures::Failed(source.error());
    checkKind(*source, request.expected);
    Result<KVGamut::GamutObject> gamut = source->compute(request.settings, &task, request.construction);
    if (!gamut)
        throw Failures::Failed(gamut.error());
    return std::make_shared<GamutValue>(*source, std::move(*gamut));
}

GamutPtr openFile(const py::bytes& file, const py::dict& options, const py::object& progress)
{
    const QString name = FileName::decoded(Texts::qt(file));
    const Request request = requestOf(options);
    return Running::run<GamutPtr>(name, progress, [name, request](const Task& task) {
        return computed(GamutSource::open(name, task, request.reading), request, task);
    });
}

GamutPtr openContent(const py::str& pythonName, const py::bytes& bytes, const py::dict& options,
                     const py::object& progress)
{
    const QString name = Texts::qt(pythonName);
    const QByteArray content = Texts::qt(bytes);
    const Request request = requestOf(options);
    return Running::run<GamutPtr>(name, progress, [name, content, request](const Task& task) {
        return computed(GamutSource::ofContent(name, content, task, request.reading), request, task);
    });
}

/// Colours with their device values in the order of the rows. The device values have been checked.
PointSet pointsOf(const std::vector<KVGamut::LabPoint>& lab, const Arrays::Points& device, bool isDisplay)
{
    PointSet set;
    set.reading.values = QStringLiteral("Lab");
    set.reading.deviceClass = isDisplay ? QStringLiteral("DISPLAY") : QStringLiteral("OUTPUT");
    const int channels = device.ndim() == 2 ? static_cast<int>(device.shape(1)) : 0;
    for (std::size_t i = 0; i < lab.size(); ++i) {
        MeasuredPoint point;
        point.lab = lab[i];
        point.deviceChannels = channels;
        for (int c = 0; c < channels; ++c)
            point.device[static_cast<std::size_t>(c)] = device.at(i, c) * (channels == 4 ? 100.0f : 1.0f);
        set.points.append(point);
    }
    return set;
}

void refuseTooMany(py::ssize_t count)
{
    if (count > InputLimits::maxPoints)
        throw Failures::Failed(
            Problem(ProblemCode::TooManyPoints, {QString::number(InputLimits::maxPoints)}));
}

GamutPtr openPoints(const py::str& pythonName, const Arrays::Points& points, const Arrays::Points& device,
                    bool isDisplay, const py::dict& options, const py::object& progress)
{
    refuseTooMany(points.shape(0));
    const auto lab = Arrays::labOf(points, "the colours");
    if (device.ndim() == 2 && device.shape(0) != points.shape(0))
        throw std::invalid_argument("there must be as many device values as colours");
    const PointSet set = pointsOf(lab, device, isDisplay);
    const QString name = Texts::qt(pythonName);
    const Request request = requestOf(options);
    return Running::run<GamutPtr>(name, progress, [name, set, request](const Task& task) {
        return computed(GamutSource::ofPoints(name, set, task), request, task);
    });
}

GamutPtr openSurface(const py::str& pythonName, const Arrays::Points& vertices,
                     const Arrays::Indices& triangles, double uncertainty, const py::object& progress)
{
    if (triangles.ndim() != 2 || triangles.shape(1) != 3)
        throw std::invalid_argument("the triangles must have the shape (m, 3)");
    if (triangles.shape(0) > InputLimits::maxFaces)
        throw Failures::Failed(Problem(ProblemCode::TooManyFaces, {QString::number(InputLimits::maxFaces)}));
    refuseTooMany(vertices.shape(0));
    KVGamut::Mesh mesh;
    mesh.lab = Arrays::labOf(vertices, "the vertices");
    for (py::ssize_t i = 0; i < triangles.shape(0); ++i)
        mesh.triangles.push_back({triangles.at(i, 0), triangles.at(i, 1), triangles.at(i, 2)});
    const QString name = Texts::qt(pythonName);
    return Running::run<GamutPtr>(
        name, progress, [name, mesh = std::move(mesh), uncertainty](const Task& task) {
            KVGamut::GamutObject gamut;
            Task protocol = task;
            if (!gamut.initWithSurface(mesh, uncertainty, &protocol))
                throw Failures::Failed(Problem(gamut.problem().value_or(KVProblem())).about(name));
            return std::make_shared<GamutValue>(std::move(gamut), name, QStringLiteral("given surface"));
        });
}

} // namespace

void addOpeningTo(py::module_& module)
{
    module.def("open_file", openFile, py::arg("file"), py::arg("options"), py::arg("progress"));
    module.def("open_content", openContent, py::arg("name"), py::arg("content"), py::arg("options"),
               py::arg("progress"));
    module.def("open_points", openPoints, py::arg("name"), py::arg("lab"), py::arg("device"),
               py::arg("is_display"), py::arg("options"), py::arg("progress"));
    module.def("open_surface", openSurface, py::arg("name"), py::arg("vertices"), py::arg("triangles"),
               py::arg("uncertainty"), py::arg("progress"));
    module.def("rgb_spaces", [] { return Texts::python(BuiltInProfiles::names()); });
    module.def("reference_bodies", [] { return Texts::python(BuiltInNames::bodies()); });
    module.def("whites", [] { return Texts::python(PointWhite::names()); });
}
