// SPDX-License-Identifier: Apache-2.0
#include "Mistakes.h"

#include "HelpText.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/FileName.h"
#include "model/text/NearWord.h"

namespace {

QString textOf(const std::string& word)
{
    return FileName::decoded(QByteArray::fromStdString(word));
}

/// The long options of @p app.
QStringList longOptions(const CLI::App& app)
{
    QStringList names;
    for (const CLI::Option* option : HelpText::options(app, false))
        for (const std::string& name : option->get_lnames())
            names.append(QStringLiteral("--") + QString::fromStdString(name));
    return names;
}

QString withSuggestion(const QString& sentence, const QString& near)
{
    return near.isEmpty() ? sentence : sentence + QStringLiteral("; did you mean %1?").arg(near);
}

QString unexpected(const CLI::App& app, const QString& command, const std::string& word)
{
    if (!word.starts_with('-'))
        return QStringLiteral("'%1' is one argument too many for %2").arg(textOf(word), command);
    const QString option = textOf(word).section(QLatin1Char('='), 0, 0);
    return withSuggestion(QStringLiteral("%1 has no option %2").arg(command, option),
                          nearWord(option, longOptions(app)));
}

} // namespace

QString Mistakes::unknownCommand(const CLI::App& program, const std::string& word)
{
    const QString name = textOf(word);
    if (BuiltInNames::contains(name) || FileName::exists(name))
        return QStringLiteral("a command comes first: kvgamut info %1").arg(name);
    QStringList known;
    for (const CLI::App* command : HelpText::commands(program))
        known.append(QString::fromStdString(command->get_name()));
    return withSuggestion(QStringLiteral("there is no command '%1'").arg(name), nearWord(name, known));
}

QString Mistakes::explained(const CLI::App& program, const CLI::ParseError& error)
{
    const std::vector<CLI::App*> chosen = program.get_subcommands();
    const std::vector<std::string> unknown = program.remaining(true);
    if (unknown.empty() && chosen.empty()) {
        QStringList known;
        for (const CLI::App* command : HelpText::commands(program))
            known.append(QString::fromStdString(command->get_name()));
        return QStringLiteral("a command is missing: ") + known.join(QStringLiteral(", "));
    }
    if (unknown.empty())
        return QString::fromUtf8(error.what());
    if (!chosen.empty())
        return unexpected(*chosen.front(),
                          QStringLiteral("kvgamut ") + QString::fromStdString(chosen.front()->get_name()),
                          unknown.front());
    return unknown.front().starts_with('-') ? unexpected(program, QStringLiteral("kvgamut"), unknown.front())
                                            : unknownCommand(program, unknown.front());
}
