// SPDX-License-Identifier: Apache-2.0
#include "ScreenReader.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <atspi/atspi.h>
#include <gio/gio.h>

namespace {

constexpr int maxWaitMs = 120000;

template <typename Type>
using Object = std::unique_ptr<Type, decltype(&g_object_unref)>;

template <typename Type>
Object<Type> own(Type* object)
{
    return {object, g_object_unref};
}

/// Takes over a text of GLib, which may be null.
QString taken(char* text)
{
    const QString copy = QString::fromUtf8(text);
    g_free(text);
    return copy;
}

/// The body of the reply of the bus for accessibility at @p connection; null if the call fails.
GVariant* callBus(GDBusConnection* connection, const char* interface, const char* method, GVariant* arguments)
{
    return g_dbus_connection_call_sync(connection, "org.a11y.Bus", "/org/a11y/bus", interface, method,
                                       arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, maxWaitMs, nullptr,
                                       nullptr);
}

} // namespace

namespace kvtest {

// --- Accessible -----------------------------------------------------------------------------------------

Accessible::Accessible(AtspiAccessible* object)
{
    if (object)
        m_object = {object, g_object_unref};
}

QString Accessible::name() const
{
    return m_object ? taken(atspi_accessible_get_name(m_object.get(), nullptr)) : QString();
}

QStringList Accessible::labels() const
{
    QStringList labels;
    GArray* relations = m_object ? atspi_accessible_get_relation_set(m_object.get(), nullptr) : nullptr;
    for (guint i = 0; relations && i < relations->len; ++i) {
        const auto relation = own(g_array_index(relations, AtspiRelation*, i));
        const bool isLabel = atspi_relation_get_relation_type(relation.get()) == ATSPI_RELATION_LABELLED_BY;
        for (int j = 0; isLabel && j < atspi_relation_get_n_targets(relation.get()); ++j)
            if (const Accessible label(atspi_relation_get_target(relation.get(), j));
                label.role() != QLatin1String("panel"))
                labels.append(label.name());
    }
    if (relations)
        g_array_free(relations, TRUE);
    if (role() != QLatin1String("combo box"))
        labels.append(name());
    labels.removeAll(QString());
    return labels;
}

QString Accessible::description() const
{
    return m_object ? taken(atspi_accessible_get_description(m_object.get(), nullptr)) : QString();
}

QString Accessible::role() const
{
    if (!m_object)
        return {};
    const QString name = taken(atspi_role_get_name(atspi_accessible_get_role(m_object.get(), nullptr)));
    // as versions of the library before 2.56 name it
    return name == QLatin1String("button") ? QStringLiteral("push button") : name;
}

QString Accessible::text() const
{
    const auto text = own(m_object ? atspi_accessible_get_text_iface(m_object.get()) : nullptr);
    return text ? taken(atspi_text_get_text(text.get(), 0, -1, nullptr)) : QString();
}

bool Accessible::has(int state) const
{
    const auto states = own(m_object ? atspi_accessible_get_state_set(m_object.get()) : nullptr);
    return states && atspi_state_set_contains(states.get(), static_cast<AtspiStateType>(state));
}

bool Accessible::isShowing() const
{
    return has(ATSPI_STATE_SHOWING);
}

bool Accessible::isFocusable() const
{
    return has(ATSPI_STATE_FOCUSABLE);
}

bool Accessible::isFocused() const
{
    return has(ATSPI_STATE_FOCUSED);
}

bool Accessible::isEnabled() const
{
    return has(ATSPI_STATE_ENABLED);
}

bool Accessible::isChecked() const
{
    return has(ATSPI_STATE_CHECKED);
}

std::optional<Accessible::Value> Accessible::value() const
{
    const auto value = own(m_object ? atspi_accessible_get_value_iface(m_object.get()) : nullptr);
    if (!value)
        return {};
    return Value{atspi_value_get_minimum_value(value.get(), nullptr),
                 atspi_value_get_current_value(value.get(), nullptr),
                 atspi_value_get_maximum_value(value.get(), nullptr)};
}

bool Accessible::setValue(double number) const
{
    const auto value = own(m_object ? atspi_accessible_get_value_iface(m_object.get()) : nullptr);
    return value && atspi_value_set_current_value(value.get(), number, nullptr);
}

bool Accessible::act(const QString& name) const
{
    const auto action = own(m_object ? atspi_accessible_get_action_iface(m_object.get()) : nullptr);
    const int count = action ? atspi_action_get_n_actions(action.get(), nullptr) : 0;
    for (int i = 0; i < count; ++i)
        if (taken(atspi_action_get_action_name(action.get(), i, nullptr)) == name)
            return atspi_action_do_action(action.get(), i, nullptr);
    return false;
}

QList<Accessible> Accessible::children() const
{
    QList<Accessible> children;
    const int count = m_object ? atspi_accessible_get_child_count(m_object.get(), nullptr) : 0;
    for (int i = 0; i < count; ++i)
        if (const Accessible child(atspi_accessible_get_child_at_index(m_object.get(), i, nullptr)); child)
            children.append(child);
    return children;
}

QList<Accessible> Accessible::controls() const
{
    QList<Accessible> controls{*this};
    if (rowCount() >= 0)
        return controls;
    const QList<Accessible> parts = children();
    for (const Accessible& part : parts)
        if (part.isShowing())
            controls += part.controls();
    return controls;
}

Accessible Accessible::find(const QString& role, const QString& label) const
{
    const QList<Accessible> all = controls();
    for (const Accessible& control : all)
        if (control.role() == role && control.labels().contains(label))
            return control;
    return {};
}

int Accessible::rowCount() const
{
    const auto table = own(m_object ? atspi_accessible_get_table_iface(m_object.get()) : nullptr);
    return table ? atspi_table_get_n_rows(table.get(), nullptr) : -1;
}

int Accessible::columnCount() const
{
    const auto table = own(m_object ? atspi_accessible_get_table_iface(m_object.get()) : nullptr);
    return table ? atspi_table_get_n_columns(table.get(), nullptr) : -1;
}

Accessible Accessible::cell(int row, int column) const
{
    const auto table = own(m_object ? atspi_accessible_get_table_iface(m_object.get()) : nullptr);
    return Accessible(table ? atspi_table_get_accessible_at(table.get(), row, column, nullptr) : nullptr);
}

QString Accessible::columnTitle(int column) const
{
    const auto table = own(m_object ? atspi_accessible_get_table_iface(m_object.get()) : nullptr);
    return table ? taken(atspi_table_get_column_description(table.get(), column, nullptr)) : QString();
}

void PrintTo(const Accessible& accessible, std::ostream* out)
{
    if (!accessible) {
        *out << "nothing";
        return;
    }
    *out << accessible.role().toStdString() << " '" << accessible.name().toStdString() << '\'';
    if (const QString words = accessible.description(); !words.isEmpty())
        *out << " (" << words.toStdString() << ')';
    if (const auto value = accessible.value())
        *out << ", " << testing::PrintToString(*value);
    if (accessible.rowCount() >= 0)
        *out << ", " << accessible.rowCount() << " x " << accessible.columnCount();
    for (const auto& [is, word] :
         {std::pair(accessible.isFocusable(), ", focusable"), std::pair(accessible.isFocused(), ", focused"),
          std::pair(accessible.isChecked(), ", checked"), std::pair(!accessible.isEnabled(), ", disabled")})
        *out << (is ? word : "");
}

// --- ScreenReader ---------------------------------------------------------------------------------------

ScreenReader::~ScreenReader()
{
    if (m_listener) {
        g_object_unref(m_listener);
        m_focused.clear();
        m_shown.clear();
        atspi_exit();
    }
    m_bus.terminate(); // the bus for accessibility and the registry end with it
    m_bus.waitForFinished();
}

QString ScreenReader::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "XDG_DATA_DIRS"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
    environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory")); // not the user's
    m_bus.setProcessEnvironment(environment);
    m_bus.setStandardErrorFile(QProcess::nullDevice()); // it reports each start of a service
    m_bus.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!m_bus.waitForStarted() || !until([this] { return m_bus.canReadLine(); }))
        return QStringLiteral("dbus-daemon does not start");
    m_address = QString::fromUtf8(m_bus.readLine().trimmed());

    const auto connection = own(g_dbus_connection_new_for_address_sync(
        m_address.toUtf8().constData(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection)
        return QStringLiteral("dbus-daemon does not answer");
    GVariant* address = callBus(connection.get(), "org.a11y.Bus", "GetAddress", nullptr);
    if (!address)
        return QStringLiteral(
            "there is no bus for accessibility (Debian, Ubuntu: apt-get install at-spi2-core)");
    const char* text = nullptr;
    g_variant_get(address, "(&s)", &text);
    qputenv("AT_SPI_BUS_ADDRESS", text); // for atspi_init()
    g_variant_unref(address);
    GVariant* enabled =
        callBus(connection.get(), "org.freedesktop.DBus.Properties", "Set",
                g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(TRUE)));
    if (!enabled)
        return QStringLiteral("the bus for accessibility does not allow reading");
    g_variant_unref(enabled);

    if (atspi_init() != 0)
        return QStringLiteral("AT-SPI cannot be used");
    atspi_set_timeout(maxWaitMs, maxWaitMs);
    const auto desktop = own(atspi_get_desktop(0));
    atspi_accessible_set_cache_mask(desktop.get(), ATSPI_CACHE_NONE);
    m_listener = atspi_event_listener_new(
        [](AtspiEvent* event, void* data) {
            auto* reader = static_cast<ScreenReader*>(data);
            const bool isFocus = g_str_has_suffix(event->type, ":focused");
            if (event->detail1 == 1)
                (isFocus ? reader->m_focused : reader->m_shown)
                    .append(Accessible(ATSPI_ACCESSIBLE(g_object_ref(event->source))));
            g_boxed_free(ATSPI_TYPE_EVENT, event);
        },
        this, nullptr);
    for (const char* event : {"object:state-changed:focused", "object:state-changed:showing"})
        if (!atspi_event_listener_register(m_listener, event, nullptr))
            return QStringLiteral("AT-SPI does not report events");
    return {};
}

QProcessEnvironment ScreenReader::read(QProcessEnvironment environment) const
{
    environment.remove(QStringLiteral("AT_SPI_BUS_ADDRESS")); // programs ask the session bus
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    return environment;
}

Accessible ScreenReader::program(const QString& name)
{
    const QList<Accessible> programs = Accessible(atspi_get_desktop(0)).children();
    for (const Accessible& program : programs)
        if (program.name() == name)
            return program;
    return {};
}

bool ScreenReader::until(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(
        [&condition] {
            while (g_main_context_iteration(nullptr, FALSE)) // even if Qt has an event loop of its own
                ;
            return condition();
        },
        maxWaitMs);
}

} // namespace kvtest
