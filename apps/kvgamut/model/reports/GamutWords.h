// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtGui/QVector3D>

/// What a gamut's report says, as it is printed.
namespace GamutWords {

QString intent(KVVMRenderType intent);     ///< "absolute"; as it is named on the command line
QString method(KVGamut::Method method);    ///< "device mesh", "radial hull" or "lattice surface"
QVector3D lab(const KVGamut::LabPoint& p); ///< L*, a*, b*

/// Whether the black point was compensated: the absolute intent takes no notice of it.
bool blackPointCompensated(const KVGamut::Report& report);

} // namespace GamutWords
