#pragma once

class QJsonDocument;
class QString;

// Texts may contain names from disks and games. A question mark replaces every character that would
// control the terminal, end the line or change the reading direction.

/// Prints one line on standard output.
void printOutput(const QString &line);

/// Prints JSON on standard output, with escapes for such characters.
void printOutput(const QJsonDocument &json);

/// Prints one line on standard error in place of a progress bar. Line feeds and tabs in the text
/// are kept.
void printLine(const QString &text);

/// Prints one line on standard error, after the program's name.
void printError(const QString &text);

/// Erases the current terminal line. Does nothing if standard error is no terminal.
void clearLine();

/// Whether standard error is a terminal.
bool standardErrorIsTerminal();

/// Whether that terminal takes control sequences; old consoles of Windows don't.
bool terminalTakesSequences();

/// While it lives, uses the terminal of the parent process, if that has one, where the system gives
/// programs with windows none of their own. Redirected output stays redirected.
class ParentTerminal
{
public:
    ParentTerminal()
        : before(attach())
    {
    }
    ~ParentTerminal() { detach(before); }
    ParentTerminal(const ParentTerminal &) = delete;
    ParentTerminal &operator=(const ParentTerminal &) = delete;

private:
    /// The terminal's settings, restored at the end. 0: no terminal.
    struct State
    {
        unsigned codePage = 0;
        unsigned long mode = 0;
    };

    static State attach();
    static void detach(const State &before);

    const State before;
};

/// Whether the environment names a display for windows.
bool hasDisplay();
