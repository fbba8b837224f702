#include "ScreenWindows.h"

#include <QtCore/QProcess>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace {

struct Disconnect
{
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free
{
    void operator()(void* reply) const { std::free(reply); }
};

QList<xcb_window_t> windowsCalled(const QString& title)
{
    QProcess tool;
    tool.start(QStringLiteral("xdotool"),
               {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), title});
    tool.waitForFinished();
    QList<xcb_window_t> windows;
    const QList<QByteArray> lines = tool.readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines)
        if (!line.isEmpty())
            windows.append(line.toUInt());
    return windows;
}

} // namespace

QRect kvtest::placeOnScreen(const QString& title)
{
    const QList<xcb_window_t> windows = windowsCalled(title);
    const std::unique_ptr<xcb_connection_t, Disconnect> display(xcb_connect(nullptr, nullptr));
    if (windows.isEmpty() || xcb_connection_has_error(display.get()) != 0)
        return {};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display.get())).data->root;
    const std::unique_ptr<xcb_get_geometry_reply_t, Free> geometry(
        xcb_get_geometry_reply(display.get(), xcb_get_geometry(display.get(), windows.first()), nullptr));
    const std::unique_ptr<xcb_translate_coordinates_reply_t, Free> corner(xcb_translate_coordinates_reply(
        display.get(), xcb_translate_coordinates(display.get(), windows.first(), root, 0, 0), nullptr));
    if (!geometry || !corner) // it was closed meanwhile
        return {};
    return {corner->dst_x, corner->dst_y, geometry->width, geometry->height};
}
