#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

struct Options;

/// Reads the words of a command line that are no options, such as "profiles copy Road Mine". Says
/// in one line what is wrong with them; empty if nothing is.
QString readCommandWords(const QStringList &words, Options &options);

/// The part of `--help` about commands.
QString commandsHelp();
