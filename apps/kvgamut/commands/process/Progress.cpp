// SPDX-License-Identifier: Apache-2.0
#include "Progress.h"

#include "Say.h"
#include "Terminal.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr qint64 delayMs = 500;
constexpr int barLength = 30;

} // namespace

Progress::Progress() : m_enabled(speech() != Speech::Quiet && Terminal::showsErrors())
{
    m_clock.start();
}

void Progress::show(float share, const QString& what)
{
    if (!m_enabled || m_clock.elapsed() < delayMs)
        return;
    m_shown = true;
    const float held = std::clamp(share, 0.0f, 1.0f);
    const int done = static_cast<int>(held * barLength);
    const QString bar = QString(done, QLatin1Char('#')) + QString(barLength - done, QLatin1Char('.'));
    const QByteArray line =
        QStringLiteral("\r[%1] %2 % %3").arg(bar).arg(static_cast<int>(held * 100.0f), 3).arg(what).toUtf8();
    std::fputs(line.constData(), stderr);
}

void Progress::clear()
{
    if (m_shown)
        std::fputs("\r\x1b[K", stderr); // go to the start of the line and clear it
    m_shown = false;
}
