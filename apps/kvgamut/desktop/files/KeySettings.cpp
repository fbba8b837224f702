// SPDX-License-Identifier: Apache-2.0
#include "KeySettings.h"

#include "desktop/files/SettingsFile.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QVariant>

#include <algorithm>

namespace {

constexpr const char* defaultProperty = "kvDefaultKeys";
constexpr int maxKeys = 4; // of an action

QString keysFileName()
{
    return QStringLiteral("keys.json");
}

QStringList textsOf(const QList<QKeySequence>& keys)
{
    QStringList texts;
    for (const QKeySequence& key : keys)
        texts.append(key.toString(QKeySequence::PortableText));
    return texts;
}

QList<QKeySequence> keysOf(const QStringList& texts)
{
    QList<QKeySequence> keys;
    for (const QString& text : texts.first(std::min<qsizetype>(texts.size(), maxKeys))) {
        const QKeySequence key = QKeySequence::fromString(text, QKeySequence::PortableText);
        if (!key.isEmpty() && key[0].key() != Qt::Key_unknown)
            keys.append(key);
    }
    return keys;
}

bool areFree(const QList<QKeySequence>& keys, const QAction& action, const QList<QAction*>& actions)
{
    return std::none_of(actions.begin(), actions.end(), [&](const QAction* other) {
        return other != &action && std::any_of(keys.begin(), keys.end(), [other](const QKeySequence& key) {
                   return other->shortcuts().contains(key);
               });
    });
}

} // namespace

bool KeySettings::isChangeable(const QAction& action)
{
    return !action.objectName().isEmpty();
}

QList<QKeySequence> KeySettings::defaultKeys(const QAction& action)
{
    return keysOf(action.property(defaultProperty).toStringList());
}

void KeySettings::apply(const QList<QAction*>& actions)
{
    for (QAction* action : actions)
        action->setProperty(defaultProperty, textsOf(action->shortcuts()));
    const QJsonObject kept = QJsonDocument::fromJson(SettingsFile::read(keysFileName())).object();
    // first the keys that were given up, so that others can have them
    for (QAction* action : actions)
        if (isChangeable(*action) && kept.contains(action->objectName()))
            action->setShortcuts(QList<QKeySequence>());
    for (QAction* action : actions) {
        if (!isChangeable(*action) || !kept.contains(action->objectName()))
            continue;
        const QList<QKeySequence> keys = keysOf(kept.value(action->objectName()).toVariant().toStringList());
        action->setShortcuts(areFree(keys, *action, actions) ? keys : QList<QKeySequence>());
    }
}

void KeySettings::keep(const QList<QAction*>& actions)
{
    QJsonObject kept;
    for (const QAction* action : actions)
        if (isChangeable(*action) && textsOf(action->shortcuts()) != textsOf(defaultKeys(*action)))
            kept.insert(action->objectName(), QJsonArray::fromStringList(textsOf(action->shortcuts())));
    SettingsFile::write(keysFileName(), QJsonDocument(kept).toJson());
}
