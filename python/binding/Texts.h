// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pybind11/pybind11.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Texts of Qt and of Python. Both write a byte of a file name that is not UTF-8 as the lone surrogate
/// U+DC00 + byte, so that names pass without loss. All functions need the GIL.
namespace Texts {

pybind11::str python(const QString& text);
pybind11::list python(const QStringList& texts);
pybind11::bytes python(const QByteArray& bytes);
/// None for an empty text.
pybind11::object orNone(const QString& text);
QString qt(const pybind11::str& text);
/// Copies the bytes.
QByteArray qt(const pybind11::bytes& bytes);

} // namespace Texts
