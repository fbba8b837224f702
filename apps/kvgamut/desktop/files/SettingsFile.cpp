// SPDX-License-Identifier: Apache-2.0
#include "SettingsFile.h"

#include "model/export/OutputFile.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

#include <tuple>

namespace {

bool areIgnored = false;

QDir settingsFolder()
{
    const QDir all(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    return QDir(all.filePath(QStringLiteral("kvgamut")));
}

} // namespace

QByteArray SettingsFile::read(const QString& name)
{
    if (areIgnored)
        return {};
    return InputGate::read(settingsFolder().filePath(name), InputKind::Settings).value_or(QByteArray());
}

void SettingsFile::write(const QString& name, const QByteArray& content)
{
    if (!areIgnored && settingsFolder().mkpath(QStringLiteral(".")))
        std::ignore = writeOutput(settingsFolder().filePath(name), content);
}

void SettingsFile::ignoreAll()
{
    areIgnored = true;
}
