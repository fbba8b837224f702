// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QKeySequence>

#include <cstdint>

namespace kvtest {

/// A hand at the keyboard and the pointer of the X display: the server itself makes the events (XTEST),
/// so that they go where those of a person would go. What a function does has reached the server when
/// it returns, not yet the programs.
class RealInput
{
public:
    RealInput();

    /// Whether the display lets itself be worked this way.
    bool isReady() const { return !m_keys.isEmpty(); }

    /// Presses keys together and releases them, as "Ctrl+Shift+E" says.
    void press(const QKeySequence& keys);
    void press(const char* keys) { press(QKeySequence(QString::fromLatin1(keys))); }
    /// Types signs of Latin-1 that the keyboard has.
    void type(const QString& text);

    /// @name Pointer
    /// Positions on the screen, in its pixels.
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

    QHash<std::uint32_t, Key> m_keys; ///< by the symbol on it
};

} // namespace kvtest
