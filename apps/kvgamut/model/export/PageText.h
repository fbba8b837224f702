// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>
#include <QtCore/QMap>
#include <QtCore/QString>

/// Texts of an HTML page, made so that no text from a file becomes markup or script.
namespace PageText {

/// @p text for the content and the quoted attributes of HTML. Control characters and marks of writing
/// direction are made visible, as in SafeText::shown(), except line feeds.
QByteArray html(const QString& text);

/// @p document for an element <script type="application/json">: the same value, in which no string can end
/// the element or begin a comment, and no character breaks a line of a script.
QByteArray jsonInScript(const QByteArray& document);

/// A content security policy that allows exactly these inline scripts and this inline style, and no
/// connections.
QByteArray policy(const QByteArrayList& scripts, const QByteArray& style);

/// @p page with each {{name}} replaced by its value. Values are not searched for names, and unknown names
/// stay.
QByteArray filled(const QByteArray& page, const QMap<QByteArray, QByteArray>& values);

} // namespace PageText
