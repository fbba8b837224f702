// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

/// The connection to the X display of the test. The helpers that inspect other programs share it, so that the
/// server processes their requests in the order of the calls.
namespace kvtest::xdisplay {

struct Free
{
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Type>
using Reply = std::unique_ptr<Type, Free>;

xcb_connection_t* connection();
/// Whether the connection to the server works.
bool isThere();
xcb_window_t rootWindow();
xcb_atom_t atom(const QByteArray& name);
/// Returns when the server has processed all earlier requests.
void sync();

} // namespace kvtest::xdisplay
