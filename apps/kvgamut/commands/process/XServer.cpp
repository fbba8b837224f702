// SPDX-License-Identifier: Apache-2.0
#include "XServer.h"

#include <QtCore/qglobal.h>

#include <xcb/xcb.h>

namespace {

/// Keeps its connection: a server may end or reset itself when its last client leaves, and Qt has not
/// connected yet.
bool connects()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr); // never null
    if (xcb_connection_has_error(connection) == 0)
        return true;
    xcb_disconnect(connection);
    return false;
}

} // namespace

bool XServer::isReachable()
{
    static const bool reachable = connects();
    return reachable;
}
