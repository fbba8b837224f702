// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

namespace kvtest {

/// A Chromium without a window, controlled by its developer tools (over pipes, without a network). It draws
/// with a software renderer, in sRGB, and resolves no name of a network.
///
/// A case fails if a call is refused or the browser ends.
class Browser
{
public:
    /// Whether there is a Chromium on this machine.
    static bool isInstalled();

    /// @param arguments more arguments of the command line
    explicit Browser(const QStringList& arguments = {});
    ~Browser();

    void setSize(int width, int height);
    /// A media feature such as "prefers-color-scheme"; it holds until it is set again.
    void setMedia(const QString& feature, const QString& value);
    /// Opens a file in the same tab and waits until it is loaded. Forgets messages() and requests().
    void open(const QString& file);

    /// The value of a JavaScript expression; promises are awaited.
    QJsonValue evaluate(const QString& script);
    /// Presses and releases a key: "Tab", "Home", " ", "+", "ArrowLeft"...
    void press(const QString& key, bool withShift = false);
    /// Waits until the page was drawn with all changes.
    void settle();
    QImage picture();

    struct Named
    {
        QString role;
        QString name;
    };
    /// What a screen reader sees.
    QList<Named> accessibleTree();

    /// Messages on the console, exceptions and refused loads.
    QStringList messages() const { return m_messages; }
    /// Addresses that the page asked for, itself included.
    QStringList requests() const { return m_requests; }

private:
    QJsonObject call(const QString& method, const QJsonObject& parameters = {});
    QJsonObject receive();
    void note(const QJsonObject& event);

    QTemporaryDir m_folder;
    QProcess m_process;
    QByteArray m_received;
    QString m_session;
    QJsonObject m_media;
    QStringList m_messages;
    QStringList m_requests;
    int m_lastCall = 0;
    bool m_isLoaded = false;
};

} // namespace kvtest
