// SPDX-License-Identifier: Apache-2.0
#include "GamutValue.h"

#include "Texts.h"
#include "model/export/GamutPage.h"
#include "model/inputs/SavedGamut.h"
#include "model/reports/GamutWords.h"

#include <utility>

namespace py = pybind11;

namespace {

std::vector<double> verticesOf(const KVGamut::Mesh& mesh)
{
    std::vector<double> values;
    values.reserve(3 * mesh.lab.size());
    for (const KVGamut::LabPoint& lab : mesh.lab)
        values.insert(values.end(), {double(lab.L), double(lab.a), double(lab.b)});
    return values;
}

py::tuple tupleOf(const KVGamut::LabPoint& lab)
{
    return py::make_tuple(double(lab.L), double(lab.a), double(lab.b));
}

py::object tupleOf(const std::optional<KVGamut::LabPoint>& lab)
{
    return lab ? py::object(tupleOf(*lab)) : py::object(py::none());
}

py::object chartOf(const std::optional<ChartFacts>& facts)
{
    if (!facts)
        return py::none();
    py::dict chart;
    chart["display"] = facts->isDisplay;
    chart["patches"] = facts->measured;
    chart["different"] = facts->different;
    py::list levels;
    for (const int count : facts->levels)
        levels.append(count);
    chart["levels"] = levels;
    chart["missing_corners"] = facts->missingCorners;
    chart["uncovered"] = facts->uncoveredShare;
    chart["largest_gap"] = facts->largestGap;
    chart["error_median"] = facts->errorMedian;
    chart["error_p95"] = facts->errorP95;
    return chart;
}

} // namespace

GamutValue::GamutValue(KVGamut::GamutObject&& other, const QString& itsName, const QString& itsKind)
    : gamut(std::move(other)), name(itsName), kind(itsKind), notes(GamutWords::notes(gamut.report())),
      vertices(verticesOf(gamut.mesh()))
{
}

GamutValue::GamutValue(const GamutSource& source, KVGamut::GamutObject&& other)
    : GamutValue(std::move(other), source.name(), source.kind())
{
    description = GamutPage::descriptionOf(source);
    hash = source.hash();
    notes = source.notes() + notes;
    chart = source.chart();
}

QByteArray GamutValue::saved() const
{
    return SavedGamut{gamut.serialize(), name}.bytes();
}

py::dict reportOf(const GamutValue& value)
{
    const KVGamut::Report report = value.gamut.report();
    const KVGamut::Conversion& conversion = report.conversion;
    const bool isConverted = !conversion.table.isEmpty();
    py::dict result;
    result["name"] = Texts::python(value.name);
    result["kind"] = Texts::python(value.kind);
    result["description"] = Texts::orNone(value.description);
    result["volume"] = report.volume;
    result["uncertainty"] = report.volumeUncertainty;
    result["surface_volume"] = report.surfaceVolume;
    result["faces"] = report.faceCount;
    result["method"] = Texts::python(GamutWords::method(report.method));
    result["intent"] = Texts::python(GamutWords::intent(report));
    result["bpc"] = GamutWords::blackPointCompensated(report);
    result["grid"] = report.gridPoints;
    result["channels"] = report.channels;
    result["fold_share"] = report.foldShare;
    result["white"] = tupleOf(report.white);
    result["black"] = tupleOf(report.black);
    result["seconds"] = report.seconds;
    result["table"] = Texts::orNone(conversion.table);
    result["table_fallback"] = isConverted ? py::object(py::bool_(conversion.tableIsFallback)) : py::none();
    result["adaptation"] =
        Texts::orNone(isConverted ? GamutWords::adaptation(conversion.adaptation) : QString());
    result["adapted_by"] = Texts::orNone(GamutWords::adaptedBy(conversion.adaptationSource));
    result["media_white"] = tupleOf(conversion.mediaWhite);
    result["mapped_black"] = tupleOf(conversion.mappedBlack);
    result["cicp"] = Texts::orNone(conversion.cicp ? GamutWords::encoding(*conversion.cicp) : QString());
    result["notes"] = Texts::python(value.notes);
    result["chart"] = chartOf(value.chart);
    result["sha256"] = Texts::orNone(value.hash);
    result["program"] = "kvgamut " KVGAMUT_VERSION;
    return result;
}
