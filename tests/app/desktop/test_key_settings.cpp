// SPDX-License-Identifier: Apache-2.0
#include "desktop/files/KeySettings.h"
#include "desktop/files/SettingsFile.h"

#include <gtest/gtest.h>

namespace {

QList<QKeySequence> keys(const char* text)
{
    return {QKeySequence(QLatin1String(text))};
}

class KeysOfTheUser : public testing::Test
{
protected:
    KeysOfTheUser()
    {
        SettingsFile::write(QStringLiteral("keys.json"), {});
        make(first, "first", "Ctrl+1");
        make(second, "second", "Ctrl+2");
    }
    ~KeysOfTheUser() override { SettingsFile::write(QStringLiteral("keys.json"), {}); }

    static void make(QAction& action, const char* name, const char* key)
    {
        action.setObjectName(QLatin1String(name));
        action.setShortcut(QKeySequence(QLatin1String(key)));
    }
    /// The actions of another window, with the keys of the settings.
    void openAgain()
    {
        make(first, "first", "Ctrl+1");
        make(second, "second", "Ctrl+2");
        KeySettings::apply(all());
    }
    QList<QAction*> all() { return {&first, &second}; }

    QAction first, second;
};

TEST_F(KeysOfTheUser, areThoseOfTheProgramAtFirst)
{
    openAgain();
    EXPECT_EQ(first.shortcuts(), keys("Ctrl+1"));
    EXPECT_EQ(second.shortcuts(), keys("Ctrl+2"));
    EXPECT_EQ(KeySettings::defaultKeys(first), keys("Ctrl+1"));
}

TEST_F(KeysOfTheUser, areKept)
{
    KeySettings::apply(all());
    first.setShortcut(QKeySequence(QStringLiteral("F7")));
    second.setShortcuts(QList<QKeySequence>());
    KeySettings::keep(all());
    openAgain();
    EXPECT_EQ(first.shortcuts(), keys("F7"));
    EXPECT_TRUE(second.shortcuts().isEmpty());
    EXPECT_EQ(KeySettings::defaultKeys(first), keys("Ctrl+1"));
}

TEST_F(KeysOfTheUser, canBeExchanged)
{
    KeySettings::apply(all());
    first.setShortcut(QKeySequence(QStringLiteral("Ctrl+2")));
    second.setShortcut(QKeySequence(QStringLiteral("Ctrl+1")));
    KeySettings::keep(all());
    openAgain();
    EXPECT_EQ(first.shortcuts(), keys("Ctrl+2"));
    EXPECT_EQ(second.shortcuts(), keys("Ctrl+1"));
}

TEST_F(KeysOfTheUser, areNeverThoseOfTwoActions)
{
    SettingsFile::write(QStringLiteral("keys.json"), R"({"first": ["Ctrl+2"]})");
    openAgain();
    EXPECT_TRUE(first.shortcuts().isEmpty());
    EXPECT_EQ(second.shortcuts(), keys("Ctrl+2"));
}

TEST_F(KeysOfTheUser, doNotComeFromDamagedSettings)
{
    for (const char* content : {"hello", "[]", R"({"first": 7})", R"({"first": ["no such key"]})",
                                R"({"unknown": ["Ctrl+2"]})", R"({"second": [["F7"]]})"}) {
        SettingsFile::write(QStringLiteral("keys.json"), content);
        openAgain();
        for (const QAction* action : all())
            for (const QKeySequence& key : action->shortcuts())
                EXPECT_TRUE(keys("Ctrl+1").contains(key) || keys("Ctrl+2").contains(key)) << content;
    }
}

} // namespace
