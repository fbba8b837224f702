// SPDX-License-Identifier: Apache-2.0
#include "ScreenClipboard.h"

#include "XDisplay.h"

#include <QtCore/QDeadlineTimer>

#include <poll.h>

using namespace kvtest::xdisplay;

namespace {

xcb_atom_t clipboard()
{
    static const xcb_atom_t name = atom("CLIPBOARD");
    return name;
}

xcb_atom_t utf8()
{
    static const xcb_atom_t name = atom("UTF8_STRING");
    return name;
}

/// Waits for the answer to a request for a selection; null on timeout.
Reply<xcb_generic_event_t> nextAnswer(const QDeadlineTimer& deadline)
{
    while (!deadline.hasExpired()) {
        Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection()));
        if (event && (event->response_type & 0x7f) == XCB_SELECTION_NOTIFY)
            return event;
        if (event)
            continue;
        pollfd socket{xcb_get_file_descriptor(connection()), POLLIN, 0};
        poll(&socket, 1, static_cast<int>(deadline.remainingTime()));
    }
    return {};
}

} // namespace

kvtest::ScreenClipboard::ScreenClipboard() : m_window(xcb_generate_id(connection()))
{
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, m_window, rootWindow(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
}

kvtest::ScreenClipboard::~ScreenClipboard()
{
    xcb_destroy_window(connection(), m_window);
    xcb_flush(connection());
}

void kvtest::ScreenClipboard::clear()
{
    xcb_set_selection_owner(connection(), XCB_WINDOW_NONE, clipboard(), XCB_CURRENT_TIME);
    kvtest::xdisplay::sync(); // the server processes later key presses after this
}

std::optional<QString> kvtest::ScreenClipboard::text(int maxWaitMs)
{
    const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection(), xcb_get_selection_owner(connection(), clipboard()), nullptr));
    if (!owner || owner->owner == XCB_WINDOW_NONE)
        return {};
    const QDeadlineTimer deadline(maxWaitMs);
    xcb_convert_selection(connection(), m_window, clipboard(), utf8(), utf8(), XCB_CURRENT_TIME);
    xcb_flush(connection());
    const auto event = nextAnswer(deadline);
    if (!event || reinterpret_cast<const xcb_selection_notify_event_t*>(event.get())->property != utf8())
        return {};
    constexpr std::uint32_t longest = 1 << 20; // in units of 4 bytes
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection(), xcb_get_property(connection(), 1, m_window, utf8(), utf8(), 0, longest), nullptr));
    if (!reply)
        return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
}
