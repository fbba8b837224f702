// SPDX-License-Identifier: Apache-2.0
#include "desktop/language/ShownWords.h"
#include "desktop/models/GamutListModel.h"
#include "model/text/GamutTitles.h"

#include <gtest/gtest.h>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

namespace {

class GamutList : public testing::Test
{
protected:
    void fill(int count)
    {
        for (int i = 0; i < count; ++i)
            model.add(QStringLiteral("/p/%1.icc").arg(i), {}, {});
    }

    /// The roles that dataChanged() reported since the last call.
    QSet<int> announced()
    {
        QSet<int> roles;
        for (const auto& signal : changes)
            for (int role : signal[2].value<QList<int>>())
                roles.insert(role);
        changes.clear();
        return roles;
    }

    GamutListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy changes{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy activations{&model, &GamutListModel::activeRowChanged};
};

TEST_F(GamutList, activatesTheFirstGamut)
{
    EXPECT_EQ(model.activeRow(), -1);
    fill(3);
    EXPECT_EQ(model.activeRow(), 0);
    EXPECT_EQ(activations.count(), 1);
}

TEST_F(GamutList, keepsTheActiveGamutWhenOthersAreRemoved)
{
    fill(4);
    model.setActiveRow(2);
    const QString id = model.at(2).id;
    model.remove(0);
    EXPECT_EQ(model.at(model.activeRow()).id, id);
    model.remove(2);
    EXPECT_EQ(model.at(model.activeRow()).id, id);
}

TEST_F(GamutList, activatesANeighbourOfARemovedGamut)
{
    fill(3);
    model.setActiveRow(2);
    model.remove(2);
    EXPECT_EQ(model.activeRow(), 1);
    model.setActiveRow(0);
    model.remove(0);
    EXPECT_EQ(model.activeRow(), 0);
    model.remove(0);
    EXPECT_EQ(model.activeRow(), -1);
}

TEST_F(GamutList, ignoresInvalidActiveRows)
{
    fill(2);
    model.setActiveRow(2);
    model.setActiveRow(-1);
    EXPECT_EQ(model.activeRow(), 0);
    EXPECT_EQ(activations.count(), 1);
}

TEST_F(GamutList, givesEveryGamutAUniqueId)
{
    const QString first = model.add(QStringLiteral("sRGB"), {}, {});
    const QString second = model.add(QStringLiteral("sRGB"), {}, {});
    model.remove(0);
    const QString third = model.add(QStringLiteral("sRGB"), {}, {});
    EXPECT_NE(first, second);
    EXPECT_NE(first, third);
    EXPECT_NE(second, third);
    EXPECT_EQ(model.rowOf(first), -1);
    EXPECT_EQ(model.rowOf(third), 1);
}

TEST_F(GamutList, reportsALookOnlyWhenItChanges)
{
    fill(1);
    KVGamutLook look = model.at(0).look;
    look.opacity = 0.5f;
    model.setLook(0, look);
    EXPECT_TRUE(announced().contains(GamutListModel::LookRole));
    model.setLook(0, look);
    EXPECT_TRUE(announced().isEmpty());
}

TEST_F(GamutList, hidesAGamutThroughItsCheckBox)
{
    fill(1);
    EXPECT_EQ(model.data(model.index(0), Qt::CheckStateRole), Qt::Checked);
    EXPECT_TRUE(model.setData(model.index(0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(model.at(0).look.visible);
    EXPECT_TRUE(model.flags(model.index(0)).testFlag(Qt::ItemIsUserCheckable));
}

TEST_F(GamutList, keepsTheGamutUntilOtherSettingsAreComputed)
{
    fill(1);
    model.setGamut(0, {});
    const quint64 before = model.at(0).revision;
    announced();
    model.setSettings(0, {KVVMRenderPerceptual, false, 9});
    EXPECT_TRUE(model.at(0).loading);
    EXPECT_EQ(model.at(0).revision, before); // the old gamut stays until the new one is computed
    EXPECT_EQ(model.at(0).computedWith, KVGamut::Settings());
    EXPECT_TRUE(announced().contains(GamutListModel::SettingsRole));
    model.setGamut(0, {});
    EXPECT_NE(model.at(0).revision, before);
    EXPECT_EQ(model.at(0).computedWith.intent, KVVMRenderPerceptual);
    EXPECT_FALSE(model.at(0).loading);
}

TEST_F(GamutList, restoresTheSettingsAfterAnAbandonedLoad)
{
    fill(1);
    model.setGamut(0, {});
    model.setSettings(0, {KVVMRenderPerceptual, true, 9});
    model.abandonLoad(0);
    EXPECT_EQ(model.at(0).settings, KVGamut::Settings());
    EXPECT_FALSE(model.at(0).loading);
}

TEST_F(GamutList, removesAnEntryWithoutAGamutAfterAnAbandonedLoad)
{
    fill(2);
    model.abandonLoad(0);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.at(0).input, QStringLiteral("/p/1.icc"));
}

TEST_F(GamutList, marksAGamutWithItsColour)
{
    fill(3);
    EXPECT_NE(model.signColor(0), model.signColor(1));
    EXPECT_NE(model.signColor(1), model.signColor(2));
    KVGamutLook look;
    look.color = QColor(1, 2, 3);
    model.setLook(1, look);
    EXPECT_EQ(model.signColor(1), QColor(1, 2, 3));
    EXPECT_EQ(model.data(model.index(1), Qt::DecorationRole).value<QColor>(), QColor(1, 2, 3));
}

TEST_F(GamutList, keepsTheColourOfAGamutWhenAnotherIsRemoved)
{
    fill(3);
    const QColor second = model.signColor(1);
    const QColor third = model.signColor(2);
    model.remove(0);
    EXPECT_EQ(model.signColor(0), second);
    EXPECT_EQ(model.signColor(1), third);
    model.add(QStringLiteral("/p/new.icc"), {}, {}); // takes the colour that is free
    EXPECT_NE(model.signColor(2), second);
    EXPECT_NE(model.signColor(2), third);
}

TEST_F(GamutList, letsTheUserEndAnAutomaticOpacity)
{
    fill(1);
    EXPECT_FALSE(model.at(0).automaticOpacity);
    model.setAutomaticOpacity(0, 0.25f);
    EXPECT_FLOAT_EQ(model.at(0).look.opacity, 0.25f);
    model.changeActiveLook([](KVGamutLook& look) { look.primaries = true; });
    EXPECT_TRUE(model.at(0).automaticOpacity);
    model.changeActiveLook([](KVGamutLook& look) { look.opacity = 0.5f; });
    EXPECT_FALSE(model.at(0).automaticOpacity);
}

TEST_F(GamutList, showsTheProgressOfALoad)
{
    fill(1);
    model.setProgress(0, 0.42f);
    EXPECT_TRUE(model.data(model.index(0), Qt::DisplayRole).toString().contains(QStringLiteral("42")));
    model.setGamut(0, {});
    EXPECT_EQ(model.data(model.index(0), Qt::DisplayRole).toString(), QStringLiteral("0.icc"));
}

QStringList titles(std::initializer_list<const char*> inputs)
{
    QStringList list;
    for (const char* input : inputs)
        list.append(QString::fromUtf8(input));
    return gamutTitles(list);
}

TEST(GamutTitles, areTheFileNames)
{
    EXPECT_EQ(
        titles({"/a/printer.icc", "sRGB", "/b/größe 1.icc"}),
        (QStringList{QStringLiteral("printer.icc"), QStringLiteral("sRGB"), QStringLiteral("größe 1.icc")}));
}

TEST(GamutTitles, haveTheFolderWhereFileNamesAreEqual)
{
    EXPECT_EQ(titles({"/a/printer.icc", "/b/printer.icc", "/b/other.icc"}),
              (QStringList{QStringLiteral("printer.icc - a"), QStringLiteral("printer.icc - b"),
                           QStringLiteral("other.icc")}));
}

TEST(GamutTitles, numberInputsThatAreOpenTwice)
{
    EXPECT_EQ(titles({"sRGB", "sRGB", "sRGB"}),
              (QStringList{QStringLiteral("sRGB"), QStringLiteral("sRGB (2)"), QStringLiteral("sRGB (3)")}));
}

TEST(ShownWords, formatLabAndLch)
{
    EXPECT_EQ(ShownWords::lab({53.24f, -80.06f, 67.2f}), QStringLiteral("L* 53.2   a* -80.1   b* 67.2"));
    EXPECT_EQ(ShownWords::lch({50, 3, 4}), QStringLiteral("L* 50.0   C* 5.0   h 53.1°"));
    EXPECT_EQ(ShownWords::lab({100, -0.01f, 0}), QStringLiteral("L* 100.0   a* 0.0   b* 0.0"));
    EXPECT_EQ(ShownWords::lch({100, -0.01f, 0}), QStringLiteral("L* 100.0   C* 0.0   h –"));
    EXPECT_EQ(ShownWords::lch({50, 0, -10}), QStringLiteral("L* 50.0   C* 10.0   h 270.0°"));
}

TEST(ShownWords, sayWhenMixturesOfManyInksWereNotLookedFor)
{
    KVGamut::Report report;
    report.channels = 12;
    EXPECT_FALSE(ShownWords::conversion(report).contains(QStringLiteral("channels")));
    report.channels = 13;
    EXPECT_TRUE(ShownWords::conversion(report).contains(QStringLiteral("more than 12 channels")))
        << ShownWords::conversion(report).toStdString();
}

TEST(ShownWords, omitSettingsWithoutEffect)
{
    EXPECT_EQ(ShownWords::settings({KVVMRenderAbsoluteColorimetric, true, -1}),
              ShownWords::settings({KVVMRenderAbsoluteColorimetric, false, -1}));
    EXPECT_NE(ShownWords::settings({KVVMRenderRelativeColorimetric, true, -1}),
              ShownWords::settings({KVVMRenderRelativeColorimetric, false, -1}));
}

} // namespace
