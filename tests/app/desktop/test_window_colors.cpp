// SPDX-License-Identifier: Apache-2.0
#include "DialogAnswer.h"
#include "WindowCase.h"

#include "desktop/panels/SlicePanel.h"
#include "model/points/Lab.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QTreeView>

#include <cmath>

// The panel of colours, the view and the section beside it.

namespace {

using Kind = ColorTable::Kind;

/// The pixels in which two pictures differ.
struct Silhouette
{
    Silhouette(const QImage& empty, const QImage& picture)
    {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixel(x, y) != empty.pixel(x, y)) {
                    box |= QRect(x, y, 1, 1);
                    ++count;
                }
        filled = box.isEmpty() ? 0.0 : static_cast<double>(count) / (box.width() * box.height());
        hasMiddle = !box.isEmpty() && picture.pixel(box.center()) != empty.pixel(box.center());
    }

    QRect box;
    double filled = 0.0; ///< their share of the box
    bool hasMiddle = false;
};

/// The pixels around a place.
class Symbol
{
public:
    Symbol(const QImage& image, const QPointF& place)
        : m_image(image), m_place(static_cast<int>(place.x()), static_cast<int>(place.y()))
    {
    }

    /// A disc of @p color.
    bool isCircle(const QColor& color) const
    {
        return has(0, 0, color) && has(1, 1, color) && has(1, -1, color) && has(-1, 1, color);
    }

    /// Two diagonal lines of @p color.
    bool isCross(const QColor& color) const
    {
        return has(0, 0, color) && has(2, 2, color) && has(-2, 2, color) && has(2, -2, color) &&
               !has(0, 4, color) && !has(4, 0, color) && !has(0, -4, color) && !has(-4, 0, color);
    }

private:
    /// Whether a pixel here or beside it has about this colour: edges are smoothed.
    bool has(int x, int y, const QColor& color) const
    {
        for (int i = 0; i < 9; ++i) {
            const QColor found = m_image.pixelColor(m_place + QPoint(x + i % 3 - 1, y + i / 3 - 1));
            if (std::abs(found.red() - color.red()) < 96 && std::abs(found.green() - color.green()) < 96 &&
                std::abs(found.blue() - color.blue()) < 96)
                return true;
        }
        return false;
    }

    QImage m_image;
    QPoint m_place;
};

class ColorsInTheWindow : public kvtest::WindowCase
{
protected:
    void openThree()
    {
        open({QStringLiteral("sRGB"), write(QStringLiteral("three.csv"),
                                            "name,L,a,b\nlaser,60,-120,90\ngrey,50,0,0\nink,20,60,-90\n")});
    }

    QTreeView& table() { return control<QTreeView>("colors"); }
    QString finding() { return control<QLabel>("finding").text(); }
    QImage section() { return control<QWidget>("slice").grab().toImage(); }

    /// Where a*, b* is drawn in the section, by the colours that the section reports under the pointer.
    QPointF placeInSection(double a, double b)
    {
        auto& panel = control<SlicePanel>("slice");
        QVector3D found;
        const auto connection = QObject::connect(
            &panel, &SlicePanel::hovered, [&found](const std::optional<QVector3D>& lab) { found = *lab; });
        const auto colorAt = [&](const QPointF& place) {
            QMouseEvent event(QEvent::MouseMove, place, panel.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&panel, &event);
            return QPointF(static_cast<double>(found.y()), static_cast<double>(found.z()));
        };
        const QPointF origin = colorAt({0, 0}), step = (colorAt({100, 100}) - origin) / 100.0;
        QObject::disconnect(connection);
        return {(a - origin.x()) / step.x(), (b - origin.y()) / step.y()};
    }

    QStringList names()
    {
        QStringList names;
        const QAbstractItemModel& model = *table().model();
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.index(row, 0).data().toString());
        return names;
    }

    void choose(int row)
    {
        table().scrollTo(table().model()->index(row, 0));
        const QRect place = table().visualRect(table().model()->index(row, 0));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
    }
};

TEST_F(ColorsInTheWindow, showTheSelectedRowInViewAndSection)
{
    openThree();
    const QImage view = settledPicture(), before = section();
    choose(0);
    EXPECT_TRUE(finding().startsWith(QStringLiteral("laser"))) << finding().toStdString();
    EXPECT_EQ(window.viewer().segmentSet().size(), 1); // the line to the surface
    EXPECT_NE(settledPicture(), view);
    EXPECT_NE(section(), before);
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_Down);
    EXPECT_TRUE(finding().startsWith(QStringLiteral("grey"))) << finding().toStdString();
    action("closeAll").trigger();
    EXPECT_TRUE(window.viewer().segmentSet().isEmpty());
    EXPECT_TRUE(window.viewer().markerSet().isEmpty());
}

TEST_F(ColorsInTheWindow, areShownInTheSectionNearTheirLightness)
{
    constexpr QRgb green = qRgb(10, 230, 20); // in no section, legend or text
    const auto greenPixels = [this] {
        const QImage image = section();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += (image.pixel(x, y) & RGB_MASK) == (green & RGB_MASK);
        return count;
    };
    open({QStringLiteral("sRGB")});
    EXPECT_EQ(greenPixels(), 0);
    open({write(QStringLiteral("near.csv"), "name,L,a,b,colour\nhere,51,10,10,#0ae614\n")});
    ASSERT_TRUE(kvtest::spinUntil([&] { return greenPixels() > 5; }));
    auto* const lightness = &control<SlicePanel>("slice");
    lightness->setLightness(60.0f); // nine away
    EXPECT_TRUE(kvtest::spinUntil([&] { return greenPixels() == 0; }));
    lightness->setLightness(49.0f);
    EXPECT_TRUE(kvtest::spinUntil([&] { return greenPixels() > 5; }));
    action("closeAll").trigger();
    EXPECT_TRUE(kvtest::spinUntil([&] { return greenPixels() == 0; }));
}

TEST_F(ColorsInTheWindow, areCirclesInsideTheActiveGamutAndCrossesOutside)
{
    const QColor green(10, 230, 20); // in no section
    open({QStringLiteral("ProPhoto"), QStringLiteral("sRGB"),
          write(QStringLiteral("one.csv"), "L,a,b,colour\n50,-80,40,#0ae614\n")}); // inside ProPhoto only
    const auto chooseGamut = [this](int row) {
        auto& list = control<QListView>("gamutList");
        const QRect place = list.visualRect(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
        EXPECT_EQ(window.gamuts().activeRow(), row);
    };
    const auto symbol = [&] { return Symbol(section(), placeInSection(-80.0, 40.0)); };
    const QColor ink = control<QWidget>("slice").palette().color(QPalette::Text);
    const auto isCircle = [&] { return symbol().isCircle(green); };
    const auto isCross = [&] { return symbol().isCross(ink); };
    chooseGamut(1);
    EXPECT_TRUE(kvtest::spinUntil(isCross));
    EXPECT_FALSE(isCircle());
    chooseGamut(0);
    EXPECT_TRUE(kvtest::spinUntil(isCircle));
    EXPECT_FALSE(isCross());
    window.gamuts().remove(0);
    EXPECT_TRUE(kvtest::spinUntil(isCross));
}

TEST_F(ColorsInTheWindow, selectTheRowOfAClickedPoint)
{
    open({write(QStringLiteral("two.csv"), "name,L,a,b\nfar,50,100,0\nmiddle,50,0,0\n")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    // seen from the top, the axis of L* is in the middle of the view
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
    ASSERT_TRUE(kvtest::spinUntil([this] { return table().currentIndex().isValid(); }));
    EXPECT_EQ(table().currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("middle"));
    EXPECT_TRUE(table().selectionModel()->isRowSelected(1));
    EXPECT_TRUE(finding().startsWith(QStringLiteral("middle"))) << finding().toStdString();
}

TEST_F(ColorsInTheWindow, selectTheRowOfAClickedMarker)
{
    open({QStringLiteral("sRGB"),
          write(QStringLiteral("two.csv"), "name,L,a,b\nfar,50,150,0\nabove,110,0,0\n")});
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    ASSERT_FALSE(window.viewer().markerSet().isEmpty());
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    for (int click = 0; click < 2; ++click) { // the second through the mark of the first
        QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier, middle);
        ASSERT_TRUE(kvtest::spinUntil([this] { return table().currentIndex().isValid(); }));
        EXPECT_EQ(table().currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("above"));
        EXPECT_TRUE(finding().startsWith(QStringLiteral("above"))) << finding().toStdString();
    }
}

TEST_F(ColorsInTheWindow, differInShapeByTheirZone)
{
    open({QStringLiteral("sRGB")});
    control<QListView>("gamutList")
        .model()
        ->setData(control<QListView>("gamutList").model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    action("fromTop").trigger();
    const QImage empty = settledPicture();
    const auto shapeOf = [&](const QByteArray& lab) {
        open({write(QStringLiteral("one.csv"), "L,a,b\n" + lab + "\n")});
        return Silhouette(empty, settledPicture());
    };
    const Silhouette outside = shapeOf("50,-90,20"), inside = shapeOf("50,30,30");
    window.points().setTolerance(200.0f);
    const Silhouette edge(empty, settledPicture());
    EXPECT_TRUE(inside.hasMiddle);
    EXPECT_NEAR(inside.filled, 3.14159 / 4.0, 0.1); // a disc in its square
    EXPECT_FALSE(edge.hasMiddle);                   // the edges of a cube
    EXPECT_TRUE(outside.hasMiddle);
    EXPECT_NEAR(outside.filled, std::sqrt(0.125), 0.1); // a star with four points
}

TEST_F(ColorsInTheWindow, areSortedByAClickOnATitle)
{
    openThree();
    const QHeaderView& header = *table().header();
    const int lightness = window.colors().columnOf(Kind::Name);
    const QPoint title(header.sectionViewportPosition(lightness) + 10, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, title);
    EXPECT_EQ(names(), (QStringList{QStringLiteral("grey"), QStringLiteral("ink"), QStringLiteral("laser")}));
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, title);
    EXPECT_EQ(names(), (QStringList{QStringLiteral("laser"), QStringLiteral("ink"), QStringLiteral("grey")}));
}

TEST_F(ColorsInTheWindow, staySortedWhenTheGamutsChange)
{
    openThree();
    const QHeaderView& header = *table().header();
    table().sortByColumn(window.colors().columnOf(Kind::Lightness), Qt::DescendingOrder);
    const QStringList before = names();
    EXPECT_EQ(before.constFirst(), QStringLiteral("laser"));
    open({QStringLiteral("AdobeRGB")}); // with columns of its own before that one
    EXPECT_EQ(header.sortIndicatorSection(), window.colors().columnOf(Kind::Lightness));
    EXPECT_EQ(names(), before);
    window.gamuts().setActiveRow(0);
    ASSERT_TRUE(settle());
    table().sortByColumn(window.colors().columnOf(Kind::De00), Qt::DescendingOrder); // of sRGB
    window.gamuts().remove(0);
    ASSERT_TRUE(settle());
    EXPECT_EQ(header.sortIndicatorSection(), -1);
    EXPECT_EQ(names(), (QStringList{QStringLiteral("laser"), QStringLiteral("grey"), QStringLiteral("ink")}));
}

TEST_F(ColorsInTheWindow, areFilteredAndSearchedFromTheKeyboard)
{
    openThree();
    auto& zone = control<QComboBox>("colorZone");
    zone.setFocus();
    QTest::keyClick(&zone, Qt::Key_Down); // outside
    EXPECT_EQ(names(), (QStringList{QStringLiteral("laser"), QStringLiteral("ink")}));
    auto& search = control<QLineEdit>("colorSearch");
    search.setFocus();
    QTest::keyClicks(&search, QStringLiteral("in"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("ink")});
    EXPECT_TRUE(control<QLabel>("colorState").text().contains(QStringLiteral("1 of 3")));
}

TEST_F(ColorsInTheWindow, keepTheSelectionWhenTheOrderChanges)
{
    openThree();
    choose(2);
    control<QLineEdit>("colorSearch").setText(QStringLiteral("ink"));
    ASSERT_EQ(table().model()->rowCount(), 1);
    EXPECT_TRUE(table().selectionModel()->isRowSelected(0));
    EXPECT_TRUE(finding().startsWith(QStringLiteral("ink"))) << finding().toStdString();
    control<QLineEdit>("colorSearch").clear();
    EXPECT_EQ(table().currentIndex().row(), 2);
}

TEST_F(ColorsInTheWindow, areCopiedAsSelectedOrAll)
{
    openThree();
    choose(1);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 2); // with titles
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("grey\tin\t0.0000\t"))) << lines[1].toStdString();
    action("copyColors").trigger();
    lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    EXPECT_EQ(lines.size(), 4);
}

TEST_F(ColorsInTheWindow, areSavedAsCsv)
{
    openThree();
    const QString file = path(QStringLiteral("out.csv"));
    EXPECT_TRUE(kvtest::chooseFile([this] { action("saveColors").trigger(); }, file));
    ASSERT_TRUE(settle());
    QFile csv(file);
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = csv.readAll().trimmed().split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith("name,zone sRGB,de00 sRGB,")) << lines[0].constData();
    EXPECT_TRUE(lines[2].startsWith("grey,in,0.0000,50.0000,0.0000,0.0000,")) << lines[2].constData();
}

TEST_F(ColorsInTheWindow, haveAMenuWithTheirActions)
{
    openThree();
    QStringList names;
    for (const QAction* action : table().actions())
        names.append(action->objectName());
    EXPECT_EQ(names, (QStringList{QStringLiteral("copyRows"), QStringLiteral("copyAllRows"),
                                  QStringLiteral("saveRows")}));
    EXPECT_EQ(table().contextMenuPolicy(), Qt::ActionsContextMenu);
    table().actions().at(1)->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 3);
}

TEST_F(ColorsInTheWindow, areDescribedWithDifferenceDeviceValuesAndHex)
{
    openThree();
    choose(0);
    EXPECT_TRUE(finding().contains(QStringLiteral("CIEDE2000"))) << finding().toStdString();
    EXPECT_TRUE(finding().contains(QStringLiteral("sRGB about #"))) << finding().toStdString();
    EXPECT_TRUE(finding().contains(QStringLiteral("sRGB makes it with 0 "))) << finding().toStdString();
    const QPixmap swatch = control<QLabel>("findingSwatch").pixmap();
    ASSERT_FALSE(swatch.isNull());
    EXPECT_EQ(swatch.toImage().pixelColor(5, swatch.height() / 2), screenColor({60, -120, 90}));
    choose(1);
    EXPECT_TRUE(finding().contains(QStringLiteral("#777777"))) << finding().toStdString();
    EXPECT_FALSE(finding().contains(QStringLiteral("CIEDE2000"))) << finding().toStdString();
}

} // namespace
