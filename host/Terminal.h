#pragma once

class QString;

/// Prints one line on standard error, over whatever progress bar stands on the terminal.
void printLine(const QString &text);

/// Prints one line of the program's own on standard error.
void printError(const QString &text);

/// Takes the line that stands on the terminal off again. Nothing where standard error is no
/// terminal.
void clearLine();

/// Whether standard error is a terminal that a person looks at.
bool standardErrorIsTerminal();

/// Whether a GUI can be shown as the environment stands.
bool hasDisplay();
