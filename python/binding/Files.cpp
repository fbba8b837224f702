// SPDX-License-Identifier: Apache-2.0
// Files and pages of gamuts.

#include "Failures.h"
#include "GamutValue.h"
#include "Running.h"
#include "Texts.h"
#include "model/export/GamutPage.h"
#include "model/export/MeshFormat.h"
#include "model/export/OutputFile.h"
#include "model/inputs/FileName.h"
#include "model/text/GamutTitles.h"
#include "model/text/SafeText.h"

#include <pybind11/stl.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace py = pybind11;

namespace {

using Task = KVCompletionProtocolPtr;

const QString savedSuffix = QStringLiteral("kvgamut");
const QString pageSuffix = QStringLiteral("html");

QByteArray pageOf(const std::vector<GamutPtr>& values, const Task& task)
{
    QStringList names;
    for (const GamutPtr& value : values)
        names.append(value->name);
    const QStringList titles = gamutTitles(names);
    QList<GamutPage::Gamut> gamuts;
    for (std::size_t i = 0; i < values.size(); ++i)
        gamuts.append({titles[static_cast<qsizetype>(i)], values[i]->description, {}, {}, values[i]->gamut});
    GamutPage::chooseKeys(gamuts);
    GamutPage::chooseOpacities(gamuts);
    return GamutPage::of(gamuts, [&task](float share) {
        if (task->isCancelled())
            throw Failures::Failed(Problem(KVProblemCode::Cancelled));
        task->setProgress(share);
    });
}

QByteArray meshOf(const GamutValue& value, const MeshFormat& format)
{
    return format.write(ColoredMesh::of(value.gamut.mesh()),
                        {SafeText::shown(value.name, SafeText::maxPathLength), value.gamut.report()});
}

std::vector<std::string> formats()
{
    std::vector<std::string> names;
    for (const MeshFormat& format : MeshFormat::all())
        names.emplace_back(format.suffix);
    names.push_back(savedSuffix.toStdString());
    names.push_back(pageSuffix.toStdString());
    return names;
}

py::bytes page(const std::vector<GamutPtr>& values, const py::object& progress)
{
    return Texts::python(Running::run<QByteArray>(
        QStringLiteral("page"), progress, [values](const Task& task) { return pageOf(values, task); }));
}

py::bytes saved(const GamutPtr& value)
{
    return Texts::python(
        Running::run<QByteArray>(value->name, py::none(), [value](const Task&) { return value->saved(); }));
}

/// Writes @p value to @p file, completely or not at all. @p suffix is one of formats().
void save(const GamutPtr& value, const py::bytes& file, const std::string& suffix)
{
    const QString name = FileName::decoded(Texts::qt(file));
    const QString format = QString::fromStdString(suffix);
    const MeshFormat* const mesh = MeshFormat::ofSuffix(format);
    if (!mesh && format != savedSuffix && format != pageSuffix)
        throw std::invalid_argument("the format '" + suffix + "' is unknown");
    using Outcome = std::optional<Problem>;
    const Outcome problem = Running::run<Outcome>(value->name, py::none(), [=](const Task& task) -> Outcome {
        if (auto same = overwritesInput(name, {value->name}))
            return same;
        const QByteArray bytes = mesh                    ? meshOf(*value, *mesh)
                                 : format == savedSuffix ? value->saved()
                                                         : pageOf({value}, task);
        if (task->isCancelled())
            return Problem(KVProblemCode::Cancelled);
        return writeOutput(name, bytes);
    });
    if (problem)
        throw Failures::Failed(*problem);
}

} // namespace

void addFilesTo(py::module_& module)
{
    module.def("formats", formats);
    module.def("page", page, py::arg("gamuts"), py::arg("progress"));
    module.def("saved", saved, py::arg("gamut"));
    module.def("save", save, py::arg("gamut"), py::arg("file"), py::arg("format"));
}
