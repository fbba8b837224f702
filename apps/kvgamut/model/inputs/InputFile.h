// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>

/// The content of the file @p name. A failure is CannotRead, about the file.
Result<QByteArray> readInput(const QString& name);
/// The same of a regular file, but no more than its first @p maxSize bytes.
Result<QByteArray> readInput(const QString& name, qint64 maxSize);
