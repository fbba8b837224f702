// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The X server that DISPLAY names.
namespace XServer {

/// Whether it accepts connections. Qt would end the process if it does not.
bool isReachable();

} // namespace XServer
