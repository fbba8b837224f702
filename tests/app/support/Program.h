// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <ostream>

/// Runs the built program and captures its output.
namespace kvtest {

/// The documented exit codes.
enum ExitCode : int
{
    Done = 0,
    BadInput = 1,
    WrongUsage = 2,
    BadOutput = 3,
    Different = 4,
};

/// @p line split at spaces: the arguments of a command line.
QStringList words(const QString& line);
QStringList words(const char* line);

struct Answer
{
    int exitCode = -1; ///< -1: it crashed, did not start or did not end
    QByteArray output; ///< standard output
    QByteArray errors; ///< standard error
};
void PrintTo(const Answer& answer, std::ostream* out);

/// The environment of the tests. Qt's warnings are printed, so that a case that expects empty standard error
/// notices them.
QProcessEnvironment environment();
/// The same without any display.
QProcessEnvironment withoutDisplay();

/// The file of the program.
QString binary();
/// Runs the program and waits until it ends.
Answer kvgamut(const QStringList& arguments, const QProcessEnvironment& env = environment());
/// Runs @p script under bash, in which "$KVGAMUT" is the program and "$1"... are @p arguments.
Answer shell(const QString& script, const QStringList& arguments = {},
             const QProcessEnvironment& env = environment());

/// Whether the exit code is 0 and standard error is empty. For EXPECT_TRUE.
testing::AssertionResult succeeded(const Answer& answer);
/// Whether the exit code is @p exitCode, standard error is exactly @p line, and standard output is empty.
testing::AssertionResult failedWith(const Answer& answer, int exitCode, const QString& line);

/// A separate folder for each case.
class ProgramTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Names of the files in the folder.
    QStringList files() const;

    /// Renders with @p arguments (which include the profiles) and reads the picture, without scales and
    /// legend unless the arguments say otherwise. The test fails if that fails or prints to standard error.
    QImage rendered(const QStringList& arguments);
    /// The same, as the bytes of the file.
    QByteArray renderedBytes(const QStringList& arguments);

private:
    QTemporaryDir m_folder;
};

QByteArray contents(const QString& file);
void write(const QString& file, const QByteArray& bytes);

} // namespace kvtest
