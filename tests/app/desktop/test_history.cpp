// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/AutomaticLooks.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/models/History.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

using kvtest::spinUntil;

const QString sRGB = QStringLiteral("sRGB"), p3 = QStringLiteral("DisplayP3");

class Undo : public testing::Test
{
protected:
    /// Until everything is loaded and is a step.
    bool finish()
    {
        return spinUntil([this] {
            return !loader.isBusy() && points.isComplete() && looks.isComplete() && history.isUpToDate();
        });
    }
    void add(const QStringList& inputs)
    {
        for (const QString& input : inputs)
            gamuts.add(input, {}, {});
        ASSERT_TRUE(finish());
    }
    void undo()
    {
        steps.undo();
        ASSERT_TRUE(finish());
    }
    void redo()
    {
        steps.redo();
        ASSERT_TRUE(finish());
    }
    QStringList titles() const
    {
        QStringList all;
        for (const GamutEntry& entry : gamuts.entries())
            all.append(entry.title);
        return all;
    }
    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir folder;
    GamutListModel gamuts;
    GamutQueue loader{gamuts};
    AutomaticLooks looks{gamuts};
    KVGamut3DViewer viewer; // never shown
    PointLayer points{gamuts, viewer};
    History history{gamuts, points};
    QUndoStack& steps = history.steps();
};

TEST_F(Undo, removesAnAddedGamutAndRedoReturnsIt)
{
    EXPECT_FALSE(steps.canUndo());
    add({sRGB});
    ASSERT_EQ(steps.count(), 1);
    EXPECT_EQ(steps.undoText(), QStringLiteral("Add sRGB"));
    const double volume = double(gamuts.at(0).gamut.volume());
    undo();
    EXPECT_EQ(gamuts.rowCount(), 0);
    redo();
    ASSERT_EQ(titles(), QStringList{sRGB});
    EXPECT_EQ(double(gamuts.at(0).gamut.volume()), volume);
    EXPECT_EQ(steps.count(), 1) << "a return is no step of its own";
}

TEST_F(Undo, returnsARemovedGamutToItsPlace)
{
    add({sRGB, p3, QStringLiteral("AdobeRGB")});
    EXPECT_EQ(steps.count(), 1) << "opened together";
    EXPECT_EQ(steps.undoText(), QStringLiteral("Add 3 gamuts"));
    gamuts.setActiveRow(1);
    gamuts.changeActiveLook([](KVGamutLook& look) { look.projection = false; });
    ASSERT_TRUE(finish());
    const QColor key = gamuts.signColor(1);
    const QString id = gamuts.at(1).id;
    gamuts.remove(1);
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Remove DisplayP3"));
    undo();
    EXPECT_EQ(titles(), (QStringList{sRGB, p3, QStringLiteral("AdobeRGB")}));
    EXPECT_EQ(gamuts.at(1).id, id);
    EXPECT_EQ(gamuts.signColor(1), key);
    EXPECT_FALSE(gamuts.at(1).look.projection);
    EXPECT_TRUE(gamuts.at(1).hasGamut());
    EXPECT_EQ(gamuts.activeRow(), 1);
    undo();
    EXPECT_TRUE(gamuts.at(1).look.projection);
    redo();
    redo();
    EXPECT_EQ(titles(), (QStringList{sRGB, QStringLiteral("AdobeRGB")}));
}

TEST_F(Undo, returnsEverythingThatWasClosed)
{
    add({sRGB, p3});
    const QString file = write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n");
    points.open(file);
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Add p.csv"));
    points.setTolerance(3.0f);
    gamuts.clear();
    points.clear();
    points.setTolerance(1.0f);
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Close everything"));
    EXPECT_EQ(steps.count(), 3);
    undo();
    EXPECT_EQ(titles(), (QStringList{sRGB, p3}));
    EXPECT_EQ(points.files(), QStringList{file});
    EXPECT_EQ(points.set(0).points.size(), 1);
}

TEST_F(Undo, goesBackToFormerSettings)
{
    add({QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc")});
    const double absolute = double(gamuts.at(0).gamut.volume());
    gamuts.changeActiveSettings([](KVGamut::Settings& s) { s.intent = KVVMRenderRelativeColorimetric; });
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Settings of default_cmyk.icc"));
    const double relative = double(gamuts.at(0).gamut.volume());
    ASSERT_NE(absolute, relative);
    undo();
    EXPECT_EQ(double(gamuts.at(0).gamut.volume()), absolute);
    redo();
    EXPECT_EQ(double(gamuts.at(0).gamut.volume()), relative);
}

TEST_F(Undo, takesTheMovementOfASliderAsOneStep)
{
    add({sRGB});
    for (int i = 1; i <= 20; ++i) {
        gamuts.changeActiveLook([i](KVGamutLook& look) { look.opacity = 1.0f - 0.03f * float(i); });
        ASSERT_TRUE(finish());
    }
    gamuts.changeActiveLook([](KVGamutLook& look) { look.ambientStrength = 1.0f; });
    ASSERT_TRUE(finish());
    gamuts.changeActiveLook([](KVGamutLook& look) { look.visible = false; });
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Hide sRGB"));
    EXPECT_EQ(steps.count(), 4);
    undo();
    undo();
    EXPECT_NEAR(gamuts.at(0).look.opacity, 0.4f, 1e-5f);
    undo();
    EXPECT_EQ(gamuts.at(0).look.opacity, 1.0f);
    EXPECT_EQ(steps.undoText(), QStringLiteral("Add sRGB"));
}

TEST_F(Undo, ignoresWhatTheUserDidNotDo)
{
    add({sRGB, QStringLiteral("/there/is/none.icc")});
    EXPECT_EQ(steps.undoText(), QStringLiteral("Add sRGB"));
    gamuts.add(QStringLiteral("/there/is/none.icc"), {}, {});
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.count(), 1);
    // an opacity that follows which gamut is inside which
    gamuts.add(p3, {}, {});
    gamuts.setAutomaticOpacity(1, 1.0f);
    ASSERT_TRUE(finish());
    const int count = steps.count();
    gamuts.setAutomaticOpacity(1, 0.35f);
    gamuts.setActiveRow(0);
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.count(), count);
}

TEST_F(Undo, ofPointsReadsThemAgain)
{
    const QString one = write(QStringLiteral("1.csv"), "L,a,b\n50,0,0\n");
    const QString two = write(QStringLiteral("2.csv"), "L,a,b\n60,0,0\n");
    points.open(one);
    ASSERT_TRUE(finish());
    points.open(two);
    ASSERT_TRUE(finish());
    points.remove(0);
    ASSERT_TRUE(finish());
    EXPECT_EQ(steps.undoText(), QStringLiteral("Remove 1.csv"));
    undo();
    EXPECT_EQ(points.files().size(), 2);
    points.setTolerance(4.0f);
    add({sRGB}); // a step of its own
    undo();
    undo();
    EXPECT_EQ(points.tolerance(), 1.0f);
}

} // namespace
