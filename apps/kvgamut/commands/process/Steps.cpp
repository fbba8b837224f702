// SPDX-License-Identifier: Apache-2.0
#include "Steps.h"

#include "Say.h"
#include "model/reports/GamutWords.h"

namespace {

QString seconds(double value)
{
    return QString::number(value, 'f', 3) + QStringLiteral(" s");
}

QString secondsOf(const QElapsedTimer& clock)
{
    return seconds(static_cast<double>(clock.nsecsElapsed()) * 1e-9);
}

QString quoted(const QString& name)
{
    return QLatin1Char('\'') + (name == QLatin1String("-") ? QStringLiteral("standard input") : name) +
           QLatin1Char('\'');
}

} // namespace

void Steps::read(const QString& name, const Result<GamutSource>& source, const QElapsedTimer& clock)
{
    if (source)
        tell(quoted(name) + QStringLiteral(": read as ") + source->kind() + QStringLiteral(", ") +
             secondsOf(clock));
}

void Steps::computed(const QString& name, const KVGamut::Report& report)
{
    QString line = quoted(name) + QStringLiteral(": ") + GamutWords::method(report.method);
    if (GamutWords::hasIntent(report))
        line += QStringLiteral(", %1, grid %2").arg(GamutWords::basis(report)).arg(report.gridPoints);
    tell(line + QStringLiteral(", %1 faces, ").arg(report.faceCount) + seconds(report.seconds));
}

void Steps::readColours(const QString& name, qsizetype count, const QString& values,
                        const QElapsedTimer& clock)
{
    tell(quoted(name) + QStringLiteral(": %1 colours read").arg(count) +
         (values.isEmpty() ? QString() : QStringLiteral(" as ") + values) + QStringLiteral(", ") +
         secondsOf(clock));
}

void Steps::wrote(const QString& name)
{
    if (name != QLatin1String("-"))
        tell(quoted(name) + QStringLiteral(": written"));
}

void Steps::ended(const QElapsedTimer& clock)
{
    tell(QStringLiteral("done in ") + secondsOf(clock));
}
