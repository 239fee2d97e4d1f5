#include "CommandSyntax.h"

#include "Options.h"

#include <array>

namespace {

using Verb = ProfileCommand::Verb;

struct CommandSyntax
{
    const char *words;    ///< What names the command, such as "profiles copy".
    const char *operands; ///< What must follow, a word each.
    const char *help;
    void (*take)(const QStringList &operands, Options &options);
};

template<Verb verb> void takeProfile(const QStringList &operands, Options &options)
{
    options.mode = Options::Mode::Profile;
    options.profile.verb = verb;
    options.profile.operands = operands;
}

void takeRecord(const QStringList &operands, Options &options)
{
    options.mode = Options::Mode::Record;
    options.record.path = operands.constFirst();
}

void takePreview(const QStringList &operands, Options &options)
{
    options.mode = Options::Mode::Preview;
    options.preview.dashboard = operands.constFirst();
}

void takeLint(const QStringList &operands, Options &options)
{
    options.mode = Options::Mode::Lint;
    options.lint.dashboard = operands.constFirst();
}

constexpr std::array Commands{
    CommandSyntax{"record", "FILE", "Record what games send into a pcap file, until Ctrl+C.",
                  takeRecord},
    CommandSyntax{"profiles list", "", "List dashboards with id, kind, vehicles and preview.",
                  takeProfile<Verb::List>},
    CommandSyntax{"profiles activate", "NAME|ID", "Activate a dashboard.",
                  takeProfile<Verb::Activate>},
    CommandSyntax{"profiles copy", "NAME|ID NEW", "Copy a dashboard into your own folder.",
                  takeProfile<Verb::Copy>},
    CommandSyntax{"profiles rename", "NAME|ID NEW", "Rename a dashboard of your own.",
                  takeProfile<Verb::Rename>},
    CommandSyntax{"profiles remove", "NAME|ID", "Delete a dashboard of your own.",
                  takeProfile<Verb::Remove>},
    CommandSyntax{"profiles vehicles", "", "List the vehicles of each dashboard.",
                  takeProfile<Verb::Vehicles>},
    CommandSyntax{"vehicle", "NAME", "Report a vehicle and print the dashboard it gets.",
                  takeProfile<Verb::Vehicle>},
    CommandSyntax{"preview", "NAME|ID|FILE", "Draw a dashboard's preview.png.", takePreview},
    CommandSyntax{"lint", "NAME|ID|FILE", "Check a dashboard for mistakes.", takeLint},
};

QStringList split(const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QString usage(const CommandSyntax &command)
{
    return (split(command.words) + split(command.operands)).join(QLatin1Char(' '));
}

} // namespace

QString readCommandWords(const QStringList &words, Options &options)
{
    QStringList siblings; // Commands that begin with the same word.
    for (const CommandSyntax &command : Commands) {
        const QStringList name = split(command.words);
        if (name.constFirst() == words.constFirst())
            siblings += name.constLast();
        if (words.mid(0, name.size()) != name)
            continue;
        const QStringList operands = words.mid(name.size());
        if (operands.size() != split(command.operands).size() || operands.contains(QString()))
            return QStringLiteral("Usage: %1.").arg(usage(command));
        command.take(operands, options);
        return {};
    }
    if (siblings.isEmpty())
        return QStringLiteral("Unknown command '%1'.").arg(words.constFirst());
    return QStringLiteral("'%1' takes %2, not '%3'.")
        .arg(words.constFirst(), siblings.join(QStringLiteral(", ")), words.value(1));
}

QString commandsHelp()
{
    constexpr int Column = 30;
    QString text = QStringLiteral("\nCommands:\n");
    for (const CommandSyntax &command : Commands) {
        text += QStringLiteral("  %1%2\n")
                    .arg(usage(command).leftJustified(Column), QLatin1String(command.help));
    }
    return text;
}
