// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

namespace kvtest {

QString everyGamut(); ///< id of the gamut that callEverything() leaves
QString everySet();   ///< name of the sets that callEverything() leaves

/// The parameters of a load of sRGB.
QHash<QString, QVariant> srgb();

/// Calls every public method and checks the results that do not depend on the time of the call. Afterwards a
/// gamut, a marker, a point and a segment set and the plane are shown from a fixed camera.
void callEverything(KVGamut3DViewer& v);

} // namespace kvtest
