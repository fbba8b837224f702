// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

/// Sets everything that @p look says on a loaded gamut.
void kvApplyLook(KVGamut3DViewer& viewer, const QString& id, const KVGamutLook& look);

/// The present look of a loaded gamut.
KVGamutLook kvLookOf(const KVGamut3DViewer& viewer, const QString& id);
