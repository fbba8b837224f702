// SPDX-License-Identifier: Apache-2.0
#include "ReportOptions.h"

#include "OptionValues.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/jobs/Jobs.h"

#include <map>
#include <string>

void ReportOptions::declare(CLI::App& parser)
{
    static const std::map<std::string, Table::Format> formats{
        {"text", Table::Format::Text},
        {"csv", Table::Format::Csv},
        {"json", Table::Format::Json},
        {"jsonl", Table::Format::JsonLines},
    };
    parser
        .add_option_function<std::string>(
            "--format", [this](const std::string& word) { format = formats.at(word); },
            "text (the default), csv, json, or jsonl with an object on each line")
        ->transform(OptionValues::oneOf(formats))
        ->type_name("FORMAT");
    parser
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& name) { output = OptionValues::file(name); },
            "Output file, written completely or not at all; - for standard output (the default)")
        ->type_name("FILE");
    parser
        .add_option_function<int>(
            "--jobs", [](const int& count) { Jobs::setMaxThreads(count); },
            "Use at most N processor cores (default: all)")
        ->check(CLI::Range(1, 1024).description(""))
        ->type_name("N");
}

void ReportOptions::endHelp(CLI::App& parser, const std::string& text)
{
    parser.footer(
        text +
        "\n\nExit codes: 0 done, 1 some input could not be used (stderr says which and why; the others\nare "
        "processed), 2 wrong usage, 3 the output could not be written.");
}

int ReportOptions::print(const Table& table, bool allInputsUsed) const
{
    OutputStream file(output);
    printPart(table, file);
    return finish(file, allInputsUsed);
}

bool ReportOptions::printPart(const Table& table, OutputStream& file) const
{
    return table.print(format, [&file](const QByteArray& part) { return file.write(part); });
}

int ReportOptions::finish(OutputStream& file, bool allInputsUsed) const
{
    if (const auto problem = file.finish()) {
        say(*problem);
        return BadOutput;
    }
    Steps::wrote(output);
    return allInputsUsed ? Done : BadInput;
}
