// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"

#include <gtest/gtest.h>

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

#include <cstdio>

namespace {

struct Message
{
    QtMsgType type;
    QString text;
};

QMutex mutex; // worker threads log messages, too
QList<Message> logged;
QStringList expected;
QStringList tolerated;

void record(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (kvtest::isOfThePlatform(text))
        return;
    {
        const QMutexLocker lock(&mutex);
        logged.append({type, text});
    }
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "fatal: %s\n", qPrintable(text));
        std::abort();
    }
}

class Checker : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override
    {
        const QMutexLocker lock(&mutex);
        logged.clear();
        expected.clear();
        tolerated.clear();
    }

    void OnTestEnd(const testing::TestInfo&) override
    {
        const QMutexLocker lock(&mutex);
        for (const QString& part : std::as_const(expected)) {
            const bool came = std::any_of(logged.cbegin(), logged.cend(),
                                          [&](const Message& m) { return m.text.contains(part); });
            if (!came)
                ADD_FAILURE() << "expected message was not logged: " << qPrintable(part);
        }
        for (const Message& m : std::as_const(logged)) {
            if (m.type != QtWarningMsg && m.type != QtCriticalMsg)
                continue;
            const QStringList parts = expected + tolerated;
            const bool wanted = std::any_of(parts.cbegin(), parts.cend(),
                                            [&](const QString& part) { return m.text.contains(part); });
            if (!wanted)
                ADD_FAILURE() << "unexpected Qt warning: " << qPrintable(m.text);
        }
    }
};

} // namespace

bool kvtest::isOfThePlatform(const QString& text)
{
    const QString known = QStringLiteral("This plugin does not support setParent!");
    return text.trimmed().remove(known).trimmed().isEmpty();
}

void kvtest::expectMessage(const QString& part)
{
    const QMutexLocker lock(&mutex);
    expected.append(part);
}

void kvtest::toleratePlatformMessage(const QString& part)
{
    const QMutexLocker lock(&mutex);
    tolerated.append(part);
}

QStringList kvtest::messages()
{
    const QMutexLocker lock(&mutex);
    QStringList texts;
    for (const Message& m : std::as_const(logged))
        texts.append(m.text);
    return texts;
}

void kvtest::installMessageCheck()
{
    qInstallMessageHandler(record);
    testing::UnitTest::GetInstance()->listeners().Append(new Checker);
}
