// SPDX-License-Identifier: Apache-2.0
#include "XServer.h"

#include <QtCore/qglobal.h>

#include <xcb/xcb.h>

namespace {

bool connects()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr); // never null
    const bool connected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return connected;
}

} // namespace

bool XServer::isReachable()
{
    static const bool reachable = connects();
    return reachable;
}
