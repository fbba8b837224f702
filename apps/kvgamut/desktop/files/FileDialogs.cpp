// SPDX-License-Identifier: Apache-2.0
#include "FileDialogs.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QFileDialog>

namespace {

class DialogWords
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
        parent, DialogWords::tr("Open"), lastFolder,
        filters(
            {DialogWords::tr("All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut "
                             "*.kvsession *.gam *.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)"),
             DialogWords::tr("Profiles (*.icc *.icm)"),
             DialogWords::tr("Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)"),
             DialogWords::tr("Saved gamuts (*.kvgamut)"),
             DialogWords::tr("Measurements (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl)"),
             DialogWords::tr("All files (*)")})));
}

QStringList FileDialogs::pointsToAdd(QWidget* parent)
{
    return chosen(QFileDialog::getOpenFileNames(
        parent, DialogWords::tr("Add points"), lastFolder,
        filters(
            {DialogWords::tr("Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.ase *.acb *.gpl "
                             "*.png *.jpg *.jpeg "
                             "*.tif *.tiff)"),
             DialogWords::tr("All files (*)")})));
}

QString FileDialogs::sessionToRestore(QWidget* parent)
{
    return chosen(QFileDialog::getOpenFileName(
        parent, DialogWords::tr("Restore session"), lastFolder,
        filters({DialogWords::tr("Sessions (*.kvsession)"), DialogWords::tr("All files (*)")})));
}

QString FileDialogs::sessionToSave(QWidget* parent)
{
    return fileToSave(parent, DialogWords::tr("Save session"), DialogWords::tr("Sessions (*.kvsession)"),
                      "kvsession");
}

QString FileDialogs::pictureToSave(QWidget* parent, const QStringList& titles)
{
    constexpr int maxLength = 80;
    QStringList names;
    for (const QString& title : titles) // without the suffix of a file
        names.append(QFileInfo(title).completeBaseName());
    QString name = names.join(QStringLiteral(", ")).left(maxLength);
    static const QRegularExpression unusual(QStringLiteral("[\\x00-\\x1f/\\\\:*?\"<>|]"));
    return fileToSave(parent, DialogWords::tr("Save picture"),
                      DialogWords::tr("Pictures (*.png *.jpg *.tif *.webp *.svg *.pdf)"), "png",
                      name.replace(unusual, QStringLiteral("_")).trimmed());
}

QString FileDialogs::sectionToSave(QWidget* parent)
{
    return fileToSave(parent, DialogWords::tr("Save section"), DialogWords::tr("Drawings (*.svg *.pdf)"),
                      "svg");
}

QString FileDialogs::pageToSave(QWidget* parent)
{
    return fileToSave(parent, DialogWords::tr("Save page to send"), DialogWords::tr("Web pages (*.html)"),
                      "html");
}

QString FileDialogs::colorsToSave(QWidget* parent)
{
    return fileToSave(parent, DialogWords::tr("Save table of colours"), DialogWords::tr("Tables (*.csv)"),
                      "csv");
}

QString FileDialogs::gamutToSave(QWidget* parent)
{
    return fileToSave(
        parent, DialogWords::tr("Save gamut as mesh"),
        filters({DialogWords::tr("Meshes (*.ply *.obj *.stl *.gltf *.x3d *.json)"),
                 DialogWords::tr("Saved gamuts (*.kvgamut)"), DialogWords::tr("Profiles (*.icc)")}),
        "ply");
}
