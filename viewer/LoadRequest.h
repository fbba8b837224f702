// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <gamut/GamutLoader.h>

/// The request as the loader takes it.
GamutRequest kvGamutRequest(const KVLoadRequest& request);

/// The equivalent parameter hash of KVGamut3DViewer::load().
QHash<QString, QVariant> kvParamsOf(const KVLoadRequest& request);
