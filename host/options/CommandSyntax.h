#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

struct Options;

/// Reads a command, such as "profiles copy Road Mine", into `options`. Returns in one line what is
/// wrong with it; empty if nothing is.
QString readCommandWords(const QStringList &words, Options &options);

/// The part of `--help` about commands.
QString commandsHelp();
