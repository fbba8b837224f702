// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

/// Words for the values of a gamut's report.
namespace GamutWords {

QString intent(KVVMRenderType intent);  ///< "absolute"...: as on the command line
QString method(KVGamut::Method method); ///< "device mesh", "radial hull" or "lattice surface"

/// Whether the black point was compensated. The absolute intent ignores that setting.
bool blackPointCompensated(const KVGamut::Report& report);

} // namespace GamutWords
