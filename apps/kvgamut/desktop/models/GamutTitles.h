// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// Short names for inputs (files and built-in profiles), in their order, no two alike: the file name;
/// where two files share it, with its folder; where that is the same too, with a number.
QStringList gamutTitles(const QStringList& inputs);
