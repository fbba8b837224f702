// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QKeySequence>

#include <cstdint>

namespace kvtest {

/// Keyboard and pointer input on the X display. The server generates the events (XTEST), so that they go to
/// the same windows as those of a user. When a function returns, the server has processed its events, but
/// programs may not have received them yet.
class RealInput
{
public:
    RealInput();

    /// Whether the display supports this input.
    bool isReady() const { return !m_keys.isEmpty(); }

    /// Presses a combination of keys, such as "Ctrl+Shift+E", and releases it.
    void press(const QKeySequence& keys);
    void press(const char* keys) { press(QKeySequence(QString::fromLatin1(keys))); }
    /// Types characters of Latin-1 that are on the keyboard.
    void type(const QString& text);

    /// @name Pointer
    /// Positions are in pixels of the screen.
    /// @{
    void pointTo(const QPoint& p);
    void click(const QPoint& p);
    /// With the left button.
    void drag(const QPoint& from, const QPoint& to);
    /// @}

private:
    struct Key
    {
        std::uint8_t code = 0;
        bool shifted = false;
    };

    void readKeyboard();
    void send(std::uint8_t type, std::uint8_t detail, const QPoint& p = {});
    void tap(const Key& key, QList<std::uint32_t> modifiers);

    QHash<std::uint32_t, Key> m_keys; ///< by key symbol
};

} // namespace kvtest
