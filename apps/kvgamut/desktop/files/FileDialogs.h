// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

class QWidget;

/// The dialogs that ask for files, each in the folder of the last one. An empty result means that the dialog
/// was cancelled.
namespace FileDialogs {

QString folder(); ///< of the last file that was chosen; empty at first
void setFolder(const QString& folder);

QStringList filesToOpen(QWidget* parent);
QStringList pointsToAdd(QWidget* parent);
QString sessionToRestore(QWidget* parent);
QString sessionToSave(QWidget* parent);
/// Suggests a name made of @p titles, of gamuts.
QString pictureToSave(QWidget* parent, const QStringList& titles);
QString sectionToSave(QWidget* parent);
QString pageToSave(QWidget* parent);
QString colorsToSave(QWidget* parent);
QString gamutToSave(QWidget* parent);

} // namespace FileDialogs
