// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

/// A camera that turns around the L* axis.
namespace Turntable {

/// @p camera turned by @p degrees around the L* axis, counter-clockwise seen from above.
KVCamera turned(const KVCamera& camera, double degrees);

/// What @p framing contains while it turns around the L* axis once: a camera that frames this frames every
/// picture of the turn, without a change of distance.
KVFraming swept(const KVFraming& framing);

} // namespace Turntable
