// SPDX-License-Identifier: Apache-2.0
#include "Command.h"

#include "commands/process/Say.h"

#include <string>

void Command::declareSpeech()
{
    CLI::Option* quiet = m_parser->add_flag_callback(
        "--quiet", [] { setSpeech(Speech::Quiet); },
        "Print only the result and errors: no notes about the inputs, no progress bar (terminals show one "
        "after half a "
        "second)");
    m_parser
        ->add_flag_callback(
            "--verbose", [] { setSpeech(Speech::Verbose); },
            "Also print on standard error what is read, how it is computed and how long it takes" +
                std::string(drawsInOpenGL() ? "; and OpenGL diagnostics" : ""))
        ->excludes(quiet);
}
