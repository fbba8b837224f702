// SPDX-License-Identifier: Apache-2.0
#include "UnsavedQuestion.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QPushButton>

UnsavedQuestion::UnsavedQuestion(const QString& file, QWidget* parent) : QMessageBox(parent)
{
    setObjectName(QStringLiteral("unsavedQuestion"));
    setWindowTitle(tr("Unsaved changes"));
    setIcon(QMessageBox::Question);
    setTextFormat(Qt::PlainText); // file names may contain HTML tags
    setText(file.isEmpty() ? tr("Save the changes as a session?")
                           : tr("Save the changes of “%1”?").arg(QFileInfo(file).fileName()));
    setInformativeText(tr("Otherwise they are lost."));
    setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    button(QMessageBox::Save)->setText(tr("&Save"));
    button(QMessageBox::Discard)->setText(tr("&Discard"));
    button(QMessageBox::Cancel)->setText(tr("&Cancel"));
    setDefaultButton(QMessageBox::Save);
    setEscapeButton(QMessageBox::Cancel);
}
