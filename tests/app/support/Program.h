// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <ostream>

/// Runs the built program and looks at what a person or a script gets from it.
namespace kvtest {

struct Answer
{
    int exitCode = -1; ///< -1: it crashed, did not start or did not end
    QByteArray output; ///< standard output
    QByteArray errors; ///< standard error
};
void PrintTo(const Answer& answer, std::ostream* out);

/// The environment of the tests, in which Qt's warnings are printed: a case that expects no word on
/// standard error sees them.
QProcessEnvironment environment();
/// The same without any display.
QProcessEnvironment withoutDisplay();

/// Runs the program to its end.
Answer kvgamut(const QStringList& arguments, const QProcessEnvironment& env = environment());
/// Runs @p script under bash, in which "$KVGAMUT" is the program and "$1"... are @p arguments.
Answer shell(const QString& script, const QStringList& arguments = {},
             const QProcessEnvironment& env = environment());

/// Done, and not a word: for EXPECT_TRUE.
testing::AssertionResult succeeded(const Answer& answer);
/// Ended with @p exitCode, said exactly @p line on standard error and nothing on standard output.
testing::AssertionResult failedWith(const Answer& answer, int exitCode, const QString& line);

/// A folder of its own for each case.
class ProgramTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// What lies in the folder, names only.
    QStringList files() const;

    /// Renders with @p arguments (which name the profiles) and reads the picture back. Null, and the
    /// case has failed, when that does not work without a word.
    QImage rendered(const QStringList& arguments);
    /// The same, as the bytes of the file.
    QByteArray renderedBytes(const QStringList& arguments);

private:
    QTemporaryDir m_folder;
};

QByteArray contents(const QString& file);
void write(const QString& file, const QByteArray& bytes);

} // namespace kvtest
