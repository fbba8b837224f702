// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Writes @p bytes to the file @p name: whole, or not at all, in which case a file that was there
/// stays. "-" is standard output.
/// @return what went wrong, naming the file; empty when it is written
QString writeOutput(const QString& name, const QByteArray& bytes);
