// SPDX-License-Identifier: Apache-2.0
#include "FileDialogs.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QFileDialog>

namespace {

class Words
{
    Q_DECLARE_TR_FUNCTIONS(FileDialogs)
};

QString lastFolder;

/// Keeps the folder of @p file for the next dialog.
QString chosen(const QString& file)
{
    if (!file.isEmpty())
        lastFolder = QFileInfo(file).absolutePath();
    return file;
}

QStringList chosen(const QStringList& files)
{
    chosen(files.value(0));
    return files;
}

QString filters(const QStringList& kinds)
{
    return kinds.join(QStringLiteral(";;"));
}

QString fileToSave(QWidget* parent, const QString& title, const QString& filter, const char* suffix,
                   const QString& suggestion = {})
{
    QFileDialog dialog(parent, title, lastFolder, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QLatin1String(suffix));
    if (!suggestion.isEmpty())
        dialog.selectFile(suggestion + QLatin1Char('.') + QLatin1String(suffix));
    return dialog.exec() == QDialog::Accepted ? chosen(dialog.selectedFiles().constFirst()) : QString();
}

} // namespace

QString FileDialogs::folder()
{
    return lastFolder;
}

void FileDialogs::setFolder(const QString& folder)
{
    lastFolder = folder;
}

QStringList FileDialogs::filesToOpen(QWidget* parent)
{
    return chosen(QFileDialog::getOpenFileNames(
        parent, Words::tr("Open"), lastFolder,
        filters({Words::tr("All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut "
                           "*.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)"),
                 Words::tr("Profiles (*.icc *.icm)"),
                 Words::tr("Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)"),
                 Words::tr("Saved gamuts (*.kvgamut)"),
                 Words::tr("Measurements (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)"),
                 Words::tr("All files (*)")})));
}

QStringList FileDialogs::pointsToAdd(QWidget* parent)
{
    return chosen(QFileDialog::getOpenFileNames(
        parent, Words::tr("Add points"), lastFolder,
        filters({Words::tr("Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl "
                           "*.png *.jpg *.jpeg "
                           "*.tif *.tiff)"),
                 Words::tr("All files (*)")})));
}

QString FileDialogs::sessionToRestore(QWidget* parent)
{
    return chosen(QFileDialog::getOpenFileName(
        parent, Words::tr("Restore session"), lastFolder,
        filters({Words::tr("Sessions (*.kvsession)"), Words::tr("All files (*)")})));
}

QString FileDialogs::sessionToSave(QWidget* parent)
{
    return fileToSave(parent, Words::tr("Save session"), Words::tr("Sessions (*.kvsession)"), "kvsession");
}

QString FileDialogs::pictureToSave(QWidget* parent, const QStringList& titles)
{
    constexpr int maxLength = 80;
    QStringList names;
    for (const QString& title : titles) // without the suffix of a file
        names.append(QFileInfo(title).completeBaseName());
    QString name = names.join(QStringLiteral(", ")).left(maxLength);
    static const QRegularExpression unusual(QStringLiteral("[\\x00-\\x1f/\\\\:*?\"<>|]"));
    return fileToSave(parent, Words::tr("Save picture"),
                      Words::tr("Pictures (*.png *.jpg *.tif *.webp *.svg *.pdf)"), "png",
                      name.replace(unusual, QStringLiteral("_")).trimmed());
}

QString FileDialogs::sectionToSave(QWidget* parent)
{
    return fileToSave(parent, Words::tr("Save section"), Words::tr("Drawings (*.svg *.pdf)"), "svg");
}

QString FileDialogs::pageToSave(QWidget* parent)
{
    return fileToSave(parent, Words::tr("Save page to send"), Words::tr("Web pages (*.html)"), "html");
}

QString FileDialogs::colorsToSave(QWidget* parent)
{
    return fileToSave(parent, Words::tr("Save table of colours"), Words::tr("Tables (*.csv)"), "csv");
}

QString FileDialogs::gamutToSave(QWidget* parent)
{
    return fileToSave(parent, Words::tr("Save gamut as mesh"),
                      filters({Words::tr("Meshes (*.ply *.obj *.stl *.gltf *.x3d *.json)"),
                               Words::tr("Saved gamuts (*.kvgamut)"), Words::tr("Profiles (*.icc)")}),
                      "ply");
}
