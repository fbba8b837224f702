// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"

#include <QtCore/QStringList>

#include <array>

/// The white to which Lab and XYZ values refer.
namespace PointWhite {

/// The standard illuminants that are known, as in "D50".
QStringList names();

/// The name as in names() of @p word, in any case; empty if it is unknown.
QString known(const QString& word);

/// Lab relative to D50 of @p lab relative to the illuminant @p white, one of names(). Adapted with the
/// Bradford transform; unchanged for D50.
KVGamut::LabPoint fromLab(const KVGamut::LabPoint& lab, const QString& white);

/// The same of X, Y and Z, where white has the Y @p whiteY. Not finite if they are enormous.
KVGamut::LabPoint fromXyz(const std::array<float, 3>& xyz, double whiteY, const QString& white);

} // namespace PointWhite
