// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

/// Applies @p look to a loaded gamut.
void kvApplyLook(KVGamut3DViewer& viewer, const QString& id, const KVGamutLook& look);

/// The present look of a loaded gamut.
KVGamutLook kvLookOf(const KVGamut3DViewer& viewer, const QString& id);
