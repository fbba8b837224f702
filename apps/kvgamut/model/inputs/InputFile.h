// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>

/// The content of the file @p name. On failure the problem is CannotRead and names the file.
Result<QByteArray> readInput(const QString& name);
/// At most the first @p maxSize bytes of a regular file.
Result<QByteArray> readInput(const QString& name, qint64 maxSize);
