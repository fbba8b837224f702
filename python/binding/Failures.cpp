// SPDX-License-Identifier: Apache-2.0
#include "Failures.h"

#include "Texts.h"
#include "model/problems/ProblemText.h"

#include <QtCore/QMetaEnum>

namespace py = pybind11;

namespace {

/// The name of a code, such as "NotAProfile".
QString nameOf(const Problem::Code& code)
{
    return std::visit(
        [](auto value) {
            const auto names = QMetaEnum::fromType<decltype(value)>();
            return QString::fromLatin1(names.valueToKey(static_cast<int>(value)));
        },
        code);
}

} // namespace

void Failures::setError(const Problem& problem)
{
    if (problem.code == Problem::Code(KVProblemCode::OutOfMemory)) {
        PyErr_SetString(PyExc_MemoryError, "not enough memory for this gamut");
        return;
    }
    const py::str text = Texts::python(ProblemText::english(problem));
    if (problem.isCancelled()) { // only when the interpreter ends
        PyErr_SetString(PyExc_RuntimeError, "the interpreter is ending");
        return;
    }
    if (problem.code == Problem::Code(ProblemCode::CannotWrite)) {
        PyErr_SetObject(PyExc_OSError, text.ptr());
        return;
    }
    if (problem.code == Problem::Code(ProblemCode::OutputIsInput)) {
        PyErr_SetObject(PyExc_ValueError, text.ptr());
        return;
    }
    const py::object type = py::module_::import("kvgamut._errors").attr("ProfileError");
    const py::object error = type(text, Texts::python(nameOf(problem.code)), Texts::python(problem.subject),
                                  py::tuple(Texts::python(problem.arguments)));
    PyErr_SetObject(type.ptr(), error.ptr());
}

void Failures::addTo(py::module_&)
{
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown)
                std::rethrow_exception(thrown);
        } catch (const Failed& failed) {
            setError(failed.problem());
        }
    });
}
