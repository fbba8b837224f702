// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

/// The X display of the test as the helpers that look at other programs talk to it: one connection for
/// all of them, so that what one of them asks for is done before what another asks for later.
namespace kvtest::xdisplay {

struct Free
{
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Type>
using Reply = std::unique_ptr<Type, Free>;

xcb_connection_t* connection();
/// Whether the server answers.
bool isThere();
xcb_window_t rootWindow();
xcb_atom_t atom(const QByteArray& name);
/// Returns when the server has done what it was asked before.
void sync();

} // namespace kvtest::xdisplay
