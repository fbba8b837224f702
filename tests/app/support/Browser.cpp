// SPDX-License-Identifier: Apache-2.0
#include "Browser.h"

#include "Program.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMap>
#include <QtCore/QUrl>

namespace kvtest {
namespace {

constexpr int maxAnswerMs = 300000;
constexpr int shiftModifier = 8;

QJsonObject textOf(const QJsonObject& event)
{
    return event[QLatin1String("params")].toObject();
}

/// Key codes of Windows, which the browser needs to act on a key.
int codeOf(const QString& key)
{
    static const QMap<QString, int> codes{
        {QStringLiteral("Tab"), 9},        {QStringLiteral(" "), 32},
        {QStringLiteral("Home"), 36},      {QStringLiteral("PageUp"), 33},
        {QStringLiteral("PageDown"), 34},  {QStringLiteral("ArrowLeft"), 37},
        {QStringLiteral("ArrowUp"), 38},   {QStringLiteral("ArrowRight"), 39},
        {QStringLiteral("ArrowDown"), 40}, {QStringLiteral("+"), 187},
        {QStringLiteral("-"), 189},        {QStringLiteral("Enter"), 13}};
    return codes.value(key);
}

} // namespace

bool Browser::isInstalled()
{
    return !QStringLiteral(KV_CHROMIUM).isEmpty();
}

Browser::Browser(const QStringList& arguments)
{
    QProcessEnvironment env = environment();
    env.insert(QStringLiteral("HOME"), m_folder.path());
    m_process.setProcessEnvironment(env);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // the browser reads calls from descriptor 3 and writes answers to 4
    const QStringList words{QStringLiteral("-c"),
                            QStringLiteral("exec \"$@\" 3<&0 4>&1 </dev/null >/dev/null"),
                            QStringLiteral("bash"),
                            QStringLiteral(KV_CHROMIUM),
                            QStringLiteral("--headless"),
                            QStringLiteral("--remote-debugging-pipe"),
                            QStringLiteral("--no-sandbox"), // it does not start as root otherwise
                            QStringLiteral("--disable-dev-shm-usage"),
                            QStringLiteral("--user-data-dir=%1").arg(m_folder.path()),
                            QStringLiteral("--use-angle=swiftshader"),
                            QStringLiteral("--enable-unsafe-swiftshader"),
                            QStringLiteral("--force-color-profile=srgb"),
                            QStringLiteral("--hide-scrollbars"),
                            QStringLiteral("--lang=en-US"),
                            QStringLiteral("--no-first-run"),
                            QStringLiteral("--disable-extensions"),
                            QStringLiteral("--disable-background-networking"),
                            QStringLiteral("--disable-component-update"),
                            QStringLiteral("--no-proxy-server"),
                            QStringLiteral("--host-resolver-rules=MAP * ~NOTFOUND")};
    m_process.start(QStringLiteral("/bin/bash"), words + arguments);
    const QJsonObject target =
        call(QStringLiteral("Target.createTarget"), {{QStringLiteral("url"), QStringLiteral("about:blank")}});
    m_session = call(QStringLiteral("Target.attachToTarget"),
                     {{QStringLiteral("targetId"), target[QLatin1String("targetId")]},
                      {QStringLiteral("flatten"), true}})[QLatin1String("sessionId")]
                    .toString();
    for (const char* domain : {"Page", "Runtime", "Log", "Network", "Accessibility"})
        call(QLatin1String(domain) + QStringLiteral(".enable"));
    setMedia(QStringLiteral("prefers-color-scheme"), QStringLiteral("light"));
    setMedia(QStringLiteral("prefers-reduced-motion"), QStringLiteral("reduce"));
}

Browser::~Browser()
{
    m_session.clear();
    call(QStringLiteral("Browser.close"));
    if (!m_process.waitForFinished(maxAnswerMs))
        m_process.kill();
    m_process.waitForFinished();
}

void Browser::setSize(int width, int height)
{
    call(QStringLiteral("Emulation.setDeviceMetricsOverride"), {{QStringLiteral("width"), width},
                                                                {QStringLiteral("height"), height},
                                                                {QStringLiteral("deviceScaleFactor"), 1},
                                                                {QStringLiteral("mobile"), false}});
}

void Browser::setMedia(const QString& feature, const QString& value)
{
    m_media.insert(feature, value);
    QJsonArray features;
    for (auto entry = m_media.constBegin(); entry != m_media.constEnd(); ++entry)
        features.append(
            QJsonObject{{QStringLiteral("name"), entry.key()}, {QStringLiteral("value"), entry.value()}});
    call(QStringLiteral("Emulation.setEmulatedMedia"), {{QStringLiteral("features"), features}});
}

void Browser::open(const QString& file)
{
    m_messages.clear();
    m_requests.clear();
    m_isLoaded = false;
    call(QStringLiteral("Page.navigate"),
         {{QStringLiteral("url"), QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded)}});
    while (!m_isLoaded && m_process.state() == QProcess::Running)
        note(receive());
    settle();
}

QJsonValue Browser::evaluate(const QString& script)
{
    const QJsonObject answer =
        call(QStringLiteral("Runtime.evaluate"), {{QStringLiteral("expression"), script},
                                                  {QStringLiteral("awaitPromise"), true},
                                                  {QStringLiteral("returnByValue"), true}});
    EXPECT_FALSE(answer.contains(QLatin1String("exceptionDetails")))
        << script.toStdString() << ": " << QJsonDocument(answer).toJson().toStdString();
    return answer[QLatin1String("result")][QLatin1String("value")];
}

void Browser::press(const QString& key, bool withShift)
{
    QJsonObject event{
        {QStringLiteral("key"), key},
        {QStringLiteral("code"), key == QLatin1String(" ") ? QStringLiteral("Space") : key},
        {QStringLiteral("windowsVirtualKeyCode"), codeOf(key)},
        {QStringLiteral("modifiers"), withShift ? shiftModifier : 0},
        {QStringLiteral("type"), key.size() == 1 ? QStringLiteral("keyDown") : QStringLiteral("rawKeyDown")}};
    if (key.size() == 1)
        event.insert(QStringLiteral("text"), key);
    if (key == QLatin1String("Enter")) {
        event.insert(QStringLiteral("type"), QStringLiteral("keyDown"));
        event.insert(QStringLiteral("text"), QStringLiteral("\r"));
    }
    call(QStringLiteral("Input.dispatchKeyEvent"), event);
    event.insert(QStringLiteral("type"), QStringLiteral("keyUp"));
    event.remove(QLatin1String("text"));
    call(QStringLiteral("Input.dispatchKeyEvent"), event);
}

void Browser::settle()
{
    evaluate(QStringLiteral(
        "new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => done(0))))"));
}

QImage Browser::picture()
{
    settle();
    const QJsonObject answer =
        call(QStringLiteral("Page.captureScreenshot"), {{QStringLiteral("format"), QStringLiteral("png")}});
    return QImage::fromData(QByteArray::fromBase64(answer[QLatin1String("data")].toString().toLatin1()),
                            "PNG")
        .convertToFormat(QImage::Format_RGB32);
}

QList<Browser::Named> Browser::accessibleTree()
{
    QList<Named> tree;
    const QJsonArray nodes =
        call(QStringLiteral("Accessibility.getFullAXTree"))[QLatin1String("nodes")].toArray();
    for (const QJsonValue& node : nodes)
        if (!node[QLatin1String("ignored")].toBool())
            tree.append({node[QLatin1String("role")][QLatin1String("value")].toString(),
                         node[QLatin1String("name")][QLatin1String("value")].toString()});
    return tree;
}

QJsonObject Browser::call(const QString& method, const QJsonObject& parameters)
{
    QJsonObject message{{QStringLiteral("id"), ++m_lastCall},
                        {QStringLiteral("method"), method},
                        {QStringLiteral("params"), parameters}};
    if (!m_session.isEmpty())
        message.insert(QStringLiteral("sessionId"), m_session);
    m_process.write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\0');
    for (;;) {
        const QJsonObject answer = receive();
        if (answer.isEmpty())
            return {};
        if (answer[QLatin1String("id")].toInt() != m_lastCall) {
            note(answer);
            continue;
        }
        EXPECT_FALSE(answer.contains(QLatin1String("error")))
            << method.toStdString() << ": " << QJsonDocument(answer).toJson().toStdString();
        return answer[QLatin1String("result")].toObject();
    }
}

/// The next message of the browser; empty if it has ended.
QJsonObject Browser::receive()
{
    while (!m_received.contains('\0')) {
        if (m_process.bytesAvailable() == 0 && !m_process.waitForReadyRead(maxAnswerMs)) {
            ADD_FAILURE() << "the browser does not answer: " << m_process.errorString().toStdString();
            m_process.kill();
            return {};
        }
        m_received += m_process.readAllStandardOutput();
    }
    const qsizetype end = m_received.indexOf('\0');
    const QJsonObject message = QJsonDocument::fromJson(m_received.left(end)).object();
    m_received.remove(0, end + 1);
    return message;
}

void Browser::note(const QJsonObject& event)
{
    const QString method = event[QLatin1String("method")].toString();
    const QJsonObject details = textOf(event);
    if (method == QLatin1String("Page.loadEventFired"))
        m_isLoaded = true;
    else if (method == QLatin1String("Network.requestWillBeSent"))
        m_requests.append(details[QLatin1String("request")][QLatin1String("url")].toString());
    else if (method == QLatin1String("Log.entryAdded") ||
             method == QLatin1String("Runtime.consoleAPICalled") ||
             method == QLatin1String("Runtime.exceptionThrown"))
        m_messages.append(QString::fromUtf8(QJsonDocument(details).toJson(QJsonDocument::Compact)));
}

} // namespace kvtest
