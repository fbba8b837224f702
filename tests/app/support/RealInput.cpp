// SPDX-License-Identifier: Apache-2.0
#include "RealInput.h"

#include "XDisplay.h"

#include <gtest/gtest.h>

#include <X11/keysym.h>
#include <xcb/xtest.h>

using namespace kvtest::xdisplay;

namespace {

constexpr std::uint8_t leftButton = 1;

/// The X key symbol for @p key; for printable Latin-1 characters both have the same value.
xcb_keysym_t symbolOf(Qt::Key key)
{
    static const QHash<Qt::Key, xcb_keysym_t> others{
        {Qt::Key_Escape, XK_Escape}, {Qt::Key_Tab, XK_Tab},       {Qt::Key_Backspace, XK_BackSpace},
        {Qt::Key_Return, XK_Return}, {Qt::Key_Left, XK_Left},     {Qt::Key_Up, XK_Up},
        {Qt::Key_Right, XK_Right},   {Qt::Key_Down, XK_Down},     {Qt::Key_Shift, XK_Shift_L},
        {Qt::Key_Home, XK_Home},     {Qt::Key_Delete, XK_Delete}, {Qt::Key_End, XK_End},
    };
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return XK_F1 + static_cast<xcb_keysym_t>(key - Qt::Key_F1);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return XK_a + static_cast<xcb_keysym_t>(key - Qt::Key_A);
    return others.value(key, static_cast<xcb_keysym_t>(key));
}

QList<xcb_keysym_t> modifiersOf(Qt::KeyboardModifiers modifiers)
{
    QList<xcb_keysym_t> symbols;
    if (modifiers.testFlag(Qt::ControlModifier))
        symbols.append(XK_Control_L);
    if (modifiers.testFlag(Qt::AltModifier))
        symbols.append(XK_Alt_L);
    if (modifiers.testFlag(Qt::ShiftModifier))
        symbols.append(XK_Shift_L);
    return symbols;
}

} // namespace

namespace kvtest {

RealInput::RealInput()
{
    if (!isThere())
        return;
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection(), &xcb_test_id);
    if (extension && extension->present)
        readKeyboard();
}

void RealInput::readKeyboard()
{
    const xcb_setup_t* setup = xcb_get_setup(connection());
    const int first = setup->min_keycode;
    const int count = setup->max_keycode - first + 1;
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection(),
        xcb_get_keyboard_mapping(connection(), setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    if (!reply)
        return;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (const int level : {0, 1}) { // without Shift first, so that Shift is used only if needed
        for (int i = 0; i < count && level < reply->keysyms_per_keycode; ++i) {
            const xcb_keysym_t symbol = symbols[i * reply->keysyms_per_keycode + level];
            if (symbol != XCB_NO_SYMBOL && !m_keys.contains(symbol))
                m_keys.insert(symbol, {static_cast<std::uint8_t>(first + i), level == 1});
        }
    }
}

void RealInput::send(std::uint8_t type, std::uint8_t detail, const QPoint& p)
{
    xcb_test_fake_input(connection(), type, detail, XCB_CURRENT_TIME, rootWindow(),
                        static_cast<std::int16_t>(p.x()), static_cast<std::int16_t>(p.y()), 0);
}

void RealInput::tap(const Key& key, QList<std::uint32_t> modifiers)
{
    if (key.shifted && !modifiers.contains(XK_Shift_L))
        modifiers.append(XK_Shift_L);
    for (const std::uint32_t modifier : std::as_const(modifiers))
        send(XCB_KEY_PRESS, m_keys.value(modifier).code);
    send(XCB_KEY_PRESS, key.code);
    send(XCB_KEY_RELEASE, key.code);
    for (const std::uint32_t modifier : std::as_const(modifiers))
        send(XCB_KEY_RELEASE, m_keys.value(modifier).code);
}

void RealInput::press(const QKeySequence& keys)
{
    for (int i = 0; i < keys.count(); ++i) {
        const auto key = m_keys.constFind(symbolOf(keys[static_cast<uint>(i)].key()));
        ASSERT_TRUE(key != m_keys.constEnd()) << keys.toString().toStdString();
        tap(*key, modifiersOf(keys[static_cast<uint>(i)].keyboardModifiers()));
    }
    xdisplay::sync();
}

void RealInput::type(const QString& text)
{
    for (const QChar sign : text) {
        const auto key = m_keys.constFind(sign.unicode());
        ASSERT_TRUE(key != m_keys.constEnd()) << text.toStdString();
        tap(*key, {});
    }
    xdisplay::sync();
}

void RealInput::pointTo(const QPoint& p)
{
    send(XCB_MOTION_NOTIFY, 0, p);
    xdisplay::sync();
}

void RealInput::click(const QPoint& p)
{
    pointTo(p);
    send(XCB_BUTTON_PRESS, leftButton);
    send(XCB_BUTTON_RELEASE, leftButton);
    xdisplay::sync();
}

void RealInput::drag(const QPoint& from, const QPoint& to)
{
    pointTo(from);
    send(XCB_BUTTON_PRESS, leftButton);
    pointTo((from + to) / 2);
    pointTo(to);
    send(XCB_BUTTON_RELEASE, leftButton);
    xdisplay::sync();
}

} // namespace kvtest
