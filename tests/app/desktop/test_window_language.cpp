// SPDX-License-Identifier: Apache-2.0
#include "TranslationFile.h"
#include "WindowCase.h"

#include "desktop/files/RecentFiles.h"
#include "desktop/language/ShownWords.h"
#include "desktop/language/Translations.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/PictureDialog.h"
#include "desktop/panels/UnsavedQuestion.h"
#include "model/pictures/CameraText.h"
#include "model/problems/ProblemText.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QClipboard>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QTreeWidget>

// The window in a language other than English.

namespace {

using kvtest::cmyk;

/// The first base class, so that the language is set before the window is created.
struct GermanLanguage
{
    std::unique_ptr<Translations> german =
        std::make_unique<Translations>(QStringList{QStringLiteral("de-DE")});
};

class GermanWindow : public GermanLanguage, public kvtest::WindowCase
{
};

/// The first base class, like GermanLanguage.
class LanguageOfTheCase : public testing::WithParamInterface<QString>
{
protected:
    std::unique_ptr<Translations> language = std::make_unique<Translations>(QStringList{GetParam()});
};

/// The window in each language.
class TranslatedWindow : public LanguageOfTheCase, public kvtest::WindowCase
{
};

INSTANTIATE_TEST_SUITE_P(In, TranslatedWindow, testing::ValuesIn(kvtest::translatedLanguages()),
                         kvtest::nameOfLanguage);

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

void addTexts(const QMenu& menu, QStringList& texts)
{
    texts.append(menu.title());
    const auto actions = menu.actions();
    for (const QAction* action : actions) {
        if (action->menu())
            addTexts(*action->menu(), texts);
        else if (!action->isSeparator())
            texts.append({action->text(), action->toolTip()});
    }
}

void addTitles(const QHeaderView& header, QStringList& texts)
{
    for (int column = 0; column < header.count(); ++column)
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
            texts.append(header.model()->headerData(column, Qt::Horizontal, role).toString());
}

void addItems(const QTreeWidget& tree, QStringList& texts)
{
    const auto items = tree.findItems(QString(), Qt::MatchContains | Qt::MatchRecursive);
    for (const QTreeWidgetItem* item : items)
        texts.append(item->text(0));
}

/// All visible and accessible texts of @p top, in the order of their widgets.
QStringList textsOf(const QWidget& top)
{
    QStringList texts{top.windowTitle()};
    const auto menus = top.findChildren<QMenu*>();
    for (const QMenu* menu : menus)
        if (menu->menuAction()->isVisible() && !menu->title().isEmpty())
            addTexts(*menu, texts);
    const auto widgets = top.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        texts.append({widget->toolTip(), widget->accessibleName(), widget->accessibleDescription(),
                      widget->windowTitle()});
        const auto actions = widget->actions();
        for (const QAction* action : actions)
            texts.append(action->text());
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            texts.append(label->text());
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            texts.append(button->text());
        if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            texts.append(group->title());
        if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(widget))
            texts.append(spin->specialValueText());
        if (const auto* header = qobject_cast<const QHeaderView*>(widget))
            if (header->orientation() == Qt::Horizontal && header->model())
                addTitles(*header, texts);
        if (const auto* box = qobject_cast<const QComboBox*>(widget))
            for (int i = 0; i < box->count(); ++i)
                texts.append(box->itemText(i));
        if (const auto* tree = qobject_cast<const QTreeWidget*>(widget))
            addItems(*tree, texts);
    }
    return texts;
}

/// The elements of @p texts that contain words.
QStringList wordsOf(const QStringList& texts)
{
    static const QRegularExpression word(QStringLiteral("[a-z]{2}"));
    QStringList words;
    for (const QString& text : texts)
        if (text.contains(word) && !words.contains(plain(text)))
            words.append(plain(text));
    return words;
}

/// Texts that are the same in English and in the language.
QStringList sameTexts(const QString& language)
{
    QStringList same;
    const auto texts = kvtest::textsOfFile(kvtest::translationFile(language));
    for (const auto& [key, text] : texts)
        if (plain(text.source) == plain(text.translations.value(0)))
            same.append(plain(text.source));
    return same;
}

TEST_P(TranslatedWindow, isTranslatedThroughout)
{
    RecentFiles::clear(); // file names are not translated
    action("keys").trigger();
    PictureDialog dialog({640, 480}, &window);
    UnsavedQuestion question({}, &window);
    const QStringList words = wordsOf(textsOf(window));
    language.reset();
    MainWindow other;
    other.findChild<QAction*>(QStringLiteral("keys"))->trigger();
    PictureDialog otherDialog({640, 480}, &other);
    UnsavedQuestion otherQuestion({}, &other);
    const QStringList english = wordsOf(textsOf(other));
    EXPECT_GT(english.size(), 120);

    const QStringList names =
        sameTexts(GetParam()) + QStringList{QStringLiteral("sRGB"),          QStringLiteral("AdobeRGB"),
                                            QStringLiteral("DisplayP3"),     QStringLiteral("Rec2020"),
                                            QStringLiteral("ProPhoto"),      QStringLiteral("OptimalColors"),
                                            QStringLiteral("SurfaceColors"), QStringLiteral("SpectralLimit"),
                                            QStringLiteral("kvgamut[*]")};
    for (const QString& text : words)
        EXPECT_TRUE(!english.contains(text) || names.contains(text)) << text.toStdString();
}

TEST_F(GermanWindow, worksLikeTheEnglishOne)
{
    const auto menus = window.menuBar()->actions();
    EXPECT_EQ(menus.first()->text(), QStringLiteral("&Datei"));
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& intent = control<QComboBox>("intent");
    EXPECT_EQ(intent.currentText(), QStringLiteral("Absolut farbmetrisch"));
    intent.setCurrentText(QStringLiteral("Relativ farbmetrisch"));
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry().computedWith.intent, KVVMRenderRelativeColorimetric);
    action("activeBlackPoint").trigger();
    ASSERT_TRUE(settle());
    EXPECT_TRUE(entry().computedWith.blackPointCompensation);
    QTest::keyClick(&window, Qt::Key_N);
    EXPECT_EQ(window.gamuts().activeRow(), 1);
    EXPECT_EQ(control<QDockWidget>("comparisonDock").windowTitle(),
              QStringLiteral("Vergleich mit DisplayP3"));
}

TEST_P(TranslatedWindow, opensAMenuByItsMnemonic)
{
    const QString title = window.menuBar()->actions().first()->text();
    const QKeyCombination key = QKeySequence::mnemonic(title)[0];
    QTest::keyClick(&window, key.key(), key.keyboardModifiers());
    ASSERT_TRUE(kvtest::spinUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_EQ(qobject_cast<QMenu*>(QApplication::activePopupWidget())->title(), title);
    QApplication::activePopupWidget()->close();
}

// --- Failures in the message bar ----------------------------------------------------------------------

class GermanFailure : public GermanWindow
{
protected:
    /// Expects that the message bar shows @p message, and nothing else, soon.
    void expectMessage(const QString& message)
    {
        const auto* label = control<QWidget>("messageBar").findChild<QLabel*>(QStringLiteral("message"));
        ASSERT_NE(label, nullptr);
        EXPECT_TRUE(kvtest::spinUntil([&] { return label->text() == message; }))
            << label->text().toStdString() << "\ninstead of\n"
            << message.toStdString();
        EXPECT_TRUE(label->isVisible());
    }
};

TEST_F(GermanFailure, ofAGamutIsShown)
{
    const QString missing = path(QStringLiteral("größe 1.icc"));
    window.addGamut(missing);
    expectMessage(QStringLiteral("„%1“: Datei nicht gefunden").arg(missing));
}

TEST_F(GermanFailure, ofTheColourEngineIsShown)
{
    window.addGamut(QStringLiteral("/usr/share/color/icc/ghostscript/default_gray.icc"));
    expectMessage(QStringLiteral("„/usr/share/color/icc/ghostscript/default_gray.icc“: ein Gamut braucht "
                                 "mindestens drei Kanäle; Grau hat einen"));
}

TEST_F(GermanFailure, ofPointsIsShown)
{
    const QString file = write(QStringLiteral("p.csv"), "L,a,b\n50,0\n");
    window.addPoints({file});
    expectMessage(QStringLiteral("„%1“: Zeile 2: der Wert für b* fehlt").arg(file));
}

TEST_F(GermanFailure, inANoteAboutPointsIsShown)
{
    const QString file = path(QStringLiteral("p.png"));
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(file));
    window.addPoints({file});
    expectMessage(QStringLiteral("„%1“: kein eingebettetes Profil; die Farben werden als sRGB interpretiert")
                      .arg(file));
}

TEST_F(GermanFailure, ofASessionIsShown)
{
    const QString file = write(QStringLiteral("a.kvsession"), R"({"kvgamutSession": 1, "tolerance": -1})");
    EXPECT_FALSE(window.openSession(file));
    expectMessage(QStringLiteral("„%1“: „tolerance“ muss eine Zahl von 0 bis 100 sein").arg(file));
}

TEST_F(GermanFailure, ofSavingIsShown)
{
    const QString file = path(QStringLiteral("no/a.kvsession"));
    EXPECT_FALSE(window.saveSession(file));
    expectMessage(
        QStringLiteral("„%1“: nicht beschreibbar: Datei oder Verzeichnis nicht gefunden").arg(file));
}

TEST_F(GermanFailure, ofAPictureIsShown)
{
    open({QStringLiteral("sRGB")});
    const QString file = path(QStringLiteral("p.xyz"));
    EXPECT_FALSE(window.savePicture(file, {20, 20}));
    expectMessage(QStringLiteral("„%1“: nicht unterstütztes Bildformat").arg(file));
}

TEST_F(GermanFailure, ofASectionIsShown)
{
    const QString file = path(QStringLiteral("s.doc"));
    EXPECT_FALSE(window.saveSection(file));
    expectMessage(QStringLiteral("„%1“: Schnitte werden als .svg oder .pdf gespeichert").arg(file));
}

TEST_F(GermanFailure, ofPastingACameraIsShown)
{
    open({QStringLiteral("sRGB")});
    QGuiApplication::clipboard()->setText(QStringLiteral("no camera"));
    window.pasteCamera();
    const QString camera = CameraText::write(window.view().camera());
    expectMessage(QStringLiteral("die Zwischenablage enthält keine Kamera; ein Beispiel: %1").arg(camera));
}

TEST_F(GermanFailure, isReportedAsAProblem)
{
    QSignalSpy problems(&window, &MainWindow::problem);
    const QString missing = path(QStringLiteral("missing.icc"));
    window.addGamut(missing);
    ASSERT_TRUE(settle());
    ASSERT_EQ(problems.count(), 1);
    EXPECT_EQ(ProblemText::english(problems[0][0].value<Problem>()), // for standard error
              QStringLiteral("'%1': no such file").arg(missing));
}

// --- Numbers and sessions -----------------------------------------------------------------------------

TEST_P(TranslatedWindow, showsNumbersOfItsLanguageAndCopiesDecimalPoints)
{
    const QLocale locale(GetParam());
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const auto* model = control<QTableView>("comparison").model();
    const auto shown = [&](int column) { return model->index(0, column).data().toString(); };
    EXPECT_EQ(shown(ComparisonModel::White),
              QStringLiteral("100%10  0%10  0%10").replace(QStringLiteral("%1"), locale.decimalPoint()));
    const QString volume = shown(ComparisonModel::Volume);
    EXPECT_EQ(QString(volume).remove(locale.groupSeparator()).size(), 6) << volume.toStdString();
    if (!QLocale().numberOptions().testFlag(QLocale::OmitGroupSeparator)) {
        EXPECT_TRUE(volume.contains(locale.groupSeparator())) << volume.toStdString();
    }
    action("copyTable").trigger();
    const QStringList rows = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_EQ(rows.size(), 3);
    const QStringList cells = rows[1].split(QLatin1Char('\t'));
    EXPECT_EQ(cells.mid(ComparisonModel::White, 3),
              QStringList({QStringLiteral("100.0"), QStringLiteral("0.0"), QStringLiteral("0.0")}));
    bool ok = false;
    EXPECT_NEAR(cells[ComparisonModel::Volume + 2].toDouble(&ok), 833000.0, 1500.0);
    EXPECT_TRUE(ok);
}

TEST_P(TranslatedWindow, savesSessionsThatAnEnglishWindowReads)
{
    open({QStringLiteral("sRGB")});
    control<QDoubleSpinBox>("clipNumber").setValue(62.5);
    action("cut").trigger();
    control<QDoubleSpinBox>("tolerance").setValue(2.5);
    action("intent2").trigger();
    ASSERT_TRUE(settle());
    const Session saved = window.session();
    ASSERT_EQ(saved.view.clipping, 62.5f);
    ASSERT_TRUE(window.saveSession(path(QStringLiteral("a.kvsession"))));

    language.reset();
    MainWindow other;
    ASSERT_TRUE(other.openSession(path(QStringLiteral("a.kvsession"))));
    ASSERT_TRUE(kvtest::spinUntil([&other] { return other.isComplete(); }));
    EXPECT_EQ(other.session(), saved);
    EXPECT_EQ(other.findChild<QMenuBar*>()->actions().first()->text(), QStringLiteral("&File"));
}

/// Expects that every visible label and button of @p window has room for its text.
void expectRoomForTexts(const QWidget& window)
{
    const auto widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool hasOneLine = (label && !label->wordWrap()) ||
                                qobject_cast<const QAbstractButton*>(widget) ||
                                qobject_cast<const QComboBox*>(widget);
        if (!hasOneLine || !widget->isVisible() || widget->objectName().startsWith(QLatin1String("qt_")))
            continue; // buttons of Qt, which show icons
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
            << widget->objectName().toStdString() << ' ' << (label ? label->text().toStdString() : "");
        const QRect inParent(widget->mapTo(widget->parentWidget(), QPoint(0, 0)), widget->size());
        EXPECT_TRUE(widget->parentWidget()->rect().contains(inParent))
            << widget->objectName().toStdString() << ' ' << (label ? label->text().toStdString() : "");
    }
}

TEST_P(TranslatedWindow, hasRoomForItsTexts)
{
    expectRoomForTexts(window); // the welcome page
    open({QStringLiteral("sRGB")});
    expectRoomForTexts(window);
    auto& list = control<QTreeView>("pointFiles");
    for (int column = 1; column < PointLayer::ColumnCount; ++column)
        EXPECT_GE(list.header()->sectionSize(column), list.header()->sectionSizeHint(column)) << column;
}

TEST_P(TranslatedWindow, listsItsKeysInFull)
{
    action("keys").trigger();
    const auto& tree = control<QTreeWidget>("keys");
    ASSERT_TRUE(kvtest::spinUntil([&tree] { return tree.isVisible() && tree.viewport()->width() > 100; }));
    const QTreeWidgetItem* file = tree.topLevelItem(0);
    for (int i = 0; i < file->childCount(); ++i) {
        const QString text = file->child(i)->text(0);
        EXPECT_LT(tree.fontMetrics().horizontalAdvance(text) + tree.indentation(), tree.columnWidth(0))
            << text.toStdString();
    }
    EXPECT_FALSE(tree.horizontalScrollBar()->isVisible());
}

// --- Mnemonics ----------------------------------------------------------------------------------------

/// Expects that the mnemonic of @p text is not used yet, and adds it to @p owners.
void expectFree(const QString& text, QHash<QString, QString>& owners)
{
    const QString letter = QKeySequence::mnemonic(text).toString();
    if (letter.isEmpty())
        return;
    EXPECT_FALSE(owners.contains(letter))
        << letter.toStdString() << ": " << owners.value(letter).toStdString() << " and "
        << text.toStdString();
    owners.insert(letter, text);
}

void expectUniqueMnemonics(const QMenu& menu)
{
    QHash<QString, QString> owners;
    const auto actions = menu.actions();
    for (const QAction* action : actions) {
        expectFree(action->text(), owners);
        if (action->menu())
            expectUniqueMnemonics(*action->menu());
    }
}

/// The menu bar and all controls that Alt and a letter reach at the same time.
void expectUniqueMnemonics(const MainWindow& window)
{
    QHash<QString, QString> owners;
    const auto menus = window.menuWidget()->actions();
    for (const QAction* menu : menus) {
        expectFree(menu->text(), owners);
        expectUniqueMnemonics(*menu->menu());
    }
    const auto widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (!widget->isVisible() || !widget->isEnabled())
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            expectFree(label->buddy() ? label->text() : QString(), owners);
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            expectFree(button->text(), owners);
    }
    EXPECT_GT(owners.size(), 8);
}

/// Also the window in English, which has no file.
class MnemonicsOfTheWindow : public LanguageOfTheCase, public kvtest::WindowCase
{
};

INSTANTIATE_TEST_SUITE_P(In, MnemonicsOfTheWindow,
                         testing::ValuesIn(kvtest::translatedLanguages() + QStringList{QStringLiteral("en")}),
                         kvtest::nameOfLanguage);

TEST_P(MnemonicsOfTheWindow, areUsedOnce)
{
    expectUniqueMnemonics(window);
    open({QStringLiteral("sRGB")});
    action("intent1").trigger(); // enables a control that the absolute intent disables
    KVGamutLook look = entry().look;
    look.color = Qt::red; // enables "Own colours"
    window.gamuts().setLook(0, look);
    ASSERT_TRUE(settle());
    expectUniqueMnemonics(window);
}

} // namespace
