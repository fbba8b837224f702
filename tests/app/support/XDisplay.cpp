// SPDX-License-Identifier: Apache-2.0
#include "XDisplay.h"

namespace kvtest::xdisplay {

namespace {
struct Disconnect
{
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
} // namespace

xcb_connection_t* connection()
{
    static const std::unique_ptr<xcb_connection_t, Disconnect> only(xcb_connect(nullptr, nullptr));
    return only.get();
}

bool isThere()
{
    return xcb_connection_has_error(connection()) == 0;
}

xcb_window_t rootWindow()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

xcb_atom_t atom(const QByteArray& name)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection(),
        xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void sync()
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
}

} // namespace kvtest::xdisplay
