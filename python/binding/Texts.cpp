// SPDX-License-Identifier: Apache-2.0
#include "Texts.h"

namespace py = pybind11;

py::str Texts::python(const QString& text)
{
    int order = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? -1 : 1;
    PyObject* const result = PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.utf16()),
                                                   text.size() * 2, "surrogatepass", &order);
    if (!result)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(result);
}

py::list Texts::python(const QStringList& texts)
{
    py::list result;
    for (const QString& text : texts)
        result.append(python(text));
    return result;
}

py::bytes Texts::python(const QByteArray& bytes)
{
    return py::bytes(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

py::object Texts::orNone(const QString& text)
{
    if (text.isEmpty())
        return py::none();
    return python(text);
}

QString Texts::qt(const py::str& text)
{
    // UTF-16 with its byte order mark
    PyObject* const bytes = PyUnicode_AsEncodedString(text.ptr(), "utf-16", "surrogatepass");
    if (!bytes)
        throw py::error_already_set();
    const auto owned = py::reinterpret_steal<py::bytes>(bytes);
    const auto* const units = reinterpret_cast<const char16_t*>(PyBytes_AS_STRING(bytes));
    return QString::fromUtf16(units + 1, PyBytes_GET_SIZE(bytes) / 2 - 1);
}

QByteArray Texts::qt(const py::bytes& bytes)
{
    return QByteArray(PyBytes_AS_STRING(bytes.ptr()), PyBytes_GET_SIZE(bytes.ptr()));
}
