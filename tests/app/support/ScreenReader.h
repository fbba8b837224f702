// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

struct _AtspiAccessible;
struct _AtspiEventListener;

namespace kvtest {

/// A control, cell or other part of a running program, as a screen reader sees it (AT-SPI). Every call asks
/// the program. Where it does not answer, or the part no longer exists, texts are empty and lists have no
/// elements.
class Accessible
{
public:
    Accessible() = default;
    /// Takes over the reference; null is allowed.
    explicit Accessible(_AtspiAccessible* object);

    explicit operator bool() const { return m_object != nullptr; }
    /// Whether both are the same part.
    bool operator==(const Accessible& other) const { return m_object == other.m_object; }

    QString name() const;
    /// What a screen reader can call a control: the labels beside it and its name. The name of a combo box
    /// does not count: it is the chosen entry. Neither does the title of a group of controls.
    QStringList labels() const;
    QString description() const;
    /// The name of the role in AT-SPI: "slider", "check box"...
    QString role() const;
    /// The content of a text field or label.
    QString text() const;

    /// @name States
    /// @{
    bool isShowing() const;
    bool isFocusable() const;
    bool isFocused() const;
    bool isEnabled() const;
    bool isChecked() const;
    /// @}

    struct Value
    {
        double minimum = 0;
        double current = 0;
        double maximum = 0;
        bool operator==(const Value&) const = default;
        friend void PrintTo(const Value& value, std::ostream* out)
        {
            *out << value.current << " of " << value.minimum << " to " << value.maximum;
        }
    };
    /// Of a slider, field with a number or progress bar; nullopt for anything else.
    std::optional<Value> value() const;
    /// @return whether the program accepts the value
    bool setValue(double value) const;
    /// Runs an action by its name, for example "Toggle". @return whether the control has it
    bool act(const QString& action) const;

    QList<Accessible> children() const;
    /// This part and all parts in it that are on the screen, without the cells of tables.
    QList<Accessible> controls() const;
    /// The first of the controls with this role and one of its labels; null if there is none.
    Accessible find(const QString& role, const QString& label) const;

    /// @name Tables
    /// -1, null and empty if this is none.
    /// @{
    int rowCount() const;
    int columnCount() const;
    Accessible cell(int row, int column) const;
    QString columnTitle(int column) const;
    /// @}

private:
    bool has(int state) const;

    std::shared_ptr<_AtspiAccessible> m_object;
};

/// Role, name, value and states; for messages of failed cases.
void PrintTo(const Accessible& accessible, std::ostream* out);

/// Buses of its own for a screen reader and the programs that it reads, and the connection to them.
class ScreenReader
{
    Q_DISABLE_COPY_MOVE(ScreenReader)
public:
    ScreenReader() = default;
    ~ScreenReader();

    /// Starts the buses and says there that a screen reader is in use. @return what failed, or an empty text
    QString start();

    /// @p environment, in which programs let this screen reader read them.
    QProcessEnvironment read(QProcessEnvironment environment) const;

    /// The running program of this name; null if it is not on the bus (yet).
    static Accessible program(const QString& name);

    /// The parts that got the keyboard focus since the last call, in this order.
    QList<Accessible> takeFocused() { return std::exchange(m_focused, {}); }
    /// The parts that appeared since the last call, in this order.
    QList<Accessible> takeShown() { return std::exchange(m_shown, {}); }

    /// Receives events until @p condition is true. @return whether that was before the timeout
    static bool until(const std::function<bool()>& condition);

private:
    QTemporaryDir m_runtime; ///< for sockets, whose paths must be short
    QProcess m_bus;
    QString m_address;
    QList<Accessible> m_focused;
    QList<Accessible> m_shown;
    _AtspiEventListener* m_listener = nullptr;
};

} // namespace kvtest
