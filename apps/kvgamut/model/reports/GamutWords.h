// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

/// Names of values in reports about gamuts.
namespace GamutWords {

QString intent(KVVMRenderType intent);  ///< "absolute"...: as on the command line
QString method(KVGamut::Method method); ///< "device mesh", "radial hull" or "lattice surface"

/// Whether black-point compensation was applied. The absolute intent ignores that setting.
bool blackPointCompensated(const KVGamut::Report& report);

} // namespace GamutWords
