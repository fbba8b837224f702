// SPDX-License-Identifier: Apache-2.0
// The class Gamut: its arrays, and what it can be asked.

#include "Arrays.h"
#include "Failures.h"
#include "GamutValue.h"
#include "Running.h"
#include "Texts.h"
#include "model/checks/PointQueries.h"
#include "model/slices/GamutRings.h"
#include "model/slices/GamutSlice.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace py = pybind11;

namespace {

using KVGamut::LabPoint;
using KVGamut::Nearest;
using PointQueries::Metric;
using Task = KVCompletionProtocolPtr;

// Below this a thread of its own takes longer than the answers.
constexpr std::size_t fewColours = 64;

py::array verticesOf(const GamutPtr& value)
{
    const auto count = static_cast<py::ssize_t>(value->vertices.size() / 3);
    return Arrays::view(value->vertices.data(), {count, 3}, value);
}

py::array trianglesOf(const GamutPtr& value)
{
    const auto& triangles = value->gamut.mesh().triangles;
    static_assert(sizeof(KVGamut::Mesh::Triangle) == 3 * sizeof(int));
    return Arrays::view(triangles.empty() ? nullptr : triangles.front().data(),
                        {static_cast<py::ssize_t>(triangles.size()), 3}, value);
}

py::object deviceOf(const GamutPtr& value)
{
    const KVGamut::Mesh& mesh = value->gamut.mesh();
    if (mesh.device.empty())
        return py::none();
    return Arrays::view(mesh.device.data(), {static_cast<py::ssize_t>(mesh.lab.size()), mesh.channels},
                        value);
}

/// An answer of PointQueries for @p lab, on a thread of its own unless the colours are few.
template <typename T>
std::vector<T> answered(const GamutPtr& value, std::vector<LabPoint> lab, const py::object& progress,
                        const std::function<std::vector<T>(const KVGamut::GamutObject&,
                                                           const std::vector<LabPoint>&, const Task&)>& ask)
{
    if (lab.size() <= fewColours) {
        const KVGamut::GamutObject gamut = value->gamut; // several threads may ask the same Gamut
        const py::gil_scoped_release noGil;
        return ask(gamut, lab, {});
    }
    return Running::run<std::vector<T>>(value->name, progress,
                                        [gamut = value->gamut, lab = std::move(lab), ask](const Task& task) {
                                            return ask(gamut, lab, task);
                                        });
}

py::array insideOf(const GamutPtr& value, const Arrays::Points& points, const py::object& progress)
{
    const auto inside = answered<unsigned char>(value, Arrays::labOf(points, "the points"), progress,
                                                [](const auto& gamut, const auto& lab, const Task& task) {
                                                    return PointQueries::inside(gamut, lab, task);
                                                });
    const auto count = static_cast<py::ssize_t>(inside.size());
    return Arrays::moved(inside, {count}).attr("view")("bool");
}

/// The nearest points (n, 3) and the distances (n) of @p points.
py::tuple nearestOf(const GamutPtr& value, const Arrays::Points& points, const std::string& metric,
                    const py::object& progress)
{
    if (metric != "de76" && metric != "de00")
        throw std::invalid_argument("metric must be one of de76, de00, not '" + metric + "'");
    const Metric chosen = metric == "de76" ? Metric::De76 : Metric::De00;
    const auto nearest = answered<Nearest>(value, Arrays::labOf(points, "the points"), progress,
                                           [chosen](const auto& gamut, const auto& lab, const Task& task) {
                                               return PointQueries::nearest(gamut, lab, chosen, task);
                                           });
    std::vector<double> places, distances;
    places.reserve(3 * nearest.size());
    distances.reserve(nearest.size());
    for (const Nearest& found : nearest) {
        places.insert(places.end(), {double(found.point.L), double(found.point.a), double(found.point.b)});
        distances.push_back(double(found.distance));
    }
    const auto count = static_cast<py::ssize_t>(nearest.size());
    return py::make_tuple(Arrays::moved(std::move(places), {count, 3}),
                          Arrays::moved(std::move(distances), {count}));
}

py::list arraysOf(const QList<QPolygonF>& polygons)
{
    py::list arrays;
    for (const QPolygonF& polygon : polygons) {
        std::vector<double> values;
        values.reserve(2 * static_cast<std::size_t>(polygon.size()));
        for (const QPointF& point : polygon)
            values.insert(values.end(), {point.x(), point.y()});
        arrays.append(Arrays::moved(std::move(values), {polygon.size(), 2}));
    }
    return arrays;
}

py::list sliceOf(const GamutPtr& value, bool isHue, double place)
{
    const SlicePlane plane{isHue ? SlicePlane::Hue : SlicePlane::Lightness, place};
    return arraysOf(
        Running::run<GamutSlice>(value->name, py::none(), [gamut = value->gamut, plane](const Task&) {
            return gamutSlice(gamut.mesh(), plane);
        }).rings);
}

/// The pieces of an outline, which follow each other, as closed loops of L*, a*, b*.
std::vector<std::vector<double>> loopsOf(const QList<QList<KVHull::Node>>& pieces)
{
    std::vector<std::vector<double>> loops;
    QList<float> start, end;
    for (const QList<KVHull::Node>& piece : pieces) {
        if (piece.size() != 2)
            continue;
        if (loops.empty() || end == start || piece[0].lab != end) {
            loops.emplace_back();
            start = piece[0].lab;
        }
        for (const float coordinate : piece[0].lab)
            loops.back().push_back(double(coordinate));
        end = piece[1].lab;
    }
    return loops;
}

py::list outlineOf(const GamutPtr& value)
{
    auto loops = Running::run<std::vector<std::vector<double>>>(
        value->name, py::none(), [gamut = value->gamut](const Task&) { return loopsOf(gamut.outline()); });
    py::list arrays;
    for (std::vector<double>& loop : loops) {
        const auto count = static_cast<py::ssize_t>(loop.size() / 3);
        arrays.append(Arrays::moved(std::move(loop), {count, 3}));
    }
    return arrays;
}

py::tuple ringsOf(const GamutPtr& value, double step, int hues)
{
    const auto rings =
        Running::run<GamutRings>(value->name, py::none(), [gamut = value->gamut, step, hues](const Task&) {
            return gamutRings(gamut.mesh(), step, hues);
        });
    return py::make_tuple(std::vector<double>(rings.lightness.begin(), rings.lightness.end()),
                          arraysOf(rings.rings));
}

/// The values of a comparison, each with its uncertainty behind it.
std::vector<double> comparisonOf(const GamutPtr& first, const GamutPtr& second, const py::object& progress)
{
    const auto found = Running::run<KVGamut::ComparisonReport>(
        first->name, progress, [a = first->gamut, b = second->gamut](const Task& task) {
            Task protocol = task;
            return a.compareWithUncertainty(b, &protocol);
        });
    if (found.problem)
        throw Failures::Failed(Problem(*found.problem));
    const auto& [values, uncertainty, problem] = found;
    const KVGamut::Report a = first->gamut.report(), b = second->gamut.report();
    return {a.volume,
            a.volumeUncertainty,
            b.volume,
            b.volumeUncertainty,
            double(values.intersection),
            uncertainty.intersection,
            double(values.unionVolume),
            uncertainty.unionVolume,
            double(values.firstCovered),
            uncertainty.firstCovered,
            double(values.secondCovered),
            uncertainty.secondCovered};
}

} // namespace

void addGamutTo(py::module_& module)
{
    py::class_<GamutValue, GamutPtr>(module, "Gamut")
        .def_property_readonly("name", [](const GamutPtr& g) { return Texts::python(g->name); })
        .def_property_readonly("volume", [](const GamutPtr& g) { return g->gamut.report().volume; })
        .def_property_readonly("uncertainty",
                               [](const GamutPtr& g) { return g->gamut.report().volumeUncertainty; })
        .def("report", [](const GamutPtr& g) { return reportOf(*g); })
        .def("vertices", verticesOf)
        .def("triangles", trianglesOf)
        .def("device", deviceOf)
        .def("inside", insideOf, py::arg("points"), py::arg("progress"))
        .def("nearest", nearestOf, py::arg("points"), py::arg("metric"), py::arg("progress"))
        .def("slice", sliceOf, py::arg("is_hue"), py::arg("place"))
        .def("outline", outlineOf)
        .def("rings", ringsOf, py::arg("step"), py::arg("hues"))
        .def("compare", comparisonOf, py::arg("other"), py::arg("progress"));
}
