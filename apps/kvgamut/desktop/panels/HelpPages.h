// SPDX-License-Identifier: Apache-2.0
#pragma once

class QDialog;
class QString;
class QWidget;

/// Dialogs about the program itself.
namespace HelpPages {

/// Version, licence, libraries and what draws. @param drawing why nothing can be drawn; empty if it can
QDialog* about(const QString& drawing, QWidget* parent);
/// The tour of the documentation, in English.
QDialog* tour(QWidget* parent);

} // namespace HelpPages
