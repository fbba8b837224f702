// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeshFormat.h"

#include <QtCore/QJsonObject>

/// The note as an object: profile, part (of a part), intent, bpc, white, black (L*, a*, b* each), volume,
/// uncertainty, coordinates.
QJsonObject kvJsonOf(const MeshNote& note);
