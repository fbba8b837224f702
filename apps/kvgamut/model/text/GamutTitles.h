// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// Short unique names of inputs (files and built-in profiles), in the same order: the file name, with the
/// folder if another file has the same name, and with a number if that is not unique either.
QStringList gamutTitles(const QStringList& inputs);
