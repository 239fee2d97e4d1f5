#pragma once

class QString;

/// Prints one line of the program's own on standard error.
void printError(const QString &text);

/// Whether standard error is a terminal that a person looks at.
bool standardErrorIsTerminal();

/// Whether a GUI can be shown as the environment stands.
bool hasDisplay();
