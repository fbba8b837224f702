// SPDX-License-Identifier: Apache-2.0
#include "WaylandServer.h"

// There are no Wayland compositors on Windows.
bool WaylandServer::isReachable()
{
    return false;
}
