// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Arguments.h"

#include <CLI/CLI.hpp>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// One command of the program. On construction it declares itself and its options; when the command
/// line names it, run() is called after its options were read.
class Command
{
public:
    virtual ~Command() = default;

    bool chosen() const { return m_parser->parsed(); }

    /// The files that the command reads and the one that it writes, as named on the command line.
    struct Files
    {
        QStringList inputs;
        QString output; ///< empty if none
    };
    virtual Files files() const { return {}; }

    /// Whether it opens a window that the user works with.
    virtual bool hasWindow() const { return false; }

    /// Declares the options that every command has: --quiet and --verbose. Call it last, so that they end the
    /// help.
    void declareSpeech();

    /// Does the work. @return an ExitCode
    virtual int run(Arguments arguments) = 0;

protected:
    Command(CLI::App& program, const char* name, const char* summary)
        : m_parser(program.add_subcommand(name, summary))
    {
    }

    CLI::App& parser() { return *m_parser; }

    /// Whether it uses OpenGL.
    virtual bool drawsInOpenGL() const { return false; }

private:
    CLI::App* const m_parser; // owned by the program's parser
};
