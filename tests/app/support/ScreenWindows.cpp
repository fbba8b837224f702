// SPDX-License-Identifier: Apache-2.0
#include "ScreenWindows.h"

#include "XDisplay.h"

#include <QtCore/QRegularExpression>

#include <optional>

using namespace kvtest::xdisplay;

namespace {

QString titleOf(xcb_window_t window)
{
    static const xcb_atom_t netName = atom("_NET_WM_NAME");
    static const xcb_atom_t utf8 = atom("UTF8_STRING");
    constexpr std::uint32_t longest = 256; // in units of 4 bytes
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection(), xcb_get_property(connection(), 0, window, netName, utf8, 0, longest), nullptr));
    if (!reply)
        return {};
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             xcb_get_property_value_length(reply.get()));
}

bool isVisible(xcb_window_t window)
{
    const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection(), xcb_get_window_attributes(connection(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QList<xcb_window_t> childrenOf(xcb_window_t window)
{
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
    if (!tree) // it was closed meanwhile
        return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t parentOf(xcb_window_t window)
{
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
    return tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

std::optional<xcb_window_t> visibleWindow(xcb_window_t inside, const QRegularExpression& title)
{
    const QList<xcb_window_t> windows = childrenOf(inside);
    for (const xcb_window_t window : windows) {
        if (!isVisible(window)) // its child windows are not visible either
            continue;
        if (title.match(titleOf(window)).hasMatch())
            return window;
        if (const auto inner = visibleWindow(window, title))
            return inner;
    }
    return {};
}

std::optional<xcb_window_t> visibleWindow(const QString& title)
{
    if (!isThere())
        return {};
    return visibleWindow(rootWindow(), QRegularExpression(title));
}

} // namespace

QRect kvtest::placeOnScreen(const QString& title)
{
    const auto window = visibleWindow(title);
    if (!window)
        return {};
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), *window), nullptr));
    const Reply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
        connection(), xcb_translate_coordinates(connection(), *window, rootWindow(), 0, 0), nullptr));
    if (!geometry || !corner) // it was closed meanwhile
        return {};
    return {corner->dst_x, corner->dst_y, geometry->width, geometry->height};
}

bool kvtest::hasKeyboard(const QString& title)
{
    const auto window = visibleWindow(title);
    if (!window)
        return false;
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
    xcb_window_t focus = reply ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    while (focus > XCB_INPUT_FOCUS_FOLLOW_KEYBOARD && focus != *window) // smaller values are not windows
        focus = parentOf(focus);
    return focus == *window;
}

void kvtest::askToClose(const QString& title)
{
    const auto window = visibleWindow(title);
    if (!window)
        return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = *window;
    message.type = atom("_NET_CLOSE_WINDOW");
    message.data.data32[1] = 2; // source indication: the request of a user
    xcb_send_event(connection(), 0, rootWindow(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection());
}
