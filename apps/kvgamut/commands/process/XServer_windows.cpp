// SPDX-License-Identifier: Apache-2.0
#include "XServer.h"

// Qt has no plug-in for X on Windows.
bool XServer::isReachable()
{
    return false;
}
